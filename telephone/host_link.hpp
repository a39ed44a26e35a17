#pragma once

#include <QSocketNotifier>

#include "operator/telephone_feed.hpp"
#include "panel.hpp"
#include "platform/descriptor.hpp"

namespace ravelinox {

/// Joins the window to the component that started the program: messages in, the answer out. Ends
/// the program's event loop, with success when the operator is done, otherwise when the component
/// is.
class HostLink {
 public:
  HostLink(int socket, int feed);

 private:
  void receive();
  void answer();

  Descriptor socket_;
  FeedReader feed_;
  TelephoneView view_;
  TelephonePanel panel_;
  QSocketNotifier arrivals_;
};

}  // namespace ravelinox
