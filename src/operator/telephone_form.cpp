// The telephone's behaviour. Its window, if there is one, only shows what stands here.
#include <memory>
#include <string>

#include "ravelinox/platform.hpp"
#include "ravelinox/telephone.hpp"

namespace ravelinox {

namespace {

using Window = std::unique_ptr<TelephoneWindow>;

/// A message must reach the form whatever becomes of the window. So one that fails in any way, or
/// cannot be made, counts as lost: there is none, and the next message makes another.
template <class Use>
void without_failing(Window& window, Use use) {
  try {
    use();
  } catch (...) {
    window.reset();
  }
}

void show_in(Window& window, const TelephoneView& view) {
  without_failing(window, [&] {
    const TelephoneWindowFactory& make = platform().telephone_window;
    if (!window && make) window = make();
    if (window) window->show(view);
  });
}

/// Whether the operator has closed the window; a window that is lost was not closed.
bool closed_by_operator(Window& window) {
  bool closed = false;
  without_failing(window, [&] { closed = window && window->closed(); });
  return closed;
}

}  // namespace

void TelephoneForm::RiceviComunicazione(const Variant& Chiamante, const Variant& Testo) {
  const std::string caller = joined(Chiamante);
  const std::string text = joined(Testo);
  notice_operator_close();
  view_.caller = caller;
  view_.messages += view_.messages.empty() ? text : "\r\n" + text;
  view_.reply_enabled = true;
  view_.send_enabled = true;
  open_ = true;
  show_in(window_, view_);
}

void TelephoneForm::send() { close(); }

void TelephoneForm::close() {
  open_ = false;
  view_ = TelephoneView();
  window_.reset();
}

bool TelephoneForm::is_open() {
  notice_operator_close();
  return open_;
}

void TelephoneForm::notice_operator_close() {
  if (closed_by_operator(window_)) close();
}

TelephoneForm& frmTelefonoINdll() {
  thread_local TelephoneForm shared_instance;
  return shared_instance;
}

}  // namespace ravelinox
