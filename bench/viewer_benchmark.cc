// Times the library's work and ours on the same logs: what every run must pay for
// verification and the text of the log, against grouping with statistics and
// against composing the report.

#include <iostream>
#include <utility>

#include <benchmark/benchmark.h>

#include "app/profile_viewer.h"
#include "large_log.h"
#include "log/log_file.h"
#include "report/log_text.h"

namespace lumo {
namespace {

constexpr LogShape ShapeOf(std::int64_t executes) { return {2, executes, 80, 5}; }

void CountTablesOf(benchmark::State& state) {
  state.counters["tables"] =
      static_cast<double>(CountTables(ShapeOf(state.range(0))));
}

void Verifier(benchmark::State& state) {
  const std::vector<std::uint8_t> log = MakeLargeLog(ShapeOf(state.range(0)));
  for (auto _ : state) {
    benchmark::DoNotOptimize(VerifyLog(log));
  }
  CountTablesOf(state);
}

void LogText(benchmark::State& state) {
  const std::vector<std::uint8_t> log = MakeLargeLog(ShapeOf(state.range(0)));
  for (auto _ : state) {
    benchmark::DoNotOptimize(RenderLogText(log));
  }
  CountTablesOf(state);
}

void Statistics(benchmark::State& state) {
  const std::vector<std::uint8_t> log = MakeLargeLog(ShapeOf(state.range(0)));
  for (auto _ : state) {
    state.PauseTiming();
    {
      ProfileViewer viewer;
      viewer.AcceptLog(log);
      state.ResumeTiming();
      benchmark::DoNotOptimize(viewer.ReadDataFromLog());
      state.PauseTiming();
    }
    state.ResumeTiming();
  }
  CountTablesOf(state);
}

void Report(benchmark::State& state) {
  const std::vector<std::uint8_t> log = MakeLargeLog(ShapeOf(state.range(0)));
  for (auto _ : state) {
    state.PauseTiming();
    {
      ProfileViewer viewer;
      viewer.AcceptLog(log);
      viewer.ReadDataFromLog();
      state.ResumeTiming();
      benchmark::DoNotOptimize(viewer.ComposeReport());
      state.PauseTiming();
    }
    state.ResumeTiming();
  }
  CountTablesOf(state);
}

// Executes per graph that give about 10,000, 100,000 and 999,000 tables.
#define LUMO_SIZES Arg(10)->Arg(103)->Arg(1031)->Unit(benchmark::kMillisecond)
BENCHMARK(Verifier)->LUMO_SIZES;
BENCHMARK(LogText)->LUMO_SIZES;
BENCHMARK(Statistics)->LUMO_SIZES;
BENCHMARK(Report)->LUMO_SIZES;

}  // namespace
}  // namespace lumo

BENCHMARK_MAIN();
