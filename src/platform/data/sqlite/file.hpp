// One open file of the engine, and statements on it. Every return code goes through `File::check`.
#pragma once

#include <sqlite3.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/data/cells.hpp"
#include "ravelinox/error.hpp"

namespace ravelinox::data {

class File;

/// A failure that may come from knowing the file's tables as they were, before another program
/// changed them.
class StaleStatement : public Error {
 public:
  using Error::Error;
};

/// A compiled statement. Bound texts are not copied: they must live until `reset`.
class Prepared {
 public:
  Prepared(File& file, std::string_view sql, bool kept);

  void bind(int parameter, const StoredValue& value);
  void bind(int parameter, std::int64_t value);

  /// Whether there is a row. `subject` names the table for the message of a failure.
  [[nodiscard]] bool step(std::string_view subject);

  /// Ends the run and with it the engine's locks; the next run may follow.
  void reset() noexcept { sqlite3_reset(statement_.get()); }

  [[nodiscard]] StoredValue value(int column) const;
  void add_row_to(Rows& rows, int width) const;

  /// Whether the engine had to compile the statement anew since the last question, because the
  /// tables changed under it.
  [[nodiscard]] bool was_recompiled() noexcept;

 private:
  struct Finalizer {
    void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
  };
  File* file_;
  std::unique_ptr<sqlite3_stmt, Finalizer> statement_;
};

/// Ends a statement's run on every path.
class Run {
 public:
  explicit Run(Prepared& statement) : statement_(statement) {}
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;
  ~Run() { statement_.reset(); }

 private:
  Prepared& statement_;
};

class File {
 public:
  /// Opens with the engine's flags. `name` is what the engine is told, `path` what messages show.
  File(const std::string& name, std::string path, int flags, std::chrono::milliseconds patience);
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  [[nodiscard]] sqlite3* handle() const noexcept { return handle_.get(); }
  [[nodiscard]] const std::string& path() const noexcept { return path_; }

  /// How long the engine waits for another program's lock from now on.
  void wait_at_most(std::chrono::milliseconds patience) noexcept;

  /// Throws unless the code says that all is well.
  void check(int code, std::string_view table = {});

  /// Runs statements of our own that give no rows.
  void execute(const std::string& sql);

  /// The first cell of a statement of our own, as text; empty without a row.
  [[nodiscard]] std::string first_cell(std::string_view sql);

  /// What a function of ours, called by the engine, wants to throw. `check` raises it.
  std::optional<Error> failure;

  /// While set, the only tables that statements may touch.
  const std::vector<std::string>* allowed_tables = nullptr;

 private:
  struct Closer {
    void operator()(sqlite3* handle) const noexcept { sqlite3_close_v2(handle); }
  };
  std::string path_;
  std::unique_ptr<sqlite3, Closer> handle_;
};

/// Confines the engine to some tables for a while.
class Confined {
 public:
  Confined(File& file, const std::vector<std::string>& tables) : file_(file) {
    file_.allowed_tables = &tables;
  }
  Confined(const Confined&) = delete;
  Confined& operator=(const Confined&) = delete;
  ~Confined() { file_.allowed_tables = nullptr; }

 private:
  File& file_;
};

}  // namespace ravelinox::data
