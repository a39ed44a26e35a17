#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "ravelinox/error.hpp"
#include "ravelinox/export.hpp"
#include "ravelinox/variant.hpp"

namespace ravelinox {

enum class ObjectState : std::int32_t { closed = 0, open = 1 };
enum class CursorLocation : std::int32_t { server = 2, client = 3 };
enum class ShareMode : std::int32_t { deny_none = 16 };
enum class LockType : std::int32_t { read_only = 1, optimistic = 3 };

/// A session on one database file. Other programs, and other connections of this one, may have
/// the same file open; between two calls a connection holds no lock.
class RAVELINOX_API Connection : public Object {
 public:
  Connection();
  ~Connection() override;  ///< closes; never throws

  /// "Data source = " and the path of the database file, which runs to the end of the text; parts
  /// before it ("Name = value;") are allowed and ignored. A backslash in the path separates
  /// folders on every platform. 3705 while the connection is open.
  void set_connection_string(std::string text);
  [[nodiscard]] const std::string& connection_string() const noexcept;

  /// How long opening, and every change of data, waits for another program's lock. Read when the
  /// connection opens; 15 s until set.
  void set_timeout(std::chrono::seconds timeout);
  [[nodiscard]] std::chrono::seconds timeout() const noexcept;

  /// Kept for the host: results are always fetched whole, files always shared. 3705 while open.
  void set_cursor_location(CursorLocation location);
  [[nodiscard]] CursorLocation cursor_location() const noexcept;
  void set_mode(ShareMode mode);
  [[nodiscard]] ShareMode mode() const noexcept;

  /// Opens the file. It is never created: a missing, empty, damaged or foreign file fails with
  /// 0x80004005 and leaves the connection closed. 3705 when open already.
  void open();

  /// Closes the session, also under recordsets that are still open: they keep their rows. 3704
  /// when it is not open.
  void close();

  [[nodiscard]] ObjectState state() const noexcept;

  class RAVELINOX_HIDDEN
      Session;  ///< the data layer's own; shared with the recordsets bound to the connection
  [[nodiscard]] const std::shared_ptr<Session>& session() const noexcept { return session_; }

 private:
  std::shared_ptr<Session> session_;
};

class Recordset;

/// One column of a recordset's current row.
class RAVELINOX_API Field {
 public:
  /// The cell in its declared kind (a BOOLEAN column gives a Boolean), or Null. 3021 without a
  /// current row, 3704 when the recordset was closed.
  [[nodiscard]] Variant value() const;

  /// Assigns the cell in memory; `Recordset::update` writes it. A number assigned to a column of
  /// whole numbers is rounded, halves to even. 6 outside the column's range, 13 for a text that
  /// is no number in a numeric column; a failure leaves the field as it was.
  void set_value(const Variant& value);

 private:
  friend class Recordset;
  Field(Recordset& owner, std::size_t index) : owner_(&owner), index_(index) {}

  Recordset* owner_;
  std::size_t index_;
};

/// A slot that runs one statement at a time. Its result is fetched whole when it opens.
class RAVELINOX_API Recordset : public Object {
 public:
  Recordset();
  ~Recordset() override;

  /// The session whose database the next `open` reads; kept alive by the slot. 3705 while open.
  void set_active_connection(std::shared_ptr<Connection> connection);
  [[nodiscard]] const std::shared_ptr<Connection>& active_connection() const noexcept;

  /// With `optimistic` (until set: `read_only`) rows can be changed in place. 3705 while open.
  void set_lock_type(LockType type);
  [[nodiscard]] LockType lock_type() const noexcept;

  /// Runs one statement. A SELECT leaves the slot open at its first row, or at the end of an
  /// empty result; an UPDATE leaves it closed, its changes final and seen by other programs.
  /// Failures leave the slot closed and no row changed: 3705 when the slot is open already, 3704
  /// without an open connection, 0x80040E14 for a statement that is not understood, 0x80040E37
  /// for an unknown table, 0x80040E10 for an unknown column, 6 for a sum that leaves its column's
  /// range, 0x80004005 when the file is locked past the time-out, full or damaged.
  void open(std::string_view source);

  /// Releases the rows; assigned fields that were not saved are lost. 3704 when not open.
  void close();
  [[nodiscard]] ObjectState state() const noexcept;

  /// All of the following fail with 3704 on a closed slot.
  [[nodiscard]] bool end_of_file() const;
  [[nodiscard]] bool begin_of_file() const;
  [[nodiscard]] std::int32_t record_count() const;
  [[nodiscard]] std::int32_t field_count() const;

  /// Moving drops assigned fields that were not saved. First and last fail with 3021 on an empty
  /// result, next at the end and previous at the beginning likewise.
  void move_first();
  void move_next();
  void move_previous();
  void move_last();

  /// The column at a zero-based position of the result. 3265 when there is none.
  [[nodiscard]] Field field(std::int16_t position);

  /// Writes the assigned fields of the current row in one statement, and nothing when none was
  /// assigned. 0x80040E38, and nothing written, when another program changed or removed the row
  /// since it was read; 0x80004005 when the result cannot be written (several tables, DISTINCT,
  /// a read-only slot) or the file cannot. After a failure the fields keep their assigned values.
  void update();

 private:
  friend class Field;
  struct RAVELINOX_HIDDEN Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace ravelinox
