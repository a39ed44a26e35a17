// The lexer knows letters, digits, apostrophes and a dozen symbols; everything else, comments and
// semicolons included, has no place outside a text. It does not know keywords: to the shape they
// are words like any other.
#include "platform/data/lexer.hpp"

#include <array>
#include <optional>

#include "ravelinox/error.hpp"

namespace ravelinox::data {
namespace {

constexpr std::size_t kLongestStatement = 65536;
constexpr auto kNoNumber = "this is no number";

enum class CharacterClass : std::uint8_t { none, space, letter, digit, quote, symbol };

constexpr auto kClasses = [] {
  std::array<CharacterClass, 256> classes{};
  const auto set = [&](std::string_view characters, CharacterClass kind) {
    for (const char c : characters) classes[static_cast<unsigned char>(c)] = kind;
  };
  set(" \t\r\n", CharacterClass::space);
  set("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_", CharacterClass::letter);
  set("0123456789", CharacterClass::digit);
  set("'", CharacterClass::quote);
  set("(),.*=<>+-/", CharacterClass::symbol);
  for (std::size_t c = 0x80; c < 0x100; ++c) classes[c] = CharacterClass::letter;
  return classes;
}();

/// Goes through a statement token by token.
class Scanner {
 public:
  explicit Scanner(std::string_view statement) : text_(statement) {}

  [[nodiscard]] Token next() {
    while (class_at(at_) == CharacterClass::space) ++at_;
    const std::size_t start = at_;
    const TokenKind kind = start < text_.size() ? skip_token() : TokenKind::end;
    const std::uint32_t literal = kind == TokenKind::literal ? literals_++ : 0;
    return {kind, static_cast<std::uint32_t>(start), literal, text_.substr(start, at_ - start)};
  }

 private:
  [[nodiscard]] CharacterClass class_at(std::size_t place) const {
    return place < text_.size() ? kClasses[static_cast<unsigned char>(text_[place])]
                                : CharacterClass::none;
  }

  TokenKind skip_token() {
    switch (class_at(at_)) {
      case CharacterClass::letter:
        return skip_word();
      case CharacterClass::quote:
        return skip_quoted_text();
      case CharacterClass::digit:
        return skip_number();
      case CharacterClass::symbol:
        return skip_number_or_symbol();
      default:
        refuse(text_, at_, "this character has no place outside a text");
    }
  }

  TokenKind skip_word() {
    while (class_at(at_) == CharacterClass::letter || class_at(at_) == CharacterClass::digit) ++at_;
    return TokenKind::word;
  }

  TokenKind skip_number_or_symbol() {
    if (text_[at_] == '.' && class_at(at_ + 1) == CharacterClass::digit) return skip_number();
    const std::string_view pair = text_.substr(at_, 2);
    at_ += pair == "<=" || pair == ">=" || pair == "<>" ? 2 : 1;
    return TokenKind::symbol;
  }

  TokenKind skip_number() {
    const std::size_t start = at_;
    skip_digits();
    if (at_ < text_.size() && text_[at_] == '.') ++at_, skip_digits();
    if (at_ < text_.size() && (text_[at_] == 'e' || text_[at_] == 'E')) skip_exponent();
    if (class_at(at_) == CharacterClass::letter) refuse(text_, start, kNoNumber);
    return TokenKind::literal;
  }

  void skip_digits() {
    while (class_at(at_) == CharacterClass::digit) ++at_;
  }

  void skip_exponent() {
    ++at_;
    if (at_ < text_.size() && (text_[at_] == '+' || text_[at_] == '-')) ++at_;
    skip_digits();
  }

  /// A doubled apostrophe stands for one and ends nothing.
  TokenKind skip_quoted_text() {
    const std::size_t start = at_;
    do {
      const std::size_t end = text_.find('\'', at_ + 1);
      if (end == std::string_view::npos)
        refuse(text_, start, "the text that begins here has no closing apostrophe");
      at_ = end + 1;
    } while (class_at(at_) == CharacterClass::quote);
    return TokenKind::literal;
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::uint32_t literals_ = 0;
};

/// The text between the apostrophes of a token, with doubled ones made single in `unquoted`.
std::string_view content_of(const Token& token, std::string& unquoted) {
  std::string_view rest = token.text.substr(1, token.text.size() - 2);
  std::size_t quote = rest.find('\'');
  if (quote == std::string_view::npos) return rest;
  const std::size_t start = unquoted.size();
  for (; quote != std::string_view::npos; quote = rest.find('\'')) {
    unquoted += rest.substr(0, quote + 1);
    rest.remove_prefix(quote + 2);
  }
  unquoted += rest;
  return std::string_view(unquoted).substr(start);
}

Literal text_literal(const Token& token, std::string& unquoted) {
  const std::string_view text = content_of(token, unquoted);
  if (const auto number = read_number(text))
    return {LiteralClass::number_text, token.position, text, *number};
  unsigned bits = 0;
  for (const char c : text) bits |= static_cast<unsigned char>(c);
  const auto kind = bits < 0x80 ? LiteralClass::ascii_text : LiteralClass::other_text;
  return {kind, token.position, text, {}};
}

Literal number_literal(const Token& token, std::string_view statement) {
  const auto number = read_number(token.text);
  if (!number) refuse(statement, token.position, kNoNumber);
  const auto kind = number->is_whole ? LiteralClass::whole_number : LiteralClass::number;
  return {kind, token.position, token.text, *number};
}

}  // namespace

void lex(std::string_view statement, LexedStatement& result) {
  if (statement.size() > kLongestStatement)
    refuse(statement.substr(0, 40), 0,
           "it is longer than " + std::to_string(kLongestStatement) + " bytes");
  const std::size_t nul = statement.find('\0');
  if (nul != std::string_view::npos) refuse(statement.substr(0, nul), nul, "a NUL stands here");
  result.statement = statement;
  result.literals.clear();
  result.shape.clear();
  result.unquoted.clear();
  result.unquoted.reserve(statement.size());  // so that it never moves under the literals
  Scanner scanner(statement);
  std::size_t copied = 0;
  for (Token token = scanner.next(); token.kind != TokenKind::end; token = scanner.next()) {
    if (token.kind != TokenKind::literal) continue;
    const Literal& literal = result.literals.emplace_back(token.text.front() == '\''
                                                              ? text_literal(token, result.unquoted)
                                                              : number_literal(token, statement));
    result.shape += statement.substr(copied, token.position - copied);
    result.shape += static_cast<char>(literal.kind);
    result.shape += '\'';
    copied = token.position + token.text.size();
  }
  result.shape += statement.substr(copied);
}

std::vector<Token> tokens_of(const LexedStatement& statement) {
  std::vector<Token> tokens;
  Scanner scanner(statement.statement);
  do tokens.push_back(scanner.next());
  while (tokens.back().kind != TokenKind::end);
  return tokens;
}

void refuse(std::string_view statement, std::size_t position, const std::string& reason) {
  constexpr std::size_t shown = 24;
  const std::string_view rest = statement.substr(std::min(position, statement.size()));
  const std::string place =
      rest.empty() ? "at its end" : "at \"" + std::string(rest.substr(0, shown)) + "\"";
  throw Error(ErrorNumber::statement_not_understood,
              "The statement is not understood at character " + std::to_string(position + 1) +
                  ", " + place + ": " + reason + ".");
}

}  // namespace ravelinox::data
