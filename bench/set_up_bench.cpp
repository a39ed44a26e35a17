// The day's set-up against the same reads and writes by hand, each row final; and the same while
// another program keeps a read open on the file.
#include <benchmark/benchmark.h>

#include "floor.hpp"
#include "national.hpp"

namespace ravelinox::bench {

namespace {

/// Keeps a read open from its making to its end, as a careless program would.
class HeldRead {
 public:
  explicit HeldRead(const std::string& path) : database_(path) {
    database_.run("BEGIN");
    database_.run("SELECT count(*) FROM generalita_treni");
  }

 private:
  FloorDatabase database_;
};

void report_rows(benchmark::State& state, std::int64_t trains) {
  state.SetItemsProcessed(state.iterations() * trains * stations_per_train);
}

void set_up(benchmark::State& state, bool held_read) {
  const National national(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    state.PauseTiming();
    national.restore();
    auto engine = std::make_unique<cmdl1>();
    national.open(*engine);
    auto held = held_read ? std::make_unique<HeldRead>(national.line_file()) : nullptr;
    state.ResumeTiming();
    engine->Inzializza_Orario(start_of_day(), start_of_day() - seconds_before_start);
    state.PauseTiming();
    held.reset();
    engine.reset();
    state.ResumeTiming();
  }
  report_rows(state, state.range(0));
}

void by_engine(benchmark::State& state) { set_up(state, false); }
void with_held_read(benchmark::State& state) { set_up(state, true); }

void by_hand(benchmark::State& state) {
  const National national(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    state.PauseTiming();
    national.restore();
    auto database = std::make_unique<FloorDatabase>(national.line_file());
    state.ResumeTiming();
    floor_set_up(*database, start_of_day());
    state.PauseTiming();
    database.reset();
    state.ResumeTiming();
  }
  report_rows(state, state.range(0));
}

BENCHMARK(by_hand)->Name("set-up/floor")->Arg(200)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(by_engine)->Name("set-up/engine")->Arg(200)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(with_held_read)->Name("set-up/held read")->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace ravelinox::bench
