// The floor: the same work by hand over the database engine's C interface, every statement prepared
// once, with the journal, cache and indexes that users get.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>

namespace ravelinox::bench {

class FloorDatabase {
 public:
  explicit FloorDatabase(const std::string& path);
  [[nodiscard]] sqlite3* handle() const { return handle_.get(); }
  void run(const char* sql) const;

 private:
  struct Closer {
    void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
  };
  std::unique_ptr<sqlite3, Closer> handle_;
};

/// A prepared statement. `bind` starts it anew; texts must outlive its run.
class FloorStatement {
 public:
  FloorStatement(const FloorDatabase& database, const char* sql);

  template <class... Values>
  FloorStatement& bind(Values... values) {
    sqlite3_reset(handle_.get());
    int index = 0;
    (bind_one(++index, values), ...);
    return *this;
  }

  bool step() { return sqlite3_step(handle_.get()) == SQLITE_ROW; }
  /// Runs to the end, as a change of data, or reading every column of every row.
  int run();
  [[nodiscard]] std::int64_t whole(int column) const {
    return sqlite3_column_int64(handle_.get(), column);
  }
  [[nodiscard]] bool null(int column) const {
    return sqlite3_column_type(handle_.get(), column) == SQLITE_NULL;
  }
  [[nodiscard]] std::string text(int column) const;
  void finish() { sqlite3_reset(handle_.get()); }

 private:
  void bind_one(int index, std::int64_t value) { sqlite3_bind_int64(handle_.get(), index, value); }
  void bind_one(int index, const char* text) {
    sqlite3_bind_text(handle_.get(), index, text, -1, SQLITE_STATIC);
  }

  struct Finaliser {
    void operator()(sqlite3_stmt* handle) const { sqlite3_finalize(handle); }
  };
  std::unique_ptr<sqlite3_stmt, Finaliser> handle_;
};

/// Prepares the day by hand: the same reads and the same final writes, expected times alone drawn
/// more simply. Returns the rows written.
int floor_set_up(const FloorDatabase& database, std::int32_t start);

}  // namespace ravelinox::bench
