// The commands as people type them, on a small station of three trains.
#include <gmock/gmock.h>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <sstream>

#include "host/console.hpp"
#include "host/loudspeaker.hpp"
#include "host/program.hpp"
#include "host/station_session.hpp"
#include "support/station.hpp"

namespace ravelinox::host {
namespace {

using namespace ravelinox::testing;
using ::testing::HasSubstr;
using Words = std::vector<std::string>;

/// What the program said, and how it ended.
struct Outcome {
  int code = 0;
  std::string out, err;
};

int run_typed(const Words& words, Console console) {
  std::vector<const char*> arguments{"ravelinox"};
  for (const std::string& word : words) arguments.push_back(word.c_str());
  return run_program(static_cast<int>(arguments.size()), arguments.data(), console);
}

Outcome ravelinox(const Words& words, bool terminal = false, bool desktop = false) {
  std::ostringstream out, err;
  const int code = run_typed(words, {out, err, terminal, desktop});
  return {code, out.str(), err.str()};
}

Words with(Words words, const Words& more) {
  words.insert(words.end(), more.begin(), more.end());
  return words;
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
    return with({"run", folder, "--start", "2026-06-10 05:50", "--end", "07:00", "--speed", "max",
                 "--seed", "4", "--suppression", "30000", "--punctuality", "240"},
                more);
  }
  Outcome run(const Words& more = {}) const { return ravelinox(run_words(more)); }
  Outcome run_undisturbed(const Words& more = {}) const {
    return run(with({"--punctuality", "0", "--deviation", "0"}, more));
  }

  TemporaryFolder home;
  std::string folder = home.path().string();
  std::string station_file = home.file(station_file_name);
  std::string line_file = home.file(line_file_name);
};

TEST_F(Commands, ARunRecordsEveryMovementOnceAndCanBeRepeated) {
  const Outcome first = run();
  EXPECT_EQ(first.code, 0);
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
  for (const auto& [time, shown, hidden] : Table<std::string, const char*, const char*>{
           {"06:21", "at the platform", "IC 77"}, {"06:30", "No departures.", "R 9"}}) {
    EXPECT_THAT(ravelinox({"board", folder, "--at", "2026-06-10 " + time}).out,
                ::testing::AllOf(HasSubstr(shown), ::testing::Not(HasSubstr(hidden))));
  }
  // Without a moment: where the run stands.
  EXPECT_THAT(
      ravelinox({"board", folder, "--platform", "2345@7"}).out,
      ::testing::AllOf(HasSubstr("Borgo   Wed 2026-06-10 06:10:00\n"), HasSubstr("06:20  R 2345"),
                       HasSubstr("Forlì  7"), HasSubstr("platform changed from 2\n")));
}

TEST_F(Commands, AnnouncementsAreShownAndSpokenWhereThereIsAVoice) {
  const std::string sentence =
      "Attenzione: il treno Regionale 2345, delle ore 06 e 22, proveniente da Alba e diretto a "
      "Forlì arriverà e partirà sul binario 7 anzichè sul binario 2";
  const Words words{"announce", "2345", "cambio binario", folder,
                    "--track",  "7",    "--instead-of",   "2"};
  Words spoken;
  const PlatformOverride surroundings(platform());
  platform().voice = voice_to([&](const std::string& text) { spoken.push_back(text); });
  EXPECT_EQ(ravelinox(words).out, sentence + "\n");
  EXPECT_EQ(spoken, Words{sentence});

  platform().voice = nullptr;
  const Outcome shown = ravelinox(words);
  EXPECT_EQ(shown.out, sentence + "\n");
  EXPECT_THAT(shown.err, HasSubstr("shown, not spoken"));
  EXPECT_THAT(run({"--speak"}).err, HasSubstr("shown, not spoken"));
}

/// A window whose operator closes it after two messages.
class Window : public TelephoneWindow {
 public:
  explicit Window(std::shared_ptr<Words> shown) : shown_(std::move(shown)) {}
  void show(const TelephoneView& view) override {
    shown_->push_back(view.messages);
    ++messages_;
  }
  bool closed() override { return messages_ == 2; }

 private:
  std::shared_ptr<Words> shown_;
  int messages_ = 0;
};

TEST_F(Commands, ADesktopAddsAWindowAndAVoiceToTheSameText) {
  const std::string fast = "86400";  // paced nevertheless
  const Words lively = run_words({"--suppression", "2", "--punctuality", "0"});
  const std::string text = ravelinox(lively).out;
  for (const auto& [desktop, words, window, voice] : Table<bool, Words, bool, bool>{
           {true, {"--speed", fast}, true, true},
           {true, {}, false, false},
           {false, {"--speed", fast}, false, false},
           {false, {"--window", "--speak"}, true, true},
           {true, {"--speed", fast, "--no-window"}, false, true},
           {true, {"--speed", fast, "--speak", "--silent", "--no-window", "--window"}, true, false},
       }) {
    const auto shown = std::make_shared<Words>();
    Words spoken;
    const PlatformOverride surroundings(platform());
    platform().telephone_window = [&] { return std::make_unique<Window>(shown); };
    platform().voice = voice_to([&](const std::string& sentence) { spoken.push_back(sentence); });
    const Outcome outcome = ravelinox(with(lively, words), false, desktop);
    const std::string typed = ::testing::PrintToString(words);
    EXPECT_EQ(outcome.out, text) << typed;
    EXPECT_EQ(!shown->empty(), window) << typed;
    EXPECT_EQ(!spoken.empty(), voice) << typed;
    EXPECT_EQ(shown.use_count(), 1) << typed << ": a window is still open";
    if (!window) continue;
    ASSERT_GE(shown->size(), 3U) << text;
    EXPECT_TRUE(shown->at(1).starts_with(shown->at(0) + "\r\n"));
    EXPECT_THAT(shown->at(2), ::testing::Not(HasSubstr("\n")));
  }
}

TEST_F(Commands, BadInputIsSaidInASentence) {
  const TemporaryFolder nothing;
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
           {{"announce", "77", "Arrivo", folder}, 0, "There is nothing to announce.\n"},
           {{"announce", "5", "Partenza", folder}, 1, "error 3021"},
           {{"check", station_file}, 0, "Its station is Borgo; its line has 3 trains.\n"},
           {{"new", folder}, 1, "error 58"},
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
  EXPECT_EQ(run_typed(run_words({"--speed", "1"}), {out, out}), 130);
  EXPECT_THAT(output.str(), HasSubstr("Interrupted at Wed 2026-06-10 05:50:00\n"));
}

TEST_F(Commands, ATerminalGetsAPageAndItsOldContentBack) {
  const std::string shown = ravelinox(run_words(), true).out;
  EXPECT_THAT(shown, HasSubstr("\x1b[?1049h"));
  EXPECT_THAT(shown, HasSubstr("\x1b[HBorgo   Wed 2026-06-10 05:50:00\x1b[K\r\n"));
  EXPECT_GT(shown.find("Reached Wed 2026-06-10 07:00:00"), shown.find("\x1b[?1049l"));
}

TEST(Demo, IsLivelyAndCanBeRepeated) {
  const TemporaryFolder folder;
  const Outcome outcome = ravelinox({"demo", "--folder", folder.path().string()});
  EXPECT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("platform changed from"));
  EXPECT_THAT(outcome.out, HasSubstr("Seed 8\n"));
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
