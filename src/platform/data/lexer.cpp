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

class Lexer {
 public:
  Lexer(std::string_view statement, LexedStatement& result) : text_(statement), out_(result) {}

  void run() {
    for (skip_spaces(); at_ < text_.size(); skip_spaces()) {
      switch (class_at(at_)) {
        case CharacterClass::letter:
          word();
          break;
        case CharacterClass::quote:
          quoted_text();
          break;
        case CharacterClass::digit:
          number();
          break;
        case CharacterClass::symbol:
          number_or_symbol();
          break;
        default:
          refuse(text_, at_, "this character has no place outside a text");
      }
    }
    out_.tokens.push_back({TokenKind::end, position(), 0, {}});
  }

 private:
  [[nodiscard]] CharacterClass class_at(std::size_t place) const {
    return place < text_.size() ? kClasses[static_cast<unsigned char>(text_[place])]
                                : CharacterClass::none;
  }
  [[nodiscard]] std::uint32_t position() const { return static_cast<std::uint32_t>(at_); }

  void skip_spaces() {
    while (class_at(at_) == CharacterClass::space) ++at_;
  }

  void skip_digits() {
    while (class_at(at_) == CharacterClass::digit) ++at_;
  }

  void add(TokenKind kind, std::size_t length) {
    const std::string_view piece = text_.substr(at_, length);
    out_.tokens.push_back({kind, position(), 0, piece});
    out_.shape += piece;
    out_.shape += ' ';  // keeps "a b" apart from "ab"
    at_ += length;
  }

  void add_literal(std::size_t start, LiteralClass kind, std::string_view text, Number number) {
    out_.tokens.push_back({TokenKind::literal, static_cast<std::uint32_t>(start),
                           static_cast<std::uint32_t>(out_.literals.size()),
                           text_.substr(start, at_ - start)});
    out_.literals.push_back({kind, start, text, number});
    out_.shape += static_cast<char>(kind);
    out_.shape += '\'';  // outside texts, so no word or symbol looks like it
  }

  void word() {
    std::size_t end = at_ + 1;
    while (class_at(end) == CharacterClass::letter || class_at(end) == CharacterClass::digit) ++end;
    add(TokenKind::word, end - at_);
  }

  void number_or_symbol() {
    if (text_[at_] == '.' && class_at(at_ + 1) == CharacterClass::digit) return number();
    const std::string_view pair = text_.substr(at_, 2);
    add(TokenKind::symbol, pair == "<=" || pair == ">=" || pair == "<>" ? 2 : 1);
  }

  void number() {
    const std::size_t start = at_;
    skip_digits();
    if (at_ < text_.size() && text_[at_] == '.') ++at_, skip_digits();
    if (at_ < text_.size() && (text_[at_] == 'e' || text_[at_] == 'E')) skip_exponent();
    const std::string_view digits = text_.substr(start, at_ - start);
    const auto value = read_number(digits);
    if (!value || class_at(at_) == CharacterClass::letter)
      refuse(text_, start, "this is no number");
    add_literal(start, value->is_whole ? LiteralClass::whole_number : LiteralClass::number, digits,
                *value);
  }

  void skip_exponent() {
    ++at_;
    if (at_ < text_.size() && (text_[at_] == '+' || text_[at_] == '-')) ++at_;
    skip_digits();
  }

  void quoted_text() {
    const std::size_t start = at_;
    std::size_t end = closing_quote(start + 1);
    std::string_view content = text_.substr(start + 1, end - start - 1);
    if (end + 1 < text_.size() && text_[end + 1] == '\'') content = joined_halves(start, end);
    at_ = end + 1;
    add_text(start, content);
  }

  [[nodiscard]] std::size_t closing_quote(std::size_t from) const {
    const std::size_t end = text_.find('\'', from);
    if (end == std::string_view::npos)
      refuse(text_, at_, "the text that begins here has no closing apostrophe");
    return end;
  }

  /// The content of a text with doubled apostrophes; moves `end` to the closing one.
  [[nodiscard]] std::string_view joined_halves(std::size_t start, std::size_t& end) {
    const std::size_t first = out_.unquoted.size();
    out_.unquoted += text_.substr(start + 1, end - start - 1);
    while (end + 1 < text_.size() && text_[end + 1] == '\'') {
      const std::size_t half = end + 1;  // its apostrophe is the one that stays
      end = closing_quote(half + 1);
      out_.unquoted += text_.substr(half, end - half);
    }
    return std::string_view(out_.unquoted).substr(first);
  }

  void add_text(std::size_t start, std::string_view content) {
    if (const auto number = read_number(content))
      return add_literal(start, LiteralClass::number_text, content, *number);
    unsigned bits = 0;
    for (const char c : content) bits |= static_cast<unsigned char>(c);
    add_literal(start, bits < 0x80 ? LiteralClass::ascii_text : LiteralClass::other_text, content,
                {});
  }

  std::string_view text_;
  LexedStatement& out_;
  std::size_t at_ = 0;
};

}  // namespace

void lex(std::string_view statement, LexedStatement& result) {
  if (statement.size() > kLongestStatement)
    refuse(statement.substr(0, 40), 0,
           "it is longer than " + std::to_string(kLongestStatement) + " bytes");
  const std::size_t nul = statement.find('\0');
  if (nul != std::string_view::npos) refuse(statement.substr(0, nul), nul, "a NUL stands here");
  result.statement = statement;
  result.tokens.clear();
  result.literals.clear();
  result.shape.clear();
  result.unquoted.clear();
  result.unquoted.reserve(statement.size());  // so that it never moves under the literals
  Lexer(statement, result).run();
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
