// A simulated day from its set-up to its end: the loop that every host of the component has in
// some form. Prepare once, then record what falls due, refresh what others read, and show it.
#include "host/day.hpp"

#include <algorithm>
#include <chrono>
#include <fstream>

#include "host/announcer.hpp"
#include "host/attempt.hpp"
#include "host/board.hpp"
#include "host/interrupt.hpp"
#include "host/loudspeaker.hpp"
#include "host/pacing.hpp"
#include "host/refusal.hpp"
#include "host/route_setting.hpp"
#include "host/seeded_random.hpp"
#include "host/track_changes.hpp"
#include "host/traffic.hpp"
#include "host/view.hpp"

namespace ravelinox::host {
namespace {

constexpr const char* moment_file_name = "Moment.txt";
constexpr Timestamp board_horizon = 2 * hour;
constexpr Timestamp announced_ahead = hour;
constexpr std::chrono::seconds longest_announcement{20};

class Day {
 public:
  Day(const std::filesystem::path& database, const DayOptions& options, Console& console)
      : options_(options),
        station_(database),
        attempt_(station_.component,
                 [this](const std::string& sentence) { view_->failure(now_, sentence); }),
        boards_(station_, attempt_),
        view_(make_view(console, station_.name(), options.start)),
        now_(options.start),
        routes_(station_, attempt_),
        announcer_(track_change_list(options.track_changes)),
        loudspeaker_(platform().voice),
        surroundings_(surroundings()) {}

  Day(const Day&) = delete;
  Day& operator=(const Day&) = delete;
  /// The telephone outlives the day, and its window would hand messages to what is gone.
  ~Day() { frmTelefonoINdll().close(); }

  DaySummary live() {
    prepare();
    Traffic traffic(station_, options_.start, Deviations(options_.seed, options_.deviation));
    require_trains(traffic);
    run_clock(traffic);
    finish();
    return summary_;
  }

 private:
  Platform surroundings();
  void take_message(const Message& message);
  void prepare();
  void require_trains(const Traffic& traffic) const;
  void run_clock(Traffic& traffic);
  [[nodiscard]] Timestamp next_step(const Traffic& traffic, const Pacer& pacer) const;
  void record_due(Traffic& traffic);
  void count(Movement movement);
  void announce_due(const Happened& happened);
  [[nodiscard]] bool announce(const Announcement& announcement);
  void refresh_information();
  void finish();

  DayOptions options_;
  StationSession station_;
  Attempt attempt_;
  BoardReader boards_;
  std::unique_ptr<View> view_;
  Timestamp now_;
  DaySummary summary_;
  std::vector<Message> messages_;
  RealTimeLimit information_limit_{std::chrono::milliseconds(250)};
  RouteSetting routes_;
  Announcer announcer_;
  Loudspeaker loudspeaker_;
  PlatformOverride surroundings_;
};

/// The component's surroundings for this day. Its beep, which sounds for every time that the
/// set-up leaves alone, would ring hundreds of times.
Platform Day::surroundings() {
  Platform own = platform();
  own.random = std::make_shared<SeededRandom>(options_.seed);
  own.component_folder = station_.folder().string();
  own.telephone_window = telephone_to([this](const Message& message) { take_message(message); },
                                      options_.window ? own.telephone_window : nullptr);
  own.voice = voice_to([this](const std::string& text) {
    ++summary_.announcements;
    view_->announcement(now_, text);
    if (options_.speak) loudspeaker_.say(text);
  });
  own.beep = [] {};
  return own;
}

void Day::take_message(const Message& message) {
  ++summary_.messages;
  if (message.suppression_today()) ++summary_.suppressions;
  if (message.extraordinary_train()) ++summary_.extraordinary;
  messages_.push_back(message);
  view_->message(now_, message);
}

void Day::prepare() {
  // The lists of recorded trains outlive the component's objects; a new day starts without them.
  frmTelefonoINdll().TreniArrivati = "";
  frmTelefonoINdll().TreniPartiti = "";
  cmdl1& component = station_.component;
  component.StartTime = options_.start;
  component.Global_Puntualita = options_.punctuality;
  component.Global_ProbabilitaSoppressione = options_.suppression;
  component.Global_ProbabilitaGuasti = options_.wear;
  component.AutAsModificheBin = track_change_list(options_.track_changes);
  const bool prepared = attempt_("Preparing the day", [&] {
    component.Inzializza_Orario(options_.start, midnight_of(options_.start));
  });
  if (!prepared) throw Refusal("The day of " + station_.name() + " could not be prepared.");
  attempt_("The log", [&] {
    component.Registra(station_.name() + ", " + show_moment(options_.start));
    for (const Message& message : messages_) {
      component.Registra(message.caller + ": " + message.text);
    }
  });
}

void Day::require_trains(const Traffic& traffic) const {
  const auto first = traffic.next_due();
  if (first && *first <= options_.end) return;
  throw Refusal("No train of " + station_.name() + " runs between " + show_moment(options_.start) +
                " and " + show_moment(options_.end) + ".");
}

void Day::run_clock(Traffic& traffic) {
  const Pacer pacer(options_.start, options_.speed);
  const Happened happened = [&](const BoardCall& call, Event event) {
    return traffic.happened(call.train, event);
  };
  const auto board = [&] {
    Board read;
    attempt_("The board", [&] { read = boards_.read(now_, board_horizon, happened); });
    return read;
  };
  refresh_information();
  while (now_ < options_.end) {
    view_->tick(now_, board);
    const Timestamp next = next_step(traffic, pacer);
    if (!pacer.wait_until(next)) {
      summary_.interrupted = true;
      return;
    }
    const bool new_minute = next / minute != now_ / minute;
    now_ = next;
    record_due(traffic);
    if (new_minute) {
      announce_due(happened);
      (void)frmTelefonoINdll().is_open();  // notices a window that the operator has closed
    }
    if (new_minute && information_limit_.due()) refresh_information();
  }
}

Timestamp Day::next_step(const Traffic& traffic, const Pacer& pacer) const {
  const Timestamp next_minute = now_ - now_ % minute + minute;
  const Timestamp due = traffic.next_due().value_or(options_.end);
  const Timestamp step = std::min(pacer.longest_step(), options_.end - now_);
  return std::max(now_, std::min({next_minute, due, now_ + step}));
}

void Day::record_due(Traffic& traffic) {
  while (traffic.next_due() && *traffic.next_due() <= now_) count(traffic.record_next(attempt_));
}

void Day::count(Movement movement) {
  ++summary_.recorded;
  if (movement.stop.station != station_.name()) return;
  if (movement.delay() >= late_from) summary_.late_trains.insert(movement.train);
  // Of a train that passes, one line is enough.
  if (movement.stop.passes() && movement.event == Event::arrival) return;
  ++(movement.stop.passes()             ? summary_.passages
     : movement.event == Event::arrival ? summary_.arrivals
                                        : summary_.departures);
  const std::string changes = joined(station_.component.AutAsModificheBin);
  if (const auto track = changed_track(changes, movement.train)) movement.stop.track = *track;
  view_->movement(movement, routes_.set_for(movement, attempt_));
}

void Day::announce_due(const Happened& happened) {
  std::vector<BoardCall> calls;
  attempt_("The trains to announce", [&] { calls = boards_.calls_around(now_, announced_ahead); });
  announcer_.at_minute(now_, calls, happened,
                       [this](const Announcement& each) { return announce(each); });
}

bool Day::announce(const Announcement& announcement) {
  const int before = summary_.announcements;
  attempt_("The announcement of train " + std::to_string(announcement.train), [&] {
    station_.component.AutAsSintesiVocale(announcement.train, announcement.procedure,
                                          announcement.first, announcement.second);
  });
  return summary_.announcements > before;
}

void Day::refresh_information() {
  attempt_("The station information file", [&] { station_.component.AggiornaFileSSI(now_); });
  std::ofstream(station_.folder() / moment_file_name) << show_moment(now_) << '\n';
}

void Day::finish() {
  refresh_information();
  summary_.reached = now_;
  summary_.failures = attempt_.failures();
  summary_.not_spoken = loudspeaker_.failure_within(summary_.interrupted ? std::chrono::seconds(0)
                                                                         : longest_announcement);
  summary_.information_trains = count_information_trains(station_.folder() / "Output.ssi");
}

}  // namespace

DaySummary run_day(const std::filesystem::path& database, const DayOptions& options,
                   Console& console) {
  if (options.end <= options.start || options.end - options.start > day) {
    throw Refusal("A run ends after its start and within 24 hours: that is what is prepared.");
  }
  const InterruptGuard guard;
  console.out << "Seed " << options.seed << '\n' << std::flush;
  DaySummary summary = Day(database, options, console).live();
  print_summary(console.out, summary);
  if (!summary.not_spoken.empty()) {
    console.err << "Announcements were shown, not spoken: " << summary.not_spoken << std::endl;
  }
  console.out << "  Seed " << options.seed << "; files in "
              << std::filesystem::absolute(database).parent_path().string() << std::endl;
  return summary;
}

std::optional<Timestamp> moment_reached(const std::filesystem::path& folder) {
  std::ifstream file(folder / moment_file_name);
  std::string weekday, date, time;
  if (!(file >> weekday >> date >> time)) return std::nullopt;
  try {
    return parse_moment(date + " " + time);
  } catch (const Refusal&) {
    return std::nullopt;  // a file of somebody else's is no reason to stop
  }
}

}  // namespace ravelinox::host
