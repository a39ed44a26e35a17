#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ravelinox::host {

/// How many columns of a terminal a UTF-8 text takes. Combining accents take none.
[[nodiscard]] std::size_t display_width(std::string_view text);

/// The text in exactly `width` columns: filled with spaces, or cut and ended with "…".
[[nodiscard]] std::string fit(std::string_view text, std::size_t width);

struct Column {
  std::string title;
  std::size_t widest = 0;  ///< longer cells are cut; 0: as wide as it gets
};

/// Lines of aligned columns under their titles, without spaces at the ends of lines.
[[nodiscard]] std::vector<std::string> table_lines(
    const std::vector<Column>& columns, const std::vector<std::vector<std::string>>& rows);

}  // namespace ravelinox::host
