// Runs statements. On the second use of a shape nothing is parsed and nothing compiled: the
// literals are bound and the engine steps.
#include "platform/data/sqlite/database.hpp"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "platform/data/parser.hpp"
#include "platform/data/sqlite/expressions.hpp"
#include "platform/data/sqlite/opening.hpp"
#include "platform/data/sqlite/renderer.hpp"
#include "platform/random.hpp"

namespace ravelinox::data {
namespace {

constexpr int kNever = -1;
constexpr int kLongestGap = 1024;

}  // namespace

std::shared_ptr<Database> open_database(const std::string& path,
                                        std::chrono::milliseconds patience) {
  return std::make_shared<SqliteDatabase>(open_file(path, patience), patience);
}

SqliteDatabase::SqliteDatabase(std::unique_ptr<File> file, std::chrono::milliseconds patience)
    : file_(std::move(file)), patience_(patience), checkpoints_(*file_), catalog_(*file_) {
  const bool fixed = sqlite3_db_readonly(file_->handle(), "main") == 1;
  if (fixed || has_write_ahead_log(*file_)) log_attempt_due_ = kNever;
}

void SqliteDatabase::run(std::string_view statement, Result& result) {
  result.shape.reset();
  lex(statement, lexed_);
  with_fresh_tables([&] {
    Plan& ready = plan();
    if (ready.rendered.shape == nullptr) {
      change(ready);
    } else {
      fetch(ready, result);
    }
  });
}

template <class Work>
void SqliteDatabase::with_fresh_tables(Work work) {
  try {
    return work();
  } catch (const StaleStatement&) {
    forget_tables();
  }
  work();
}

void SqliteDatabase::forget_tables() noexcept {
  plans_.clear();
  row_updates_.clear();
  catalog_.forget();
}

SqliteDatabase::Plan& SqliteDatabase::plan() {
  if (Plan* known = plans_.find(lexed_.shape)) return *known;
  const Statement parsed = parse(lexed_);
  Rendered rendered;
  try {
    rendered = render(parsed, lexed_, catalog_);
  } catch (const Error&) {
    catalog_.forget();  // the tables may have grown what the statement names
    rendered = render(parsed, lexed_, catalog_);
  }
  const Confined confined(*file_, rendered.tables);
  Prepared statement(*file_, rendered.sql, true);
  return plans_.put(lexed_.shape, {std::move(rendered), std::move(statement)});
}

void SqliteDatabase::fetch(Plan& plan, Result& result) {
  const Rendered& rendered = plan.rendered;
  const std::size_t width =
      rendered.shape->columns.size() + (rendered.shape->is_writable() ? 1 : 0);
  result.rows.clear(width);
  {
    const Confined confined(*file_, rendered.tables);
    const Run run(plan.statement);
    bind_literals(plan.statement, rendered.parameters, lexed_.literals, scratch_);
    while (plan.statement.step(rendered.tables.front()))
      plan.statement.add_row_to(result.rows, static_cast<int>(width));
  }
  if (plan.statement.was_recompiled())
    throw StaleStatement(ErrorNumber::data_failure,
                         "The tables of \"" + file_->path() + "\" change all the time; try again.");
  if (rendered.draws_rows) draw_rows(rendered, result.rows);
  result.shape = rendered.shape;
}

void SqliteDatabase::change(Plan& plan) {
  before_change();
  {
    const Confined confined(*file_, plan.rendered.tables);
    const Run run(plan.statement);
    bind_literals(plan.statement, plan.rendered.parameters, lexed_.literals, scratch_);
    while (plan.statement.step(plan.rendered.tables.front())) {
    }
  }
  if (plan.statement.was_recompiled()) forget_tables();
}

void SqliteDatabase::draw_rows(const Rendered& rendered, Rows& rows) const {
  std::vector<std::size_t> left(rows.count());
  std::iota(left.begin(), left.end(), std::size_t{0});
  std::size_t wanted = left.size();
  if (rendered.drawn_count)
    wanted = std::min(
        wanted, static_cast<std::size_t>(lexed_.literals[*rendered.drawn_count].number.whole()));
  std::vector<std::size_t> drawn;
  while (drawn.size() < wanted) {
    const auto count = static_cast<double>(left.size());
    const auto index = static_cast<std::ptrdiff_t>(std::min(std::floor(draw() * count), count - 1));
    drawn.push_back(left[static_cast<std::size_t>(index)]);
    left.erase(left.begin() + index);
  }
  rows.keep(drawn);
}

void SqliteDatabase::save_row(const std::shared_ptr<const ResultShape>& shape,
                              std::int64_t identity, std::span<const CellChange> changes) {
  before_change();
  with_fresh_tables([&] {
    RowUpdate& update = row_update(shape, changes);
    const Confined confined(*file_, update.tables);
    const Run run(update.statement);
    int parameter = 0;
    for (const CellChange& change : changes) update.statement.bind(++parameter, change.new_value);
    update.statement.bind(++parameter, identity);
    for (const CellChange& change : changes) update.statement.bind(++parameter, change.old_value);
    while (update.statement.step(shape->table)) {
    }
  });
  if (sqlite3_changes(file_->handle()) == 0)
    throw Error(ErrorNumber::row_changed,
                "The row of the table \"" + shape->table +
                    "\" was changed or removed by another program since it was read; read it "
                    "again before changing it.");
}

SqliteDatabase::RowUpdate& SqliteDatabase::row_update(
    const std::shared_ptr<const ResultShape>& shape, std::span<const CellChange> changes) {
  const ResultShape* address = shape.get();
  key_.assign(reinterpret_cast<const char*>(&address), sizeof address);
  for (const CellChange& change : changes)
    key_.append(reinterpret_cast<const char*>(&change.column), sizeof change.column);
  if (RowUpdate* known = row_updates_.find(key_)) return *known;

  std::string assignments;
  std::string unchanged;
  for (std::size_t i = 0; i < changes.size(); ++i) {
    const std::string name = quoted_name(shape->columns[changes[i].column].name);
    assignments += concat(i == 0 ? "" : ", ", name, " = ?", std::to_string(i + 1));
    unchanged +=
        concat(" AND ", name, " COLLATE BINARY IS ?", std::to_string(changes.size() + i + 2));
  }
  const std::string sql =
      concat("UPDATE ", quoted_name(shape->table), " SET ", assignments, " WHERE ", shape->identity,
             " = ?", std::to_string(changes.size() + 1), unchanged);
  std::vector<std::string> tables{shape->table};
  const Confined confined(*file_, tables);
  Prepared statement(*file_, sql, true);
  return row_updates_.put(key_, {shape, std::move(tables), std::move(statement)});
}

void SqliteDatabase::before_change() {
  if (log_attempt_due_ == kNever || log_attempt_due_-- > 0) return;
  file_->wait_at_most(std::chrono::milliseconds(0));
  try {
    log_attempt_due_ = file_->first_cell("PRAGMA journal_mode = WAL") == "wal" ? kNever : 0;
    apply_settings(*file_);
  } catch (const Error&) {
    // Another program is at work in the file: the change goes the old way, a later one may not.
    log_attempt_due_ = 0;
  }
  file_->wait_at_most(patience_);
  if (log_attempt_due_ == kNever) return;
  log_attempt_due_ = log_attempt_gap_;
  log_attempt_gap_ = std::min(2 * log_attempt_gap_, kLongestGap);
}

}  // namespace ravelinox::data
