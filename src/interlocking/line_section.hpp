#pragma once

#include <cstdint>

#include "ravelinox/cmdl1.hpp"

namespace ravelinox {

/// The columns of one thing, at the first and at the second end of a section.
struct EndColumns {
  std::int16_t first;
  std::int16_t second;
};

/// Which end of the open section on `DLLRS3` belongs to the station.
enum class SectionEnd : std::uint8_t { first, second };

/// Opens the section between a station and its neighbour on `DLLRS3`: as (station, neighbour) when
/// that names exactly one, else as (neighbour, station), which may then have no row at all.
[[nodiscard]] SectionEnd open_section(cmdl1& engine, const Variant& station,
                                      const Variant& neighbour);

/// The station's own column of the open section. 3021 when there is no row.
[[nodiscard]] Variant at_end(cmdl1& engine, SectionEnd end, EndColumns columns);

}  // namespace ravelinox
