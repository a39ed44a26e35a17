// Each function is a plain one over stored values; one wrapper brings values in and out of the
// engine and keeps exceptions on our side of its C code.
#include "platform/data/sqlite/functions.hpp"

#include <array>
#include <string>

#include "platform/data/column_kind.hpp"
#include "platform/data/text_order.hpp"

namespace ravelinox::data {
namespace {

using Arguments = std::span<sqlite3_value*>;

[[nodiscard]] std::string_view text_of(sqlite3_value* value) {
  const auto* text = sqlite3_value_text(value);
  if (text == nullptr) return {};
  return {reinterpret_cast<const char*>(text),
          static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

[[nodiscard]] bool is_null(sqlite3_value* value) {
  return sqlite3_value_type(value) == SQLITE_NULL;
}

[[nodiscard]] bool is_number(sqlite3_value* value) {
  const int type = sqlite3_value_type(value);
  return type == SQLITE_INTEGER || type == SQLITE_FLOAT;
}

/// The value as a number, if it is one or a text that denotes one.
[[nodiscard]] std::optional<Number> number_in(sqlite3_value* value) {
  switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
      return Number{sqlite3_value_double(value), true};
    case SQLITE_FLOAT:
      return Number{sqlite3_value_double(value)};
    case SQLITE_TEXT:
      return read_number(text_of(value));
    default:
      return std::nullopt;
  }
}

[[nodiscard]] Number number_needed(sqlite3_value* value) {
  if (const auto number = number_in(value)) return *number;
  throw Error(ErrorNumber::type_mismatch, "The text \"" + std::string(text_of(value)) +
                                              "\" is no number, but the sum needs one.");
}

[[nodiscard]] StoredValue stored(const Number& number) {
  return number.is_whole ? StoredValue::of_whole(number.whole())
                         : StoredValue::of_real(number.value);
}

StoredValue number_or_null(Arguments arguments, std::string& /*scratch*/) {
  const auto number = number_in(arguments[0]);
  return number ? stored(*number) : StoredValue{};
}

StoredValue number_or_error(Arguments arguments, std::string& /*scratch*/) {
  return is_null(arguments[0]) ? StoredValue{} : stored(number_needed(arguments[0]));
}

StoredValue quotient(Arguments arguments, std::string& /*scratch*/) {
  if (is_null(arguments[0]) || is_null(arguments[1])) return {};
  const double divisor = sqlite3_value_double(arguments[1]);
  if (divisor == 0)
    throw Error(ErrorNumber::division_by_zero, "A sum of the statement divides by zero.");
  return StoredValue::of_real(sqlite3_value_double(arguments[0]) / divisor);
}

/// Numbers, and texts that denote numbers, compare by value; other texts among themselves. A
/// number and a text that is none cannot be compared.
StoredValue comparison(Arguments arguments, std::string& /*scratch*/) {
  if (is_null(arguments[0]) || is_null(arguments[1])) return {};
  const auto left = number_in(arguments[0]);
  const auto right = number_in(arguments[1]);
  if (left && right)
    return StoredValue::of_whole((left->value > right->value) - (left->value < right->value));
  if (is_number(arguments[0]) || is_number(arguments[1])) return {};
  return StoredValue::of_whole(compare_ignoring_case(text_of(arguments[0]), text_of(arguments[1])));
}

StoredValue pattern_match(Arguments arguments, std::string& /*scratch*/) {
  if (is_null(arguments[0])) return {};
  return StoredValue::of_whole(matches_pattern(text_of(arguments[0]), text_of(arguments[1])));
}

StoredValue kept(Arguments arguments, std::string& scratch) {
  for (sqlite3_value* operand : arguments.subspan(2))
    if (!is_null(operand)) (void)number_needed(operand);
  if (is_null(arguments[1])) return {};
  const auto kind = static_cast<ColumnKind>(sqlite3_value_int(arguments[0]));
  return to_stored(number_needed(arguments[1]), kind, scratch);
}

void give(sqlite3_context* context, const StoredValue& value) {
  switch (value.storage) {
    case Storage::whole:
      return sqlite3_result_int64(context, value.whole);
    case Storage::real:
      return sqlite3_result_double(context, value.real);
    case Storage::text:
    case Storage::bytes:
      return sqlite3_result_text64(context, value.text.data(), value.text.size(), SQLITE_TRANSIENT,
                                   SQLITE_UTF8);
    case Storage::null:
      return sqlite3_result_null(context);
  }
}

/// What the engine calls for one of the functions above.
template <StoredValue (*Function)(Arguments, std::string&)>
void call(sqlite3_context* context, int count, sqlite3_value** arguments) noexcept {
  try {
    std::string scratch;
    give(context, Function({arguments, static_cast<std::size_t>(count)}, scratch));
  } catch (const Error& error) {
    static_cast<File*>(sqlite3_user_data(context))->failure = error;
    sqlite3_result_error(context, error.what(), -1);
  } catch (...) {
    sqlite3_result_error_nomem(context);
  }
}

struct Named {
  const char* name;
  int arguments;
  void (*call)(sqlite3_context*, int, sqlite3_value**) noexcept;
};

constexpr auto kFunctions = std::to_array<Named>({
    {kNumber, 1, call<number_or_null>},
    {kNeeded, 1, call<number_or_error>},
    {kDivide, 2, call<quotient>},
    {kCompare, 2, call<comparison>},
    {kMatches, 2, call<pattern_match>},
    {kKept, -1, call<kept>},
});

int any_case_order(void* /*unused*/, int left_size, const void* left, int right_size,
                   const void* right) noexcept {
  return compare_ignoring_case(
      {static_cast<const char*>(left), static_cast<std::size_t>(left_size)},
      {static_cast<const char*>(right), static_cast<std::size_t>(right_size)});
}

}  // namespace

void add_functions(File& file) {
  // Direct use only: no view or trigger of a foreign file may call them.
  constexpr int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY;
  for (const Named& function : kFunctions)
    file.check(sqlite3_create_function_v2(file.handle(), function.name, function.arguments, flags,
                                          &file, function.call, nullptr, nullptr, nullptr));
  file.check(sqlite3_create_collation_v2(file.handle(), kAnyCase, SQLITE_UTF8, nullptr,
                                         any_case_order, nullptr));
}

}  // namespace ravelinox::data
