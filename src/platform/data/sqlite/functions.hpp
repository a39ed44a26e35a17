// The functions and the text order that rendered statements use, written for the engine.
#pragma once

#include "platform/data/sqlite/file.hpp"

namespace ravelinox::data {

// Names in rendered statements. None hides a function of the engine, which a file's own views may
// use.
inline constexpr const char* kAnyCase = "any_case";  ///< the order of texts without regard to case
inline constexpr const char* kNumber = "value_number";    ///< a text as a number, else Null
inline constexpr const char* kNeeded = "value_needed";    ///< a text as a number, else error 13
inline constexpr const char* kDivide = "value_divide";    ///< error 11 instead of Null
inline constexpr const char* kCompare = "value_compare";  ///< -1, 0, 1; Null when not comparable
inline constexpr const char* kMatches = "value_matches";  ///< text, pattern

/// (kind, sum, operands ...): the sum as a column of the kind keeps it; error 6 outside its range,
/// 13 when the sum or one of the operands is a text that is no number.
inline constexpr const char* kKept = "value_kept";

/// Makes them known to a file. Errors raised inside them go to `file.failure`.
void add_functions(File& file);

}  // namespace ravelinox::data
