/* The class `cmdl1` as a structure of C, written by the library's build from its table of members:
 * the functions of an object that was made, or asked, for RLX_CMDL1_ID.
 *
 * cmdl1.hpp says what each function does, automation.h who owns what it gives. Arguments by pointer
 * are never changed; a null pointer leaves an optional one out. A Boolean is -1 or 0, a date the
 * days since 30 December 1899. After a failure the object tells the sentence as rlx_error_info. */
#ifndef RAVELINOX_CMDL1_H
#define RAVELINOX_CMDL1_H

#include "ravelinox/automation.h"

/* clang-format off */

#define RLX_CMDL1_CLASS {0xAB36EA2E, 0x24D7, 0x4003, {0xA5, 0xB6, 0xEE, 0x73, 0xCA, 0x74, 0xB3, 0x13}}
#define RLX_CMDL1_ID {0x8EFB22CF, 0x45A9, 0x42EA, {0x91, 0x23, 0x1B, 0x44, 0x01, 0xDA, 0xFC, 0xC3}}

typedef struct rlx_cmdl1 rlx_cmdl1;

typedef struct rlx_cmdl1_slots {
  rlx_dispatch_slots dispatch; /* called with the object as an rlx_dispatch */

  rlx_result (*get_DLLCN)(rlx_cmdl1* self, rlx_dispatch** value);
  rlx_result (*reserved_DLLCN)(rlx_cmdl1* self, rlx_dispatch* value);
  rlx_result (*putref_DLLCN)(rlx_cmdl1* self, rlx_dispatch* value);
  rlx_result (*get_DLLCN2)(rlx_cmdl1* self, rlx_dispatch** value);
  rlx_result (*reserved_DLLCN2)(rlx_cmdl1* self, rlx_dispatch* value);
  rlx_result (*putref_DLLCN2)(rlx_cmdl1* self, rlx_dispatch* value);
  rlx_result (*get_DLLRSMovimL)(rlx_cmdl1* self, rlx_dispatch** value);
  rlx_result (*reserved_DLLRSMovimL)(rlx_cmdl1* self, rlx_dispatch* value);
  rlx_result (*putref_DLLRSMovimL)(rlx_cmdl1* self, rlx_dispatch* value);
  rlx_result (*get_DLLRSMovimS)(rlx_cmdl1* self, rlx_dispatch** value);
  rlx_result (*reserved_DLLRSMovimS)(rlx_cmdl1* self, rlx_dispatch* value);
  rlx_result (*putref_DLLRSMovimS)(rlx_cmdl1* self, rlx_dispatch* value);
  rlx_result (*get_DLLRS)(rlx_cmdl1* self, rlx_dispatch** value);
  rlx_result (*reserved_DLLRS)(rlx_cmdl1* self, rlx_dispatch* value);
  rlx_result (*putref_DLLRS)(rlx_cmdl1* self, rlx_dispatch* value);
  rlx_result (*get_DLLRS2)(rlx_cmdl1* self, rlx_dispatch** value);
  rlx_result (*reserved_DLLRS2)(rlx_cmdl1* self, rlx_dispatch* value);
  rlx_result (*putref_DLLRS2)(rlx_cmdl1* self, rlx_dispatch* value);
  rlx_result (*get_DLLRS3)(rlx_cmdl1* self, rlx_dispatch** value);
  rlx_result (*reserved_DLLRS3)(rlx_cmdl1* self, rlx_dispatch* value);
  rlx_result (*putref_DLLRS3)(rlx_cmdl1* self, rlx_dispatch* value);
  rlx_result (*get_DLLRS4)(rlx_cmdl1* self, rlx_dispatch** value);
  rlx_result (*reserved_DLLRS4)(rlx_cmdl1* self, rlx_dispatch* value);
  rlx_result (*putref_DLLRS4)(rlx_cmdl1* self, rlx_dispatch* value);
  rlx_result (*get_DLLRS5)(rlx_cmdl1* self, rlx_dispatch** value);
  rlx_result (*reserved_DLLRS5)(rlx_cmdl1* self, rlx_dispatch* value);
  rlx_result (*putref_DLLRS5)(rlx_cmdl1* self, rlx_dispatch* value);
  rlx_result (*get_DB_linea)(rlx_cmdl1* self, rlx_variant* value);
  rlx_result (*put_DB_linea)(rlx_cmdl1* self, rlx_variant value);
  rlx_result (*putref_DB_linea)(rlx_cmdl1* self, rlx_variant value);
  rlx_result (*get_App_path)(rlx_cmdl1* self, rlx_variant* value);
  rlx_result (*put_App_path)(rlx_cmdl1* self, rlx_variant value);
  rlx_result (*putref_App_path)(rlx_cmdl1* self, rlx_variant value);
  rlx_result (*get_DB_stazione)(rlx_cmdl1* self, rlx_variant* value);
  rlx_result (*put_DB_stazione)(rlx_cmdl1* self, rlx_variant value);
  rlx_result (*putref_DB_stazione)(rlx_cmdl1* self, rlx_variant value);
  rlx_result (*get_Aspetto_sgn)(rlx_cmdl1* self, rlx_variant* value);
  rlx_result (*put_Aspetto_sgn)(rlx_cmdl1* self, rlx_variant value);
  rlx_result (*putref_Aspetto_sgn)(rlx_cmdl1* self, rlx_variant value);
  rlx_result (*get_Ric_sgn)(rlx_cmdl1* self, int16_t* value);
  rlx_result (*put_Ric_sgn)(rlx_cmdl1* self, int16_t value);
  rlx_result (*get_RispRich_fs)(rlx_cmdl1* self, int16_t* value);
  rlx_result (*put_RispRich_fs)(rlx_cmdl1* self, int16_t value);
  rlx_result (*get_StartTime)(rlx_cmdl1* self, int32_t* value);
  rlx_result (*put_StartTime)(rlx_cmdl1* self, int32_t value);
  rlx_result (*get_Global_ProbabilitaSoppressione)(rlx_cmdl1* self, int16_t* value);
  rlx_result (*put_Global_ProbabilitaSoppressione)(rlx_cmdl1* self, int16_t value);
  rlx_result (*get_Global_Puntualita)(rlx_cmdl1* self, int16_t* value);
  rlx_result (*put_Global_Puntualita)(rlx_cmdl1* self, int16_t value);
  rlx_result (*get_Global_ProbabilitaGuasti)(rlx_cmdl1* self, int16_t* value);
  rlx_result (*put_Global_ProbabilitaGuasti)(rlx_cmdl1* self, int16_t value);
  rlx_result (*get_Global_DurataManutenzione)(rlx_cmdl1* self, int16_t* value);
  rlx_result (*put_Global_DurataManutenzione)(rlx_cmdl1* self, int16_t value);
  rlx_result (*get_Nome_PdS)(rlx_cmdl1* self, rlx_variant* value);
  rlx_result (*put_Nome_PdS)(rlx_cmdl1* self, rlx_variant value);
  rlx_result (*putref_Nome_PdS)(rlx_cmdl1* self, rlx_variant value);
  rlx_result (*get_AutItEnabled)(rlx_cmdl1* self, int16_t* value);
  rlx_result (*put_AutItEnabled)(rlx_cmdl1* self, int16_t value);
  rlx_result (*get_AutItWaitList)(rlx_cmdl1* self, rlx_variant* value);
  rlx_result (*put_AutItWaitList)(rlx_cmdl1* self, rlx_variant value);
  rlx_result (*putref_AutItWaitList)(rlx_cmdl1* self, rlx_variant value);
  rlx_result (*get_AutItExcludeList)(rlx_cmdl1* self, rlx_variant* value);
  rlx_result (*put_AutItExcludeList)(rlx_cmdl1* self, rlx_variant value);
  rlx_result (*putref_AutItExcludeList)(rlx_cmdl1* self, rlx_variant value);
  rlx_result (*get_AutAsModificheBin)(rlx_cmdl1* self, rlx_variant* value);
  rlx_result (*put_AutAsModificheBin)(rlx_cmdl1* self, rlx_variant value);
  rlx_result (*putref_AutAsModificheBin)(rlx_cmdl1* self, rlx_variant value);

  rlx_result (*Connetti_DBstazione_DLL)(rlx_cmdl1* self);
  rlx_result (*Imposta_proprieta_pds)(rlx_cmdl1* self);
  rlx_result (*Connetti_DBlinea_DLL)(rlx_cmdl1* self);
  rlx_result (*C_Sgn)(rlx_cmdl1* self, const rlx_variant* Itinerario, const rlx_variant* OptSegnale);
  rlx_result (*VerRich_fs)(rlx_cmdl1* self, const rlx_variant* Nome_PdS, const rlx_variant* Nome_PdsAdicente);
  rlx_result (*MkTime)(rlx_cmdl1* self, const uint8_t* Ore, const uint8_t* Minuti, const uint8_t* Secondi, const uint8_t* Giorno, const uint8_t* Mese, const int16_t* Anno, int32_t* result);
  rlx_result (*UnMkTime)(rlx_cmdl1* self, const int32_t* Timestamp, double* result);
  rlx_result (*VisMovimento)(rlx_cmdl1* self);
  rlx_result (*CausaRitardo)(rlx_cmdl1* self, const rlx_variant* Motivazione, rlx_variant* result);
  rlx_result (*RitardaTreno)(rlx_cmdl1* self, const int32_t* NumTreno, const int16_t* Secondi, const int32_t* Tempo, const rlx_variant* CausaRitardo, rlx_variant* result);
  rlx_result (*Inzializza_Orario)(rlx_cmdl1* self, const int32_t* Inizio, const int32_t* MezzanotteInizio, rlx_variant* result);
  rlx_result (*EasterMondayDate)(rlx_cmdl1* self, int16_t Year, rlx_variant* result);
  rlx_result (*Disconnetti_DB)(rlx_cmdl1* self);
  rlx_result (*CorsaTreno)(rlx_cmdl1* self, const int32_t* NumTreno, rlx_variant* result);
  rlx_result (*FermateSuccessive)(rlx_cmdl1* self, const int32_t* NumTreno, const rlx_variant* StazioneInizio, rlx_variant* result);
  rlx_result (*RicavaRitardo)(rlx_cmdl1* self, const int32_t* NumTreno, const int32_t* Tempo, const uint8_t* Approssimazione, rlx_variant* result);
  rlx_result (*RicavaInfoCircolazione)(rlx_cmdl1* self, const int32_t* NumTreno, const int32_t* Tempo, rlx_variant* result);
  rlx_result (*RegistraEvento)(rlx_cmdl1* self, const rlx_text* TipoEvento, const int32_t* NumTreno, const int32_t* Orario, const rlx_variant* Stazione, rlx_variant* result);
  rlx_result (*AnalisiPrecedenza)(rlx_cmdl1* self, const int32_t* NumTreno1, const int32_t* NumTreno2, const rlx_variant* Stazione, int16_t* result);
  rlx_result (*DecrementaManutenzione)(rlx_cmdl1* self, const rlx_variant* TipoEnte, const int16_t* NumeroEnte, const int16_t* IDEnte);
  rlx_result (*RicavaStatoManutenzione)(rlx_cmdl1* self, const rlx_variant* TipoEnte, const int16_t* NumeroEnte, const int16_t* IDEnte, float* result);
  rlx_result (*RicavaPosizioneTreno)(rlx_cmdl1* self, const int32_t* NumTreno, const int32_t* Tempo, rlx_variant* result);
  rlx_result (*VerificaDB)(rlx_cmdl1* self, const rlx_variant* Percorso, const rlx_variant* TipoDB, uint8_t* result);
  rlx_result (*AggiornaFileSSI)(rlx_cmdl1* self, const int32_t* Tempo);
  rlx_result (*ProssimoArrivo)(rlx_cmdl1* self, const rlx_variant* MioPdS, const rlx_variant* PdsAdiacente, const int32_t* Tempo, const int32_t* TrenoPrecedente, rlx_variant* result);
  rlx_result (*Registra)(rlx_cmdl1* self, const rlx_variant* Info);
  rlx_result (*AutAsSintesiVocale)(rlx_cmdl1* self, const int32_t* NumTreno, const rlx_text* Procedura, const rlx_variant* Parametro1, const rlx_variant* Parametro2);
  rlx_result (*VerificaAs)(rlx_cmdl1* self, int16_t* result);
  rlx_result (*CheckSumDigit)(rlx_cmdl1* self, const rlx_variant* Codice, rlx_text* result);
  rlx_result (*CercaListaTreni)(rlx_cmdl1* self, const int32_t* NumTreno, const rlx_variant* Evento, int16_t* result);
} rlx_cmdl1_slots;

struct rlx_cmdl1 {
  const rlx_cmdl1_slots* slots;
};

#endif
