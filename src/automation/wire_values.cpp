// Between the engine's variants and those of the border.
#include "automation/wire_values.hpp"

#include <chrono>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

#include "automation/objects.hpp"
#include "automation/refusal.hpp"
#include "automation/wire_text.hpp"
#include "ravelinox/data.hpp"
#include "ravelinox/error.hpp"

namespace ravelinox::automation {
namespace {

using members::Kind;

constexpr double kSecondsOfDay = 86400;
constexpr std::chrono::sys_days kDayZero{std::chrono::year{1899} / 12 / 30};
constexpr double kFirstDate = -657434;  // 1 January 100
constexpr double kLastDate = 2958466;   // 31 December 9999, end of day

/// Whole numbers of any width as the narrowest kind of the engine that holds every one of them.
Variant whole(std::int64_t number) {
  if (number >= std::numeric_limits<std::int32_t>::min() &&
      number <= std::numeric_limits<std::int32_t>::max())
    return static_cast<std::int32_t>(number);
  return static_cast<double>(number);
}

Variant from_error(std::int32_t code) {
  if (code == RLX_DISP_E_PARAMNOTFOUND) return Variant::missing();
  throw Refusal{RLX_DISP_E_TYPEMISMATCH};
}

/// What a reference points at, as a value of its own: a view that owns nothing.
rlx_variant looked_up(const rlx_variant& reference) {
  const void* const place = reference.value.reference;
  if (place == nullptr) throw Refusal{RLX_DISP_E_TYPEMISMATCH};
  rlx_variant value{};
  value.kind = static_cast<std::uint16_t>(reference.kind & ~RLX_BYREF);
  switch (value.kind) {
    case RLX_VARIANT:
      return *static_cast<const rlx_variant*>(place);
    case RLX_I1:
    case RLX_UI1:
      value.value.uint8 = *static_cast<const std::uint8_t*>(place);
      return value;
    case RLX_I2:
    case RLX_UI2:
    case RLX_BOOL:
      value.value.uint16 = *static_cast<const std::uint16_t*>(place);
      return value;
    case RLX_I4:
    case RLX_UI4:
    case RLX_INT:
    case RLX_UINT:
    case RLX_R4:
    case RLX_ERROR:
      std::memcpy(&value.value, place, 4);
      return value;
    case RLX_R8:
    case RLX_DATE:
    case RLX_I8:
    case RLX_UI8:
    case RLX_TEXT:
    case RLX_DISPATCH:
    case RLX_UNKNOWN:
      std::memcpy(&value.value, place, 8);
      return value;
    default:
      throw Refusal{RLX_DISP_E_BADVARTYPE};
  }
}

rlx_variant of_kind(std::uint16_t kind) {
  rlx_variant value{};
  value.kind = kind;
  return value;
}

template <class T>
rlx_variant with(std::uint16_t kind, T rlx_variant_value::*member, T content) {
  rlx_variant value = of_kind(kind);
  value.value.*member = content;
  return value;
}

rlx_variant object_to_wire(const std::shared_ptr<Object>& object) {
  if (const auto* foreign = dynamic_cast<const ForeignObject*>(object.get()))
    return foreign->to_wire();
  return with(RLX_DISPATCH, &rlx_variant_value::dispatch, face_of(object));
}

template <class T>
Variant object_of_class(const Variant& value) {
  const auto* object = value.get_if<std::shared_ptr<Object>>();
  const bool fits =
      object != nullptr && (!*object || dynamic_cast<const T*>(object->get()) != nullptr);
  if (!fits) throw Refusal{RLX_DISP_E_TYPEMISMATCH};
  return *object;
}

}  // namespace

double to_wire_date(const DateTime& moment) {
  const auto seconds = static_cast<double>((moment.moment() - kDayZero).count());
  const double days = std::floor(seconds / kSecondsOfDay);
  const double time = (seconds - days * kSecondsOfDay) / kSecondsOfDay;
  return days < 0 ? days - time : days + time;
}

DateTime from_wire_date(double days) {
  if (!(days > kFirstDate - 1 && days < kLastDate)) throw Refusal{RLX_DISP_E_OVERFLOW};
  const double whole_days = std::trunc(days);
  const double seconds =
      whole_days * kSecondsOfDay + std::round(std::abs(days - whole_days) * kSecondsOfDay);
  return DateTime(kDayZero + std::chrono::seconds(static_cast<std::int64_t>(seconds)));
}

rlx_variant to_wire(const Variant& value) {
  using V = rlx_variant_value;
  switch (value.kind()) {
    case Variant::Kind::empty:
      return of_kind(RLX_EMPTY);
    case Variant::Kind::missing:
      return with(RLX_ERROR, &V::int32, std::int32_t{RLX_DISP_E_PARAMNOTFOUND});
    case Variant::Kind::null:
      return of_kind(RLX_NULL);
    case Variant::Kind::boolean:
      return with(RLX_BOOL, &V::int16, static_cast<std::int16_t>(-*value.get_if<bool>()));
    case Variant::Kind::uint8:
      return with(RLX_UI1, &V::uint8, *value.get_if<std::uint8_t>());
    case Variant::Kind::int16:
      return with(RLX_I2, &V::int16, *value.get_if<std::int16_t>());
    case Variant::Kind::int32:
      return with(RLX_I4, &V::int32, *value.get_if<std::int32_t>());
    case Variant::Kind::float32:
      return with(RLX_R4, &V::real32, *value.get_if<float>());
    case Variant::Kind::float64:
      return with(RLX_R8, &V::real64, *value.get_if<double>());
    case Variant::Kind::date_time:
      return with(RLX_DATE, &V::real64, to_wire_date(*value.get_if<DateTime>()));
    case Variant::Kind::text:
      return with(RLX_TEXT, &V::text, to_wire_text(*value.get_if<std::string>()));
    case Variant::Kind::object:
      break;
  }
  return object_to_wire(*value.get_if<std::shared_ptr<Object>>());
}

Variant from_wire(const rlx_variant& value) {
  switch (value.kind) {
    case RLX_EMPTY:
      return {};
    case RLX_NULL:
      return Variant::null();
    case RLX_BOOL:
      return value.value.int16 != 0;
    case RLX_UI1:
      return value.value.uint8;
    case RLX_I2:
      return value.value.int16;
    case RLX_I4:
    case RLX_INT:
      return value.value.int32;
    case RLX_I1:
      return std::int16_t{value.value.int8};
    case RLX_UI2:
      return std::int32_t{value.value.uint16};
    case RLX_UI4:
    case RLX_UINT:
      return whole(value.value.uint32);
    case RLX_I8:
      return whole(value.value.int64);
    case RLX_UI8:
      if (value.value.uint64 > std::numeric_limits<std::int64_t>::max())
        return static_cast<double>(value.value.uint64);
      return whole(value.value.int64);
    case RLX_R4:
      return value.value.real32;
    case RLX_R8:
      return value.value.real64;
    case RLX_DATE:
      return from_wire_date(value.value.real64);
    case RLX_TEXT:
      return from_wire_text(value.value.text);
    case RLX_DISPATCH:
    case RLX_UNKNOWN:
      return object_from_wire(value);
    case RLX_ERROR:
      return from_error(value.value.int32);
    default:
      break;
  }
  if ((value.kind & RLX_BYREF) == 0) throw Refusal{RLX_DISP_E_BADVARTYPE};
  const rlx_variant target = looked_up(value);
  // A reference to a variant may lead to one more reference, but not to a variant again.
  if (target.kind == (RLX_BYREF | RLX_VARIANT)) throw Refusal{RLX_DISP_E_BADVARTYPE};
  return from_wire(target);
}

Variant as_kind(Variant value, Kind kind) try {
  switch (kind) {
    case Kind::none:
      return {};
    case Kind::boolean:
      return to_boolean(value);
    case Kind::uint8:
      return to_uint8(value);
    case Kind::int16:
      return to_int16(value);
    case Kind::int32:
      return to_int32(value);
    case Kind::float32:
      return to_float32(value);
    case Kind::date_time:
      if (value.kind() == Variant::Kind::date_time) return value;
      return from_wire_date(to_float64(value));
    case Kind::text:
      return to_text(value);
    case Kind::variant:
      return value;
    case Kind::object:
      return object_of_class<Object>(value);
    case Kind::connection:
      return object_of_class<Connection>(value);
    case Kind::recordset:
      return object_of_class<Recordset>(value);
  }
  return value;
} catch (const Error& failure) {
  throw Refusal{failure.code() == ErrorNumber::overflow ? RLX_DISP_E_OVERFLOW
                                                        : RLX_DISP_E_TYPEMISMATCH};
}

std::uint16_t wire_kind(Kind kind) {
  switch (kind) {
    case Kind::none:
      return RLX_EMPTY;
    case Kind::boolean:
      return RLX_BOOL;
    case Kind::uint8:
      return RLX_UI1;
    case Kind::int16:
      return RLX_I2;
    case Kind::int32:
      return RLX_I4;
    case Kind::float32:
      return RLX_R4;
    case Kind::date_time:
      return RLX_DATE;
    case Kind::text:
      return RLX_TEXT;
    case Kind::variant:
      return RLX_VARIANT;
    case Kind::object:
    case Kind::connection:
    case Kind::recordset:
      break;
  }
  return RLX_DISPATCH;
}

Variant left_out(const members::Parameter& parameter) {
  if (!parameter.optional) throw Refusal{RLX_DISP_E_PARAMNOTOPTIONAL};
  return parameter.kind == Kind::variant ? Variant::missing() : as_kind({}, parameter.kind);
}

Variant argument_value(const rlx_variant& value, const members::Parameter& parameter) {
  const bool is_reference = (value.kind & RLX_BYREF) != 0;
  const auto target = static_cast<std::uint16_t>(value.kind & ~RLX_BYREF);
  if (is_reference && parameter.passing == members::Passing::by_reference &&
      parameter.kind != Kind::variant && target != RLX_VARIANT &&
      target != wire_kind(parameter.kind))
    throw Refusal{RLX_DISP_E_TYPEMISMATCH};
  Variant content = from_wire(value);
  return content.is_missing() ? left_out(parameter) : as_kind(std::move(content), parameter.kind);
}

}  // namespace ravelinox::automation
