// The member table joined to the class: the properties and methods of `cmdl1` in the order of the
// table, and the proof that both agree. Bindings to other languages are made from it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

#include "core/members.hpp"
#include "ravelinox/cmdl1.hpp"

namespace ravelinox {

inline constexpr std::tuple kEngineProperties{
    &cmdl1::DLLCN,
    &cmdl1::DLLCN2,
    &cmdl1::DLLRSMovimL,
    &cmdl1::DLLRSMovimS,
    &cmdl1::DLLRS,
    &cmdl1::DLLRS2,
    &cmdl1::DLLRS3,
    &cmdl1::DLLRS4,
    &cmdl1::DLLRS5,
    &cmdl1::DB_linea,
    &cmdl1::App_path,
    &cmdl1::DB_stazione,
    &cmdl1::Aspetto_sgn,
    &cmdl1::Ric_sgn,
    &cmdl1::RispRich_fs,
    &cmdl1::StartTime,
    &cmdl1::Global_ProbabilitaSoppressione,
    &cmdl1::Global_Puntualita,
    &cmdl1::Global_ProbabilitaGuasti,
    &cmdl1::Global_DurataManutenzione,
    &cmdl1::Nome_PdS,
    &cmdl1::AutItEnabled,
    &cmdl1::AutItWaitList,
    &cmdl1::AutItExcludeList,
    &cmdl1::AutAsModificheBin,
};

inline constexpr std::tuple kEngineMethods{
    &cmdl1::Connetti_DBstazione_DLL,
    &cmdl1::Imposta_proprieta_pds,
    &cmdl1::Connetti_DBlinea_DLL,
    &cmdl1::C_Sgn,
    &cmdl1::VerRich_fs,
    &cmdl1::MkTime,
    &cmdl1::UnMkTime,
    &cmdl1::VisMovimento,
    &cmdl1::CausaRitardo,
    &cmdl1::RitardaTreno,
    &cmdl1::Inzializza_Orario,
    &cmdl1::EasterMondayDate,
    &cmdl1::Disconnetti_DB,
    &cmdl1::CorsaTreno,
    &cmdl1::FermateSuccessive,
    &cmdl1::RicavaRitardo,
    &cmdl1::RicavaInfoCircolazione,
    &cmdl1::RegistraEvento,
    &cmdl1::AnalisiPrecedenza,
    &cmdl1::DecrementaManutenzione,
    &cmdl1::RicavaStatoManutenzione,
    &cmdl1::RicavaPosizioneTreno,
    &cmdl1::VerificaDB,
    &cmdl1::AggiornaFileSSI,
    &cmdl1::ProssimoArrivo,
    &cmdl1::Registra,
    &cmdl1::AutAsSintesiVocale,
    &cmdl1::VerificaAs,
    &cmdl1::CheckSumDigit,
    &cmdl1::CercaListaTreni,
};

using PropertyIndexes = std::make_index_sequence<members::kProperties.size()>;
using MethodIndexes = std::make_index_sequence<members::kMethods.size()>;

template <std::size_t Index>
inline constexpr auto kEngineProperty = std::get<Index>(kEngineProperties);
template <std::size_t Index>
inline constexpr auto kEngineMethod = std::get<Index>(kEngineMethods);

/// Gives a property its value. What it held before goes last: it may be an object of the host's,
/// which may read the property once more as it is let go.
template <class T>
void replace(T& property, T value) {
  std::swap(property, value);
}

/// The kind of the table that a C++ type is.
template <class T>
consteval members::Kind kind_of() {
  using members::Kind;
  using Plain = std::remove_cvref_t<T>;
  constexpr std::array<std::pair<bool, Kind>, 11> kinds{{
      {std::is_void_v<Plain>, Kind::none},
      {std::is_same_v<Plain, bool>, Kind::boolean},
      {std::is_same_v<Plain, std::uint8_t>, Kind::uint8},
      {std::is_same_v<Plain, std::int16_t>, Kind::int16},
      {std::is_same_v<Plain, std::int32_t>, Kind::int32},
      {std::is_same_v<Plain, float>, Kind::float32},
      {std::is_same_v<Plain, DateTime>, Kind::date_time},
      {std::is_same_v<Plain, std::string>, Kind::text},
      {std::is_same_v<Plain, Variant>, Kind::variant},
      {std::is_same_v<Plain, Created<Connection>>, Kind::connection},
      {std::is_same_v<Plain, Created<Recordset>>, Kind::recordset},
  }};
  for (const auto& [is_it, kind] : kinds)
    if (is_it) return kind;
  throw "a type that the interface does not have";
}

template <class T>
constexpr bool agrees(const members::Property& row, T cmdl1::* /*property*/) {
  return row.kind == kind_of<T>();
}

template <class Result, class... Parameters>
constexpr bool agrees(const members::Method& row, Result (cmdl1::* /*method*/)(Parameters...)) {
  constexpr std::array<members::Kind, sizeof...(Parameters)> kinds{kind_of<Parameters>()...};
  if (row.result != kind_of<Result>() || row.parameter_count() != kinds.size()) return false;
  for (std::size_t at = 0; at < kinds.size(); ++at)
    if (row.parameters[at].kind != kinds[at]) return false;
  return true;
}

template <std::size_t... Property, std::size_t... Method>
consteval bool all_agree(std::index_sequence<Property...>, std::index_sequence<Method...>) {
  return (agrees(members::kProperties[Property], kEngineProperty<Property>) && ...) &&
         (agrees(members::kMethods[Method], kEngineMethod<Method>) && ...);
}

static_assert(std::tuple_size_v<decltype(kEngineProperties)> == members::kProperties.size());
static_assert(std::tuple_size_v<decltype(kEngineMethods)> == members::kMethods.size());
static_assert(all_agree(PropertyIndexes{}, MethodIndexes{}));

}  // namespace ravelinox
