// The thin wrapping of the engine's calls.
#include "platform/data/sqlite/file.hpp"

#include <algorithm>
#include <atomic>
#include <limits>
#include <utility>

#include "platform/data/sqlite/engine_error.hpp"
#include "platform/data/statistics.hpp"

namespace ravelinox::data {
namespace {

std::atomic<std::uint64_t> prepares{0};

}  // namespace

std::uint64_t engine_prepares() noexcept { return prepares; }

Prepared::Prepared(File& file, std::string_view sql, bool kept) : file_(&file) {
  ++prepares;
  sqlite3_stmt* statement = nullptr;
  const int code = sqlite3_prepare_v3(file.handle(), sql.data(), static_cast<int>(sql.size()),
                                      kept ? SQLITE_PREPARE_PERSISTENT : 0, &statement, nullptr);
  statement_.reset(statement);
  file.check(code);
}

void Prepared::bind(int parameter, const StoredValue& value) {
  sqlite3_stmt* statement = statement_.get();
  const auto length = static_cast<sqlite3_uint64>(value.text.size());
  int code = SQLITE_OK;
  switch (value.storage) {
    case Storage::null:
      code = sqlite3_bind_null(statement, parameter);
      break;
    case Storage::whole:
      code = sqlite3_bind_int64(statement, parameter, value.whole);
      break;
    case Storage::real:
      code = sqlite3_bind_double(statement, parameter, value.real);
      break;
    case Storage::text:  // an empty view may have no address, which would bind Null
      code = sqlite3_bind_text64(statement, parameter, length == 0 ? "" : value.text.data(), length,
                                 SQLITE_STATIC, SQLITE_UTF8);
      break;
    case Storage::bytes:
      code = sqlite3_bind_blob64(statement, parameter, length == 0 ? "" : value.text.data(), length,
                                 SQLITE_STATIC);
      break;
  }
  file_->check(code);
}

void Prepared::bind(int parameter, std::int64_t value) {
  file_->check(sqlite3_bind_int64(statement_.get(), parameter, value));
}

bool Prepared::step(std::string_view subject) {
  const int code = sqlite3_step(statement_.get());
  if (code == SQLITE_ROW) return true;
  if (code != SQLITE_DONE) file_->check(code, subject);
  return false;
}

StoredValue Prepared::value(int column) const {
  sqlite3_stmt* statement = statement_.get();
  switch (sqlite3_column_type(statement, column)) {
    case SQLITE_INTEGER:
      return StoredValue::of_whole(sqlite3_column_int64(statement, column));
    case SQLITE_FLOAT:
      return StoredValue::of_real(sqlite3_column_double(statement, column));
    case SQLITE_TEXT: {
      const auto* text = sqlite3_column_text(statement, column);
      const auto length = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
      return StoredValue::of_text({reinterpret_cast<const char*>(text), length});
    }
    case SQLITE_BLOB: {
      const void* bytes = sqlite3_column_blob(statement, column);
      const auto length = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
      return {Storage::bytes, 0, 0, {static_cast<const char*>(bytes), length}};
    }
    default:
      return {};
  }
}

void Prepared::add_row_to(Rows& rows, int width) const {
  for (int column = 0; column < width; ++column) rows.add(value(column));
}

bool Prepared::was_recompiled() noexcept {
  const int count =
      sqlite3_stmt_status(statement_.get(), SQLITE_STMTSTATUS_REPREPARE, /*resetFlg=*/1);
  prepares += static_cast<std::uint64_t>(count);
  return count > 0;
}

File::File(const std::string& name, std::string path, int flags, std::chrono::milliseconds patience)
    : path_(std::move(path)) {
  sqlite3* handle = nullptr;
  // One thread at a time uses a file, so the engine needs no locks of its own inside it.
  const int code = sqlite3_open_v2(name.c_str(), &handle, flags | SQLITE_OPEN_NOMUTEX, nullptr);
  handle_.reset(handle);
  check(code);
  sqlite3_extended_result_codes(handle, 1);
  wait_at_most(patience);
}

void File::wait_at_most(std::chrono::milliseconds patience) noexcept {
  const auto longest = std::chrono::milliseconds(std::numeric_limits<int>::max());
  sqlite3_busy_timeout(handle(), static_cast<int>(std::min(patience, longest).count()));
}

void File::check(int code, std::string_view table) {
  if (code == SQLITE_OK) return;
  if (failure) throw std::exchange(failure, std::nullopt).value();
  std::string subject = "The database file \"" + path_ + "\"";
  if (!table.empty()) subject = "The table \"" + std::string(table) + "\" of \"" + path_ + "\"";
  const Error error = engine_error(
      code, subject, handle() == nullptr ? sqlite3_errstr(code) : sqlite3_errmsg(handle()));
  if (code == SQLITE_ERROR || code == SQLITE_SCHEMA)
    throw StaleStatement(error.code(), error.what());
  throw error;
}

void File::execute(const std::string& sql) {
  ++prepares;
  check(sqlite3_exec(handle(), sql.c_str(), nullptr, nullptr, nullptr));
}

std::string File::first_cell(std::string_view sql) {
  Prepared statement(*this, sql, false);
  if (!statement.step({})) return {};
  return std::string(statement.value(0).text);
}

}  // namespace ravelinox::data
