// Counts of what the engine was asked to do, over all connections of the process.
#pragma once

#include <cstdint>

namespace ravelinox::data {

/// Statements compiled by the engine so far. Stands still while only known shapes run.
[[nodiscard]] std::uint64_t engine_prepares() noexcept;

}  // namespace ravelinox::data
