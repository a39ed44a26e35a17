// The account of a day at its end.
#include "host/summary.hpp"

#include <fstream>

namespace ravelinox::host {
namespace {

constexpr int lively_information_trains = 20;

}  // namespace

void print_summary(std::ostream& out, const DaySummary& summary) {
  out << (summary.interrupted ? "Interrupted at " : "Reached ") << show_moment(summary.reached)
      << "\n  " << summary.arrivals << " arrivals, " << summary.departures << " departures, "
      << summary.passages << " passages here; " << summary.recorded
      << " movements recorded along the line\n  " << summary.late_trains.size()
      << " trains late by " << late_from / minute << " minutes or more; " << summary.suppressions
      << " suppressed today, " << summary.extraordinary << " extraordinary; " << summary.messages
      << " dispatchers' messages; " << summary.announcements << " announcements\n  "
      << summary.information_trains << " trains in Output.ssi; " << summary.failures
      << " calls failed\n";
}

int count_information_trains(const std::filesystem::path& file) {
  std::ifstream input(file, std::ios::binary);
  int trains = 0;
  for (std::string line; std::getline(input, line);) {
    if (line == "Prossimo treno:\r") ++trains;
  }
  return trains;
}

std::vector<std::string> dull_reasons(const DaySummary& summary) {
  const struct {
    bool seen;
    const char* reason;
  } expectations[] = {
      {summary.information_trains >= lively_information_trains,
       "Output.ssi describes fewer than 20 trains."},
      {summary.suppressions > 0, "No train was suppressed."},
      {summary.extraordinary > 0, "No extraordinary train ran."},
      {summary.arrivals > 0, "No train arrived."},
      {summary.departures > 0, "No train left."},
      {!summary.late_trains.empty(), "No train was late."},
      {summary.messages > 0, "No dispatcher called."},
      {summary.announcements > 0, "Nothing was announced."},
      {summary.failures == 0, "A call of the component failed."},
  };
  std::vector<std::string> reasons;
  for (const auto& [seen, reason] : expectations) {
    if (!seen) reasons.emplace_back(reason);
  }
  return reasons;
}

}  // namespace ravelinox::host
