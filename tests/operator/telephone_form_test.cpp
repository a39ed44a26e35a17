#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "ravelinox/error.hpp"
#include "ravelinox/platform.hpp"

namespace ravelinox {
namespace {

/// A form, and what happens to its windows, in order.
struct Desk {
  struct Window : TelephoneWindow {
    explicit Window(Desk& at) : desk(at) { desk.events += "open "; }
    ~Window() override { desk.events += "gone "; }
    void show(const TelephoneView& view) override {
      if (desk.fails) throw std::runtime_error("no display");
      EXPECT_TRUE(view.reply_enabled && view.send_enabled);
      desk.events += view.caller + "|" + view.messages + " ";
    }
    bool closed() override {
      if (desk.forgets) throw "not a window any more";
      return std::exchange(desk.operator_closes, false);
    }

    Desk& desk;
  };

  Desk() {
    platform().telephone_window = [this] { return std::make_unique<Window>(*this); };
  }

  std::string events;
  bool operator_closes = false;
  bool fails = false;    ///< to show
  bool forgets = false;  ///< whether it was closed
  PlatformOverride surroundings{platform()};
  TelephoneForm form;
};

TEST(TelephoneForm, MessagesStackUntilTheAnswerIsSent) {
  Desk desk;
  TelephoneForm& form = desk.form;
  form.TreniArrivati.append(1);
  form.RiceviComunicazione("A", "one");
  form.RiceviComunicazione("B", "two");
  form.send();
  EXPECT_FALSE(form.is_open());
  EXPECT_FALSE(form.view().send_enabled);
  form.RiceviComunicazione(Variant::null(), 3);
  desk.operator_closes = true;  // by the title bar
  form.RiceviComunicazione("C", "four");
  EXPECT_EQ(desk.events, "open A|one B|one\r\ntwo gone open |3 gone open C|four ");
  EXPECT_TRUE(form.is_open());
  desk.operator_closes = true;
  EXPECT_FALSE(form.is_open());
  EXPECT_EQ(form.TreniArrivati.text(), " 1");
}

TEST(TelephoneForm, AWindowThatFailsIsReplacedAndShowsAllThatIsUnanswered) {
  Desk desk;
  TelephoneForm& form = desk.form;
  desk.fails = true;
  form.RiceviComunicazione("A", "");
  form.RiceviComunicazione("A", "one");
  desk.fails = false;
  form.RiceviComunicazione("B", "two");
  desk.forgets = true;
  EXPECT_TRUE(form.is_open());
  form.RiceviComunicazione("C", "three");
  EXPECT_EQ(desk.events, "open gone open gone open B|one\r\ntwo gone open C|one\r\ntwo\r\nthree ");
}

TEST(TelephoneForm, NeedsNoWindow) {
  const TelephoneWindowFactory none[] = {
      nullptr, [] { return nullptr; },
      []() -> std::unique_ptr<TelephoneWindow> { throw std::runtime_error("no display"); }};
  for (const TelephoneWindowFactory& make : none) {
    Desk desk;
    platform().telephone_window = make;
    desk.form.RiceviComunicazione("A", "one");
    desk.form.RiceviComunicazione("A", "two");
    EXPECT_THROW(desk.form.RiceviComunicazione("A", Variant(std::shared_ptr<Object>())), Error);
    EXPECT_TRUE(desk.form.is_open());
    EXPECT_EQ(desk.form.view().messages, "one\r\ntwo");
  }
}

}  // namespace
}  // namespace ravelinox
