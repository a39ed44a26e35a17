// The own station's plan. A feed knows nothing of points and signals, so the plan is the plainest
// that works: tracks side by side, joined at each end by a ladder of points, accesses with odd
// numbers at one end and with even numbers at the other.
#include <algorithm>
#include <array>
#include <charconv>
#include <numeric>
#include <set>

#include "host/import/tables.hpp"

namespace ravelinox::host {
namespace {

constexpr std::array<std::string_view, 4> classes = {"V", "RV", "RV-", "RV="};
constexpr std::array<std::int16_t, 4> track_lengths_m = {420, 400, 350, 280};
constexpr std::size_t yard_tracks = 2;
constexpr std::int16_t yard_length_m = 250;
constexpr std::int16_t approach_length_m = 900;
constexpr std::int16_t points_length_m = 30;
constexpr std::size_t at_access = 1000;  // above all track numbers

std::int16_t small(std::size_t number) { return static_cast<std::int16_t>(number); }

std::string joined_by(std::string_view separator, const std::vector<std::string>& parts) {
  std::string text;
  for (const auto& part : parts) text += (text.empty() ? "" : std::string(separator)) + part;
  return text;
}

/// Three letters of the name, in capitals.
std::string short_code(const std::string& name) {
  std::string code;
  for (const char c : name) {
    const bool lower = c >= 'a' && c <= 'z';
    if (lower || (c >= 'A' && c <= 'Z')) code += lower ? static_cast<char>(c - 'a' + 'A') : c;
    if (code.size() == 3) break;
  }
  return code;
}

/// The aspect class of a route by how far its track lies from the straight one of the access.
std::string_view aspect_class(std::size_t track, std::size_t access, std::size_t tracks) {
  const auto straight = (access - 1) / 2 % tracks;
  const auto off = std::max(track, straight) - std::min(track, straight);
  return classes[std::min(off, classes.size() - 1)];
}

/// The points of the ladder at the access's end: reversed up to the track, where it runs straight.
std::string points(std::size_t track, std::size_t access, std::size_t tracks) {
  std::vector<std::string> result;
  for (std::size_t i = 0; i <= track && i + 1 < tracks; ++i) {
    const auto number = 2 * i + (access % 2 == 1 ? 1 : 2);
    result.push_back(std::to_string(number) + "|" + (i < track ? "R" : "N"));
  }
  return joined_by(" ", result);
}

/// The tracks' own numbers; their places in the row when one has letters or is too large.
std::vector<std::size_t> track_numbers(const std::vector<std::string>& tracks) {
  std::vector<std::size_t> numbers;
  for (const auto& name : tracks) {
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
    if (error == std::errc() && end == name.data() + name.size() && number > 0 &&
        number < at_access - yard_tracks) {
      numbers.push_back(number);
    }
  }
  const std::set<std::size_t> different(numbers.begin(), numbers.end());
  if (different.size() < tracks.size()) {
    numbers.resize(tracks.size());
    std::iota(numbers.begin(), numbers.end(), std::size_t{1});
  }
  return numbers;
}

class Plan {
 public:
  Plan(const Timetable& timetable, const Network& network)
      : timetable_(timetable), neighbours_(network.accesses().at(timetable.own)) {}

  Rows rows(const std::string& line_database) {
    add_properties(line_database);
    add_routes();
    add_entities();
    add_desk();
    return std::move(rows_);
  }

 private:
  const std::string& own_name() const { return timetable_.stations[timetable_.own].name; }

  void add_properties(const std::string& line_database) {
    rows_.push_back({"proprieta",
                     {std::int32_t{1}, own_name(), short_code(own_name()), timetable_.source,
                      line_database, joined_by(",", timetable_.tracks)}});
  }

  void add_routes() {
    for (std::size_t track = 0; track < timetable_.tracks.size(); ++track) {
      for (std::size_t access = 1; access <= neighbours_.size(); ++access) {
        add_route(track, access, true);
        add_route(track, access, false);
      }
    }
  }

  /// Signals are named by what they stand before: S and the track for starters, A and the access
  /// for home signals.
  void add_route(std::size_t track, std::size_t access, bool arrival) {
    const auto& name = timetable_.tracks[track];
    const auto& neighbour = timetable_.stations[neighbours_[access - 1]].name;
    const auto tracks = timetable_.tracks.size();
    const std::string starter = "S" + name;
    const std::string home = "A" + std::to_string(access);
    const std::string aspect(aspect_class(track, access, tracks));
    rows_.push_back({"itinerari",
                     {++route_, arrival ? home + "-" + name : name + "-" + home,
                      arrival ? "arrivo" : "partenza", arrival ? neighbour : name,
                      arrival ? name : neighbour, name, track_lengths_m[track % 4],
                      arrival ? home + "|" + aspect + " " + starter + "|R" : starter + "|" + aspect,
                      points(track, access, tracks), small(access)}});
  }

  void add_entity(std::string_view kind, std::size_t number, std::string_view circuit,
                  std::int16_t length) {
    const auto id = ++entity_;
    // Some of the equipment is older than the rest.
    const auto state = static_cast<float>(100 - id * 7 % 40);
    rows_.push_back({"enti", {id, kind, small(number), state, circuit, length}});
  }

  void add_entities() {
    const auto tracks = timetable_.tracks.size();
    const auto numbers = track_numbers(timetable_.tracks);
    for (std::size_t i = 0; i < tracks; ++i) {
      add_entity("CDB", numbers[i], "stazionamento", track_lengths_m[i % 4]);
      add_entity("Segnale", numbers[i], "", 0);
    }
    const auto highest = *std::max_element(numbers.begin(), numbers.end());
    for (std::size_t i = 1; i <= yard_tracks; ++i) {
      add_entity("CDB", highest + i, "stazionamento DM", yard_length_m);
    }
    for (std::size_t i = 1; i <= neighbours_.size(); ++i) {
      add_entity("CDB", at_access + i, "immobilizzazione", approach_length_m);
      add_entity("Segnale", at_access + i, "", 0);
    }
    for (std::size_t i = 1; i <= 2 * (tracks - 1); ++i) {
      add_entity("Deviatoio", i, "", points_length_m);
      rows_.push_back({"deviatoi", {static_cast<std::int32_t>(i), std::to_string(i), "N"}});
    }
  }

  void add_desk() {
    std::int32_t id = 0;
    for (const auto& [name, count] :
         {std::pair<std::string_view, std::size_t>{"Binari", timetable_.tracks.size()},
          {"Accessi", neighbours_.size()},
          {"Itinerari", static_cast<std::size_t>(route_)},
          {"Treni", timetable_.trains.size()}}) {
      rows_.push_back({"banco", {++id, name, std::to_string(count)}});
    }
    id = 0;
    for (const auto& [name, top] : {std::pair<std::string_view, std::int32_t>{"Quadro", 0},
                                    {"Tabellone", 6000},
                                    {"Telefono", 9000}}) {
      rows_.push_back(
          {"finestre",
           {++id, name, std::int32_t{0}, top, std::int32_t{12000}, std::int32_t{3000}}});
    }
  }

  const Timetable& timetable_;
  const std::vector<std::size_t>& neighbours_;
  Rows rows_;
  std::int32_t route_ = 0;
  std::int16_t entity_ = 0;
};

}  // namespace

Rows station_rows(const Timetable& timetable, const Network& network,
                  const std::string& line_database) {
  return Plan(timetable, network).rows(line_database);
}

}  // namespace ravelinox::host
