// Recording a movement against the same statements prepared by hand.
#include <benchmark/benchmark.h>

#include "floor.hpp"
#include "national.hpp"

namespace ravelinox::bench {

namespace {

constexpr int trains = 10000;

const National& timetable() {
  static const National national(trains);
  return national;
}

void by_engine(benchmark::State& state) {
  timetable().restore();
  cmdl1 engine;
  timetable().open(engine);
  std::int32_t train = 0;
  for (auto _ : state) {
    train = train % trains + 1;
    engine.RegistraEvento("Partenza", train, 40000, own_station);
  }
}

void by_hand(benchmark::State& state) {
  timetable().restore();
  const FloorDatabase database(timetable().line_file());
  FloorStatement compare(database,
                         "SELECT Effettiva_partenza, Orario_partenza FROM circolazione WHERE "
                         "Numero = ? AND Stazione = ? COLLATE NOCASE");
  FloorStatement write(database,
                       "UPDATE circolazione SET Effettiva_partenza = ? WHERE Numero = ? AND "
                       "Stazione = ? COLLATE NOCASE");
  FloorStatement shift(database,
                       "UPDATE circolazione SET Effettivo_arrivo = Effettivo_arrivo + ?1, "
                       "Effettiva_partenza = Effettiva_partenza + ?1 WHERE (Effettiva_partenza >= "
                       "?2 AND Effettivo_arrivo >= ?2) AND Numero = ?3");
  std::int64_t train = 0;
  for (auto _ : state) {
    train = train % trains + 1;
    compare.bind(train, own_station).step();
    const std::int64_t deviation = 40000 - compare.whole(0);
    const std::int64_t scheduled = compare.whole(1);
    compare.finish();
    write.bind(std::int64_t{40000}, train, own_station).run();
    if (deviation >= INT16_MIN && deviation <= INT16_MAX) {
      shift.bind(deviation, scheduled + 1, train).run();
    }
  }
}

BENCHMARK(by_hand)->Name("recording/floor")->Iterations(20000)->Unit(benchmark::kMicrosecond);
BENCHMARK(by_engine)->Name("recording/engine")->Iterations(20000)->Unit(benchmark::kMicrosecond);

}  // namespace

}  // namespace ravelinox::bench
