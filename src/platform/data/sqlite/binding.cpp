// The hot path of every call: literals go to the engine as they stand in the statement, except
// those that take the form of the column they are assigned to.
#include <algorithm>

#include "platform/data/sqlite/rendered.hpp"

namespace ravelinox::data {
namespace {

[[nodiscard]] StoredValue number_form(const Number& number) {
  return number.is_whole ? StoredValue::of_whole(number.whole())
                         : StoredValue::of_real(number.value);
}

[[nodiscard]] StoredValue kept_form(const Literal& literal, ColumnKind kind, std::string& scratch) {
  const bool takes_texts = kind == ColumnKind::text || kind == ColumnKind::as_stored;
  if (literal.is_text() && takes_texts) return StoredValue::of_text(literal.text);
  if (literal.denotes_number()) return to_stored(literal.number, kind, scratch);
  return to_stored(Variant(literal.text), kind, scratch);
}

/// All texts equal to one with a character beyond ASCII share its beginning, whatever their case.
/// The engine can look that up in an index that knows the case of ASCII letters only.
[[nodiscard]] StoredValue range_form(std::string_view text, bool to, std::string& scratch) {
  const auto* beyond = std::ranges::find_if(text, [](char c) { return (c & 0x80) != 0; });
  scratch.assign(text.begin(), beyond);
  if (to) scratch += '\xFF';  // no character in UTF-8 begins with a greater byte
  return StoredValue::of_text(scratch);
}

[[nodiscard]] StoredValue formed(const Literal& literal, const Parameter& parameter,
                                 std::string& scratch) {
  switch (parameter.form) {
    case Form::number:
      return number_form(literal.number);
    case Form::text:
      return StoredValue::of_text(literal.text);
    case Form::kept:
      return kept_form(literal, parameter.kind, scratch);
    case Form::range_from:
    case Form::range_to:
      break;
  }
  return range_form(literal.text, parameter.form == Form::range_to, scratch);
}

}  // namespace

void bind_literals(Prepared& statement, const std::vector<Parameter>& parameters,
                   const std::vector<Literal>& literals, std::vector<std::string>& scratch) {
  if (scratch.size() < parameters.size()) scratch.resize(parameters.size());
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    const Parameter& parameter = parameters[i];
    statement.bind(static_cast<int>(i) + 1,
                   formed(literals[parameter.literal], parameter, scratch[i]));
  }
}

}  // namespace ravelinox::data
