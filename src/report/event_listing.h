// The listing of messages as trees of event lines.

#ifndef LUMO_REPORT_EVENT_LISTING_H_
#define LUMO_REPORT_EVENT_LISTING_H_

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "model/run_statistics.h"
#include "profiling_log_generated.h"

namespace lumo {

// Writes the messages at positions `first` to `end` - 1, as far as there are
// messages, each with its event trees, and then the summary of `statistics`,
// whose figures exclude the first `num_warmup` runs. Returns false, with
// nothing written, where `root` is null or `statistics` has no element.
bool WriteEventData(std::ostream& stream, const ProfilingLog* root,
                    const std::vector<StatisticsMap>& statistics,
                    std::int32_t first, std::int32_t end,
                    std::int32_t num_warmup);

// Writes the line of `event`, indented by `depth` steps of four blanks, and
// below it those of its sub-events, one step deeper. A node event's line begins
// with the share of `parent_value`, the value of the enclosing event (0 for
// none), in percent.
void WriteEventTree(std::ostream& stream, const ProfilingEvent& event,
                    std::int32_t depth, std::uint64_t parent_value);

// Returns the engines of a resource mask in the order of their bits, such as
// "VPU, TMU, DMA"; bits without an engine add nothing.
std::string ResourceMaskText(std::uint8_t mask);

// Returns the number in a name such as "node_id_12:Conv", which begins with
// "node_id_" and holds this text only once: its first run of decimal digits.
// Returns -1 where the name is another, has no digit, or the number is no
// 32-bit signed integer.
std::int32_t ParseNodeId(std::string_view name);

}  // namespace lumo

#endif  // LUMO_REPORT_EVENT_LISTING_H_
