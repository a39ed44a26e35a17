#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

#include "ravelinox/export.hpp"

namespace ravelinox {

/// The numbers of all failures that the engine raises, by group. A host that only wants to show
/// the failure needs no more than `Error::number()` and `Error::what()`.
enum class ErrorNumber : std::int32_t {
  // Values and conversions.
  invalid_call = 5,            ///< an argument that the operation does not define
  overflow = 6,                ///< a result outside the range of its kind
  subscript_out_of_range = 9,  ///< a piece of a text that is not there
  division_by_zero = 11,       ///< such as wearing an entity whose state is 0
  type_mismatch = 13,          ///< a text that is no number, an object where a value is needed
  // Files.
  bad_file_name = 52,  ///< an empty name, or one with a NUL
  file_not_found = 53,
  file_already_exists = 58,  ///< a new database on a path that is taken
  disk_full = 61,
  permission_denied = 70,
  path_access_error = 75,  ///< a folder where a file is needed, a device error
  path_not_found = 76,
  // Values that are absent.
  invalid_use_of_null = 94,
  // Objects of the platform.
  cannot_create_object = 429,
  // Recordsets and connections used out of order.
  no_current_record = 3021,  ///< reading before the first or past the last row
  item_not_found = 3265,     ///< a field position that the result does not have
  object_closed = 3704,
  object_open = 3705,
  // The data layer itself.
  statement_not_understood = static_cast<std::int32_t>(0x80040E14),
  no_such_table = static_cast<std::int32_t>(0x80040E37),
  no_such_column = static_cast<std::int32_t>(0x80040E10),
  row_changed = static_cast<std::int32_t>(0x80040E38),   ///< by another program meanwhile
  data_failure = static_cast<std::int32_t>(0x80004005),  ///< not opened, locked, damaged, full
  // The voice, in the middle of an announcement: the platform's number for what has none.
  speech_failure = data_failure,
};

/// Every failure that leaves the engine. `what()` is one sentence: what failed, on which value,
/// table or file, and what to do about it.
class RAVELINOX_API Error : public std::runtime_error {
 public:
  Error(ErrorNumber code, const std::string& message) : std::runtime_error(message), code_(code) {}

  [[nodiscard]] ErrorNumber code() const noexcept { return code_; }

  /// The number as a host shows it: 6, 3021, or a negative 32-bit number for the data layer's.
  [[nodiscard]] std::int32_t number() const noexcept { return static_cast<std::int32_t>(code_); }

 private:
  ErrorNumber code_;
};

}  // namespace ravelinox
