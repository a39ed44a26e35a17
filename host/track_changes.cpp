// Changed platforms: the one text that the component and the host's board both read.
#include "host/track_changes.hpp"

#include <charconv>

#include "host/refusal.hpp"

namespace ravelinox::host {
namespace {

struct TrackChange {
  std::int32_t train = 0;
  std::string_view track;
};

std::optional<TrackChange> read_change(std::string_view piece) {
  TrackChange change;
  const char* const past = piece.data() + piece.size();
  const auto [end, error] = std::from_chars(piece.data(), past, change.train);
  if (error != std::errc() || end == past || *end != '@' || end + 1 == past) return std::nullopt;
  change.track = piece.substr(static_cast<std::size_t>(end - piece.data()) + 1);
  return change;
}

}  // namespace

std::string track_change_list(const std::vector<std::string>& changes) {
  std::string list;
  for (const std::string& change : changes) {
    if (!read_change(change) || change.find('|') != std::string::npos) {
      throw Refusal("\"" + change + "\" is no change of platform; write it as 2345@3.");
    }
    list += "|" + change;
  }
  return list;
}

std::optional<std::string> changed_track(std::string_view list, std::int32_t train) {
  std::optional<std::string> track;
  for (std::size_t bar = list.find('|'); bar != std::string_view::npos;) {
    const std::size_t next = list.find('|', bar + 1);
    const auto change = read_change(list.substr(bar + 1, next - bar - 1));
    if (change && change->train == train) track = change->track;
    bar = next;
  }
  return track;
}

}  // namespace ravelinox::host
