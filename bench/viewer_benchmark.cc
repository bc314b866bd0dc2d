// Measures the steps of a run on the same logs: verification, grouping with
// statistics, composing the report, rendering the log as text. Also measures
// whole runs on logs of extreme shapes, each at a quarter of its size and in
// full.

#include <cstdint>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "generated_log.h"
#include "log/log.h"
#include "report/log_text.h"
#include "viewer/profile_viewer.h"

namespace lumo {
namespace {

using Bytes = std::vector<std::uint8_t>;

const Console kConsole = {std::cout, std::cerr};

// Returns a log with as many execute runs per graph as the argument of the
// benchmark, and reports its number of tables.
Bytes MakeLog(benchmark::State& state) {
  const LogShape shape = {2, state.range(0), 80, 5};
  state.counters["tables"] = static_cast<double>(CountTables(shape));
  return GenerateLog(shape);
}

void Verifier(benchmark::State& state) {
  const Bytes log = MakeLog(state);
  std::string error;
  for (auto _ : state) {
    benchmark::DoNotOptimize(VerifyLog(log, &error));
  }
}

void LogText(benchmark::State& state) {
  const Bytes log = MakeLog(state);
  for (auto _ : state) {
    benchmark::DoNotOptimize(LogTextConverter().RenderLogText(log));
  }
}

void Statistics(benchmark::State& state) {
  const Bytes log = MakeLog(state);
  for (auto _ : state) {
    state.PauseTiming();
    auto viewer = std::make_unique<ProfileViewer>(kConsole);
    viewer->TakeLog(log);
    state.ResumeTiming();
    benchmark::DoNotOptimize(viewer->ReadDataFromLog());
    state.PauseTiming();
    viewer.reset();
    state.ResumeTiming();
  }
}

void Report(benchmark::State& state) {
  const Bytes log = MakeLog(state);
  for (auto _ : state) {
    state.PauseTiming();
    auto viewer = std::make_unique<ProfileViewer>(kConsole);
    viewer->TakeLog(log);
    viewer->ReadDataFromLog();
    state.ResumeTiming();
    benchmark::DoNotOptimize(viewer->ComposeReport());
    state.PauseTiming();
    viewer.reset();
    state.ResumeTiming();
  }
}

using Dimension = std::int64_t LogShape::*;

// `dimension` has the argument of the benchmark as its value.
void WholeRun(benchmark::State& state, Dimension dimension) {
  LogShape shape;
  shape.*dimension = state.range(0);
  const Bytes log = GenerateLog(shape);
  for (auto _ : state) {
    ProfileViewer viewer(kConsole);
    if (!viewer.TakeLog(log) || !viewer.ReadDataFromLog()) {
      state.SkipWithError("invalid log");
      break;
    }
    benchmark::DoNotOptimize(viewer.ComposeReport());
    benchmark::DoNotOptimize(LogTextConverter().RenderLogText(log));
  }
}

// Execute runs per graph for about 10,000, 100,000 and 999,000 tables.
void Sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(10)->Arg(103)->Arg(1031)->Unit(benchmark::kMillisecond);
}
BENCHMARK(Verifier)->Apply(Sizes);
BENCHMARK(LogText)->Apply(Sizes);
BENCHMARK(Statistics)->Apply(Sizes);
BENCHMARK(Report)->Apply(Sizes);

BENCHMARK_CAPTURE(WholeRun, operations, &LogShape::operations)
    ->Arg(75000)
    ->Arg(300000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WholeRun, graphs, &LogShape::graphs)
    ->Arg(35000)
    ->Arg(140000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WholeRun, events, &LogShape::events)
    ->Arg(225000)
    ->Arg(900000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WholeRun, name_bytes, &LogShape::zeros)
    ->Arg(2500000)
    ->Arg(10000000)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lumo

BENCHMARK_MAIN();
