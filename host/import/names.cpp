// Names of stations and railways, brought to what statements, lists and the code page can carry.
#include "host/import/names.hpp"

#include <algorithm>
#include <array>
#include <cstdint>

namespace ravelinox::host {
namespace {

constexpr char32_t apostrophe = U'\u2019';
constexpr char32_t no_break_space = 0xA0;

/// The code page's letters outside Latin-1.
constexpr std::u32string_view code_page_extras = U"€‚ƒ„…†‡ˆ‰Š‹ŒŽ‘’“”•–—˜™š›œžŸ";

/// The plain letter of each code point of a block; a full stop where there is no single one.
struct Block {
  char32_t first;
  std::string_view letters;
};
constexpr std::array blocks = {
    Block{0xC0, "AAAAAA.CEEEEIIIIDNOOOOO.OUUUUY..aaaaaa.ceeeeiiiidnooooo.ouuuuy.y"},
    Block{0x100,
          "AaAaAaCcCcCcCcDdDdEeEeEeEeEeGgGgGgGgHhHhIiIiIiIiIi..JjKkkLlLlLlLlLlNnNnNnnNnOoOoOo"
          "..RrRrRrSsSsSsSsTtTtTtUuUuUuUuUuUuWwYyYZzZzZzs"},
    Block{0x218, "SsTt"},
    Block{0x391, "AVGDEZITIKLMNXOPR.STUFCPO..aeiiyavgdezitiklmnxoprsstufcpo"},
};

struct Spelling {
  char32_t letter;
  std::string_view plain;
};
constexpr std::array spellings = {
    Spelling{U'ß', "ss"}, Spelling{U'Æ', "AE"},  Spelling{U'æ', "ae"},
    Spelling{U'Œ', "OE"}, Spelling{U'œ', "oe"},  Spelling{U'Þ', "Th"},
    Spelling{U'þ', "th"}, Spelling{0x132, "IJ"}, Spelling{0x133, "ij"}};

/// Cyrillic from U+0410, lower case from U+0430; the letters beyond it stand apart.
constexpr std::array<std::string_view, 32> cyrillic = {
    "a", "b", "v", "g", "d", "e", "zh", "z",  "i",  "y",    "k", "l", "m", "n", "o",  "p",
    "r", "s", "t", "u", "f", "h", "c",  "ch", "sh", "shch", "",  "y", "",  "e", "yu", "ya"};

/// Combining marks and the letters that they make with a base letter, in pairs.
struct Mark {
  char32_t mark;
  std::u32string_view pairs;
};
constexpr std::array marks = {
    Mark{0x300, U"AÀEÈIÌOÒUÙaàeèiìoòuù"},
    Mark{0x301, U"AÁEÉIÍOÓUÚYÝaáeéiíoóuúyý"},
    Mark{0x302, U"AÂEÊIÎOÔUÛaâeêiîoôuû"},
    Mark{0x303, U"AÃNÑOÕaãnñoõ"},
    Mark{0x308, U"AÄEËIÏOÖUÜYŸaäeëiïoöuüyÿ"},
    Mark{0x30A, U"AÅaå"},
    Mark{0x30C, U"SŠZŽsšzž"},
    Mark{0x327, U"CÇcç"},
};

/// Signs that stand for another one; 0 removes it.
struct Replacement {
  std::u32string_view signs;
  char32_t by;
};
constexpr std::array replacements = {
    Replacement{U"'`\u00B4\u02BC\u2018\u201B\u2032\uFF07", apostrophe},
    Replacement{U",|;@\t\r\n\u00A0\u2009\u202F\u3000", U' '},
    Replacement{U"\u2010\u2011\u2212", U'-'},
    Replacement{U"\u200B\u200C\u200D\u00AD\uFEFF", 0},
};

bool is_continuation(std::string_view text, std::size_t at) {
  return at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U;
}

/// The length of the character that starts with this byte, by its leading ones.
std::size_t sequence_length(unsigned char lead) {
  if (lead >= 0xF0U && lead <= 0xF4U) return 4;
  if (lead >= 0xE0U) return lead < 0xF0U ? 3 : 1;
  return lead >= 0xC2U ? 2 : 1;
}

char32_t decode(std::string_view text, std::size_t& at) {
  const auto lead = static_cast<unsigned char>(text[at]);
  const std::size_t length = sequence_length(lead);
  for (std::size_t i = 1; i < length; ++i) {
    if (!is_continuation(text, at + i)) {
      ++at;
      return lead;
    }
  }
  char32_t point = length == 1 ? lead : lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    point = (point << 6U) | (static_cast<unsigned char>(text[at + i]) & 0x3FU);
  }
  at += length;
  return point;
}

void encode(char32_t point, std::string& out) {
  const auto tail = [&](unsigned shift) {
    return static_cast<char>(0x80U | ((point >> shift) & 0x3FU));
  };
  if (point < 0x80U) {
    out += static_cast<char>(point);
  } else if (point < 0x800U) {
    out += static_cast<char>(0xC0U | (point >> 6U));
    out += tail(0);
  } else {
    out += static_cast<char>(0xE0U | (point >> 12U));
    out += tail(6);
    out += tail(0);
  }
}

bool in_code_page(char32_t point) {
  return (point >= 0x20 && point < 0x7F) || (point > no_break_space && point <= 0xFF) ||
         code_page_extras.find(point) != std::u32string_view::npos;
}

char32_t replaced(char32_t point) {
  for (const auto& [signs, by] : replacements) {
    if (signs.find(point) != std::u32string_view::npos) return by;
  }
  return point < 0x20 || point == 0x7F ? U' ' : point;
}

/// A base letter with a combining mark as one letter, or the letter alone when there is none.
char32_t composed(char32_t base, char32_t mark) {
  for (const auto& [sign, pairs] : marks) {
    if (sign != mark) continue;
    for (std::size_t i = 0; i + 1 < pairs.size(); i += 2) {
      if (pairs[i] == base) return pairs[i + 1];
    }
  }
  return base;
}

std::string cyrillic_spelling(char32_t point) {
  if (point == U'Ё' || point == U'ё') return point == U'Ё' ? "E" : "e";
  std::string text(cyrillic[(point - 0x410) % cyrillic.size()]);
  if (point < 0x430 && !text.empty()) text[0] = static_cast<char>(text[0] - 'a' + 'A');
  return text;
}

/// The letter spelled in plain letters; "?" when nobody knows how.
std::string plain_spelling(char32_t point) {
  if (point < 0x80) return {static_cast<char>(point)};
  for (const auto& [letter, plain] : spellings) {
    if (letter == point) return std::string(plain);
  }
  for (const auto& [first, letters] : blocks) {
    if (point >= first && point < first + letters.size() && letters[point - first] != '.') {
      return {letters[point - first]};
    }
  }
  if ((point >= 0x410 && point < 0x450) || point == U'Ё' || point == U'ё') {
    return cyrillic_spelling(point);
  }
  return "?";
}

std::u32string code_points(std::string_view text) {
  std::u32string points;
  for (std::size_t at = 0; at < text.size();) {
    const char32_t point = replaced(decode(text, at));
    if (point == 0) continue;
    if (point >= 0x300 && point < 0x370) {
      if (!points.empty()) points.back() = composed(points.back(), point);
      continue;
    }
    points += point;
  }
  return points;
}

/// Separators between the parts of lists: none may be inside a name, nor arise at its ends when
/// it is joined to another by " - ".
std::string without_separators(std::string text) {
  for (const auto& [what, by] : {std::pair{"  ", " "}, {" - ", "-"}, {" -- ", "-"}}) {
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what)) {
      text.replace(at, std::string_view(what).size(), by);
    }
  }
  const auto first = text.find_first_not_of(" -");
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(" -") - first + 1);
}

}  // namespace

std::string clean_name(std::string_view name) {
  std::string text;
  for (const char32_t point : code_points(name)) {
    if (in_code_page(point)) {
      encode(point, text);
    } else {
      text += plain_spelling(point);
    }
  }
  return without_separators(std::move(text));
}

std::string folded(std::string_view name) {
  std::string text;
  for (const char32_t point : code_points(name)) {
    for (const char c : plain_spelling(point)) {
      if (c >= 'A' && c <= 'Z') text += static_cast<char>(c - 'A' + 'a');
      if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) text += c;
    }
  }
  return text;
}

std::string lower_case(std::string_view name) {
  std::string text;
  for (char32_t point : code_points(name)) {
    if ((point >= U'A' && point <= U'Z') || (point >= 0xC0 && point <= 0xDE && point != 0xD7)) {
      point += 0x20;
    }
    constexpr std::u32string_view upper = U"ŠŒŽŸ";
    constexpr std::u32string_view lower = U"šœžÿ";
    const auto at = upper.find(point);
    encode(at == std::u32string_view::npos ? point : lower[at], text);
  }
  return text;
}

}  // namespace ravelinox::host
