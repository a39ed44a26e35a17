// Sums and assignments. Sums of whole-number columns, which shift times by the hundred thousand,
// stay in the engine's own arithmetic with a range check beside it; everything else goes through
// functions that know the kinds.
#include "platform/data/sqlite/expressions.hpp"
#include "platform/data/sqlite/functions.hpp"
#include "platform/number_text.hpp"

namespace ravelinox::data {
namespace {

[[nodiscard]] std::string kept(ColumnKind kind, const std::string& arguments) {
  return concat(kKept, "(", std::to_string(static_cast<int>(kind)), ", ", arguments, ")");
}

[[nodiscard]] std::string in_quotes(std::string_view text, char quote) {
  std::string result(1, quote);
  for (const char c : text) {
    if (c == quote) result += c;
    result += c;
  }
  return result + quote;
}

[[nodiscard]] std::string constant(const StoredValue& value) {
  switch (value.storage) {
    case Storage::whole:
      return std::to_string(value.whole);
    case Storage::real:
      return number_text(value.real);
    default:
      return in_quotes(value.text, '\'');
  }
}

[[nodiscard]] std::string_view sign(Operation operation) {
  switch (operation) {
    case Operation::add:
      return " + ";
    case Operation::subtract:
      return " - ";
    default:
      return " * ";
  }
}

}  // namespace

std::string quoted_name(std::string_view name) { return in_quotes(name, '"'); }

std::string sql_of(const FoundColumn& column) {
  return concat(column.alias, ".", quoted_name(column.column->name));
}

std::string Parameters::use(const Parameter& parameter) {
  std::size_t number = 0;
  while (number < used_.size() && !(used_[number] == parameter)) ++number;
  if (number == used_.size()) used_.push_back(parameter);
  return concat("?", std::to_string(number + 1));
}

std::string Expressions::number_of(const FoundColumn& column) {
  const std::string cell = sql_of(column);
  if (column.column->kind == ColumnKind::boolean) return concat("(-(", cell, " <> 0))");
  const std::string value = concat(kNumber, "(", cell, ")");
  return column.column->kind == ColumnKind::float32 ? kept(ColumnKind::float32, value) : value;
}

std::string Expressions::sum(const Expression& expression, Strictness strictness) {
  switch (expression.operation) {
    case Operation::literal:
      return literal_in_sum(expression, strictness);
    case Operation::truth_literal:
      return expression.truth ? "-1" : "0";
    case Operation::negate:
      return concat("(- ", sum(*expression.left, strictness), ")");
    case Operation::column:
      break;
    default:
      return binary_sum(expression, strictness);
  }
  const FoundColumn column = scope_.find(expression.column);
  const ColumnKind kind = column.column->kind;
  if (strictness == Strictness::unknown || kind == ColumnKind::boolean) return number_of(column);
  // A state minus the text of itself must be 0, so a 32-bit float counts in its decimal form.
  if (kind == ColumnKind::float32) return kept(kind, sql_of(column));
  return concat(kNeeded, "(", sql_of(column), ")");
}

std::string Expressions::literal_in_sum(const Expression& expression, Strictness strictness) {
  const Literal& literal = lexed_.literals[expression.literal];
  if (literal.denotes_number()) return parameters_.use({expression.literal, Form::number});
  if (strictness == Strictness::unknown) return "NULL";
  throw Error(ErrorNumber::type_mismatch, "The text \"" + std::string(literal.text) +
                                              "\" is no number, but the sum at character " +
                                              std::to_string(literal.position + 1) + " needs one.");
}

std::string Expressions::binary_sum(const Expression& expression, Strictness strictness) {
  const std::string left = sum(*expression.left, strictness);
  const std::string right = sum(*expression.right, strictness);
  if (expression.operation == Operation::divide)
    return concat(kDivide, "(", left, ", ", right, ")");
  return concat("(", left, sign(expression.operation), right, ")");
}

std::optional<Expressions::WholeSum> Expressions::whole_sum(const Expression& expression) {
  switch (expression.operation) {
    case Operation::literal:
      if (lexed_.literals[expression.literal].kind != LiteralClass::whole_number) return {};
      return WholeSum{parameters_.use({expression.literal, Form::number}), {}};
    case Operation::column: {
      const FoundColumn column = scope_.find(expression.column);
      if (!range_of(column.column->kind)) return {};
      return WholeSum{sql_of(column), {sql_of(column)}};
    }
    case Operation::negate: {
      auto inner = whole_sum(*expression.left);
      if (inner) inner->sql = concat("(- ", inner->sql, ")");
      return inner;
    }
    case Operation::add:
    case Operation::subtract:
    case Operation::multiply: {
      auto left = whole_sum(*expression.left);
      const auto right = left ? whole_sum(*expression.right) : std::nullopt;
      if (!right) return {};
      left->sql = concat("(", left->sql, sign(expression.operation), right->sql, ")");
      left->columns.insert(left->columns.end(), right->columns.begin(), right->columns.end());
      return left;
    }
    default:
      return {};
  }
}

std::string Expressions::assigned(const Expression& expression, ColumnKind kind) {
  if (expression.operation == Operation::literal)
    return parameters_.use({expression.literal, Form::kept, kind});
  if (expression.operation == Operation::truth_literal) {
    std::string scratch;
    return constant(to_stored(Variant(expression.truth), kind, scratch));
  }
  if (expression.operation == Operation::column) {
    const FoundColumn source = scope_.find(expression.column);
    const ColumnKind from = source.column->kind;
    const bool to_any = kind == ColumnKind::text || kind == ColumnKind::as_stored;
    const bool from_any = from == ColumnKind::text || from == ColumnKind::as_stored;
    if (from == kind || (to_any && from_any)) return sql_of(source);
  }
  const auto range = range_of(kind);
  const auto whole = range ? whole_sum(expression) : std::nullopt;
  if (!whole) return kept(kind, sum(expression, Strictness::error));

  std::string in_range = concat(whole->sql, " BETWEEN ", std::to_string(range->lowest), " AND ",
                                std::to_string(range->highest));
  std::string operands;
  for (const std::string& column : whole->columns) {
    in_range += concat(" AND ", column, " < ''");  // a number, not a stray text
    operands += concat(", ", column);
  }
  return concat("CASE WHEN ", in_range, " THEN ", whole->sql, " ELSE ",
                kept(kind, whole->sql + operands), " END");
}

}  // namespace ravelinox::data
