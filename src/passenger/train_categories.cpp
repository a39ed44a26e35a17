#include "passenger/train_categories.hpp"

#include <array>

namespace ravelinox {

namespace {

/// The first row whose code matches, and whose mark and undertaking match where given, decides.
struct Category {
  std::string_view code;
  std::string_view mark;
  std::string_view undertaking;
  std::string_view name;
};

constexpr std::array<Category, 18> categories{{{"ES*", "tBiz", "", "tBiz"},
                                               {"ES*", "TrenOK", "", "TrenOK"},
                                               {"ES*", "", "", "Eurostar"},
                                               {"EC", "", "CIS", "Cisalpino"},
                                               {"EC", "", "", "Eurocity"},
                                               {"EN", "", "", "Euronight"},
                                               {"IC", "ICN", "", "Intercity Notte"},
                                               {"IC", "", "", "Intercity"},
                                               {"ICp", "", "", "Intercity Plus"},
                                               {"EXP", "", "", "Espresso"},
                                               {"D", "", "", "Diretto"},
                                               {"IR", "", "", "Interregionale"},
                                               {"R", "", "", "Regionale"},
                                               {"S", "", "MetNA", "Metronapoli"},
                                               {"S", "", "", "Suburbano"},
                                               {"LOC", "", "", "Regionale"},
                                               {"RAP", "", "", "Eurostar"},
                                               {"MET", "", "", "Suburbano"}}};

}  // namespace

std::optional<std::string_view> display_category(std::string_view code, std::string_view mark,
                                                 std::string_view undertaking) {
  for (const Category& category : categories) {
    if (category.code == code && (category.mark.empty() || category.mark == mark) &&
        (category.undertaking.empty() || category.undertaking == undertaking)) {
      return category.name;
    }
  }
  return std::nullopt;
}

}  // namespace ravelinox
