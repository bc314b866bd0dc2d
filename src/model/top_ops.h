// The operations with the largest share of a graph's time.

#ifndef LUMO_MODEL_TOP_OPS_H_
#define LUMO_MODEL_TOP_OPS_H_

#include <cstdint>
#include <string_view>
#include <vector>

namespace lumo {

// One row of a top list: an operation's name, and the rest as in its OpAverage.
struct TopOpEntry {
  // Points into the log and lives as long as the log's bytes do.
  std::string_view name;
  std::string_view unit;
  float percent;
  float average;
};

// Returns the `topK` entries of largest percent, largest first; all of them
// if there are fewer or `topK` is negative. Among equal percents the order
// of `entries` decides by the rules of the binary heap in the source file,
// which are part of the report: they say which of several equal operations
// stay.
std::vector<TopOpEntry> SelectTopOps(const std::vector<TopOpEntry>& entries,
                                     std::int32_t topK);

}  // namespace lumo

#endif  // LUMO_MODEL_TOP_OPS_H_
