#pragma once

#include <cstdint>
#include <string>

#include "ravelinox/created.hpp"
#include "ravelinox/data.hpp"
#include "ravelinox/export.hpp"
#include "ravelinox/variant.hpp"

namespace ravelinox {

/// The station engine. A host creates one object and keeps this order of calls:
///
///   DB_stazione = "…\\Staz.db";   Connetti_DBstazione_DLL();
///   Imposta_proprieta_pds();      Connetti_DBlinea_DLL();
///   Nome_PdS = …;  StartTime = …;  Global_ProbabilitaSoppressione = …;  Global_Puntualita = …;
///   Inzializza_Orario(start, midnight);
///   …recording and questions in any order…
///   Disconnetti_DB();
///
/// Times are timestamps: whole seconds since 1 January 1970, without time zone or daylight
/// saving. Texts are UTF-8; station names and other texts are joined into statements as they
/// stand, so an odd apostrophe in one fails with 0x80040E14 and changes nothing.
///
/// Failures are `Error`s. A method that fails stops where it is: what it wrote before stays
/// written, and the slot that it had open stays open until the host closes it. Besides the errors
/// named below, every method that reads a database can raise the data layer's (`Recordset::open`)
/// and 13 or 94 for a cell that is no number or Null where a number is needed.
///
/// One object belongs to one thread at a time.
class RAVELINOX_API cmdl1 {
 public:
  // State. Object properties make their object on first use.
  Created<Connection> DLLCN;       ///< session on the station database
  Created<Connection> DLLCN2;      ///< session on the line database
  Created<Recordset> DLLRSMovimL;  ///< line: the rows of one train during the set-up
  Created<Recordset> DLLRSMovimS;  ///< station: kept for the host
  Created<Recordset> DLLRS;        ///< station: properties, routes, entities
  Created<Recordset> DLLRS2;       ///< station: kept for the host
  Created<Recordset> DLLRS3;       ///< line: the general slot
  Created<Recordset> DLLRS4;       ///< line: the second slot
  Created<Recordset> DLLRS5;       ///< line: the slot of `RitardaTreno` and `CercaListaTreni`
  Variant DB_linea;                ///< line database, relative to the station database's folder
  Variant App_path;                ///< kept for the host
  Variant DB_stazione;             ///< path of the station database, folders separated by "\"
  Variant Aspetto_sgn;             ///< signal name, "|", aspect code
  bool Ric_sgn = false;            ///< whether the line's aspect changed the route's own
  bool RispRich_fs = false;        ///< answer to a line block consent request
  std::int32_t StartTime = 0;      ///< timestamp of the start of the simulation
  std::int16_t Global_ProbabilitaSoppressione = 0;  ///< S: one train in S is suppressed
  std::int16_t Global_Puntualita = 0;               ///< G: spread of the deviations, seconds
  std::int16_t Global_ProbabilitaGuasti = 0;        ///< steers the wear of entities
  std::int16_t Global_DurataManutenzione = 0;       ///< kept for the host
  Variant Nome_PdS;                                 ///< own station, as written in the timetable
  bool AutItEnabled = false;                        ///< kept for the host
  Variant AutItWaitList;                            ///< kept for the host
  Variant AutItExcludeList;                         ///< kept for the host
  Variant AutAsModificheBin;                        ///< changed platforms: "|2345@3|10271@1"

  /// Opens the station session on `DB_stazione` and binds `DLLRS`, `DLLRS2` and `DLLRSMovimS`.
  /// 3705 while it, or one of the slots, is open; 0x80004005 when the file is missing, empty or no
  /// database.
  void Connetti_DBstazione_DLL();

  /// Reads the line database's file name from the station's properties into `DB_linea`. 3021 when
  /// the table is empty, 3265 when it has fewer than five columns; `DB_linea` stays, and `DLLRS`
  /// stays open.
  void Imposta_proprieta_pds();

  /// Opens the line session and binds `DLLRS3`, `DLLRS4`, `DLLRSMovimL` and `DLLRS5`. The file is
  /// `DB_linea` in the folder of `DB_stazione`, which is what precedes its last "\"; without one
  /// `DB_linea` is the path. Errors as for the station session.
  void Connetti_DBlinea_DLL();

  /// The aspect of a route's signal, in `Aspetto_sgn` and `Ric_sgn`: for its origin signal the
  /// route's own aspect combined with the line section that it leads to, for any other signal the
  /// route's own, with `Ric_sgn` untouched. A signal left out is compared as the empty text.
  ///
  /// 3021 for an unknown route, a station without accesses, an access without section; 94 for a
  /// Null signal list or access; 9 and 13 for a malformed one. Both properties keep their values
  /// and the slot in use stays open.
  void C_Sgn(const Variant& Itinerario, const Variant& OptSegnale = Variant::missing());

  /// Answers in `RispRich_fs` whether `Nome_PdS` grants a request over the section to its
  /// neighbour: its end's code is "270SV" or Null. 3021 for an unknown section; the answer is then
  /// False and `DLLRS3` stays open.
  void VerRich_fs(const Variant& Nome_PdS, const Variant& Nome_PdsAdicente);

  /// The timestamp of a calendar moment. 13 when it is no valid date and time, 6 when it lies
  /// outside 13 December 1901, 20:45:52, to 19 January 2038, 03:14:07.
  [[nodiscard]] std::int32_t MkTime(std::uint8_t Ore, std::uint8_t Minuti, std::uint8_t Secondi,
                                    std::uint8_t Giorno, std::uint8_t Mese, std::int16_t Anno);

  /// The calendar moment of a timestamp, which may be any.
  [[nodiscard]] DateTime UnMkTime(std::int32_t Timestamp);

  /// Does nothing.
  void VisMovimento();

  /// Draws a delay cause code of a class: "Guasto", "Ritardo Lieve", "Ritardo Eventuale" or
  /// "Ritardo Comune", to the letter. "--" stands for no cause; any other value gives empty.
  Variant CausaRitardo(const Variant& Motivazione);

  /// Moves both expected times of a train's rows by `Secondi` where both are present and at or
  /// after `Tempo`, and gives the train the cause unless it has one. A failure to write the cause
  /// is ignored. Uses `DLLRS5` and `DLLRS3`. Returns empty.
  Variant RitardaTreno(std::int32_t NumTreno, std::int16_t Secondi, std::int32_t Tempo,
                       const Variant& CausaRitardo = Variant::missing());

  /// Prepares the timetable of the 24 hours from `Inizio`; `MezzanotteInizio` is 00:00:00 of its
  /// calendar day. Calls `frmTelefonoINdll` for every suppression, extraordinary train and
  /// priority order. Returns empty.
  ///
  /// 3021 for a listed train without rows; 94 for a first row without departure; 6 for a time
  /// that leaves 32 bits. Each statement and each saved row is final when sent.
  Variant Inzializza_Orario(std::int32_t Inizio, std::int32_t MezzanotteInizio);

  /// Easter Monday as a date code, day and month: "0104" for 2024. 6 from the year 26191 on, and
  /// wherever the sums leave 16 bits; 11 for some years before 0.
  Variant EasterMondayDate(std::int16_t Year);

  /// Closes both sessions and lets go of their connections. Slots stay bound to the old ones.
  void Disconnetti_DB();

  /// "origin - destination", or empty for a train with neither. 3021 when it has only one.
  Variant CorsaTreno(std::int32_t NumTreno);

  /// The stops after `Nome_PdS`, each followed by ",", and "." at the end; `StazioneInizio` is not
  /// used. 3021 when the train does not come through `Nome_PdS`.
  Variant FermateSuccessive(std::int32_t NumTreno, const Variant& StazioneInizio);

  /// The delay of the last movement that was due by `Tempo`, in minutes rounded down to a multiple
  /// of `Approssimazione` (0: none): "+ 12", "- 3", "  0", or "--" for a train that has not
  /// started or is unknown.
  Variant RicavaRitardo(std::int32_t NumTreno, std::int32_t Tempo,
                        std::uint8_t Approssimazione = 0);

  /// A sentence on the train's running at `Tempo`, or "Nessuna informazione è disponibile riguardo
  /// al treno indicato.". Movements at `Nome_PdS` count once they are recorded.
  Variant RicavaInfoCircolazione(std::int32_t NumTreno, std::int32_t Tempo);

  /// Records an "Arrivo" or "Partenza" (any other word does nothing), moves the rest of the run by
  /// the deviation and adds the train to the movement list. Never fails: a step that fails is left
  /// out and the next one runs. Returns empty.
  Variant RegistraEvento(const std::string& TipoEvento, std::int32_t NumTreno, std::int32_t Orario,
                         const Variant& Stazione);

  /// Whether the second of two trains loses no more time than the first on the first section
  /// of each run that does not begin at `Stazione`; False when the first loses none. 3021 when a
  /// run has no such section, 94 when one of its times is Null.
  bool AnalisiPrecedenza(std::int32_t NumTreno1, std::int32_t NumTreno2, const Variant& Stazione);

  /// Wears an entity once, by a random amount that grows with `Global_ProbabilitaGuasti` and with
  /// the wear so far; its state never goes below 0. The entity is the one with the ID, or, with 0,
  /// every one with the kind (as a prefix) and the number; the first of them gives the state.
  ///
  /// 3021 for an unknown entity, 94 for a Null state, 11 for a state of 0, 6 for one so small
  /// that the wear leaves 32 bits, 13 with neither ID nor kind; nothing is written.
  void DecrementaManutenzione(const Variant& TipoEnte = Variant::missing(),
                              std::int16_t NumeroEnte = 0, std::int16_t IDEnte = 0);

  /// The maintenance state of an entity, chosen as above.
  float RicavaStatoManutenzione(const Variant& TipoEnte = Variant::missing(),
                                std::int16_t NumeroEnte = 0, std::int16_t IDEnte = 0);

  /// "last station|next station" at `Tempo`, by expected arrivals. 3021 for a train without rows
  /// and for one whose first row has an arrival still to come.
  Variant RicavaPosizioneTreno(std::int32_t NumTreno, std::int32_t Tempo);

  /// How far a file is usable as a station database: 0 not a database, 7 all six tables readable,
  /// between them the first table that is not: 1 `banco`, 2 `deviatoi`, 3 `enti`, 4 `finestre`,
  /// 5 `itinerari`, 6 `proprieta`. Never fails, and changes nothing; `TipoDB` is not used.
  std::uint8_t VerificaDB(const Variant& Percorso, const Variant& TipoDB);

  /// Rewrites "Output.ssi" in the component folder: the station, and a block for every train that
  /// arrives at or leaves `Nome_PdS` after `Tempo`. 52 to 76 when the file cannot be written, 9
  /// for a train without origin and destination, 3021 for one with only one of them; the file keeps
  /// what was written so far.
  void AggiornaFileSSI(std::int32_t Tempo);

  /// The next train that arrives at `MioPdS` from a neighbour: the seconds from `Tempo` to its
  /// expected arrival, "|", and its number; `TrenoPrecedente` is passed over. When there is none,
  /// the negative of `Tempo`, "|" and 0.
  Variant ProssimoArrivo(const Variant& MioPdS, const Variant& PdsAdiacente, std::int32_t Tempo,
                         std::int32_t TrenoPrecedente = 0);

  /// Appends a line to "log_InizializzaOrario.txt" in the component folder. 52 to 76 when it
  /// cannot, and 13 for an object; then nothing is written, nor does a part of a line stay.
  void Registra(const Variant& Info);

  /// Speaks an announcement in Italian with a voice of `platform().voice`, and returns when it has
  /// been spoken.
  ///
  ///   Procedura                 speaks of              Parametro1        Parametro2
  ///   "Arrivo"                  the train's arrival    timestamp now
  ///   "Partenza", "Pronto"      its departure
  ///   "Ritardo"                 its delay              timestamp now
  ///   "Cambio binario"          its change of track    new track         former one, or Null
  ///   "Transito"                a train passing        track
  ///   "Stazione"                a station's name       name
  ///   "Comunicazioni generali"  one of three messages, drawn
  ///
  /// Silent, and no error: any other word (the voice is given the empty text), a category that is
  /// not announced, "Arrivo" of a train that passes without stopping, "Ritardo" of one less than 5
  /// minutes late. Trains are looked up at `Nome_PdS` through `DLLRS4`, which is closed on every
  /// path.
  ///
  /// 429 without a voice, before any database is read; 3021 for a train without a row here; 9 for
  /// a run without the origin or destination to speak; 94 for "Arrivo" without an arrival,
  /// "Partenza" or "Pronto" without a departure; 13 for a parameter that is missing or no
  /// timestamp; 0x80004005, or what a host's voice raises, when speaking fails.
  void AutAsSintesiVocale(std::int32_t NumTreno, const std::string& Procedura,
                          const Variant& Parametro1 = Variant::missing(),
                          const Variant& Parametro2 = Variant::missing());

  /// Whether "Loq.Roberto.tts", the voice data that the announcements are meant for, can be read
  /// in the component folder. Never fails; the default voice does not need it.
  bool VerificaAs();

  /// The check letter of a code, "A" to "Z". 6 for an empty code, one of more than 255 characters,
  /// or one whose character code times position passes 32767.
  std::string CheckSumDigit(const Variant& Codice);

  /// Whether a train's "Arrivo" or "Partenza" has happened: it was recorded, or its row at
  /// `Nome_PdS` has an expected time before `StartTime`. 9 for another word, 6 beyond 32768
  /// recorded items.
  bool CercaListaTreni(std::int32_t NumTreno, const Variant& Evento);
};

}  // namespace ravelinox
