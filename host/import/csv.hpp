#pragma once

#include <cstddef>
#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/import/archive.hpp"

namespace ravelinox::host {

/// The records of a comma-separated file: quoted fields with doubled quotes and line ends inside,
/// a byte order mark, any line end. Blanks around a field are not part of it; blank lines are no
/// records. Refuses a quote that is never closed and a field beyond 64 KiB.
class CsvReader {
 public:
  CsvReader(std::unique_ptr<ByteSource> source, std::string name);

  /// Reads the next record; false at the end.
  bool next(std::vector<std::string>& fields);

  /// The line on which the last record starts, from 1.
  [[nodiscard]] std::size_t line() const { return record_line_; }

 private:
  static constexpr int end = -1;

  int peek();
  int take();
  std::string field();
  std::string quoted();
  void check_size(const std::string& text) const;

  std::unique_ptr<ByteSource> source_;
  std::string name_;
  std::vector<char> buffer_;
  std::size_t position_ = 0;
  std::size_t filled_ = 0;
  std::size_t line_ = 1;
  std::size_t record_line_ = 0;
};

/// A file of the feed, row by row, its fields by the names in its header, in whatever order the
/// columns stand.
class FeedTable {
 public:
  /// Refuses a missing file and one whose header lacks a required column.
  FeedTable(const Archive& archive, const std::string& file,
            std::initializer_list<std::string_view> required);

  /// Moves to the next row; false at the end. Refuses a row with more fields than the header.
  bool next();

  /// The field, empty where the row ends early or the file has no such column.
  [[nodiscard]] const std::string& operator[](std::string_view column) const;

  [[nodiscard]] std::size_t line() const { return reader_.line(); }
  [[nodiscard]] const std::vector<std::string>& header() const { return header_; }
  [[nodiscard]] const std::vector<std::string>& fields() const { return fields_; }

  /// Where a fault lies, for a message: stops.txt, line 7, stop_id "abc".
  [[nodiscard]] std::string place(std::string_view column) const;

 private:
  std::string file_;
  CsvReader reader_;
  std::vector<std::string> header_;
  std::map<std::string, std::size_t, std::less<>> columns_;
  std::vector<std::string> fields_;
};

}  // namespace ravelinox::host
