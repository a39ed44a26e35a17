// A slot walks over rows that were fetched whole. Assigned cells lie beside the rows until they are
// saved, so that a failure or a move leaves the rows as they were read.
#include <algorithm>
#include <optional>
#include <vector>

#include "platform/data/session.hpp"
#include "ravelinox/data.hpp"

namespace ravelinox {

using data::CellChange;
using data::Database;
using data::Result;
using data::ResultColumn;
using data::StoredValue;

struct Recordset::Impl {
  std::shared_ptr<Connection> connection;
  LockType lock_type = LockType::read_only;
  std::weak_ptr<Database> source;  ///< where the rows come from
  Result result;
  std::ptrdiff_t position = 0;  ///< -1 before the first row, the count after the last

  /// The assigned cells of the current row, in the order of the columns.
  std::vector<CellChange> changes;
  std::vector<std::string> texts;  ///< of the changes, by column

  [[nodiscard]] bool is_open() const { return result.shape != nullptr; }
  [[nodiscard]] std::ptrdiff_t count() const {
    return static_cast<std::ptrdiff_t>(result.rows.count());
  }
  [[nodiscard]] bool has_row() const { return position >= 0 && position < count(); }
  [[nodiscard]] std::size_t row() const { return static_cast<std::size_t>(position); }

  void require_open() const {
    if (!is_open())
      throw Error(ErrorNumber::object_closed,
                  "The recordset is closed; open it with a statement that selects rows.");
  }

  void require_closed(const char* what) const {
    if (is_open())
      throw Error(ErrorNumber::object_open,
                  "The recordset is open, so " + std::string(what) + "; close it first.");
  }

  void require_row() const {
    require_open();
    if (!has_row())
      throw Error(ErrorNumber::no_current_record,
                  "The recordset has no current row: it stands before the first or after the last "
                  "of " +
                      std::to_string(count()) + ".");
  }

  void move_to(std::ptrdiff_t target) {
    position = target;
    changes.clear();
  }

  [[nodiscard]] const ResultColumn& column(std::size_t index) const {
    return result.shape->columns[index];
  }

  /// The database of the rows, still open.
  [[nodiscard]] std::shared_ptr<Database> open_source() const {
    auto database = source.lock();
    if (!database)
      throw Error(ErrorNumber::object_closed,
                  "The connection that the rows were read through has been closed.");
    return database;
  }

  [[nodiscard]] CellChange* change_of(std::size_t index) {
    const auto found = std::ranges::find(changes, index, &CellChange::column);
    return found == changes.end() ? nullptr : &*found;
  }

  void assign(std::size_t index, const Variant& value);
  void save();
};

void Recordset::Impl::assign(std::size_t index, const Variant& value) {
  // All at once: the changes refer to their texts.
  if (texts.size() < result.shape->columns.size()) texts.resize(result.shape->columns.size());
  std::string scratch;
  StoredValue stored = data::to_stored(value, column(index).kind, scratch);
  if (stored.storage == data::Storage::text) {
    texts[index].assign(stored.text);
    stored.text = texts[index];
  }
  if (CellChange* change = change_of(index)) {
    change->new_value = stored;
    return;
  }
  const auto place = std::ranges::upper_bound(changes, index, {}, &CellChange::column);
  changes.insert(place, {index, result.rows.at(row(), index), stored});
}

void Recordset::Impl::save() {
  const auto& shape = *result.shape;
  if (lock_type == LockType::read_only || !shape.is_writable())
    throw Error(ErrorNumber::data_failure,
                "The rows cannot be changed in place: they come from several tables, a view or "
                "DISTINCT, or the recordset is read-only.");
  const StoredValue identity = result.rows.at(row(), shape.identity_position());
  open_source()->save_row(result.shape, identity.whole, changes);
  for (const CellChange& change : changes)
    result.rows.replace(row(), change.column, change.new_value);
  changes.clear();
}

Recordset::Recordset() : impl_(std::make_unique<Impl>()) {}
Recordset::~Recordset() = default;

void Recordset::set_active_connection(std::shared_ptr<Connection> connection) {
  impl_->require_closed("its connection cannot be set");
  impl_->connection = std::move(connection);
}

const std::shared_ptr<Connection>& Recordset::active_connection() const noexcept {
  return impl_->connection;
}

void Recordset::set_lock_type(LockType type) {
  impl_->require_closed("its lock type cannot be set");
  impl_->lock_type = type;
}

LockType Recordset::lock_type() const noexcept { return impl_->lock_type; }

void Recordset::open(std::string_view source) {
  impl_->require_closed("it cannot be opened");
  if (!impl_->connection || impl_->connection->state() == ObjectState::closed)
    throw Error(ErrorNumber::object_closed, "The recordset has no open connection.");
  const auto& database = impl_->connection->session()->database;
  database->run(source, impl_->result);
  impl_->source = database;
  impl_->move_to(0);
}

void Recordset::close() {
  impl_->require_open();
  impl_->result.shape.reset();
  impl_->changes.clear();
}

ObjectState Recordset::state() const noexcept {
  return impl_->is_open() ? ObjectState::open : ObjectState::closed;
}

bool Recordset::end_of_file() const {
  impl_->require_open();
  return impl_->position >= impl_->count();
}

bool Recordset::begin_of_file() const {
  impl_->require_open();
  return impl_->position < 0 || impl_->count() == 0;
}

std::int32_t Recordset::record_count() const {
  impl_->require_open();
  return static_cast<std::int32_t>(impl_->count());
}

std::int32_t Recordset::field_count() const {
  impl_->require_open();
  return static_cast<std::int32_t>(impl_->result.shape->columns.size());
}

void Recordset::move_first() {
  impl_->require_open();
  if (impl_->count() == 0) impl_->require_row();
  impl_->move_to(0);
}

void Recordset::move_last() {
  impl_->require_open();
  if (impl_->count() == 0) impl_->require_row();
  impl_->move_to(impl_->count() - 1);
}

void Recordset::move_next() {
  if (end_of_file()) impl_->require_row();
  impl_->move_to(impl_->position + 1);
}

void Recordset::move_previous() {
  if (begin_of_file()) impl_->require_row();
  impl_->move_to(impl_->position - 1);
}

Field Recordset::field(std::int16_t position) {
  impl_->require_open();
  const auto count = static_cast<std::int32_t>(impl_->result.shape->columns.size());
  if (position < 0 || position >= count)
    throw Error(ErrorNumber::item_not_found, "There is no column at position " +
                                                 std::to_string(position) + "; the result has " +
                                                 std::to_string(count) + " columns.");
  return {*this, static_cast<std::size_t>(position)};
}

void Recordset::update() {
  impl_->require_row();
  if (!impl_->changes.empty()) impl_->save();
}

Variant Field::value() const {
  const Recordset::Impl& slot = *owner_->impl_;
  slot.require_row();
  const auto kind = slot.column(index_).kind;
  for (const CellChange& change : slot.changes)
    if (change.column == index_) return data::to_variant(change.new_value, kind);
  return data::to_variant(slot.result.rows.at(slot.row(), index_), kind);
}

void Field::set_value(const Variant& value) {
  Recordset::Impl& slot = *owner_->impl_;
  slot.require_row();
  slot.assign(index_, value);
}

}  // namespace ravelinox
