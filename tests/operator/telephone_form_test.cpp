#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "ravelinox/error.hpp"
#include "ravelinox/platform.hpp"

namespace ravelinox {
namespace {

/// What happens to the windows of a form, in order.
struct Desk {
  std::vector<std::string> events;
  bool operator_closes = false;
  bool fails = false;    ///< to show
  bool forgets = false;  ///< whether it was closed
};

class DeskWindow : public TelephoneWindow {
 public:
  explicit DeskWindow(Desk& desk) : desk_(desk) { desk_.events.emplace_back("open"); }
  ~DeskWindow() override { desk_.events.emplace_back("gone"); }
  void show(const TelephoneView& view) override {
    if (desk_.fails) throw std::runtime_error("no display");
    desk_.events.push_back(view.caller + "|" + view.messages +
                           (view.reply_enabled && view.send_enabled ? "|enabled" : ""));
  }
  bool closed() override {
    if (desk_.forgets) throw "not a window any more";
    return std::exchange(desk_.operator_closes, false);
  }

 private:
  Desk& desk_;
};

Platform with_desk(Desk& desk) {
  Platform surroundings = platform();
  surroundings.telephone_window = [&desk] { return std::make_unique<DeskWindow>(desk); };
  return surroundings;
}

TEST(TelephoneForm, MessagesStackUntilTheAnswerIsSent) {
  Desk desk;
  const PlatformOverride seams(with_desk(desk));
  TelephoneForm form;
  form.TreniArrivati.append(1);
  form.RiceviComunicazione("A", "one");
  form.RiceviComunicazione("B", "two");
  form.send();
  EXPECT_FALSE(form.is_open());
  EXPECT_FALSE(form.view().send_enabled);
  form.RiceviComunicazione(Variant::null(), 3);
  desk.operator_closes = true;  // by the title bar
  form.RiceviComunicazione("C", "four");
  EXPECT_EQ(desk.events,
            (std::vector<std::string>{"open", "A|one|enabled", "B|one\r\ntwo|enabled", "gone",
                                      "open", "|3|enabled", "gone", "open", "C|four|enabled"}));
  EXPECT_TRUE(form.is_open());
  desk.operator_closes = true;
  EXPECT_FALSE(form.is_open());
  EXPECT_EQ(form.TreniArrivati.text(), " 1");
}

TEST(TelephoneForm, AWindowThatFailsIsReplacedAndShowsAllThatIsUnanswered) {
  Desk desk;
  const PlatformOverride seams(with_desk(desk));
  TelephoneForm form;
  desk.fails = true;
  form.RiceviComunicazione("A", "");
  form.RiceviComunicazione("A", "one");
  desk.fails = false;
  form.RiceviComunicazione("B", "two");
  desk.forgets = true;
  EXPECT_TRUE(form.is_open());
  form.RiceviComunicazione("C", "three");
  EXPECT_EQ(desk.events, (std::vector<std::string>{"open", "gone", "open", "gone", "open",
                                                   "B|one\r\ntwo|enabled", "gone", "open",
                                                   "C|one\r\ntwo\r\nthree|enabled"}));
}

TEST(TelephoneForm, NeedsNoWindow) {
  const TelephoneWindowFactory none[] = {
      nullptr, [] { return nullptr; },
      []() -> std::unique_ptr<TelephoneWindow> { throw std::runtime_error("no display"); }};
  for (const TelephoneWindowFactory& make : none) {
    Platform surroundings = platform();
    surroundings.telephone_window = make;
    const PlatformOverride seams(surroundings);
    TelephoneForm form;
    form.RiceviComunicazione("A", "one");
    form.RiceviComunicazione("A", "two");
    EXPECT_THROW(form.RiceviComunicazione("A", Variant(std::shared_ptr<Object>())), Error);
    EXPECT_TRUE(form.is_open());
    EXPECT_EQ(form.view().messages, "one\r\ntwo");
  }
}

}  // namespace
}  // namespace ravelinox
