// The commands as people type them, on a small station of three trains.
#include <gmock/gmock.h>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <sstream>

#include "host/console.hpp"
#include "host/program.hpp"
#include "host/station_session.hpp"
#include "support/station.hpp"

namespace ravelinox::host {
namespace {

using ravelinox::testing::add_timetable;
using ravelinox::testing::append;
using ravelinox::testing::Table;
using ravelinox::testing::TemporaryFolder;
using ::testing::HasSubstr;
using Words = std::vector<std::string>;

/// What the program said, and how it ended.
struct Outcome {
  int code = 0;
  std::string out, err;
};

int run_typed(const Words& words, Console& console) {
  std::vector<const char*> arguments{"ravelinox"};
  for (const std::string& word : words) arguments.push_back(word.c_str());
  return run_program(static_cast<int>(arguments.size()), arguments.data(), console);
}

Outcome ravelinox(const Words& words, bool desktop = false) {
  std::ostringstream out, err;
  Console console{out, err, false, desktop};
  const int code = run_typed(words, console);
  return {code, out.str(), err.str()};
}

/// Borgo, with a stabling track and trains that run every day.
class Commands : public ::testing::Test {
 protected:
  Commands() {
    EXPECT_EQ(ravelinox({"new", folder, "--station", "Borgo"}).code, 0);
    append(station_file, "enti", 1, "CDB", 1, 100, "stazionamento", 300);
    add_timetable(line_file, R"(
2345 R ' 0 1 2 3 4 5 6 '; Alba - 1+6:00; Borgo 1+6:20 1+6:22 track=2; Forlì 1+6:40 -
77 IC ' 0 1 2 3 4 5 6 '; Forlì - 1+6:05; Borgo 1+6:25 1+6:25; Alba 1+6:45 -
9 R ' 0 1 2 3 4 5 6 '; Borgo - 1+6:30 track=3; Alba 1+6:50 -
)");
  }

  Words run_words(const Words& more = {}) const {
    Words words{"run", folder,   "--start", "2026-06-10 05:50", "--end", "07:00",         "--speed",
                "max", "--seed", "4",       "--suppression",    "30000", "--punctuality", "240"};
    words.insert(words.end(), more.begin(), more.end());
    return words;
  }
  Outcome run(const Words& more = {}, bool desktop = false) const {
    return ravelinox(run_words(more), desktop);
  }
  Outcome run_undisturbed(const Words& more = {}) const {
    Words words{"--punctuality", "0", "--deviation", "0"};
    words.insert(words.end(), more.begin(), more.end());
    return run(words);
  }

  TemporaryFolder home;
  std::string folder = home.path().string();
  std::string station_file = home.file(station_file_name);
  std::string line_file = home.file(line_file_name);
};

TEST_F(Commands, ARunRecordsEveryMovementOnceAndCanBeRepeated) {
  const Outcome first = run();
  EXPECT_EQ(first.code, 0) << first.err;
  EXPECT_EQ(first.err, "");
  // 2345 arrives and leaves, 77 passes, 9 leaves; along the line there are 4 + 4 + 2 movements.
  EXPECT_THAT(first.out, HasSubstr("1 arrivals, 2 departures, 1 passages here; 10 movements"));
  const std::string information = home.bytes("Output.ssi");
  EXPECT_EQ(run().out, first.out);
  EXPECT_EQ(home.bytes("Output.ssi"), information);
  EXPECT_NE(run({"--deviation", "60"}).out, first.out);
}

TEST_F(Commands, WithoutDisturbancesTheDayIsTheTimetable) {
  const Outcome outcome = run_undisturbed();
  for (const char* line : {"06:17  Loudspeaker: Il treno Regionale 2345, delle ore 06 e 20, "
                           "proveniente da Alba e diretto a Forlì arriva e parte sul binario 2.  "
                           "Il treno non effettua fermate intermedie.\n",
                           "06:20  2345 from Alba arrived at platform 2, on time\n",
                           "06:22  2345 to Forlì left platform 2, on time\n",
                           "06:25  77 from Forlì to Alba passed, on time\n",
                           "06:30  9 to Alba left platform 3, on time\n", "Seed 4\n",
                           "Reached Wed 2026-06-10 07:00:00\n", "0 calls failed"}) {
    EXPECT_THAT(outcome.out, HasSubstr(line));
  }
  const Outcome told = ravelinox({"train", "2345", folder, "--at", "2026-06-10 06:30"});
  for (const char* line :
       {"Run         Alba - Forlì\n", "Delay         0\n", "Position    Borgo|Forlì\n",
        "Next stops  .\n", "stazione di Borgo alle ore 6:22.\n",
        "  Borgo    2         06:20    06:20     06:22      06:22\n"}) {
    EXPECT_THAT(told.out, HasSubstr(line)) << told.err;
  }
}

TEST_F(Commands, DispatchersSpeakAsTheyCall) {
  const Outcome outcome = run({"--suppression", "1"});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.out,
              HasSubstr("05:50  Dirigente centrale: Oggi il treno 2345 è soppresso.\n"));
  EXPECT_THAT(outcome.err, HasSubstr("No train of Borgo runs between"));
  EXPECT_THAT(home.bytes("log_InizializzaOrario.txt"),
              HasSubstr("Dirigente centrale: Oggi il treno 77 \xE8 soppresso.\r\n"));
}

TEST_F(Commands, TheBoardFollowsTheDay) {
  run_undisturbed({"--end", "06:10"});
  for (const auto& [time, shown, hidden] :
       Table<const char*, const char*, const char*>{{"06:19", "06:20  R 2345", "at the platform"},
                                                    {"06:21", "at the platform", "IC 77"},
                                                    {"06:22", "06:30  R 9", "R 2345"},
                                                    {"06:30", "No departures.", "R 9"}}) {
    const Outcome outcome = ravelinox({"board", folder, "--at", std::string("2026-06-10 ") + time});
    EXPECT_THAT(outcome.out, HasSubstr(shown)) << time;
    EXPECT_THAT(outcome.out, ::testing::Not(HasSubstr(hidden))) << time;
  }
  // Without a moment: where the run stands.
  EXPECT_THAT(ravelinox({"board", folder, "--platform", "2345@7"}).out,
              ::testing::AllOf(HasSubstr("Borgo   Wed 2026-06-10 06:10:00\n"),
                               HasSubstr("Forlì  7"), HasSubstr("platform changed from 2\n")));
}

/// Remembers what it is given.
class TestVoice : public Voice {
 public:
  explicit TestVoice(Words& spoken) : spoken_(spoken) {}
  void speak(const std::string& text) override { spoken_.push_back(text); }

 private:
  Words& spoken_;
};

TEST_F(Commands, AnnouncementsAreShownAndSpokenWhereThereIsAVoice) {
  const std::string sentence =
      "Attenzione: il treno Regionale 2345, delle ore 06 e 22, proveniente da Alba e diretto a "
      "Forlì arriverà e partirà sul binario 7 anzichè sul binario 2";
  const Words words{"announce", "2345", "cambio binario", folder,
                    "--track",  "7",    "--instead-of",   "2"};
  Words spoken;
  Platform own = platform();
  own.voice = [&] { return std::make_unique<TestVoice>(spoken); };
  const PlatformOverride surroundings(own);
  EXPECT_EQ(ravelinox(words).out, sentence + "\n");
  EXPECT_EQ(spoken, Words{sentence});
  run();
  EXPECT_EQ(spoken.size(), 1U);
  run({"--speak"});
  EXPECT_GT(spoken.size(), 1U);

  platform().voice = nullptr;
  const Outcome shown = ravelinox(words);
  EXPECT_EQ(shown.out, sentence + "\n");
  EXPECT_THAT(shown.err, HasSubstr("shown, not spoken"));
  EXPECT_THAT(run({"--speak"}).err, HasSubstr("shown, not spoken"));
  EXPECT_EQ(ravelinox({"announce", "77", "Arrivo", folder}).out, "There is nothing to announce.\n");
  EXPECT_THAT(ravelinox({"announce", "5", "Partenza", folder}).err, HasSubstr("error 3021"));
}

/// A desk whose operator answers every window after two messages.
struct Desk {
  std::vector<std::string> shown;
  int open_windows = 0;
  std::vector<std::string> spoken;

  class Window : public TelephoneWindow {
   public:
    explicit Window(Desk& desk) : desk_(desk) { ++desk_.open_windows; }
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    ~Window() override { --desk_.open_windows; }
    void show(const TelephoneView& view) override {
      desk_.shown.push_back(view.messages);
      ++messages_;
    }
    bool closed() override { return messages_ == 2; }

   private:
    Desk& desk_;
    int messages_ = 0;
  };

  Platform platform() {
    Platform own = ravelinox::platform();
    own.telephone_window = [this] { return std::make_unique<Window>(*this); };
    own.voice = [this] { return std::make_unique<TestVoice>(spoken); };
    return own;
  }
};

TEST_F(Commands, ADesktopAddsAWindowAndAVoiceToTheSameText) {
  const std::string fast = "86400";  // paced nevertheless
  const Words lively{"--suppression", "2", "--punctuality", "0"};
  const std::string text = run(lively).out;
  const struct {
    bool desktop;
    Words words;
    bool window, voice;
  } cases[] = {
      {true, {"--speed", fast}, true, true},
      {true, {}, false, false},
      {false, {"--speed", fast}, false, false},
      {false, {"--window", "--speak"}, true, true},
      {true, {"--speed", fast, "--no-window"}, false, true},
      {true, {"--speed", fast, "--silent"}, true, false},
      {true, {"--silent", "--speak", "--window", "--no-window"}, false, true},
  };
  for (const auto& [desktop, words, window, voice] : cases) {
    Desk desk;
    const PlatformOverride surroundings(desk.platform());
    Words more = lively;
    more.insert(more.end(), words.begin(), words.end());
    const Outcome outcome = run(more, desktop);
    const std::string typed = ::testing::PrintToString(words);
    EXPECT_EQ(outcome.out, text) << typed;
    EXPECT_EQ(!desk.shown.empty(), window) << typed;
    EXPECT_EQ(!desk.spoken.empty(), voice) << typed;
    EXPECT_EQ(desk.open_windows, 0) << typed;
    if (!window) continue;
    ASSERT_GE(desk.shown.size(), 3U) << text;
    EXPECT_EQ(desk.shown[1].substr(0, desk.shown[0].size() + 2), desk.shown[0] + "\r\n");
    EXPECT_THAT(desk.shown[2], ::testing::Not(HasSubstr("\n")));
  }
}

TEST_F(Commands, BadInputIsSaidInASentence) {
  const TemporaryFolder nothing;
  EXPECT_EQ(ravelinox({"new", nothing.file("empty"), "--station", "Borgo"}).code, 0);
  std::ofstream(home.file("note.txt")) << "no database";
  for (const auto& [words, code, sentence] : Table<Words, int, const char*>{
           {{"board", "/nowhere"}, 1, "There is no file or folder /nowhere."},
           {{"board", nothing.path().string()}, 1, "holds no usable station database"},
           {{"board", line_file}, 1, "lacks a readable table banco."},
           {{"board", home.file("note.txt")}, 1, "cannot be opened as a database."},
           {{"board", folder, "--at", "tomorrow"}, 1, "\"tomorrow\" is no date and time"},
           {{"train", "5", folder}, 1, "The timetable of Borgo has no train 5."},
           {{"announce", "2345", "Ritorno", folder}, 2, "Ritorno"},
           {{"run", folder, "--start", "2026-06-10", "--end", "2026-06-09"}, 1, "within 24 hours"},
           {run_words({"--start", "2026-06-10 12:00", "--end", "13:00"}), 1,
            "No train of Borgo runs between"},
           {{"run", nothing.file("empty"), "--speed", "0"}, 1, "No train of Borgo runs between"},
           {{"check", station_file}, 0, "Its station is Borgo; its line has 3 trains.\n"},
           {{"new", folder}, 1, "error 58"},
           {{"fly"}, 2, "subcommand"},
           {{}, 2, "subcommand"}}) {
    const Outcome outcome = ravelinox(words);
    const std::string typed = ::testing::PrintToString(words);
    EXPECT_EQ(outcome.code, code) << typed << outcome.err;
    EXPECT_THAT(outcome.out + outcome.err, HasSubstr(sentence)) << typed;
    EXPECT_LE(std::ranges::count(outcome.err, '\n'), code) << typed << outcome.err;
  }
}

/// Output in which the person at the terminal presses Ctrl-C as soon as something is said.
class Impatient : public std::stringbuf {
 protected:
  std::streamsize xsputn(const char* text, std::streamsize size) override {
    std::raise(SIGINT);
    return std::stringbuf::xsputn(text, size);
  }
};

TEST_F(Commands, AnInterruptionEndsARunWithItsSummary) {
  Impatient output;
  std::ostream out(&output);
  Console console{out, out};
  EXPECT_EQ(run_typed(run_words({"--speed", "1"}), console), 130);
  EXPECT_THAT(output.str(), HasSubstr("Interrupted at Wed 2026-06-10 05:50:00\n"));
  EXPECT_EQ(ravelinox({"check", station_file}).code, 0);
}

TEST_F(Commands, ATerminalGetsAPageAndItsOldContentBack) {
  std::ostringstream out, err;
  Console console{out, err, true};
  EXPECT_EQ(run_typed(run_words(), console), 0);
  const std::string shown = out.str();
  EXPECT_THAT(shown, HasSubstr("\x1b[?1049h"));
  EXPECT_THAT(shown, HasSubstr("\x1b[HBorgo   Wed 2026-06-10 05:50:00\x1b[K\r\n"));
  EXPECT_GT(shown.find("Reached Wed 2026-06-10 07:00:00"), shown.find("\x1b[?1049l"));
}

TEST(Demo, IsLivelyAndCanBeRepeated) {
  std::string shown[2];
  for (std::string& each : shown) {
    const TemporaryFolder folder;
    const Outcome outcome = ravelinox({"demo", "--folder", folder.path().string()});
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    each = outcome.out.substr(0, outcome.out.rfind("Seed"));
    each.replace(each.find(folder.path().string()), folder.path().string().size(), "folder");
  }
  EXPECT_THAT(shown[0], HasSubstr("platform changed from"));
  EXPECT_EQ(shown[0], shown[1]);
}

TEST(SignalBox, AnswersOnTheBundledStation) {
  const TemporaryFolder folder;
  const std::string station = folder.file("empoli");
  ravelinox({"import", RAVELINOX_EMPOLI_FEED, "--station", "Empoli", "--out", station});
  for (const auto& [typed, code, said] : Table<Words, int, const char*>{
           {{"signal", "1-A1"}, 0, "signal S1 shows Gx, changed by the line"},
           {{"signal", "1-A1", "--signal", "X"}, 0, "signal X shows V\n"},
           {{"signal", "9-Z9"}, 1, "no route 9-Z9"},
           {{"consent", "Empoli", "Montelupo"}, 0, "Empoli grants"},
           {{"consent", "Empoli", "Roma"}, 1, "error 3021"},
           {{"maintenance", "--wear", "19", "--faults", "32767"}, 0, "Deviatoio  1"},
           {{"next", "Montelupo", "--at", "1970-01-01 00:00"}, 0, "comes from Montelupo in"},
           {{"next", "Montelupo", "--at", "2030-01-01 00:00"}, 0, "No train comes"},
           {{"precedence", "18255", "18263"}, 0, "Behind Empoli, train 18255"}}) {
    Words words = typed;
    words.insert(std::ranges::find_if(words, [](auto& word) { return word.starts_with("--"); }),
                 station);
    const Outcome outcome = ravelinox(words);
    EXPECT_EQ(outcome.code, code) << words[0];
    EXPECT_THAT(outcome.out + outcome.err, HasSubstr(said));
  }
}

}  // namespace
}  // namespace ravelinox::host
