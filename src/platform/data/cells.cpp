// Cells of 16 bytes that point into one text buffer. A replaced text is appended to the buffer and
// the old one stays there until the rows are cleared: rows are short-lived.
#include "platform/data/cells.hpp"

#include <utility>

namespace ravelinox::data {

void Rows::replace(std::size_t row, std::size_t column, const StoredValue& value) {
  cells_[row * width_ + column] = cell_of(value);
}

void Rows::keep(std::span<const std::size_t> chosen) {
  std::vector<Cell> kept;
  kept.reserve(chosen.size() * width_);
  for (const std::size_t row : chosen) {
    const auto first = cells_.begin() + static_cast<std::ptrdiff_t>(row * width_);
    kept.insert(kept.end(), first, first + static_cast<std::ptrdiff_t>(width_));
  }
  cells_ = std::move(kept);
}

}  // namespace ravelinox::data
