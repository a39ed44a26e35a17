// The tables of an open file, looked up on first use and kept until they change.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "platform/data/sqlite/file.hpp"
#include "platform/data/table.hpp"

namespace ravelinox::data {

class Catalog {
 public:
  explicit Catalog(File& file) : file_(file) {}

  /// 0x80040E37 when the file has no such table or view. Valid until `forget`.
  [[nodiscard]] const Table& table(const TableName& name);

  void forget() noexcept { tables_.clear(); }

 private:
  [[nodiscard]] Table read(std::string_view name);

  File& file_;
  std::map<std::string, Table, std::less<>> tables_;  // by name as the statement spells it
};

}  // namespace ravelinox::data
