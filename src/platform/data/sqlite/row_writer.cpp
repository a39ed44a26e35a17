// Appends rows by one kept INSERT for each table, all in one transaction.
#include <chrono>
#include <map>
#include <optional>
#include <utility>

#include "platform/data/paths.hpp"
#include "platform/data/sqlite/catalog.hpp"
#include "platform/data/sqlite/expressions.hpp"
#include "platform/data/sqlite/opening.hpp"
#include "ravelinox/database.hpp"

namespace ravelinox {

using data::Catalog;
using data::File;
using data::Prepared;
using data::Table;

struct RowWriter::Impl {
  explicit Impl(const std::string& path)
      : file(data::open_file(data::with_forward_slashes(path), std::chrono::seconds(5))),
        catalog(*file) {
    file->execute("BEGIN IMMEDIATE");
  }

  struct Insert {
    const Table* table;
    Prepared statement;
  };

  [[nodiscard]] Insert& insert_into(std::string_view name) {
    const auto known = inserts.find(name);
    if (known != inserts.end()) return known->second;
    const Table& table = catalog.table({name, 0});
    std::string sql = data::concat("INSERT INTO ", data::quoted_name(table.name), " VALUES (");
    for (std::size_t i = 0; i < table.columns.size(); ++i) sql += i == 0 ? "?" : ", ?";
    return inserts.emplace(name, Insert{&table, Prepared(*file, sql + ")", true)}).first->second;
  }

  std::unique_ptr<File> file;
  Catalog catalog;
  std::map<std::string, Insert, std::less<>> inserts;
};

namespace {

void require_count(const Table& table, std::size_t count) {
  if (table.columns.size() == count) return;
  throw Error(ErrorNumber::type_mismatch, "A row of the table \"" + table.name + "\" has " +
                                              std::to_string(table.columns.size()) +
                                              " values, not " + std::to_string(count) + ".");
}

}  // namespace

RowWriter::RowWriter(const std::string& path) : impl_(std::make_unique<Impl>(path)) {}

RowWriter::~RowWriter() = default;  // closing the file takes an unfinished transaction back

void RowWriter::append(std::string_view table, std::span<const Variant> values) {
  if (!impl_) throw Error(ErrorNumber::object_closed, "The row writer has committed or failed.");
  try {
    Impl::Insert& insert = impl_->insert_into(table);
    require_count(*insert.table, values.size());
    const data::Run run(insert.statement);
    std::vector<std::string> texts(values.size());
    for (std::size_t i = 0; i < values.size(); ++i)
      insert.statement.bind(static_cast<int>(i) + 1,
                            data::to_stored(values[i], insert.table->columns[i].kind, texts[i]));
    (void)insert.statement.step(insert.table->name);
  } catch (...) {
    impl_.reset();
    throw;
  }
}

void RowWriter::commit() {
  if (!impl_) throw Error(ErrorNumber::object_closed, "The row writer has committed or failed.");
  const auto spent = std::exchange(impl_, nullptr);
  spent->inserts.clear();
  spent->file->execute("COMMIT");
}

}  // namespace ravelinox
