// A bounded store of the things used most recently.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ravelinox::data {

/// Keeps at most `Capacity` values by key; the one unused for longest makes room. With some dozens
/// of entries a walk over their hashes beats every cleverer structure.
template <class Value, std::size_t Capacity>
class Recent {
 public:
  /// The value, or null. Valid until the next `put` or `clear`.
  [[nodiscard]] Value* find(std::string_view key) {
    const std::size_t hash = std::hash<std::string_view>()(key);
    for (Entry& entry : entries_) {
      if (entry.hash != hash || entry.key != key) continue;
      entry.used = ++clock_;
      return &entry.value;
    }
    return nullptr;
  }

  /// Adds a value whose key is not in the store.
  Value& put(std::string_view key, Value value) {
    if (entries_.size() == Capacity)
      entries_.erase(std::ranges::min_element(entries_, {}, &Entry::used));
    const std::size_t hash = std::hash<std::string_view>()(key);
    return entries_.emplace_back(Entry{hash, ++clock_, std::string(key), std::move(value)}).value;
  }

  void clear() { entries_.clear(); }

 private:
  struct Entry {
    std::size_t hash;
    std::uint64_t used;
    std::string key;
    Value value;
  };

  std::vector<Entry> entries_;
  std::uint64_t clock_ = 0;
};

}  // namespace ravelinox::data
