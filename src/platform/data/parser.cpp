// A recursive descent over the tokens, one function for each rule of the grammar. A parenthesis may
// open a condition or a sum, so both go through the same functions, and each place says which of
// the two it takes.
#include "platform/data/parser.hpp"

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include "platform/data/text_order.hpp"

namespace ravelinox::data {
namespace {

// Keeps our own recursion, and the engine's on what we render, well inside their stacks.
constexpr int kGreatestHeight = 100;

constexpr auto kKeywords = std::to_array<std::string_view>(
    {"SELECT", "DISTINCT", "TOP", "FROM", "INNER", "JOIN",  "ON",  "WHERE",
     "ORDER",  "BY",       "ASC", "DESC", "AND",   "OR",    "XOR", "NOT",
     "ANY",    "LIKE",     "IS",  "NULL", "TRUE",  "FALSE", "SET", "UPDATE"});

struct NamedOperation {
  std::string_view text;
  Operation operation;
};

constexpr auto kComparisons = std::to_array<NamedOperation>({{"=", Operation::equal},
                                                             {"<>", Operation::unequal},
                                                             {"<", Operation::less},
                                                             {"<=", Operation::less_equal},
                                                             {">", Operation::greater},
                                                             {">=", Operation::greater_equal}});

[[nodiscard]] bool is_keyword(std::string_view word) {
  return std::ranges::any_of(kKeywords,
                             [&](std::string_view key) { return equal_ignoring_case(key, word); });
}

class Parser {
 public:
  explicit Parser(const LexedStatement& statement)
      : lexed_(statement), tokens_(tokens_of(statement)) {}

  [[nodiscard]] Statement run() {
    Statement result;
    if (next_is("UPDATE")) {
      result = update();
    } else {
      result = select();
    }
    if (token().kind != TokenKind::end) fail("the statement should end here");
    return result;
  }

 private:
  // The tokens.

  [[nodiscard]] const Token& token() const { return tokens_[at_]; }
  [[nodiscard]] const Token& following() const {
    return tokens_[std::min(at_ + 1, tokens_.size() - 1)];
  }

  [[noreturn]] void fail(const std::string& reason) const {
    refuse(lexed_.statement, token().position, reason);
  }

  [[nodiscard]] bool next_is(std::string_view text) const {
    return token().kind != TokenKind::literal && equal_ignoring_case(token().text, text);
  }

  bool take(std::string_view text) {
    if (!next_is(text)) return false;
    ++at_;
    return true;
  }

  void expect(std::string_view text) {
    if (!take(text)) fail(std::string(text) + " is expected here");
  }

  [[nodiscard]] std::string_view name(bool keyword_too = false) {
    if (token().kind != TokenKind::word || (!keyword_too && is_keyword(token().text)))
      fail("a name is expected here");
    return tokens_[at_++].text;
  }

  [[nodiscard]] TableName table_name() {
    const std::size_t position = token().position;
    return {name(), position};
  }

  [[nodiscard]] ColumnName column_name() {
    const std::size_t position = token().position;
    const std::string_view first = name();
    if (!take(".")) return {{}, first, position};
    return {first, name(true), position};
  }

  // Statements.

  [[nodiscard]] Select select() {
    Select result;
    expect("SELECT");
    result.distinct = take("DISTINCT");
    if (take("TOP")) result.top = count_literal();
    result.columns = column_list();
    expect("FROM");
    result.table = table_name();
    if (next_is("INNER")) result.join = join();
    result.where = where();
    if (take("ORDER")) result.order = order();
    return result;
  }

  [[nodiscard]] std::size_t count_literal() {
    const Token& count = token();
    if (count.kind != TokenKind::literal ||
        lexed_.literals[count.literal].kind != LiteralClass::whole_number)
      fail("the number of rows is expected here");
    ++at_;
    return count.literal;
  }

  [[nodiscard]] std::vector<ColumnName> column_list() {
    std::vector<ColumnName> columns;
    if (take("*")) return columns;
    do {
      columns.push_back(column_name());
    } while (take(","));
    return columns;
  }

  [[nodiscard]] Join join() {
    expect("INNER");
    expect("JOIN");
    Join result;
    result.table = table_name();
    expect("ON");
    result.left = column_name();
    expect("=");
    result.right = column_name();
    return result;
  }

  [[nodiscard]] Order order() {
    Order result;
    expect("BY");
    result.random = next_is("Rnd") && following().text == "(";
    if (result.random) {
      expect("Rnd");
      expect("(");
    }
    result.column = column_name();
    if (result.random) expect(")");
    result.descending = take("DESC");
    if (!result.descending) (void)take("ASC");
    return result;
  }

  [[nodiscard]] Update update() {
    Update result;
    expect("UPDATE");
    result.table = table_name();
    expect("SET");
    do {
      Assignment assignment;
      assignment.column = column_name();
      expect("=");
      assignment.value = as_sum(sum());
      result.assignments.push_back(std::move(assignment));
    } while (take(","));
    result.where = where();
    return result;
  }

  [[nodiscard]] ExpressionPtr where() { return take("WHERE") ? condition() : nullptr; }

  // Conditions and sums.

  [[nodiscard]] ExpressionPtr condition() {
    const Nesting nesting(*this);
    return as_condition(alternatives());
  }

  /// XOR binds least, then OR, then AND.
  [[nodiscard]] ExpressionPtr alternatives() {
    ExpressionPtr left = disjunction();
    while (next_is("XOR"))
      left = joined(Operation::logical_xor, std::move(left), &Parser::disjunction);
    return left;
  }

  [[nodiscard]] ExpressionPtr disjunction() {
    ExpressionPtr left = conjunction();
    while (next_is("OR"))
      left = joined(Operation::logical_or, std::move(left), &Parser::conjunction);
    return left;
  }

  [[nodiscard]] ExpressionPtr conjunction() {
    ExpressionPtr left = negation();
    while (next_is("AND"))
      left = joined(Operation::logical_and, std::move(left), &Parser::negation);
    return left;
  }

  [[nodiscard]] ExpressionPtr joined(Operation operation, ExpressionPtr left,
                                     ExpressionPtr (Parser::*operand)()) {
    ExpressionPtr checked = as_condition(std::move(left));
    ExpressionPtr result = node(operation);
    ++at_;
    result->left = std::move(checked);
    result->right = as_condition((this->*operand)());
    return raised(std::move(result));
  }

  [[nodiscard]] ExpressionPtr negation() {
    if (!next_is("NOT")) return comparison();
    const Nesting nesting(*this);
    ExpressionPtr result = node(Operation::logical_not);
    ++at_;
    result->left = as_condition(negation());
    return raised(std::move(result));
  }

  [[nodiscard]] ExpressionPtr comparison() {
    ExpressionPtr left = sum();
    if (take("IS")) return null_test(std::move(left));
    if (next_is("LIKE") || next_is("NOT")) return pattern_test(std::move(left));
    const auto* found = std::ranges::find(kComparisons, token().text, &NamedOperation::text);
    if (token().kind != TokenKind::symbol || found == kComparisons.end()) return left;
    ExpressionPtr result = node(found->operation);
    ++at_;
    result->left = as_sum(std::move(left));
    if (found->operation == Operation::equal && take("ANY")) return any_of(std::move(result));
    result->right = as_sum(sum());
    return raised(std::move(result));
  }

  [[nodiscard]] ExpressionPtr null_test(ExpressionPtr left) {
    ExpressionPtr result = node(Operation::is_null);
    result->left = as_sum(std::move(left));
    const bool negated = take("NOT");
    expect("NULL");
    return negated ? inverted(raised(std::move(result))) : raised(std::move(result));
  }

  [[nodiscard]] ExpressionPtr pattern_test(ExpressionPtr left) {
    const bool negated = take("NOT");
    ExpressionPtr result = node(Operation::like);
    expect("LIKE");
    if (token().kind != TokenKind::literal || !lexed_.literals[token().literal].is_text())
      fail("a pattern in apostrophes is expected here");
    result->left = as_sum(std::move(left));
    result->literal = tokens_[at_++].literal;
    return negated ? inverted(raised(std::move(result))) : raised(std::move(result));
  }

  [[nodiscard]] ExpressionPtr any_of(ExpressionPtr result) {
    const Nesting nesting(*this);
    result->operation = Operation::any_of;
    expect("(");
    const std::size_t position = token().position;
    result->query = std::make_unique<Select>(select());
    if (result->query->columns.size() != 1)
      refuse(lexed_.statement, position, "a selection of exactly one column is expected here");
    if (result->query->order && result->query->order->random)
      refuse(lexed_.statement, position, "rows cannot be drawn at random inside another statement");
    expect(")");
    return raised(std::move(result));
  }

  [[nodiscard]] ExpressionPtr sum() {
    ExpressionPtr left = product();
    for (;;) {
      if (next_is("+")) {
        left = computed(Operation::add, std::move(left), &Parser::product);
      } else if (next_is("-")) {
        left = computed(Operation::subtract, std::move(left), &Parser::product);
      } else {
        return left;
      }
    }
  }

  [[nodiscard]] ExpressionPtr product() {
    ExpressionPtr left = factor();
    for (;;) {
      if (next_is("*")) {
        left = computed(Operation::multiply, std::move(left), &Parser::factor);
      } else if (next_is("/")) {
        left = computed(Operation::divide, std::move(left), &Parser::factor);
      } else {
        return left;
      }
    }
  }

  [[nodiscard]] ExpressionPtr computed(Operation operation, ExpressionPtr left,
                                       ExpressionPtr (Parser::*operand)()) {
    ExpressionPtr checked = as_sum(std::move(left));
    ExpressionPtr result = node(operation);
    ++at_;
    result->left = std::move(checked);
    result->right = as_sum((this->*operand)());
    return raised(std::move(result));
  }

  [[nodiscard]] ExpressionPtr factor() {
    if (next_is("-")) return negative();
    if (token().kind == TokenKind::literal) {
      ExpressionPtr result = node(Operation::literal);
      result->literal = tokens_[at_++].literal;
      return result;
    }
    if (take("(")) return parenthesis();
    if (next_is("True") || next_is("False")) {
      ExpressionPtr result = node(Operation::truth_literal);
      result->truth = next_is("True");
      ++at_;
      return result;
    }
    ExpressionPtr result = node(Operation::column);
    result->column = column_name();
    return result;
  }

  [[nodiscard]] ExpressionPtr negative() {
    ExpressionPtr result = node(Operation::negate);
    expect("-");
    if (next_is("-")) fail("a second sign has no place here");
    result->left = as_sum(factor());
    return raised(std::move(result));
  }

  /// After "(": a condition or a sum, whichever it turns out to be.
  [[nodiscard]] ExpressionPtr parenthesis() {
    const Nesting nesting(*this);
    ExpressionPtr result = alternatives();
    expect(")");
    return result;
  }

  // Nodes.

  [[nodiscard]] ExpressionPtr node(Operation operation) const {
    auto result = std::make_unique<Expression>();
    result->operation = operation;
    result->position = token().position;
    return result;
  }

  [[nodiscard]] ExpressionPtr inverted(ExpressionPtr operand) const {
    ExpressionPtr result = node(Operation::logical_not);
    result->left = std::move(operand);
    return raised(std::move(result));
  }

  /// Counts the node's height once its operands are in place.
  [[nodiscard]] ExpressionPtr raised(ExpressionPtr result) const {
    for (const auto* operand : {result->left.get(), result->right.get()})
      if (operand != nullptr) result->height = std::max(result->height, operand->height + 1);
    if (result->height > kGreatestHeight)
      refuse(lexed_.statement, result->position, "too many operations are chained here");
    return result;
  }

  [[nodiscard]] ExpressionPtr as_condition(ExpressionPtr expression) const {
    if (!expression->is_condition())
      refuse(lexed_.statement, expression->position, "a condition is expected here");
    return expression;
  }

  [[nodiscard]] ExpressionPtr as_sum(ExpressionPtr expression) const {
    if (expression->is_condition())
      refuse(lexed_.statement, expression->position, "a value is expected here, not a condition");
    return expression;
  }

  /// Bounds the depth of the descent itself.
  class Nesting {
   public:
    explicit Nesting(Parser& parser) : parser_(parser) {
      if (++parser_.depth_ > kGreatestHeight) parser_.fail("too many levels are nested here");
    }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;
    ~Nesting() { --parser_.depth_; }

   private:
    Parser& parser_;
  };

  const LexedStatement& lexed_;
  std::vector<Token> tokens_;
  std::size_t at_ = 0;
  int depth_ = 0;
};

}  // namespace

Statement parse(const LexedStatement& statement) { return Parser(statement).run(); }

}  // namespace ravelinox::data
