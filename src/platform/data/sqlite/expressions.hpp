// Rendering of conditions and sums; the part of the renderer below whole statements.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/data/lexer.hpp"
#include "platform/data/sqlite/rendered.hpp"
#include "platform/data/syntax.hpp"
#include "platform/data/table.hpp"

namespace ravelinox::data {

[[nodiscard]] std::string quoted_name(std::string_view name);

/// The pieces in one text.
template <class... Pieces>
[[nodiscard]] std::string concat(const Pieces&... pieces) {
  std::string text;
  ((text += pieces), ...);
  return text;
}

/// Hands out "?1", "?2" ...; the same literal in the same form gets the same one.
class Parameters {
 public:
  [[nodiscard]] std::string use(const Parameter& parameter);
  [[nodiscard]] std::vector<Parameter> take() { return std::move(used_); }

 private:
  std::vector<Parameter> used_;
};

/// What one side of a comparison is, as far as its meaning goes.
enum class Side : std::uint8_t {
  number,        ///< a number, a column of numbers, a sum
  boolean,       ///< a Boolean column
  text,          ///< a column of texts
  stored,        ///< a column without kind
  number_text,   ///< a quoted number
  text_literal,  ///< any other quoted text
};

struct Operand {
  Side side = Side::number;
  const Expression* expression = nullptr;  ///< null for the columns of a join
  std::optional<FoundColumn> column;       ///< when it is a column by itself
  const Literal* literal = nullptr;        ///< when it is a literal by itself
};

/// Whether the rows for which a condition is unknown must be told from those for which it is
/// false. At the top, and under AND and OR, they need not: that leaves the engine its indexes.
enum class Precision : bool { true_or_not, three_valued };

class Expressions {
 public:
  /// Renders `SELECT` inside a comparison; the flag asks for its column as a number.
  using Subquery = std::function<std::string(const Select&, const Scope&, bool as_number)>;

  Expressions(const LexedStatement& lexed, Parameters& parameters, const Scope& scope,
              Subquery subquery)
      : lexed_(lexed), parameters_(parameters), scope_(scope), subquery_(std::move(subquery)) {}

  [[nodiscard]] std::string condition(const Expression& expression,
                                      Precision precision = Precision::true_or_not);

  [[nodiscard]] std::string comparison(Operation operation, Operand left, Operand right,
                                       Precision precision);

  [[nodiscard]] Operand operand(const Expression& expression) const;
  [[nodiscard]] Operand operand(const ColumnName& name) const;

  /// A column as a number; Null for a text that is none.
  [[nodiscard]] static std::string number_of(const FoundColumn& column);

  /// The right side of an assignment to a column of this kind.
  [[nodiscard]] std::string assigned(const Expression& expression, ColumnKind kind);

 private:
  // Conditions.
  [[nodiscard]] std::string any_of(const Expression& expression);
  [[nodiscard]] std::string booleans(Operation operation, const Operand& left,
                                     const Operand& right);
  [[nodiscard]] std::string numbers(Operation operation, const Operand& left, const Operand& right,
                                    Precision precision);
  [[nodiscard]] std::string texts(Operation operation, const Operand& left, const Operand& right);
  [[nodiscard]] std::string by_storage(Operation operation, const Operand& left,
                                       const Operand& right);

  [[nodiscard]] std::string plain(const Operand& operand);
  [[nodiscard]] std::size_t index_of(const Literal& literal) const;
  [[nodiscard]] std::string number(const Operand& operand);
  [[nodiscard]] std::string truth(const Operand& operand);

  // Sums. In a condition a text that is no number makes the sum unknown, in an assignment it is an
  // error.
  enum class Strictness : bool { unknown, error };
  [[nodiscard]] std::string sum(const Expression& expression, Strictness strictness);
  [[nodiscard]] std::string literal_in_sum(const Expression& expression, Strictness strictness);
  [[nodiscard]] std::string binary_sum(const Expression& expression, Strictness strictness);

  /// A sum of whole-number columns and literals in the engine's own arithmetic, with the columns
  /// in it; nothing when something else takes part.
  struct WholeSum {
    std::string sql;
    std::vector<std::string> columns;
  };
  [[nodiscard]] std::optional<WholeSum> whole_sum(const Expression& expression);

  const LexedStatement& lexed_;
  Parameters& parameters_;
  const Scope& scope_;
  Subquery subquery_;
};

/// The column as the statement spells it for the engine.
[[nodiscard]] std::string sql_of(const FoundColumn& column);

}  // namespace ravelinox::data
