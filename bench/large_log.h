// Large logs for measurements.

#ifndef LUMO_BENCH_LARGE_LOG_H_
#define LUMO_BENCH_LARGE_LOG_H_

#include <cstdint>
#include <vector>

namespace lumo {

// What a log consists of: per graph one finalize message and `executes` execute
// messages, in each of these an accelerator-cycle event with `operations` node
// events, each of these with `sub_events` events below it.
struct LogShape {
  std::int64_t graphs;
  std::int64_t executes;
  std::int64_t operations;
  std::int64_t sub_events;
};

// Returns the number of tables in a log of this shape.
std::int64_t CountTables(const LogShape& shape);

// Returns a log of this shape with names as a delegate writes them, none stored
// twice, and values that vary a little from run to run. The same shape gives
// the same bytes.
std::vector<std::uint8_t> MakeLargeLog(const LogShape& shape);

}  // namespace lumo

#endif  // LUMO_BENCH_LARGE_LOG_H_
