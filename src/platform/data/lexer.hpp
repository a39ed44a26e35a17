// A pass over every statement gives its literals and its shape; its tokens are wanted only where
// the shape is new.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/data/number.hpp"

namespace ravelinox::data {

/// What a literal's form decides about the meaning of the statement around it. Part of the shape.
enum class LiteralClass : char {
  whole_number = '1',
  number = '2',
  number_text = '3',  ///< a text that denotes a number: '604800'
  ascii_text = '4',
  other_text = '5',  ///< with a character beyond ASCII
};

struct Literal {
  LiteralClass kind = LiteralClass::whole_number;
  std::size_t position = 0;
  std::string_view text;  ///< without quotes, doubled apostrophes made single
  Number number;          ///< of the first three classes

  [[nodiscard]] bool is_text() const { return kind >= LiteralClass::number_text; }
  [[nodiscard]] bool is_number() const { return !is_text(); }
  [[nodiscard]] bool denotes_number() const { return kind <= LiteralClass::number_text; }
};

enum class TokenKind : std::uint8_t { word, literal, symbol, end };

struct Token {
  TokenKind kind = TokenKind::end;
  std::uint32_t position = 0;
  std::uint32_t literal = 0;  ///< index into the literals
  std::string_view text;      ///< as it stands in the statement
};

/// A statement taken apart. It refers to the statement's text; its buffers are meant to be used
/// again for the next one.
struct LexedStatement {
  std::string_view statement;
  std::vector<Literal> literals;

  /// The statement, blanks and all, with each literal replaced by its class and an apostrophe,
  /// which stands nowhere else. Two with the same shape differ in the values of their literals
  /// only.
  std::string shape;

  std::string unquoted;  ///< holds the texts that had doubled apostrophes
};

/// Throws 0x80040E14 where a character, a number or a text is not well-formed.
void lex(std::string_view statement, LexedStatement& result);

/// The tokens of a statement that was lexed; the last one is `end`.
[[nodiscard]] std::vector<Token> tokens_of(const LexedStatement& statement);

/// The error for a statement that is not understood at a place.
[[noreturn]] void refuse(std::string_view statement, std::size_t position,
                         const std::string& reason);

}  // namespace ravelinox::data
