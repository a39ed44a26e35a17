#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ravelinox::host {

/// The text for `AutAsModificheBin` from changes as they are typed, "2345@3": train, "@", track.
/// Refuses a change that is not written so.
[[nodiscard]] std::string track_change_list(const std::vector<std::string>& changes);

/// The track that a list gives to a train, read as the component reads it: what stands before the
/// first "|" does not count, and the last piece for a train holds.
[[nodiscard]] std::optional<std::string> changed_track(std::string_view list, std::int32_t train);

}  // namespace ravelinox::host
