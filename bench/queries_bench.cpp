// Each question about trains against the same statements prepared by hand, every text read.
#include <benchmark/benchmark.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "floor.hpp"
#include "national.hpp"

namespace ravelinox::bench {

namespace {

constexpr int trains = 10000;
constexpr std::int32_t moment = 60000;

const National& timetable() {
  static const National national(trains);
  return national;
}

using Ask = std::function<void(cmdl1&, std::int32_t train)>;

/// A question, and its statements; each takes the train's number as its only parameter.
struct Question {
  const char* name;
  Ask ask;
  std::vector<const char*> statements;
};

constexpr const char* movements_joined =
    "SELECT Orario_arrivo, Orario_partenza, Effettivo_arrivo, Effettiva_partenza, Posizione1, "
    "Stazione FROM circolazione INNER JOIN generalita_treni ON circolazione.Numero = "
    "generalita_treni.Numero WHERE circolazione.Numero = ? AND (Effettivo_arrivo <= 60000 OR "
    "Effettiva_partenza <= 60000) ORDER BY Orario_arrivo";
constexpr const char* category =
    "SELECT Classificazione, Posizione1 FROM generalita_treni WHERE Numero = ?";
constexpr const char* movements =
    "SELECT Stazione, Orario_arrivo, Orario_partenza, Effettivo_arrivo, Effettiva_partenza FROM "
    "circolazione WHERE Numero = ? AND (Effettivo_arrivo <= 60000 OR Effettiva_partenza <= 60000) "
    "ORDER BY Orario_arrivo";
constexpr const char* movement_search =
    "SELECT Effettivo_arrivo, Effettiva_partenza FROM circolazione WHERE Numero = ? AND Stazione = "
    "'Centrale' COLLATE NOCASE AND (Effettivo_arrivo < 1776826800 OR Effettiva_partenza < "
    "1776826800)";

const std::vector<Question>& questions() {
  static const std::vector<Question> all{
      {"RicavaRitardo",
       [](cmdl1& engine, std::int32_t train) { engine.RicavaRitardo(train, moment, 5); },
       {movements_joined, movement_search, movement_search, category, movements, movement_search,
        movement_search}},
      {"RicavaInfoCircolazione",
       [](cmdl1& engine, std::int32_t train) { engine.RicavaInfoCircolazione(train, moment); },
       {category, movements, movement_search, movement_search}},
      {"CercaListaTreni",
       [](cmdl1& engine, std::int32_t train) { (void)engine.CercaListaTreni(train, "Arrivo"); },
       {movement_search}},
      {"CorsaTreno",
       [](cmdl1& engine, std::int32_t train) { engine.CorsaTreno(train); },
       {"SELECT Stazione FROM circolazione WHERE Numero = ? AND ((Orario_arrivo IS NULL) <> "
        "(Orario_partenza IS NULL)) ORDER BY Orario_arrivo"}},
      {"FermateSuccessive",
       [](cmdl1& engine, std::int32_t train) { engine.FermateSuccessive(train, ""); },
       {"SELECT Stazione, Orario_arrivo, Orario_partenza FROM circolazione WHERE Numero = ? ORDER "
        "BY Orario_arrivo"}},
      {"RicavaPosizioneTreno",
       [](cmdl1& engine, std::int32_t train) { engine.RicavaPosizioneTreno(train, moment); },
       {"SELECT Stazione, Effettivo_arrivo, Effettiva_partenza FROM circolazione WHERE Numero = ? "
        "ORDER BY Orario_arrivo"}},
  };
  return all;
}

void by_engine(benchmark::State& state, const Question& question) {
  timetable().restore();
  cmdl1 engine;
  timetable().open(engine);
  std::int32_t train = 0;
  for (auto _ : state) {
    train = train % trains + 1;
    question.ask(engine, train);
  }
}

void by_hand(benchmark::State& state, const Question& question) {
  timetable().restore();
  const FloorDatabase database(timetable().line_file());
  std::vector<FloorStatement> statements;
  for (const char* sql : question.statements) statements.emplace_back(database, sql);
  std::int64_t train = 0;
  for (auto _ : state) {
    train = train % trains + 1;
    for (FloorStatement& statement : statements) {
      benchmark::DoNotOptimize(statement.bind(train).run());
    }
  }
}

/// Every train at the own station is looked up at the neighbour's: ten thousand statements.
void next_arrival_by_engine(benchmark::State& state) {
  timetable().restore();
  cmdl1 engine;
  timetable().open(engine);
  for (auto _ : state) {
    benchmark::DoNotOptimize(engine.ProssimoArrivo(own_station, neighbour_before, moment));
  }
}

/// As in a slot, the list is read whole and its lock is given back before the questions begin: each
/// statement stands by itself, here as in the other floors.
void next_arrival_by_hand(benchmark::State& state) {
  timetable().restore();
  const FloorDatabase database(timetable().line_file());
  FloorStatement arrivals(database,
                          "SELECT Numero, Effettivo_arrivo FROM circolazione WHERE Stazione = ? "
                          "COLLATE NOCASE");
  FloorStatement departure(database,
                           "SELECT Effettiva_partenza FROM circolazione WHERE Stazione = ? COLLATE "
                           "NOCASE AND Numero = ? AND Effettiva_partenza < ?");
  std::vector<std::array<std::int64_t, 2>> rows;
  for (auto _ : state) {
    std::int64_t best = 0;
    rows.clear();
    for (arrivals.bind(own_station); arrivals.step();) {
      rows.push_back({arrivals.whole(0), arrivals.whole(1)});
    }
    arrivals.finish();
    for (const auto& [number, arrival] : rows) {
      const int found = departure.bind(neighbour_before, number, arrival).run();
      if (found == 1 && arrival > moment && (arrival < best || best == 0)) best = arrival;
    }
    benchmark::DoNotOptimize(best);
  }
}

}  // namespace

void register_queries() {
  for (const Question& question : questions()) {
    const std::string name = question.name;
    benchmark::RegisterBenchmark((name + "/floor").c_str(), by_hand, question);
    benchmark::RegisterBenchmark((name + "/engine").c_str(), by_engine, question);
  }
  benchmark::RegisterBenchmark("ProssimoArrivo/floor", next_arrival_by_hand);
  benchmark::RegisterBenchmark("ProssimoArrivo/engine", next_arrival_by_engine);
}

}  // namespace ravelinox::bench
