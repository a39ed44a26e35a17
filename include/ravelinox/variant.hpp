#pragma once

#include <chrono>
#include <compare>
#include <concepts>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "ravelinox/export.hpp"

namespace ravelinox {

/// What a variant can refer to: connections, recordsets, and whatever a host derives from it.
class RAVELINOX_API Object {
 public:
  Object() = default;
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;
  virtual ~Object() = default;
};

/// A calendar date and time of day, to the second, without time zone or daylight saving.
///
///   timestamp           moment
///   0                   1970-01-01 00:00:00
///   604800              1970-01-08 00:00:00
///   -1                  1969-12-31 23:59:59
class DateTime {
 public:
  constexpr DateTime() = default;  ///< 1 January 1970, midnight
  constexpr explicit DateTime(std::chrono::sys_seconds moment) : moment_(moment) {}

  [[nodiscard]] constexpr std::chrono::sys_seconds moment() const { return moment_; }
  [[nodiscard]] int year() const { return static_cast<int>(date().year()); }
  [[nodiscard]] int month() const { return static_cast<int>(unsigned{date().month()}); }
  [[nodiscard]] int day() const { return static_cast<int>(unsigned{date().day()}); }
  [[nodiscard]] int hour() const { return seconds_of_day() / 3600; }
  [[nodiscard]] int minute() const { return seconds_of_day() / 60 % 60; }
  [[nodiscard]] int second() const { return seconds_of_day() % 60; }
  /// Seconds since midnight, 0 to 86399.
  [[nodiscard]] int seconds_of_day() const {
    return static_cast<int>((moment_ - std::chrono::floor<std::chrono::days>(moment_)).count());
  }
  /// 0 for Sunday to 6 for Saturday.
  [[nodiscard]] int weekday() const {
    return static_cast<int>(
        std::chrono::weekday(std::chrono::floor<std::chrono::days>(moment_)).c_encoding());
  }

  friend constexpr auto operator<=>(const DateTime&, const DateTime&) = default;

 private:
  [[nodiscard]] std::chrono::year_month_day date() const {
    return std::chrono::floor<std::chrono::days>(moment_);
  }

  std::chrono::sys_seconds moment_{};
};

/// The moment as text. In the pattern "d" is the day, "mm" the month and "yyyy" the year; "h" is
/// the hour without and "hh" with a leading zero; "nn" are the minutes and "ss" the seconds with
/// two digits. Doubling a letter ("dd") pads to two digits; every other character, such as "/",
/// ":" and ".", stands for itself.
///
///   format(t, "h.nn")      9.05
///   format(t, "d/mm/yyyy") 5/03/2008
[[nodiscard]] RAVELINOX_API std::string format(const DateTime& moment, std::string_view pattern);

/// A value whose kind is known only at run time: what a cell, a parameter or a property holds.
class Variant {
 public:
  enum class Kind : std::uint8_t {
    empty,    ///< nothing was ever assigned
    missing,  ///< an optional parameter that the caller left out
    null,     ///< a cell without a value
    boolean,
    uint8,
    int16,
    int32,
    float32,
    float64,
    date_time,
    text,  ///< UTF-8
    object,
  };

  Variant() = default;
  [[nodiscard]] static Variant missing() { return Variant(Storage(std::in_place_index<1>)); }
  [[nodiscard]] static Variant null() { return Variant(Storage(std::in_place_index<2>)); }

  /// Exactly the kinds above, so that no value changes its width on the way in.
  template <class T>
  requires std::same_as<T, bool> || std::same_as<T, std::uint8_t> ||
      std::same_as<T, std::int16_t> || std::same_as<T, std::int32_t> || std::same_as<T, float> ||
      std::same_as<T, double>
      Variant(T value) : storage_(value) {}                               // NOLINT(*-explicit-*)
  Variant(DateTime value) : storage_(value) {}                            // NOLINT(*-explicit-*)
  Variant(std::string value) : storage_(std::move(value)) {}              // NOLINT(*-explicit-*)
  Variant(std::string_view value) : storage_(std::string(value)) {}       // NOLINT(*-explicit-*)
  Variant(const char* value) : storage_(std::string(value)) {}            // NOLINT(*-explicit-*)
  Variant(std::shared_ptr<Object> value) : storage_(std::move(value)) {}  // NOLINT(*-explicit-*)

  [[nodiscard]] Kind kind() const noexcept { return static_cast<Kind>(storage_.index()); }
  [[nodiscard]] bool is_empty() const noexcept { return kind() == Kind::empty; }
  [[nodiscard]] bool is_missing() const noexcept { return kind() == Kind::missing; }
  [[nodiscard]] bool is_null() const noexcept { return kind() == Kind::null; }

  /// The value if it is of exactly this kind, else null.
  template <class T>
  [[nodiscard]] const T* get_if() const noexcept {
    return std::get_if<T>(&storage_);
  }

  /// Same kind and same value; an int16 1 differs from an int32 1.
  friend bool operator==(const Variant&, const Variant&) = default;

 private:
  struct Missing {
    friend bool operator==(const Missing&, const Missing&) = default;
  };
  struct Null {
    friend bool operator==(const Null&, const Null&) = default;
  };
  using Storage =
      std::variant<std::monostate, Missing, Null, bool, std::uint8_t, std::int16_t, std::int32_t,
                   float, double, DateTime, std::string, std::shared_ptr<Object>>;

  explicit Variant(Storage storage) : storage_(std::move(storage)) {}

  Storage storage_;
};

// Conversions. The same rules everywhere, independent of the process's locale:
//   - Null fails with 94 (invalid use of Null); missing and objects fail with 13 (type mismatch);
//   - empty is 0, False or the empty text; True is -1 as a number;
//   - a text becomes a number when it is one ("12", " -3.5 ", "1e3"; "." is the decimal mark),
//     else 13;
//   - to a whole number rounds to the nearest, halves to even; outside the kind's range is 6
//     (overflow);
//   - a date-time is its count of days since 30 December 1899 as a number, and the pattern
//     "d/mm/yyyy h:nn:ss" as text.

[[nodiscard]] RAVELINOX_API bool to_boolean(const Variant& value);
[[nodiscard]] RAVELINOX_API std::uint8_t to_uint8(const Variant& value);
[[nodiscard]] RAVELINOX_API std::int16_t to_int16(const Variant& value);
[[nodiscard]] RAVELINOX_API std::int32_t to_int32(const Variant& value);
[[nodiscard]] RAVELINOX_API float to_float32(const Variant& value);
[[nodiscard]] RAVELINOX_API double to_float64(const Variant& value);

/// The text form: decimal digits for numbers, True or False, a text as it stands.
[[nodiscard]] RAVELINOX_API std::string to_text(const Variant& value);

/// The text form as a part of a longer text: as `to_text`, but Null joins as nothing.
[[nodiscard]] RAVELINOX_API std::string joined(const Variant& value);

}  // namespace ravelinox
