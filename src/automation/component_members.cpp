// The members of `cmdl1` for calls by name and by identifier, made from the member table.
#include <array>
#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

#include "automation/component.hpp"
#include "core/engine_members.hpp"

namespace ravelinox::automation {
namespace {

constexpr std::size_t kPropertyCount = members::kProperties.size();
constexpr std::size_t kMethodCount = members::kMethods.size();
using Members = std::array<Member, kPropertyCount + kMethodCount>;

/// The content of a variant that is known to be of the parameter's kind.
template <class Parameter>
const auto& content(const Variant& value) {
  using Plain = std::remove_cvref_t<Parameter>;
  if constexpr (std::is_same_v<Plain, Variant>) {
    return value;
  } else {
    return *value.get_if<Plain>();
  }
}

template <class T>
constexpr bool is_created = members::is_object(kind_of<T>());

template <class T>
Variant read(T& property) {
  if constexpr (is_created<T>) {
    return std::shared_ptr<Object>(property.get());
  } else {
    return property;
  }
}

template <class T>
void write(T& property, const Variant& value) {
  replace(property, T(content<T>(value)));
}

template <class T>
void write(Created<T>& property, const Variant& value) {
  property.set(std::static_pointer_cast<T>(content<std::shared_ptr<Object>>(value)));
}

template <std::size_t Index>
Variant get(Face& face, Values /*none*/) {
  return read(engine_behind(face).*kEngineProperty<Index>);
}

template <std::size_t Index>
Variant put(Face& face, Values values) {
  write(engine_behind(face).*kEngineProperty<Index>, values[0]);
  return {};
}

template <class Result, class... Parameters, std::size_t... At>
Variant run_method(cmdl1& engine, Result (cmdl1::*method)(Parameters...), Values values,
                   std::index_sequence<At...> /*positions*/) {
  if constexpr (std::is_void_v<Result>) {
    (engine.*method)(content<Parameters>(values[At])...);
    return {};
  } else {
    return (engine.*method)(content<Parameters>(values[At])...);
  }
}

template <std::size_t Index>
Variant run(Face& face, Values values) {
  constexpr std::size_t count = members::kMethods[Index].parameter_count();
  return run_method(engine_behind(face), kEngineMethod<Index>, values,
                    std::make_index_sequence<count>());
}

template <std::size_t Index>
constexpr Member property_member() {
  constexpr members::Property row = members::kProperties[Index];
  Member member{.name = row.name, .id = members::property_id(Index), .kind = row.kind};
  member.get = get<Index>;
  if (!members::is_object(row.kind)) member.put = put<Index>;
  if (members::is_set_by_reference(row.kind)) member.put_reference = put<Index>;
  return member;
}

template <std::size_t Index>
constexpr Member method_member() {
  const members::Method& row = members::kMethods[Index];
  return {.name = row.name,
          .id = members::method_id(Index),
          .kind = row.result,
          .parameters = {row.parameters.data(), row.parameter_count()},
          .run = run<Index>};
}

template <std::size_t... Property, std::size_t... Method>
constexpr Members all_members(std::index_sequence<Property...> /*all*/,
                              std::index_sequence<Method...> /*all*/) {
  return {property_member<Property>()..., method_member<Method>()...};
}

}  // namespace

std::span<const Member> component_members() {
  static constexpr Members members = all_members(PropertyIndexes{}, MethodIndexes{});
  return members;
}

}  // namespace ravelinox::automation
