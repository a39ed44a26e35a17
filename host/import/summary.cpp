// The account that an import gives of itself.
#include "host/import/summary.hpp"

#include <algorithm>

namespace ravelinox::host {

void Tally::add(const std::string& what, std::string_view example) {
  auto& entry = entries_[what];
  if (entry.count++ == 0) entry.example = example;
}

std::size_t Tally::total() const {
  std::size_t sum = 0;
  for (const auto& [what, entry] : entries_) sum += entry.count;
  return sum;
}

std::string Tally::text() const {
  std::vector<std::pair<std::string, Entry>> lines(entries_.begin(), entries_.end());
  std::stable_sort(lines.begin(), lines.end(),
                   [](const auto& a, const auto& b) { return a.second.count > b.second.count; });
  std::string text;
  for (const auto& [what, entry] : lines) {
    const auto count = std::to_string(entry.count);
    text.append(count.size() < 7 ? 7 - count.size() : 0, ' ').append(count).append("  " + what);
    text += entry.example.empty() ? "\n" : " (first: " + entry.example + ")\n";
  }
  return text;
}

std::string ImportSummary::text() const {
  const auto count = [](std::size_t number, const char* what) {
    return std::to_string(number) + " " + what;
  };
  std::string text = station + ": " + count(trips, "trips call here, ") +
                     count(trains, "trains made, ") + count(calls, "calls at ") +
                     count(stations, "stations, ") + count(sections, "line sections, ") +
                     count(tracks, "platform tracks.\n");
  text += "Running days " + first_day + " to " + last_day + "; the busiest is " + busiest_day +
          " with " + count(busiest_trains, "trains.\n");
  if (!dropped.empty()) text += "Left out:\n" + dropped.text();
  if (!adapted.empty()) text += "Filled in or changed:\n" + adapted.text();
  for (const auto& note : notes) text += note + "\n";
  return text + "Written: " + station_database + " and " + line_database + "\n";
}

}  // namespace ravelinox::host
