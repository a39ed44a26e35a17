// The draw of a delay cause: a table of codes for each class, and "--" where the index of the draw
// lies beyond it.
#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <string_view>

#include "platform/random.hpp"
#include "ravelinox/cmdl1.hpp"

namespace ravelinox {

namespace {

using Codes = std::span<const std::string_view>;

constexpr std::array<std::string_view, 19> failure{
    "ES 01", "ES 03", "ES 04", "ES 05", "IA 10", "IS 10", "LP 10", "LG 10", "MR 01", "MR 02",
    "MR 03", "ML 01", "ML 02", "ML 03", "MM 03", "MV 01", "MV 02", "LD 10", "ML 08"};
constexpr std::array<std::string_view, 23> slight{
    "CF 01", "CL 01", "CL 02", "ES 05", "CP 10", "IS 10", "CS 01", "CS 02",
    "MR 01", "MR 02", "MR 03", "ML 01", "ML 02", "ML 03", "MM 03", "MV 01",
    "MV 02", "MF 01", "MF 02", "MF 03", "LD 10", "CS 99", "ML 08"};
constexpr std::array<std::string_view, 4> possible{"CS 01", "CF 01", "CT 02", "II 02"};
constexpr std::array<std::string_view, 4> common{"CS 01", "CS 02", "CT 01", "II 01"};

/// The index of a draw r is Int((r × factor) to the power): the power makes the codes unequal.
struct DelayClass {
  std::string_view name;
  Codes codes;
  double factor;
  int power;
};

constexpr std::array<DelayClass, 4> classes{{{"Guasto", failure, 19.5, 1},
                                             {"Ritardo Lieve", slight, 24, 1},
                                             {"Ritardo Eventuale", possible, 20, 2},
                                             {"Ritardo Comune", common, 5, 1}}};

}  // namespace

Variant cmdl1::CausaRitardo(const Variant& Motivazione) {
  RandomSource& random = *platform().random;
  random.reseed();
  const auto* name = Motivazione.get_if<std::string>();
  if (name == nullptr) return {};
  const auto drawn = std::ranges::find(classes, std::string_view(*name), &DelayClass::name);
  if (drawn == classes.end()) return {};
  const double scaled = static_cast<double>(random.draw()) * drawn->factor;
  const auto index = static_cast<std::size_t>(drawn->power == 1 ? scaled : scaled * scaled);
  return index < drawn->codes.size() ? drawn->codes[index] : std::string_view("--");
}

}  // namespace ravelinox
