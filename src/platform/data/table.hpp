// Tables as statements see them, and the resolution of names.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/data/column_kind.hpp"
#include "platform/data/syntax.hpp"

namespace ravelinox::data {

struct Column {
  std::string name;
  ColumnKind kind;
};

struct Table {
  std::string name;
  bool is_view = false;
  std::string identity;  ///< the hidden column that names a row; empty when there is none
  std::vector<Column> columns;
};

/// A column and the alias under which the statement reads its table.
struct FoundColumn {
  const Table* table;
  const Column* column;
  std::string alias;
};

/// The tables whose columns may be named at one place of a statement; around them those of the
/// statement that it stands in.
class Scope {
 public:
  explicit Scope(const Scope* outer = nullptr) : outer_(outer) {}

  void add(const Table& table, std::string alias) {
    members_.push_back({&table, std::move(alias)});
  }

  /// 0x80040E10 when no table, or more than one, has such a column.
  [[nodiscard]] FoundColumn find(const ColumnName& name) const;

  struct Member {
    const Table* table;
    std::string alias;
  };
  [[nodiscard]] const std::vector<Member>& members() const { return members_; }

 private:
  const Scope* outer_;
  std::vector<Member> members_;
};

}  // namespace ravelinox::data
