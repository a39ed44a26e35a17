// The rows of one result: every cell in one buffer and every text in another, so that a slot which
// is opened again and again allocates nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ravelinox::data {

enum class Storage : std::uint8_t { null, whole, real, text, bytes };

/// A value as the database file holds it. It refers to its text and does not own it.
struct StoredValue {
  Storage storage = Storage::null;
  std::int64_t whole = 0;
  double real = 0;
  std::string_view text;  ///< of `text` and `bytes`

  [[nodiscard]] static StoredValue of_whole(std::int64_t value) {
    return {Storage::whole, value, 0, {}};
  }
  [[nodiscard]] static StoredValue of_real(double value) { return {Storage::real, 0, value, {}}; }
  [[nodiscard]] static StoredValue of_text(std::string_view value) {
    return {Storage::text, 0, 0, value};
  }
};

class Rows {
 public:
  /// Forgets all rows; the memory stays. `width` is the number of cells of a row.
  void clear(std::size_t width) {
    width_ = width;
    cells_.clear();
    texts_.clear();
  }

  /// Appends a cell; after every `width` of them a row is complete.
  void add(const StoredValue& value) { cells_.push_back(cell_of(value)); }

  [[nodiscard]] std::size_t count() const { return width_ == 0 ? 0 : cells_.size() / width_; }

  /// Valid until rows are added, replaced or cleared.
  [[nodiscard]] StoredValue at(std::size_t row, std::size_t column) const;

  void replace(std::size_t row, std::size_t column, const StoredValue& value);

  /// Leaves only these rows, in this order.
  void keep(std::span<const std::size_t> chosen);

 private:
  struct Cell {
    union {
      std::int64_t whole = 0;
      double real;
      std::uint64_t offset;  // of the text in `texts_`
    };
    std::uint32_t length = 0;
    Storage storage = Storage::null;
  };

  [[nodiscard]] Cell cell_of(const StoredValue& value);

  std::size_t width_ = 0;
  std::vector<Cell> cells_;
  std::string texts_;
};

// For every cell of every row, so in sight of the loops.

inline StoredValue Rows::at(std::size_t row, std::size_t column) const {
  const Cell& cell = cells_[row * width_ + column];
  switch (cell.storage) {
    case Storage::null:
      break;
    case Storage::whole:
      return StoredValue::of_whole(cell.whole);
    case Storage::real:
      return StoredValue::of_real(cell.real);
    case Storage::text:
    case Storage::bytes:
      return {cell.storage, 0, 0, std::string_view(texts_).substr(cell.offset, cell.length)};
  }
  return {};
}

inline Rows::Cell Rows::cell_of(const StoredValue& value) {
  Cell cell;
  cell.storage = value.storage;
  switch (value.storage) {
    case Storage::null:
      break;
    case Storage::whole:
      cell.whole = value.whole;
      break;
    case Storage::real:
      cell.real = value.real;
      break;
    case Storage::text:
    case Storage::bytes:
      cell.offset = texts_.size();
      cell.length = static_cast<std::uint32_t>(value.text.size());  // the engine's limit is 2^31
      texts_ += value.text;
      break;
  }
  return cell;
}

}  // namespace ravelinox::data
