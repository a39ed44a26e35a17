// The interface of `cmdl1` as plain data: what a binding to another language needs to know. The
// order of properties and of methods is that of the interface, and fixes identifiers and slots.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ravelinox::members {

/// What a property, a parameter or a result holds.
enum class Kind : std::uint8_t {
  none,
  boolean,
  uint8,
  int16,
  int32,
  float32,
  date_time,
  text,
  variant,
  object,  ///< any other object
  connection,
  recordset,
};

[[nodiscard]] constexpr bool is_object(Kind kind) { return kind >= Kind::object; }

/// Whether a property of the kind can be set by reference.
[[nodiscard]] constexpr bool is_set_by_reference(Kind kind) { return kind >= Kind::variant; }

enum class Passing : std::uint8_t { by_reference, by_value };

struct Parameter {
  std::string_view name{};
  Kind kind = Kind::none;
  bool optional = false;  ///< left out, a variant is missing and a whole number 0
  Passing passing = Passing::by_reference;
};

/// Readable and writable; variants and objects can be set by reference, objects only so.
struct Property {
  std::string_view name;
  Kind kind;
};

struct Method {
  static constexpr std::size_t kMostParameters = 6;

  std::string_view name;
  Kind result = Kind::none;
  std::array<Parameter, kMostParameters> parameters{};

  [[nodiscard]] constexpr std::size_t parameter_count() const {
    std::size_t count = 0;
    while (count < parameters.size() && parameters[count].kind != Kind::none) ++count;
    return count;
  }
};

inline constexpr std::array<Property, 25> kProperties{{
    {"DLLCN", Kind::connection},
    {"DLLCN2", Kind::connection},
    {"DLLRSMovimL", Kind::recordset},
    {"DLLRSMovimS", Kind::recordset},
    {"DLLRS", Kind::recordset},
    {"DLLRS2", Kind::recordset},
    {"DLLRS3", Kind::recordset},
    {"DLLRS4", Kind::recordset},
    {"DLLRS5", Kind::recordset},
    {"DB_linea", Kind::variant},
    {"App_path", Kind::variant},
    {"DB_stazione", Kind::variant},
    {"Aspetto_sgn", Kind::variant},
    {"Ric_sgn", Kind::boolean},
    {"RispRich_fs", Kind::boolean},
    {"StartTime", Kind::int32},
    {"Global_ProbabilitaSoppressione", Kind::int16},
    {"Global_Puntualita", Kind::int16},
    {"Global_ProbabilitaGuasti", Kind::int16},
    {"Global_DurataManutenzione", Kind::int16},
    {"Nome_PdS", Kind::variant},
    {"AutItEnabled", Kind::boolean},
    {"AutItWaitList", Kind::variant},
    {"AutItExcludeList", Kind::variant},
    {"AutAsModificheBin", Kind::variant},
}};

inline constexpr bool kOptional = true;

inline constexpr std::array<Method, 30> kMethods{{
    {"Connetti_DBstazione_DLL"},
    {"Imposta_proprieta_pds"},
    {"Connetti_DBlinea_DLL"},
    {"C_Sgn",
     Kind::none,
     {{{"Itinerario", Kind::variant}, {"OptSegnale", Kind::variant, kOptional}}}},
    {"VerRich_fs",
     Kind::none,
     {{{"Nome_PdS", Kind::variant}, {"Nome_PdsAdicente", Kind::variant}}}},
    {"MkTime",
     Kind::int32,
     {{{"Ore", Kind::uint8},
       {"Minuti", Kind::uint8},
       {"Secondi", Kind::uint8},
       {"Giorno", Kind::uint8},
       {"Mese", Kind::uint8},
       {"Anno", Kind::int16}}}},
    {"UnMkTime", Kind::date_time, {{{"Timestamp", Kind::int32}}}},
    {"VisMovimento"},
    {"CausaRitardo", Kind::variant, {{{"Motivazione", Kind::variant}}}},
    {"RitardaTreno",
     Kind::variant,
     {{{"NumTreno", Kind::int32},
       {"Secondi", Kind::int16},
       {"Tempo", Kind::int32},
       {"CausaRitardo", Kind::variant, kOptional}}}},
    {"Inzializza_Orario",
     Kind::variant,
     {{{"Inizio", Kind::int32}, {"MezzanotteInizio", Kind::int32}}}},
    {"EasterMondayDate", Kind::variant, {{{"Year", Kind::int16, !kOptional, Passing::by_value}}}},
    {"Disconnetti_DB"},
    {"CorsaTreno", Kind::variant, {{{"NumTreno", Kind::int32}}}},
    {"FermateSuccessive",
     Kind::variant,
     {{{"NumTreno", Kind::int32}, {"StazioneInizio", Kind::variant}}}},
    {"RicavaRitardo",
     Kind::variant,
     {{{"NumTreno", Kind::int32},
       {"Tempo", Kind::int32},
       {"Approssimazione", Kind::uint8, kOptional}}}},
    {"RicavaInfoCircolazione",
     Kind::variant,
     {{{"NumTreno", Kind::int32}, {"Tempo", Kind::int32}}}},
    {"RegistraEvento",
     Kind::variant,
     {{{"TipoEvento", Kind::text},
       {"NumTreno", Kind::int32},
       {"Orario", Kind::int32},
       {"Stazione", Kind::variant}}}},
    {"AnalisiPrecedenza",
     Kind::boolean,
     {{{"NumTreno1", Kind::int32}, {"NumTreno2", Kind::int32}, {"Stazione", Kind::variant}}}},
    {"DecrementaManutenzione",
     Kind::none,
     {{{"TipoEnte", Kind::variant, kOptional},
       {"NumeroEnte", Kind::int16, kOptional},
       {"IDEnte", Kind::int16, kOptional}}}},
    {"RicavaStatoManutenzione",
     Kind::float32,
     {{{"TipoEnte", Kind::variant, kOptional},
       {"NumeroEnte", Kind::int16, kOptional},
       {"IDEnte", Kind::int16, kOptional}}}},
    {"RicavaPosizioneTreno", Kind::variant, {{{"NumTreno", Kind::int32}, {"Tempo", Kind::int32}}}},
    {"VerificaDB", Kind::uint8, {{{"Percorso", Kind::variant}, {"TipoDB", Kind::variant}}}},
    {"AggiornaFileSSI", Kind::none, {{{"Tempo", Kind::int32}}}},
    {"ProssimoArrivo",
     Kind::variant,
     {{{"MioPdS", Kind::variant},
       {"PdsAdiacente", Kind::variant},
       {"Tempo", Kind::int32},
       {"TrenoPrecedente", Kind::int32, kOptional}}}},
    {"Registra", Kind::none, {{{"Info", Kind::variant}}}},
    {"AutAsSintesiVocale",
     Kind::none,
     {{{"NumTreno", Kind::int32},
       {"Procedura", Kind::text},
       {"Parametro1", Kind::variant, kOptional},
       {"Parametro2", Kind::variant, kOptional}}}},
    {"VerificaAs", Kind::boolean},
    {"CheckSumDigit", Kind::text, {{{"Codice", Kind::variant}}}},
    {"CercaListaTreni", Kind::boolean, {{{"NumTreno", Kind::int32}, {"Evento", Kind::variant}}}},
}};

/// The identifier by which a property is called; `index` counts from 0 in the order above.
[[nodiscard]] constexpr std::int32_t property_id(std::size_t index) {
  return 0x40030000 + static_cast<std::int32_t>(index);
}

/// The identifier of a method. 0x60030005 names nothing, so `MkTime` and all after it stand one
/// further.
[[nodiscard]] constexpr std::int32_t method_id(std::size_t index) {
  constexpr std::size_t first_after_the_gap = 5;
  return 0x60030000 + static_cast<std::int32_t>(index < first_after_the_gap ? index : index + 1);
}

}  // namespace ravelinox::members
