// Train numbers: those of the feed where it has them, made ones elsewhere.
#include "host/import/numbers.hpp"

#include <algorithm>
#include <charconv>
#include <map>

namespace ravelinox::host {
namespace {

constexpr std::int32_t highest_number = 999'999;
constexpr std::int32_t lowest_step = 1'000;
constexpr std::int32_t most_variants = 999;  // beyond, the short name is no train number

bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool is_separator(char c) { return c == ' ' || c == '*' || c == '/' || c == '-' || c == '_'; }

std::optional<std::int32_t> number_from(std::string_view digits) {
  std::int32_t number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error != std::errc() || number < 1 || number > highest_number) return {};
  return number;
}

}  // namespace

std::optional<std::int32_t> number_in(std::string_view short_name) {
  for (std::size_t at = 0; at < short_name.size();) {
    auto end = at;
    while (end < short_name.size() && !is_separator(short_name[end])) ++end;
    const auto word = short_name.substr(at, end - at);
    if (!word.empty() && std::all_of(word.begin(), word.end(), is_digit)) return number_from(word);
    at = end + 1;
  }
  return {};
}

TrainNumbers::TrainNumbers(std::vector<TripName> trips) {
  std::sort(trips.begin(), trips.end(),
            [](const TripName& a, const TripName& b) { return a.trip < b.trip; });
  std::int32_t highest = 0;
  for (const auto& trip : trips)
    highest = std::max(highest, number_in(trip.short_name).value_or(0));
  for (step_ = lowest_step; step_ <= highest;) step_ *= 10;
  std::map<std::int32_t, std::int32_t> variants;
  std::vector<const std::string*> without;
  for (const auto& [trip, short_name] : trips) {
    const auto number = number_in(short_name);
    const auto variant = number ? variants[*number]++ : 0;
    if (number && variant <= most_variants) {
      taken_.insert(numbers_[trip] = variant * step_ + *number);
    } else {
      without.push_back(&trip);
    }
  }
  next_ = step_;
  for (const auto* trip : without) numbers_[*trip] = made();
}

std::int32_t TrainNumbers::made() {
  do {
    ++next_;
  } while (!taken_.insert(next_).second);
  return next_;
}

}  // namespace ravelinox::host
