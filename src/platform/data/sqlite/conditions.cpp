// Conditions. The rules that the engine does not share:
//
//   texts compare without regard to case, for every letter of the code page;
//   a number and a quoted number compare by value, whatever the column was declared with;
//   a number and a text that is no number do not compare: the condition is unknown;
//   a Boolean column is True for anything but 0.
//
// In the engine's order every text, also one that strayed into a column of numbers, is greater than
// every number. So "column < ''" says that a cell holds a number, without a call for each row.
#include <algorithm>

#include "platform/data/sqlite/expressions.hpp"
#include "platform/data/sqlite/functions.hpp"

namespace ravelinox::data {
namespace {

[[nodiscard]] std::string_view symbol(Operation operation) {
  switch (operation) {
    case Operation::equal:
      return " = ";
    case Operation::unequal:
      return " <> ";
    case Operation::less:
      return " < ";
    case Operation::less_equal:
      return " <= ";
    case Operation::greater:
      return " > ";
    default:
      return " >= ";
  }
}

/// The same comparison with its sides exchanged.
[[nodiscard]] Operation mirrored(Operation operation) {
  switch (operation) {
    case Operation::less:
      return Operation::greater;
    case Operation::less_equal:
      return Operation::greater_equal;
    case Operation::greater:
      return Operation::less;
    case Operation::greater_equal:
      return Operation::less_equal;
    default:
      return operation;
  }
}

[[nodiscard]] bool is_equality(Operation operation) {
  return operation == Operation::equal || operation == Operation::unequal;
}

[[nodiscard]] bool is_upper_bound(Operation operation) {
  return operation == Operation::less || operation == Operation::less_equal;
}

[[nodiscard]] bool one_is(Side side, const Operand& left, const Operand& right) {
  return left.side == side || right.side == side;
}

[[nodiscard]] bool is_text(const Operand& operand) {
  return operand.side == Side::text || operand.side == Side::number_text ||
         operand.side == Side::text_literal;
}

/// The column, when the engine may compare its cells as they are: declared to hold numbers.
[[nodiscard]] std::string number_column(const Operand& operand) {
  if (!operand.column || operand.side != Side::number) return {};
  if (operand.column->column->kind == ColumnKind::float32) return {};
  return sql_of(*operand.column);
}

[[nodiscard]] std::string when_number(const std::string& column) { return column + " < ''"; }

}  // namespace

std::string Expressions::condition(const Expression& expression, Precision precision) {
  const auto both = [&](const char* word, Precision inner) {
    return concat("(", condition(*expression.left, inner), word,
                  condition(*expression.right, inner), ")");
  };
  switch (expression.operation) {
    case Operation::logical_and:
      return both(" AND ", precision);
    case Operation::logical_or:
      return both(" OR ", precision);
    case Operation::logical_xor:
      return both(" <> ", Precision::three_valued);
    case Operation::logical_not:
      return concat("(NOT ", condition(*expression.left, Precision::three_valued), ")");
    case Operation::is_null:
      return concat("(", plain(operand(*expression.left)), " IS NULL)");
    case Operation::like:
      return concat(kMatches, "(", plain(operand(*expression.left)), ", ",
                    parameters_.use({expression.literal, Form::text}), ")");
    case Operation::any_of:
      return any_of(expression);
    default:
      return comparison(expression.operation, operand(*expression.left), operand(*expression.right),
                        precision);
  }
}

std::string Expressions::comparison(Operation operation, Operand left, Operand right,
                                    Precision precision) {
  if (left.literal != nullptr && right.literal == nullptr) {
    std::swap(left, right);
    operation = mirrored(operation);
  }
  if (one_is(Side::boolean, left, right)) return booleans(operation, left, right);
  if (one_is(Side::stored, left, right)) return by_storage(operation, left, right);
  if (is_text(left) && is_text(right)) {
    // The order of a quoted number among texts would be that of its digits, which nobody means.
    if (right.side != Side::number_text || is_equality(operation))
      return texts(operation, left, right);
  }
  if (one_is(Side::text_literal, left, right)) return "NULL";
  return numbers(operation, left, right, precision);
}

std::string Expressions::any_of(const Expression& expression) {
  const Operand left = operand(*expression.left);
  const bool by_text = left.side == Side::text || left.side == Side::text_literal;
  const std::string column = number_column(left);
  const std::string value = by_text          ? concat(plain(left), " COLLATE ", kAnyCase)
                            : column.empty() ? number(left)
                                             : column;
  return concat("(", value, " IN (", subquery_(*expression.query, scope_, !by_text), "))");
}

std::string Expressions::booleans(Operation operation, const Operand& left, const Operand& right) {
  // True is -1 as a number, so it sorts before False.
  if (!is_equality(operation)) operation = mirrored(operation);
  return concat("(", truth(left), symbol(operation), truth(right), ")");
}

std::string Expressions::numbers(Operation operation, const Operand& left, const Operand& right,
                                 Precision precision) {
  const std::string left_column = number_column(left);
  const std::string right_column = number_column(right);
  if (left_column.empty() && !right_column.empty())
    return numbers(mirrored(operation), right, left, precision);

  const std::string compared =
      concat(left_column.empty() ? number(left) : left_column, symbol(operation),
             right_column.empty() ? number(right) : right_column);
  if (left_column.empty()) return concat("(", compared, ")");
  const bool loose = precision == Precision::true_or_not;
  const bool one_column = right_column.empty();
  if (loose && operation == Operation::equal) return concat("(", compared, ")");
  if (loose && one_column && is_upper_bound(operation)) return concat("(", compared, ")");
  if (loose && one_column && operation != Operation::unequal)
    return concat("(", compared, " AND ", when_number(left_column), ")");
  const std::string second = one_column ? "" : concat(" AND ", when_number(right_column));
  return concat("(CASE WHEN ", when_number(left_column), second, " THEN ", compared, " END)");
}

std::string Expressions::texts(Operation operation, const Operand& left, const Operand& right) {
  const std::string column = plain(left);
  const std::string compared = concat(column, symbol(operation), plain(right), " COLLATE ");
  // An ASCII text equals only ASCII texts, and sorts among all others as the engine has it.
  if (right.literal != nullptr && right.literal->kind != LiteralClass::other_text)
    return concat("(", compared, "NOCASE)");
  if (right.literal == nullptr || operation != Operation::equal || left.literal != nullptr)
    return concat("(", compared, kAnyCase, ")");
  const std::size_t index = index_of(*right.literal);
  return concat("(", compared, kAnyCase, " AND ", column,
                " >= ", parameters_.use({index, Form::range_from}), " COLLATE NOCASE AND ", column,
                " < ", parameters_.use({index, Form::range_to}), " COLLATE NOCASE)");
}

std::string Expressions::by_storage(Operation operation, const Operand& left,
                                    const Operand& right) {
  const bool with_number = left.side == Side::number || right.side == Side::number;
  const bool with_number_text = right.side == Side::number_text && operation != Operation::unequal;
  if (with_number || with_number_text)
    return concat("(", number(left), symbol(operation), number(right), ")");
  return concat("(", kCompare, "(", plain(left), ", ", plain(right), ")", symbol(operation), "0)");
}

std::string Expressions::plain(const Operand& operand) {
  if (operand.column) return sql_of(*operand.column);
  if (operand.literal == nullptr) return number(operand);
  return parameters_.use(
      {index_of(*operand.literal), operand.literal->is_text() ? Form::text : Form::number});
}

std::size_t Expressions::index_of(const Literal& literal) const {
  return static_cast<std::size_t>(&literal - lexed_.literals.data());
}

std::string Expressions::number(const Operand& operand) {
  if (operand.column) return number_of(*operand.column);
  return sum(*operand.expression, Strictness::unknown);
}

std::string Expressions::truth(const Operand& operand) {
  const bool is_boolean = operand.side == Side::boolean;
  return concat("(", is_boolean ? sql_of(*operand.column) : number(operand), " <> 0)");
}

Operand Expressions::operand(const Expression& expression) const {
  Operand result;
  if (expression.operation == Operation::column) result = operand(expression.column);
  result.expression = &expression;
  if (expression.operation == Operation::literal) {
    result.literal = &lexed_.literals[expression.literal];
    if (result.literal->is_text())
      result.side = result.literal->denotes_number() ? Side::number_text : Side::text_literal;
  }
  return result;
}

Operand Expressions::operand(const ColumnName& name) const {
  Operand result;
  result.column = scope_.find(name);
  switch (result.column->column->kind) {
    case ColumnKind::boolean:
      result.side = Side::boolean;
      break;
    case ColumnKind::text:
      result.side = Side::text;
      break;
    case ColumnKind::as_stored:
      result.side = Side::stored;
      break;
    default:
      break;
  }
  return result;
}

}  // namespace ravelinox::data
