// The listing of messages and their events, and the percentage that begins the
// lines of operations, here and in the sections about operations.

#ifndef LUMO_REPORT_EVENT_LISTING_H_
#define LUMO_REPORT_EVENT_LISTING_H_

#include <cstdint>
#include <ostream>
#include <vector>

#include "model/run_statistics.h"
#include "profiling_log_generated.h"

namespace lumo {

// Writes one section of the report: the messages at positions `first` to
// `end` - 1, which must exist, each with its events as trees, and then the
// summary of `statistics`, whose figures exclude the first `num_warmup` runs.
// Returns false and writes nothing if `root` is null or `statistics` is empty.
bool WriteEventData(std::ostream& stream, const ProfilingLog* root,
                    const std::vector<StatisticsMap>& statistics,
                    std::int32_t first, std::int32_t end,
                    std::int32_t num_warmup);

// Writes "12.50% | ": the number with two decimals, or "inf" or "-nan", padded
// to 5 characters. Leaves the stream in fixed notation with two decimals: the
// report requires that figures below the first percentage have two decimals.
void WritePercentField(std::ostream& stream, float percent);

}  // namespace lumo

#endif  // LUMO_REPORT_EVENT_LISTING_H_
