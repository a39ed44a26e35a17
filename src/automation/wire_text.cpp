// Between UTF-8, in which the engine speaks, and the counted UTF-16 of the border.
#include "automation/wire_text.hpp"

#include <new>
#include <vector>

#include "platform/utf8.hpp"

namespace ravelinox::automation {
namespace {

constexpr bool is_surrogate(char32_t point) { return point >= 0xD800 && point < 0xE000; }
constexpr bool leads_pair(char32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
constexpr bool ends_pair(char32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

void append_units(std::vector<std::uint16_t>& units, char32_t point) {
  if (is_surrogate(point) || point > 0x10FFFF) point = broken_utf8;
  if (point < 0x10000) {
    units.push_back(static_cast<std::uint16_t>(point));
    return;
  }
  point -= 0x10000;
  units.push_back(static_cast<std::uint16_t>(0xD800 + (point >> 10U)));
  units.push_back(static_cast<std::uint16_t>(0xDC00 + (point & 0x3FFU)));
}

void append_utf8(std::string& text, char32_t point) {
  const auto add = [&text](char32_t bits) { text += static_cast<char>(bits); };
  const auto add_rest = [&add, point](unsigned shift) { add(0x80U | ((point >> shift) & 0x3FU)); };
  if (point < 0x80) {
    add(point);
  } else if (point < 0x800) {
    add(0xC0U | (point >> 6U));
    add_rest(0);
  } else if (point < 0x10000) {
    add(0xE0U | (point >> 12U));
    add_rest(6);
    add_rest(0);
  } else {
    add(0xF0U | (point >> 18U));
    add_rest(12);
    add_rest(6);
    add_rest(0);
  }
}

char folded(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

}  // namespace

rlx_text to_wire_text(std::string_view utf8) {
  std::vector<std::uint16_t> units;
  units.reserve(utf8.size());
  while (!utf8.empty()) append_units(units, take_code_point(utf8));
  const rlx_text text = rlx_text_new(units.data(), static_cast<std::uint32_t>(units.size()));
  if (text == nullptr) throw std::bad_alloc();
  return text;
}

std::string from_wire_text(const std::uint16_t* text) {
  std::string utf8;
  const std::uint32_t length = rlx_text_length(text);
  utf8.reserve(length);
  for (std::uint32_t at = 0; at < length; ++at) {
    char32_t point = text[at];
    if (leads_pair(point) && at + 1 < length && ends_pair(text[at + 1])) {
      point = 0x10000 + ((point - 0xD800) << 10U) + (char32_t{text[at + 1]} - 0xDC00);
      ++at;
    }
    append_utf8(utf8, is_surrogate(point) ? broken_utf8 : point);
  }
  return utf8;
}

std::string folded_name(const std::uint16_t* name) {
  std::string letters;
  for (; name != nullptr && *name != 0; ++name) {
    if (*name >= 0x80) return {};
    letters += folded(static_cast<char>(*name));
  }
  return letters;
}

std::string folded_name(std::string_view name) {
  std::string letters;
  for (const char letter : name) letters += folded(letter);
  return letters;
}

}  // namespace ravelinox::automation
