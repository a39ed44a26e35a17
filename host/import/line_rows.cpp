// Accesses and line sections as rows, with the block and signals that such a line usually has.
#include <algorithm>

#include "host/import/tables.hpp"

namespace ravelinox::host {
namespace {

constexpr std::string_view consent = "270SV";    // the end agrees to a train
constexpr std::string_view no_consent = "90SV";  // it must be asked first
constexpr double short_section_km = 6.0;

/// One end of a section as its station has it.
struct End {
  std::string_view code;
  std::string_view aspect;
  bool variant;
};

/// A double track is free to send trains at both ends. On a single track one end has the
/// direction; the other must ask, and its signal expects one at stop. Where the neighbour's signal
/// is near, the own one gives notice of it.
End end_of(const Section& section, bool has_direction) {
  if (!section.double_track && !has_direction) return {no_consent, "R", false};
  if (section.length_km < short_section_km) return {consent, "G", true};
  return {consent, "V", false};
}

std::string list_of(const std::vector<std::size_t>& neighbours, const Stations& stations) {
  std::string list;
  for (std::size_t i = 0; i < neighbours.size(); ++i) {
    list += (i == 0 ? "" : "  ") + std::to_string(i + 1) + "|" + stations[neighbours[i]].name;
  }
  return list;
}

/// The smaller station has the direction: its trains come in before others go out to it.
std::vector<Variant> section_row(std::int32_t id, const Section& section,
                                 const Timetable& timetable, const Network& network) {
  const bool first_is_smaller =
      network.accesses().at(section.first).size() <= network.accesses().at(section.second).size();
  const auto first = end_of(section, first_is_smaller);
  const auto second = end_of(section, !first_is_smaller);
  return {id,
          timetable.stations[section.first].name,
          timetable.stations[section.second].name,
          static_cast<float>(section.length_km),
          static_cast<std::int16_t>(section.double_track ? 2 : 1),
          first.code,
          first.aspect,
          first.variant,
          "0",
          first_is_smaller,
          section.double_track ? "BA" : "BCA",
          second.code,
          second.aspect,
          second.variant};
}

}  // namespace

Rows line_rows(const Timetable& timetable, const Network& network) {
  Rows rows;
  std::int32_t id = 0;
  for (const auto& [station, neighbours] : network.accesses()) {
    rows.push_back(
        {"accessi",
         {++id, list_of(neighbours, timetable.stations), timetable.stations[station].name}});
  }
  id = 0;
  for (const auto& section : network.sections()) {
    rows.emplace_back("linea", section_row(++id, section, timetable, network));
  }
  return rows;
}

}  // namespace ravelinox::host
