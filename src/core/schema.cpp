// The whole schema of both databases. Column order is part of the format: operations read the
// columns of "*" results by position.
#include <array>
#include <span>
#include <string>
#include <string_view>

#include "platform/data/create_database.hpp"
#include "ravelinox/database.hpp"

namespace ravelinox {

namespace {

constexpr std::array<std::string_view, 6> station_schema{
    "CREATE TABLE proprieta (ID INTEGER, Nome_Stazione TEXT, Sigla TEXT, Descrizione TEXT,"
    " Nome_DB_linea TEXT, NumeriBinari TEXT)",
    "CREATE TABLE itinerari (ID INTEGER, Nome TEXT, Tipo TEXT, Origine TEXT, Destinazione TEXT,"
    " Binario TEXT, Lunghezza SMALLINT, Segnali TEXT, Deviatoi TEXT, Accesso SMALLINT)",
    "CREATE TABLE enti (ID SMALLINT, Tipo_ente TEXT, Numero SMALLINT, Stato_manutenzione REAL,"
    " Tipo_CDB TEXT, Lunghezza_reale SMALLINT)",
    "CREATE TABLE banco (ID INTEGER, Nome TEXT, Valore TEXT)",
    "CREATE TABLE deviatoi (ID INTEGER, Nome TEXT, Posizione TEXT)",
    "CREATE TABLE finestre (ID INTEGER, Nome TEXT, Sinistra INTEGER, Alto INTEGER,"
    " Larghezza INTEGER, Altezza INTEGER)"};

// No index on a time column: the set-up rewrites every one of them.
constexpr std::array<std::string_view, 7> line_schema{
    "CREATE TABLE accessi (ID INTEGER, Lista_accessi TEXT, Nome_stazione TEXT)",
    "CREATE TABLE linea (ID INTEGER, Estremo1 TEXT, Estremo2 TEXT, Lunghezza REAL,"
    " Binari SMALLINT, Codice_estremo1 TEXT, Aspetto_estremo1 TEXT, Variante_estremo1 BOOLEAN,"
    " Stato_estremo1 TEXT, Senso BOOLEAN, Blocco TEXT, Codice_estremo2 TEXT,"
    " Aspetto_estremo2 TEXT, Variante_estremo2 BOOLEAN)",
    "CREATE TABLE generalita_treni (Numero INTEGER, Classificazione TEXT, \"IF\" TEXT, Note TEXT,"
    " Giorni TEXT, Lunghezza SMALLINT, Posizione1 TEXT, Posizione2 TEXT, Stato TEXT,"
    " Marcia_Prioritaria BOOLEAN, Causa_ritardo TEXT, Velocita SMALLINT, Velocita_max SMALLINT,"
    " Senso BOOLEAN)",
    "CREATE TABLE circolazione (Numero INTEGER, Stazione TEXT, Orario_arrivo INTEGER,"
    " Orario_partenza INTEGER, Effettivo_arrivo INTEGER, Effettiva_partenza INTEGER,"
    " Secondi_fermata SMALLINT, Recupero_ritardo SMALLINT, Binario TEXT)",
    "CREATE INDEX circolazione_Numero ON circolazione (Numero)",
    "CREATE INDEX circolazione_Stazione ON circolazione (Stazione COLLATE NOCASE, Numero)",
    "CREATE INDEX generalita_treni_Numero ON generalita_treni (Numero)"};

}  // namespace

void create_station_database(const std::string& path) { create_database(path, station_schema); }

void create_line_database(const std::string& path) { create_database(path, line_schema); }

}  // namespace ravelinox
