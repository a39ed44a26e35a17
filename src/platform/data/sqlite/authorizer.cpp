#include "platform/data/sqlite/authorizer.hpp"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/data/sqlite/functions.hpp"

namespace ravelinox::data {
namespace {

[[nodiscard]] bool is_one_of(const char* name, std::span<const char* const> names) {
  return std::ranges::any_of(names, [&](const char* one) { return std::string_view(one) == name; });
}

[[nodiscard]] bool is_allowed(const File& file, const char* table) {
  return std::ranges::any_of(*file.allowed_tables,
                             [&](const std::string& allowed) { return allowed == table; });
}

/// Inside a view or a trigger: rows of the file, in every way, but not the file as a whole.
[[nodiscard]] bool is_row_work(int action) {
  constexpr std::array allowed{SQLITE_SELECT, SQLITE_READ,     SQLITE_INSERT,   SQLITE_UPDATE,
                               SQLITE_DELETE, SQLITE_FUNCTION, SQLITE_RECURSIVE};
  return std::ranges::find(allowed, action) != allowed.end();
}

int decide(void* user, int action, const char* first, const char* second, const char* /*database*/,
           const char* inside) noexcept {
  constexpr std::array functions{kNumber, kNeeded, kDivide, kCompare, kMatches, kKept};
  const File& file = *static_cast<const File*>(user);
  bool allowed = false;
  if (file.allowed_tables == nullptr) {
    allowed = true;
  } else if (inside != nullptr) {
    allowed = is_row_work(action);
  } else if (action == SQLITE_READ || action == SQLITE_UPDATE) {
    allowed = is_allowed(file, first);
  } else if (action == SQLITE_FUNCTION) {
    allowed = is_one_of(second, functions);
  } else {
    allowed = action == SQLITE_SELECT;
  }
  return allowed ? SQLITE_OK : SQLITE_DENY;
}

}  // namespace

void add_authorizer(File& file) {
  file.check(sqlite3_set_authorizer(file.handle(), decide, &file));
}

}  // namespace ravelinox::data
