// The parsed statement. Names and positions refer to the statement's text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <variant>
#include <vector>

namespace ravelinox::data {

struct TableName {
  std::string_view name;
  std::size_t position = 0;
};

struct ColumnName {
  std::string_view table;  ///< empty when not qualified
  std::string_view column;
  std::size_t position = 0;
};

enum class Operation : std::uint8_t {
  // Sums.
  literal,
  truth_literal,
  column,
  negate,
  add,
  subtract,
  multiply,
  divide,
  // Conditions, from here on.
  equal,
  unequal,
  less,
  less_equal,
  greater,
  greater_equal,
  any_of,  ///< left = ANY ( query )
  like,
  is_null,
  logical_not,
  logical_and,
  logical_or,
  logical_xor,
};

struct Select;

/// One node of a sum or a condition, with the members that its operation needs.
struct Expression {
  Operation operation = Operation::literal;
  std::size_t position = 0;
  std::size_t literal = 0;  ///< index; of `literal`, and the pattern of `like`
  bool truth = false;       ///< of `truth_literal`
  ColumnName column;
  std::unique_ptr<Expression> left;  ///< the only operand of one-sided operations
  std::unique_ptr<Expression> right;
  std::unique_ptr<Select> query;
  int height = 1;

  [[nodiscard]] bool is_condition() const { return operation >= Operation::equal; }
};

using ExpressionPtr = std::unique_ptr<Expression>;

struct Join {
  TableName table;
  ColumnName left;
  ColumnName right;
};

struct Order {
  ColumnName column;
  bool random = false;
  bool descending = false;
};

struct Select {
  bool distinct = false;
  std::optional<std::size_t> top;   ///< index of the literal
  std::vector<ColumnName> columns;  ///< empty for all
  TableName table;
  std::optional<Join> join;
  ExpressionPtr where;
  std::optional<Order> order;
};

struct Assignment {
  ColumnName column;
  ExpressionPtr value;
};

struct Update {
  TableName table;
  std::vector<Assignment> assignments;
  ExpressionPtr where;
};

using Statement = std::variant<Select, Update>;

}  // namespace ravelinox::data
