// Answers a neighbour's request over a line section.
#include "core/cells.hpp"
#include "interlocking/line_section.hpp"
#include "ravelinox/cmdl1.hpp"

namespace ravelinox {

void cmdl1::VerRich_fs(const Variant& station, const Variant& neighbour) {
  constexpr EndColumns code_columns{5, 11};
  RispRich_fs = false;
  const SectionEnd end = open_section(*this, station, neighbour);
  const Variant code = at_end(*this, end, code_columns);
  DLLRS3->close();
  // Only a code that differs for certain refuses; Null is no difference.
  RispRich_fs = code.is_null() || same_text(code, "270SV");
}

}  // namespace ravelinox
