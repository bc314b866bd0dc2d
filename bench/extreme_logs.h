// Logs of extreme shapes, for benchmarks.

#ifndef LUMO_BENCH_EXTREME_LOGS_H_
#define LUMO_BENCH_EXTREME_LOGS_H_

#include <cstdint>
#include <vector>

namespace lumo {

// One graph with `count` different operations.
std::vector<std::uint8_t> MakeManyOperations(std::int64_t count);

// `count` graphs of one message each, the first half of them finalize messages.
std::vector<std::uint8_t> MakeManyGraphs(std::int64_t count);

// A finalize message, then a message with `count` top-level events.
std::vector<std::uint8_t> MakeManyEvents(std::int64_t count);

// An accelerator-cycle event with one node event, whose name is "node_id_"
// followed by `length` decimal digits.
std::vector<std::uint8_t> MakeLongName(std::int64_t length);

}  // namespace lumo

#endif  // LUMO_BENCH_EXTREME_LOGS_H_
