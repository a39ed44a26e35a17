#include "interlocking/line_section.hpp"

#include "core/cells.hpp"
#include "platform/statement.hpp"

namespace ravelinox {

namespace {

void open_between(cmdl1& engine, const Variant& first, const Variant& second) {
  engine.DLLRS3->open(statement("SELECT * FROM linea WHERE Estremo1 = '", first,
                                "' AND Estremo2 = '", second, "'"));
}

}  // namespace

SectionEnd open_section(cmdl1& engine, const Variant& station, const Variant& neighbour) {
  open_between(engine, station, neighbour);
  if (engine.DLLRS3->record_count() == 1) return SectionEnd::first;
  engine.DLLRS3->close();
  open_between(engine, neighbour, station);
  return SectionEnd::second;
}

Variant at_end(cmdl1& engine, SectionEnd end, EndColumns columns) {
  return cell(*engine.DLLRS3, end == SectionEnd::first ? columns.first : columns.second);
}

}  // namespace ravelinox
