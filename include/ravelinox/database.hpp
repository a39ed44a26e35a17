#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "ravelinox/export.hpp"
#include "ravelinox/variant.hpp"

namespace ravelinox {

/// Creates an empty station database: `proprieta`, `itinerari`, `enti`, `banco`, `deviatoi`,
/// `finestre`. 58 when the path is taken, 76 when its folder is missing, 0x80004005 when the file
/// cannot be written; a failure leaves no file. Backslashes separate folders as everywhere.
RAVELINOX_API void create_station_database(const std::string& path);

/// Creates an empty line database: `accessi`, `linea`, `generalita_treni`, `circolazione`, with
/// the indexes that keep a national timetable fast. Failures as above.
RAVELINOX_API void create_line_database(const std::string& path);

/// Fills a database quickly: rows appended to its tables in one transaction. Nothing is seen by
/// others, and nothing stays after a failure or without `commit`.
class RAVELINOX_API RowWriter {
 public:
  /// 0x80004005 when the file is no database or stays locked past 5 s.
  explicit RowWriter(const std::string& path);
  RowWriter(const RowWriter&) = delete;
  RowWriter& operator=(const RowWriter&) = delete;
  ~RowWriter();

  /// Appends a row with a value for every column, in the order of the table. 13 when the count of
  /// values or the kind of one does not fit, 0x80040E37 for an unknown table.
  void append(std::string_view table, std::span<const Variant> values);

  /// Makes all rows final, at once. The writer is spent afterwards.
  void commit();

 private:
  struct RAVELINOX_HIDDEN Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace ravelinox
