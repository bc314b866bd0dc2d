// Logs of any shape and size, for benchmarks and tests.

#ifndef LUMO_BENCH_GENERATED_LOG_H_
#define LUMO_BENCH_GENERATED_LOG_H_

#include <cstdint>
#include <vector>

namespace lumo {

struct LogShape {
  // Each graph has one finalize message and `executes` execute messages.
  std::int64_t graphs = 1;
  std::int64_t executes = 1;
  // The node events of each execute message, and the sub-events of each of
  // them.
  std::int64_t operations = 1;
  std::int64_t sub_events = 0;
  // The top-level events of each execute message, besides the accelerator-cycle
  // event, which contains the operations.
  std::int64_t events = 2;
  // The zeros before the node id in the name of each operation.
  std::int64_t zeros = 0;
  // Graph g has the index g * graph_step.
  std::uint64_t graph_step = 1;
  // Each sub-event contains the previous one.
  bool is_nested = false;
  // The operations of a message are one table, to which the log refers
  // `operations` times.
  bool is_shared = false;
};

// Returns the number of tables in a log of this shape. Each reference to a
// shared table counts.
std::int64_t CountTables(const LogShape& shape);

// Returns a log of this shape with values that vary slightly from run to run.
// Each event stores its own name. The same shape gives the same bytes.
std::vector<std::uint8_t> GenerateLog(const LogShape& shape);

}  // namespace lumo

#endif  // LUMO_BENCH_GENERATED_LOG_H_
