// Names are compared without regard to case. The innermost statement that knows a name decides.
#include "platform/data/table.hpp"

#include "platform/data/text_order.hpp"
#include "ravelinox/error.hpp"

namespace ravelinox::data {
namespace {

[[nodiscard]] std::string shown(const ColumnName& name) {
  const std::string column(name.column);
  return name.table.empty() ? column : std::string(name.table) + "." + column;
}

[[noreturn]] void fail(const ColumnName& name, const std::string& what) {
  throw Error(ErrorNumber::no_such_column, "The column \"" + shown(name) + "\", at character " +
                                               std::to_string(name.position + 1) +
                                               " of the statement, " + what + ".");
}

}  // namespace

FoundColumn Scope::find(const ColumnName& name) const {
  FoundColumn found{};
  for (const Member& member : members_) {
    if (!name.table.empty() && !equal_ignoring_case(name.table, member.table->name)) continue;
    for (const Column& column : member.table->columns) {
      if (!equal_ignoring_case(name.column, column.name)) continue;
      if (found.column != nullptr) fail(name, "is in more than one table; put the table before it");
      found = {member.table, &column, member.alias};
    }
  }
  if (found.column != nullptr) return found;
  if (outer_ == nullptr) fail(name, "is in none of the tables that the statement reads");
  return outer_->find(name);
}

}  // namespace ravelinox::data
