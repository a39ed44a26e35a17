#include "interlocking/aspect.hpp"

#include <algorithm>
#include <array>

namespace ravelinox {

namespace {

/// What the line end's "G" with the variant, and its "R", make of a route's own aspect.
struct ClassAspects {
  std::string_view route_class;
  std::string_view at_caution_variant;
  std::string_view at_stop;
};

constexpr std::array<ClassAspects, 4> classes{
    {{"V", "Gx", "G"}, {"RV", "RGx", "RG"}, {"RV-", "RGx-", "RG-"}, {"RV=", "RGx=", "RG="}}};
constexpr ClassAspects other_class{"", "Gx", "G"};

}  // namespace

std::optional<Aspect> route_aspect(std::string_view route_class, std::string_view line_letter,
                                   bool variant) {
  const auto row = std::ranges::find(classes, route_class, &ClassAspects::route_class);
  const bool known = row != classes.end();
  const ClassAspects& aspects = known ? *row : other_class;
  if (line_letter == "R") return Aspect{std::string(aspects.at_stop), true};
  if (line_letter == "G" && variant) return Aspect{std::string(aspects.at_caution_variant), true};
  if (known && line_letter != "V" && line_letter != "G") return std::nullopt;
  return Aspect{std::string(route_class), false};
}

}  // namespace ravelinox
