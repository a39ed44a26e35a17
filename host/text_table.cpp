// Aligned text, counted in characters as they are seen and not in bytes: station names have
// accents. Characters of double width do not occur in them and are not looked for.
#include "host/text_table.hpp"

#include <algorithm>

namespace ravelinox::host {
namespace {

bool continues(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

/// U+0300 to U+036F, drawn over the character before.
bool combines(std::string_view rest) {
  if (rest.size() < 2) return false;
  const auto first = static_cast<unsigned char>(rest[0]);
  const auto second = static_cast<unsigned char>(rest[1]);
  return first == 0xCC || (first == 0xCD && second < 0xB0);
}

/// The longest beginning of the text that takes at most `width` columns.
std::string_view beginning(std::string_view text, std::size_t width) {
  std::size_t used = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (continues(text[i]) || combines(text.substr(i))) continue;
    if (used == width) return text.substr(0, i);
    ++used;
  }
  return text;
}

std::vector<std::size_t> widths_of(const std::vector<Column>& columns,
                                   const std::vector<std::vector<std::string>>& rows) {
  std::vector<std::size_t> widths;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    std::size_t width = display_width(columns[i].title);
    for (const auto& row : rows) width = std::max(width, display_width(row.at(i)));
    if (columns[i].widest != 0) width = std::min(width, columns[i].widest);
    widths.push_back(width);
  }
  return widths;
}

std::string line_of(const std::vector<std::string>& cells, const std::vector<std::size_t>& widths) {
  std::string line;
  for (std::size_t i = 0; i < cells.size(); ++i) line += fit(cells[i], widths[i]) + "  ";
  line.erase(line.find_last_not_of(' ') + 1);
  return line;
}

}  // namespace

std::size_t display_width(std::string_view text) {
  std::size_t width = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (!continues(text[i]) && !combines(text.substr(i))) ++width;
  }
  return width;
}

std::string fit(std::string_view text, std::size_t width) {
  const std::size_t taken = display_width(text);
  if (taken <= width) return std::string(text) + std::string(width - taken, ' ');
  if (width == 0) return "";
  return std::string(beginning(text, width - 1)) + "…";
}

std::vector<std::string> table_lines(const std::vector<Column>& columns,
                                     const std::vector<std::vector<std::string>>& rows) {
  const std::vector<std::size_t> widths = widths_of(columns, rows);
  std::vector<std::string> titles;
  titles.reserve(columns.size());
  for (const Column& column : columns) titles.push_back(column.title);
  std::vector<std::string> lines{line_of(titles, widths)};
  for (const auto& row : rows) lines.push_back(line_of(row, widths));
  return lines;
}

}  // namespace ravelinox::host
