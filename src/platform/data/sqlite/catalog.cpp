// Reads the engine's description of a table. A view is a table whose rows have no identity.
#include "platform/data/sqlite/catalog.hpp"

#include <algorithm>
#include <array>

#include "platform/data/text_order.hpp"

namespace ravelinox::data {
namespace {

constexpr std::string_view kFindTable =
    "SELECT name, type, wr FROM pragma_table_list WHERE schema = 'main' AND name = ?1 COLLATE "
    "NOCASE AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\'";

// Hidden columns of virtual tables (1) are not part of "*"; computed ones (2, 3) are.
constexpr std::string_view kListColumns =
    "SELECT name, type FROM pragma_table_xinfo(?1) WHERE hidden <> 1 ORDER BY cid";

/// The engine's names for a row's identity, unless columns have taken them.
[[nodiscard]] std::string identity_of(const std::vector<Column>& columns) {
  constexpr auto names = std::to_array<std::string_view>({"rowid", "_rowid_", "oid"});
  const auto* free = std::ranges::find_if(names, [&](std::string_view name) {
    return std::ranges::none_of(
        columns, [&](const Column& column) { return equal_ignoring_case(column.name, name); });
  });
  return free == names.end() ? std::string() : std::string(*free);
}

}  // namespace

const Table& Catalog::table(const TableName& name) {
  const auto known = tables_.find(name.name);
  if (known != tables_.end()) return known->second;
  Table table = read(name.name);
  if (table.name.empty())
    throw Error(ErrorNumber::no_such_table, "The database file \"" + file_.path() +
                                                "\" has no table \"" + std::string(name.name) +
                                                "\", which the statement names at character " +
                                                std::to_string(name.position + 1) + ".");
  return tables_.emplace(name.name, std::move(table)).first->second;
}

Table Catalog::read(std::string_view name) {
  Table table;
  Prepared find(file_, kFindTable, false);
  find.bind(1, StoredValue::of_text(name));
  if (!find.step({})) return table;
  table.name = find.value(0).text;
  table.is_view = find.value(1).text == "view";
  const bool has_identity = find.value(1).text == "table" && find.value(2).whole == 0;

  Prepared list(file_, kListColumns, false);
  list.bind(1, StoredValue::of_text(table.name));
  while (list.step(table.name))
    table.columns.push_back({std::string(list.value(0).text), kind_of(list.value(1).text)});
  if (has_identity) table.identity = identity_of(table.columns);
  return table;
}

}  // namespace ravelinox::data
