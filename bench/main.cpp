// Runs the benchmarks and prints, below the engine's own times, what counts: the ratio of each to
// the floor of the same run, and the memory that a national set-up needs. The ratio is that of the
// processor's time; that by the clock beside it also holds what else the machine was doing.
#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <map>
#include <string>

#include "national.hpp"

namespace ravelinox::bench {

void register_queries();

namespace {

/// Collects the medians: "set-up/engine/10000" is the engine's time of "set-up … 10000".
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.aggregate_name == "median" || run.repetitions <= 1) {
        times_[run.run_name.str()] = {run.GetAdjustedCPUTime(), run.GetAdjustedRealTime()};
      }
    }
  }

  void print_ratios() const {
    for (const auto& [name, time] : times_) {
      for (const std::string kind : {"/engine", "/held read"}) {
        const std::size_t at = name.find(kind);
        if (at == std::string::npos) continue;
        const std::string base = kind == "/engine" ? "/floor" : "/engine";
        const auto other = times_.find(std::string(name).replace(at, kind.size(), base));
        if (other == times_.end()) continue;
        std::printf("ratio %-38s %.2f of %s, %.2f by the clock\n", name.c_str(),
                    time.processor / other->second.processor, base.c_str() + 1,
                    time.clock / other->second.clock);
      }
    }
  }

 private:
  struct Times {
    double processor;
    double clock;
  };
  std::map<std::string, Times> times_;
};

/// The peak memory of a program that does nothing but a national set-up, in MB.
double set_up_memory() {
  const National national(10000);
  const pid_t child = fork();
  if (child == 0) {
    cmdl1 engine;
    national.open(engine);
    engine.Inzializza_Orario(start_of_day(), start_of_day() - seconds_before_start);
    _exit(0);
  }
  rusage usage{};
  wait4(child, nullptr, 0, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024;
}

}  // namespace

}  // namespace ravelinox::bench

int main(int argc, char** argv) {
  // Before the benchmarks, so that what they leave in memory is not counted.
  std::printf("peak memory of a national set-up: %.1f MB\n", ravelinox::bench::set_up_memory());
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  ravelinox::bench::register_queries();
  ravelinox::bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.print_ratios();
  return 0;
}
