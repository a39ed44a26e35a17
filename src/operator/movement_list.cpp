// The lists of recorded movements: one space and a number for each.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/number_text.hpp"
#include "ravelinox/error.hpp"
#include "ravelinox/telephone.hpp"

namespace ravelinox {

MovementList& MovementList::operator=(std::string text) {
  *this = MovementList();
  text_ = std::move(text);
  return *this;
}

void MovementList::append(std::int32_t train) { text_ += " " + std::to_string(train); }

bool MovementList::contains(std::int32_t train) {
  constexpr std::size_t most_items = 32768;  // counted with a signed 16-bit index from 0
  parse();
  if (items_ > most_items) {
    throw Error(ErrorNumber::overflow,
                "The movement list holds more than 32768 items; it cannot be searched.");
  }
  if (numbers_.contains(train)) return true;
  if (unreadable_item_) {
    throw Error(ErrorNumber::type_mismatch,
                "The movement list holds an item that is not a number; it cannot be searched.");
  }
  return false;
}

/// Reads the items that came since the last time. The text only grows at its end, by whole items;
/// whatever else happens to it goes through the assignment, which starts afresh.
void MovementList::parse() {
  if (parsed_ == text_.size()) return;
  // The item before the first separator; after a parse the next text starts with one.
  std::size_t begin = parsed_ == 0 ? 0 : parsed_ + 1;
  while (begin <= text_.size()) {
    const std::size_t end = std::min(text_.find(' ', begin), text_.size());
    const std::string_view item = std::string_view(text_).substr(begin, end - begin);
    ++items_;
    if (!item.empty() && !unreadable_item_) {
      const std::optional<double> number = parse_number(item);
      if (number) numbers_.insert(*number);
      unreadable_item_ = !number;
    }
    begin = end + 1;
  }
  parsed_ = text_.size();
}

}  // namespace ravelinox
