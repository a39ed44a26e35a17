#include "floor.hpp"

#include <stdexcept>
#include <vector>

#include "national.hpp"

namespace ravelinox::bench {

FloorDatabase::FloorDatabase(const std::string& path) {
  sqlite3* handle = nullptr;
  const int failed =
      sqlite3_open_v2(path.c_str(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
  handle_.reset(handle);
  if (failed != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(handle));
  run("PRAGMA synchronous = NORMAL");
  run("PRAGMA cache_size = -2048");
}

void FloorDatabase::run(const char* sql) const {
  if (sqlite3_exec(handle(), sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(handle()));
  }
}

FloorStatement::FloorStatement(const FloorDatabase& database, const char* sql) {
  sqlite3_stmt* handle = nullptr;
  if (sqlite3_prepare_v3(database.handle(), sql, -1, SQLITE_PREPARE_PERSISTENT, &handle, nullptr) !=
      SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(database.handle()));
  }
  handle_.reset(handle);
}

int FloorStatement::run() {
  int rows = 0;
  const int columns = sqlite3_column_count(handle_.get());
  for (; step(); ++rows) {
    for (int column = 0; column < columns; ++column) {
      if (sqlite3_column_type(handle_.get(), column) == SQLITE_TEXT) (void)text(column);
    }
  }
  finish();
  return rows;
}

std::string FloorStatement::text(int column) const {
  const auto* bytes = reinterpret_cast<const char*>(  // NOLINT(*-reinterpret-cast): the engine's
                                                      // bytes are characters
      sqlite3_column_text(handle_.get(), column));
  return {bytes, static_cast<std::size_t>(sqlite3_column_bytes(handle_.get(), column))};
}

namespace {

struct Row {
  std::int64_t id;
  std::int64_t arrival;
  std::int64_t departure;
  bool arrives;
  bool departs;
};

/// One train's rows, moved onto the day and written one by one, each final.
int write_run(FloorStatement& update, const std::vector<Row>& rows, std::int64_t midnight) {
  for (const Row& row : rows) {
    if (!row.arrives) {
      update.bind(nullptr, midnight + row.departure, nullptr, midnight + row.departure + 7, row.id);
    } else if (!row.departs) {
      update.bind(midnight + row.arrival, nullptr, midnight + row.arrival + 5, nullptr, row.id);
    } else {
      update.bind(midnight + row.arrival, midnight + row.departure, midnight + row.arrival + 5,
                  midnight + row.departure + 7, row.id);
    }
    update.run();
  }
  return static_cast<int>(rows.size());
}

}  // namespace

int floor_set_up(const FloorDatabase& database, std::int32_t start) {
  database.run(
      "UPDATE circolazione SET Orario_arrivo = Orario_arrivo - 604800, Orario_partenza = "
      "Orario_partenza - 604800, Effettivo_arrivo = Effettivo_arrivo - 604800, "
      "Effettiva_partenza = Effettiva_partenza - 604800 WHERE (Orario_arrivo > 604800 OR "
      "Orario_partenza > 604800) AND Numero IN (SELECT DISTINCT Numero FROM circolazione WHERE "
      "Orario_arrivo > 1776826800 OR Orario_partenza > 1776826800 OR Effettivo_arrivo > 1776826800 "
      "OR Effettiva_partenza > 1776826800)");
  database.run("UPDATE generalita_treni SET Posizione1 = 'L', Posizione2 = 'S', Stato = '0'");
  FloorStatement list(database,
                      "SELECT Numero, Lunghezza FROM generalita_treni WHERE (Giorni LIKE '% 3 %' "
                      "OR Giorni LIKE '% 2204 %') AND Giorni NOT LIKE '% e2204 %'");
  FloorStatement reset(database,
                       "UPDATE generalita_treni SET Marcia_Prioritaria = 0, Causa_ritardo = '--', "
                       "Velocita = Velocita_max, Posizione1 = 'L', Posizione2 = 'S', Stato = '0', "
                       "Senso = 1 WHERE Numero = ?");
  FloorStatement rows(database,
                      "SELECT rowid, Orario_arrivo, Orario_partenza, Effettivo_arrivo, "
                      "Effettiva_partenza, Stazione, Secondi_fermata, Recupero_ritardo, Binario "
                      "FROM circolazione WHERE Numero = ? ORDER BY Orario_arrivo");
  FloorStatement update(database,
                        "UPDATE circolazione SET Orario_arrivo = ?, Orario_partenza = ?, "
                        "Effettivo_arrivo = ?, Effettiva_partenza = ? WHERE rowid = ?");
  std::vector<std::int64_t> trains;
  while (list.step()) trains.push_back(list.whole(0));
  list.finish();
  int written = 0;
  std::vector<Row> run;
  for (const std::int64_t train : trains) {
    reset.bind(train).run();
    run.clear();
    for (rows.bind(train); rows.step();) {
      (void)rows.text(5);
      (void)rows.text(8);
      run.push_back({rows.whole(0), rows.whole(1), rows.whole(2), !rows.null(1), !rows.null(2)});
    }
    rows.finish();
    written += write_run(update, run, start - seconds_before_start);
  }
  // Tomorrow's list: each train is looked at and, ending too late, left alone.
  FloorStatement tomorrow(database,
                          "SELECT Numero FROM generalita_treni WHERE (Giorni LIKE '% 4 %' OR "
                          "Giorni LIKE '% 2304 %') AND Giorni NOT LIKE '% e2304 %'");
  trains.clear();
  while (tomorrow.step()) trains.push_back(tomorrow.whole(0));
  tomorrow.finish();
  for (const std::int64_t train : trains) rows.bind(train).run();
  return written;
}

}  // namespace ravelinox::bench
