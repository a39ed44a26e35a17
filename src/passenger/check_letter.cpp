// A letter that depends on every character of a code and on its place. The widths of the sums are
// part of it: a counter of 8 bits without sign, terms of 16 bits, a sum of 32.
#include <cstdint>
#include <string>

#include "platform/arithmetic.hpp"
#include "platform/text_file.hpp"
#include "ravelinox/cmdl1.hpp"

namespace ravelinox {

std::string cmdl1::CheckSumDigit(const Variant& Codice) {
  constexpr std::size_t longest = 255;
  constexpr int letters = 26;
  const std::string code = to_code_page(to_text(Codice));
  if (code.empty() || code.size() > longest) {
    throw Error(ErrorNumber::overflow, "A code has 1 to 255 characters; this one has " +
                                           std::to_string(code.size()) + ".");
  }
  std::int32_t sum = 0;
  int position = 0;
  for (const char character : code) {
    ++position;
    sum += checked<std::int16_t>(std::int64_t{static_cast<std::uint8_t>(character)} * position);
  }
  return {static_cast<char>('A' + sum % letters)};
}

}  // namespace ravelinox
