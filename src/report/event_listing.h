// The listing of messages and their events.

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

}  // namespace lumo

#endif  // LUMO_REPORT_EVENT_LISTING_H_
