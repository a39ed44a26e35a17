// Whole statements. Every table gets an alias, every column its table's alias, and the columns of
// "*" are spelled out, so that the engine resolves nothing by itself.
#include <algorithm>

#include "platform/data/sqlite/expressions.hpp"
#include "platform/data/sqlite/functions.hpp"
#include "platform/data/sqlite/renderer.hpp"

namespace ravelinox::data {
namespace {

enum class ColumnForm : std::uint8_t { plain, number };

class Renderer {
 public:
  Renderer(const LexedStatement& lexed, Catalog& catalog) : lexed_(lexed), catalog_(catalog) {}

  [[nodiscard]] Rendered run(const Select& select) {
    auto shape = std::make_shared<ResultShape>();
    result_.draws_rows = select.order && select.order->random;
    if (result_.draws_rows) result_.drawn_count = select.top;
    result_.sql = rendered(select, nullptr, ColumnForm::plain, shape.get());
    result_.shape = std::move(shape);
    return finished();
  }

  [[nodiscard]] Rendered run(const Update& update) {
    Scope scope;
    const Table& table = include(update.table, scope);
    if (table.is_view)
      refuse(lexed_.statement, update.table.position, "this is a view, which cannot be changed");
    result_.sql =
        concat("UPDATE ", quoted_name(table.name), " AS ", scope.members()[0].alias, " SET ");
    Expressions expressions = expressions_in(scope);
    for (const Assignment& assignment : update.assignments) {
      const FoundColumn target = scope.find(assignment.column);
      if (&assignment != &update.assignments.front()) result_.sql += ", ";
      result_.sql += concat(quoted_name(target.column->name), " = ",
                            expressions.assigned(*assignment.value, target.column->kind));
    }
    if (update.where) result_.sql += concat(" WHERE ", expressions.condition(*update.where));
    return finished();
  }

 private:
  [[nodiscard]] Rendered finished() {
    result_.parameters = parameters_.take();
    return std::move(result_);
  }

  /// Adds a table to a scope under an alias that no other scope uses.
  const Table& include(const TableName& name, Scope& scope) {
    const Table& table = catalog_.table(name);
    scope.add(table, concat("t", std::to_string(result_.tables.size())));
    result_.tables.push_back(table.name);
    return table;
  }

  [[nodiscard]] Expressions expressions_in(const Scope& scope) {
    return {lexed_, parameters_, scope,
            [this](const Select& select, const Scope& outer, bool as_number) {
              return rendered(select, &outer, as_number ? ColumnForm::number : ColumnForm::plain,
                              nullptr);
            }};
  }

  /// `shape`, when given, takes the description of the result.
  [[nodiscard]] std::string rendered(const Select& select, const Scope* outer, ColumnForm form,
                                     ResultShape* shape) {
    Scope scope(outer);
    const Table& table = include(select.table, scope);
    if (select.join) include(select.join->table, scope);
    Expressions expressions = expressions_in(scope);

    std::string sql = select.distinct ? "SELECT DISTINCT " : "SELECT ";
    sql += columns(select, scope, form, shape);
    if (shape != nullptr && !select.join && !select.distinct && !table.identity.empty()) {
      shape->table = table.name;
      shape->identity = table.identity;
      sql += concat(", ", scope.members()[0].alias, ".", table.identity);
    }
    sql += from(select, scope, expressions);
    if (select.where) sql += concat(" WHERE ", expressions.condition(*select.where));
    return sql + ending(select, scope);
  }

  [[nodiscard]] std::string columns(const Select& select, const Scope& scope, ColumnForm form,
                                    ResultShape* shape) const {
    std::string sql;
    for (const FoundColumn& column : selected(select, scope)) {
      if (shape != nullptr) shape->columns.push_back({column.column->name, column.column->kind});
      if (!sql.empty()) sql += ", ";
      sql += form == ColumnForm::number ? as_number(column) : sql_of(column);
      if (select.distinct && column.column->kind == ColumnKind::text)
        sql += concat(" COLLATE ", kAnyCase);
    }
    return sql;
  }

  [[nodiscard]] static std::vector<FoundColumn> selected(const Select& select, const Scope& scope) {
    std::vector<FoundColumn> result;
    for (const ColumnName& name : select.columns) result.push_back(scope.find(name));
    if (!select.columns.empty()) return result;
    for (const Scope::Member& member : scope.members())
      for (const Column& column : member.table->columns)
        result.push_back({member.table, &column, member.alias});
    return result;
  }

  /// Columns that hold numbers as the engine understands them need no conversion.
  [[nodiscard]] static std::string as_number(const FoundColumn& column) {
    return range_of(column.column->kind) ? sql_of(column) : Expressions::number_of(column);
  }

  [[nodiscard]] static std::string from(const Select& select, const Scope& scope,
                                        Expressions& expressions) {
    const auto named = [](const Scope::Member& member) {
      return concat(quoted_name(member.table->name), " AS ", member.alias);
    };
    std::string sql = concat(" FROM ", named(scope.members()[0]));
    if (!select.join) return sql;
    const Join& join = *select.join;
    return concat(sql, " INNER JOIN ", named(scope.members()[1]), " ON ",
                  expressions.comparison(Operation::equal, expressions.operand(join.left),
                                         expressions.operand(join.right), Precision::true_or_not));
  }

  [[nodiscard]] std::string ending(const Select& select, const Scope& scope) {
    std::string sql;
    if (select.order) {
      const FoundColumn column = scope.find(select.order->column);
      if (select.order->random) return sql;  // rows are drawn once they have been read
      sql += concat(" ORDER BY ", sort_key(column), select.order->descending ? " DESC" : " ASC");
    }
    if (select.top) sql += concat(" LIMIT ", parameters_.use({*select.top, Form::number}));
    return sql;
  }

  [[nodiscard]] static std::string sort_key(const FoundColumn& column) {
    switch (column.column->kind) {
      case ColumnKind::boolean:
        return sql_of(column) + " = 0";  // True, -1 as a number, comes first
      case ColumnKind::text:
      case ColumnKind::as_stored:
        return concat(sql_of(column), " COLLATE ", kAnyCase);
      default:
        return sql_of(column);
    }
  }

  const LexedStatement& lexed_;
  Catalog& catalog_;
  Parameters parameters_;
  Rendered result_;
};

}  // namespace

Rendered render(const Statement& statement, const LexedStatement& lexed, Catalog& catalog) {
  return std::visit([&](const auto& parsed) { return Renderer(lexed, catalog).run(parsed); },
                    statement);
}

}  // namespace ravelinox::data
