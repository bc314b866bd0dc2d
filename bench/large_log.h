// Large logs for benchmarks.

#ifndef LUMO_BENCH_LARGE_LOG_H_
#define LUMO_BENCH_LARGE_LOG_H_

#include <cstdint>
#include <vector>

namespace lumo {

// The shape of a log: each graph has one finalize message and `executes`
// execute messages; each execute message has an accelerator-cycle event with
// `operations` node events, and each node event has `sub_events` sub-events.
struct LogShape {
  std::int64_t graphs;
  std::int64_t executes;
  std::int64_t operations;
  std::int64_t sub_events;
};

// Returns the number of tables in a log of this shape.
std::int64_t CountTables(const LogShape& shape);

// Returns a log of this shape with names like those of a delegate and values
// that vary slightly from run to run. Each event stores its own name. The same
// shape gives the same bytes.
std::vector<std::uint8_t> MakeLargeLog(const LogShape& shape);

}  // namespace lumo

#endif  // LUMO_BENCH_LARGE_LOG_H_
