// The engine's side of a session: statements kept ready by their shape.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/data/engine.hpp"
#include "platform/data/lexer.hpp"
#include "platform/data/recent.hpp"
#include "platform/data/sqlite/catalog.hpp"
#include "platform/data/sqlite/checkpoints.hpp"
#include "platform/data/sqlite/file.hpp"
#include "platform/data/sqlite/rendered.hpp"

namespace ravelinox::data {

class SqliteDatabase final : public Database {
 public:
  SqliteDatabase(std::unique_ptr<File> file, std::chrono::milliseconds patience);

  void run(std::string_view statement, Result& result) override;
  void save_row(const std::shared_ptr<const ResultShape>& shape, std::int64_t identity,
                std::span<const CellChange> changes) override;

 private:
  struct Plan {
    Rendered rendered;
    Prepared statement;
  };
  struct RowUpdate {
    std::shared_ptr<const ResultShape> shape;  // kept alive: its address is part of the key
    std::vector<std::string> tables;
    Prepared statement;
  };

  /// Runs `work`, once more with fresh knowledge of the tables if they changed meanwhile.
  template <class Work>
  void with_fresh_tables(Work work);
  void forget_tables() noexcept;

  [[nodiscard]] Plan& plan();
  void fetch(Plan& plan, Result& result);
  void change(Plan& plan);
  void draw_rows(const Rendered& rendered, Rows& rows) const;

  [[nodiscard]] RowUpdate& row_update(const std::shared_ptr<const ResultShape>& shape,
                                      std::span<const CellChange> changes);

  /// Turns a foreign file to the write-ahead log, unless another program prevents it.
  void before_change();

  std::unique_ptr<File> file_;
  std::chrono::milliseconds patience_;
  Checkpoints checkpoints_;
  Catalog catalog_;
  LexedStatement lexed_;
  std::vector<std::string> scratch_;  // texts made for parameters
  std::string key_;
  int log_attempt_due_ = 0;  ///< changes until the next attempt to turn to the log; -1 for never
  int log_attempt_gap_ = 1;

  static constexpr std::size_t kKept = 64;
  Recent<Plan, kKept> plans_;
  Recent<RowUpdate, kKept> row_updates_;
};

}  // namespace ravelinox::data
