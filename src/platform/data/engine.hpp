// What the slots ask of a database engine. Everything that is the engine's own stays behind this
// face, in the folder of its name.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/data/cells.hpp"
#include "platform/data/column_kind.hpp"

namespace ravelinox::data {

struct ResultColumn {
  std::string name;  ///< as the table has it
  ColumnKind kind;
};

/// What all results of one statement have in common.
struct ResultShape {
  std::vector<ResultColumn> columns;
  std::string table;     ///< whose rows can be changed in place; empty when they cannot
  std::string identity;  ///< the hidden column that names a row of `table`

  [[nodiscard]] bool is_writable() const { return !table.empty(); }

  /// The position of the row's identity, which follows the columns.
  [[nodiscard]] std::size_t identity_position() const { return columns.size(); }
};

struct Result {
  std::shared_ptr<const ResultShape> shape;  ///< none after a change of data
  Rows rows;
};

/// One assigned cell of a row. The old value is the one that was read.
struct CellChange {
  std::size_t column;  ///< position in the result
  StoredValue old_value;
  StoredValue new_value;
};

/// One open database file. Between calls it holds no lock.
class Database {
 public:
  Database() = default;
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  virtual ~Database() = default;  ///< closes the file

  /// Runs one statement. Rows are fetched whole; a change of data leaves `result` without shape.
  virtual void run(std::string_view statement, Result& result) = 0;

  /// Writes the changes to the row in one statement; 0x80040E38 when the row is gone or one of
  /// the cells no longer holds its old value.
  virtual void save_row(const std::shared_ptr<const ResultShape>& shape, std::int64_t identity,
                        std::span<const CellChange> changes) = 0;
};

/// Opens an existing file. 0x80004005 for anything that is no usable database.
[[nodiscard]] std::shared_ptr<Database> open_database(const std::string& path,
                                                      std::chrono::milliseconds patience);

}  // namespace ravelinox::data
