// From UTF-8 to the 8-bit code page, Windows-1252. Broken UTF-8 gives one "?" for each byte that
// starts nothing.
#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/text_file.hpp"
#include "platform/utf8.hpp"

namespace ravelinox {

namespace {

/// Code points of the bytes 0x80 to 0x9F; all other bytes are their own code point.
constexpr std::array<char32_t, 32> upper_control_block{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

/// A combining accent with the letters that it turns into a letter of the code page.
struct Accent {
  char32_t mark;
  std::string_view letters;
  std::u32string_view composed;
};

constexpr std::array<Accent, 8> accents{{
    {0x0300, "AEIOUaeiou", U"ÀÈÌÒÙàèìòù"},
    {0x0301, "AEIOUYaeiouy", U"ÁÉÍÓÚÝáéíóúý"},
    {0x0302, "AEIOUaeiou", U"ÂÊÎÔÛâêîôû"},
    {0x0303, "ANOano", U"ÃÑÕãñõ"},
    {0x0308, "AEIOUYaeiouy", U"ÄËÏÖÜŸäëïöüÿ"},
    {0x030A, "Aa", U"Åå"},
    {0x030C, "SZsz", U"ŠŽšž"},
    {0x0327, "Cc", U"Çç"},
}};

char32_t composed_with(char32_t letter, char32_t mark) {
  const auto accent = std::ranges::find(accents, mark, &Accent::mark);
  if (accent == accents.end() || letter >= 0x80) return broken_utf8;
  const std::size_t at = accent->letters.find(static_cast<char>(letter));
  return at == std::string_view::npos ? broken_utf8 : accent->composed[at];
}

char byte_of(char32_t point) {
  if (point < 0x80 || (point >= 0xA0 && point <= 0xFF)) return static_cast<char>(point);
  const auto at = std::ranges::find(upper_control_block, point);
  if (at == upper_control_block.end()) return '?';
  return static_cast<char>(0x80 + (at - upper_control_block.begin()));
}

}  // namespace

std::string to_code_page(std::string_view utf8) {
  std::string bytes;
  bytes.reserve(utf8.size());
  char32_t letter = broken_utf8;  // the last code point, while an accent may still join it
  while (!utf8.empty()) {
    const char32_t point = take_code_point(utf8);
    const char32_t whole = composed_with(letter, point);
    if (whole != broken_utf8) {
      bytes.back() = byte_of(whole);
      letter = broken_utf8;
    } else {
      bytes += byte_of(point);
      letter = point;
    }
  }
  return bytes;
}

}  // namespace ravelinox
