// The telephone of a host that shows every message as text, whether or not a window shows it too.
#include "host/dispatchers.hpp"

#include <string_view>
#include <utility>

namespace ravelinox::host {
namespace {

constexpr std::string_view line_end = "\r\n";

class ReadOutTelephone : public TelephoneWindow {
 public:
  ReadOutTelephone(MessageSink sink, std::unique_ptr<TelephoneWindow> window)
      : sink_(std::move(sink)), window_(std::move(window)) {}

  void show(const TelephoneView& view) override {
    std::string_view added = std::string_view(view.messages).substr(read_out_);
    if (read_out_ != 0) added.remove_prefix(line_end.size());
    read_out_ = view.messages.size();
    sink_({view.caller, std::string(added)});
    if (window_) window_->show(view);
  }
  /// Without an operator, what has been read out is acknowledged.
  [[nodiscard]] bool closed() override { return window_ ? window_->closed() : true; }

 private:
  MessageSink sink_;
  std::unique_ptr<TelephoneWindow> window_;
  std::size_t read_out_ = 0;
};

}  // namespace

bool Message::suppression_today() const {
  return text.starts_with("Oggi il treno ") && text.ends_with(" è soppresso.");
}

bool Message::extraordinary_train() const {
  return text.starts_with("Oggi effettualsi treno straodrinario ");
}

TelephoneWindowFactory telephone_to(MessageSink sink, TelephoneWindowFactory windows) {
  return [sink = std::move(sink), windows = std::move(windows)] {
    return std::make_unique<ReadOutTelephone>(sink, windows ? windows() : nullptr);
  };
}

}  // namespace ravelinox::host
