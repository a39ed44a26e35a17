// Categories: from what feeds call their trains to the codes that the boards know.
#include "host/import/category.hpp"

#include <algorithm>
#include <array>

#include "host/import/names.hpp"

namespace ravelinox::host {
namespace {

enum Kind {
  high_speed,
  euro_city,
  euro_night,
  inter_city,
  inter_city_night,
  express,
  direct,
  inter_regional,
  regional,
  suburban,
  local,
  metro
};

/// In the order of `Kind`. Lengths and speeds are those of a usual train of the category.
constexpr std::array categories = {
    Category{"ES*", "", 330, 250, 120},   Category{"EC", "", 300, 200, 120},
    Category{"EN", "", 350, 160, 180},    Category{"IC", "", 280, 200, 90},
    Category{"IC", "ICN", 320, 160, 120}, Category{"EXP", "", 300, 160, 90},
    Category{"D", "", 200, 160, 60},      Category{"IR", "", 220, 160, 60},
    Category{"R", "", 150, 140, 30},      Category{"S", "", 140, 120, 30},
    Category{"LOC", "", 100, 120, 30},    Category{"MET", "", 110, 80, 20},
};

struct Letters {
  std::string_view letters;
  Kind kind;
};
constexpr std::array by_letters = {
    Letters{"ICE", high_speed},
    Letters{"TGV", high_speed},
    Letters{"AVE", high_speed},
    Letters{"FR", high_speed},
    Letters{"FA", high_speed},
    Letters{"FB", high_speed},
    Letters{"AV", high_speed},
    Letters{"ES", high_speed},
    Letters{"THA", high_speed},
    Letters{"EST", high_speed},
    Letters{"EC", euro_city},
    Letters{"ECE", euro_city},
    Letters{"RJ", euro_city},
    Letters{"RJX", euro_city},
    Letters{"EN", euro_night},
    Letters{"NJ", euro_night},
    Letters{"ICN", inter_city_night},
    Letters{"IC", inter_city},
    Letters{"EXP", express},
    Letters{"RE", direct},
    Letters{"REX", direct},
    Letters{"RV", direct},
    Letters{"D", direct},
    Letters{"IR", inter_regional},
    Letters{"IRE", inter_regional},
    Letters{"R", regional},
    Letters{"RB", regional},
    Letters{"REG", regional},
    Letters{"S", suburban},
    Letters{"SFM", suburban},
    Letters{"LOC", local},
    Letters{"MET", metro},
    Letters{"M", metro},
    Letters{"U", metro},
};

/// Words as `folded` leaves them; the first that a name contains counts.
constexpr std::array by_word = {
    Letters{"intercityexpress", high_speed},
    Letters{"frecciarossa", high_speed},
    Letters{"frecciargento", high_speed},
    Letters{"frecciabianca", high_speed},
    Letters{"eurostar", high_speed},
    Letters{"highspeed", high_speed},
    Letters{"eurocity", euro_city},
    Letters{"railjet", euro_city},
    Letters{"euronight", euro_night},
    Letters{"nightjet", euro_night},
    Letters{"intercitynotte", inter_city_night},
    Letters{"intercity", inter_city},
    Letters{"interregio", inter_regional},
    Letters{"regionalexpress", direct},
    Letters{"regioexpress", direct},
    Letters{"regionaleveloce", direct},
};

struct TypeRange {
  int first;
  int last;
  Kind kind;
};
constexpr std::array by_type = {
    TypeRange{1, 1, metro},
    TypeRange{2, 2, regional},
    TypeRange{12, 12, metro},
    TypeRange{100, 100, regional},
    TypeRange{101, 101, high_speed},
    TypeRange{102, 102, inter_city},
    TypeRange{103, 103, inter_regional},
    TypeRange{104, 104, regional},
    TypeRange{105, 105, inter_city_night},
    TypeRange{106, 108, regional},
    TypeRange{109, 109, suburban},
    TypeRange{110, 117, regional},
    TypeRange{400, 405, metro},
};

constexpr std::array legal_forms = {
    std::string_view{"S.p.A."}, std::string_view{"SpA"},  std::string_view{"S.p.a."},
    std::string_view{"S.r.l."}, std::string_view{"GmbH"}, std::string_view{"AG"},
    std::string_view{"S.A."},   std::string_view{"SA"},   std::string_view{"Ltd"},
    std::string_view{"Ltd."},   std::string_view{"e.V."}, std::string_view{"KG"},
    std::string_view{"Inc."},   std::string_view{"N.V."}, std::string_view{"NV"},
};

bool is_letter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

/// The letters with which a short name starts, in capitals; nothing when there is more than a
/// number after them, for then it is a name and not a code.
std::string leading_letters(std::string_view name) {
  const auto end = std::find_if_not(name.begin(), name.end(), is_letter);
  const bool code = std::all_of(end, name.end(), [](char c) { return !is_letter(c); });
  std::string letters(name.begin(), code ? end : name.begin());
  for (char& c : letters) c = c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c;
  return letters;
}

const Kind* kind_by_letters(std::string_view short_name) {
  const auto letters = leading_letters(short_name);
  const auto found = std::find_if(by_letters.begin(), by_letters.end(),
                                  [&](const Letters& row) { return row.letters == letters; });
  return found == by_letters.end() ? nullptr : &found->kind;
}

const Kind* kind_by_word(std::string_view long_name) {
  const auto name = folded(long_name);
  const auto found = std::find_if(by_word.begin(), by_word.end(), [&](const Letters& row) {
    return name.find(row.letters) != std::string::npos;
  });
  return found == by_word.end() ? nullptr : &found->kind;
}

const Kind* kind_by_type(int type) {
  const auto found = std::find_if(by_type.begin(), by_type.end(), [&](const TypeRange& row) {
    return type >= row.first && type <= row.last;
  });
  return found == by_type.end() ? nullptr : &found->kind;
}

/// A word of capitals longer than an abbreviation, with its first one alone.
std::string without_shouting(const std::string& word) {
  constexpr std::size_t longest_abbreviation = 4;
  if (word.size() <= longest_abbreviation) return word;
  if (!std::all_of(word.begin(), word.end(), [](char c) { return c >= 'A' && c <= 'Z'; })) {
    return word;
  }
  return word[0] + lower_case(word.substr(1));
}

}  // namespace

const Category& category_of(const RouteNames& names) {
  for (const Kind* kind :
       {kind_by_letters(names.trip_short_name), kind_by_letters(names.route_short_name),
        kind_by_word(names.route_long_name), kind_by_type(names.route_type)}) {
    if (kind != nullptr) return categories[*kind];
  }
  return categories[regional];
}

bool is_railway(int route_type) { return kind_by_type(route_type) != nullptr; }

std::string undertaking_of(std::string_view agency_name) {
  std::string text;
  const auto name = clean_name(agency_name);
  for (std::size_t at = 0; at < name.size();) {
    const auto end = std::min(name.find(' ', at), name.size());
    const auto word = name.substr(at, end - at);
    at = end + 1;
    if (std::find(legal_forms.begin(), legal_forms.end(), word) != legal_forms.end()) continue;
    text += (text.empty() ? "" : " ") + without_shouting(word);
  }
  return text;
}

}  // namespace ravelinox::host
