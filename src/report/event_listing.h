// The listing of messages as trees of event lines.

#ifndef LUMO_REPORT_EVENT_LISTING_H_
#define LUMO_REPORT_EVENT_LISTING_H_

#include <cstdint>
#include <ostream>
#include <string_view>
#include <vector>

#include "model/run_statistics.h"
#include "profiling_log_generated.h"

namespace lumo {

// Writes one section of the report: the messages at positions `first` to
// `end` - 1 as far as there are any, each with its event trees, and then the
// summary of `statistics`, whose figures set the first `num_warmup` runs aside.
// Returns false, with nothing written, if `root` is null or `statistics` has no
// element.
bool WriteEventData(std::ostream& stream, const ProfilingLog* root,
                    const std::vector<StatisticsMap>& statistics,
                    std::int32_t first, std::int32_t end,
                    std::int32_t num_warmup);

// Returns the number in a name such as "node_id_12:Conv", which begins with
// "node_id_" and holds this text only once: its first run of decimal digits.
// Returns -1 if the name is not like that, has no digit, or the number is not a
// 32-bit signed integer.
std::int32_t ParseNodeId(std::string_view name);

}  // namespace lumo

#endif  // LUMO_REPORT_EVENT_LISTING_H_
