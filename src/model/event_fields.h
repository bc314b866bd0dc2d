// What the fields of an event say in words.

#ifndef LUMO_MODEL_EVENT_FIELDS_H_
#define LUMO_MODEL_EVENT_FIELDS_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "profiling_log_generated.h"

namespace lumo {

// Returns "us", "bytes", "cycles" or "count"; empty for every other number,
// named or not. The text lives as long as the program.
std::string_view UnitText(ProfileEventUnit unit);

// Returns what stands behind the name of an event in a listing: ": VPU, TMU"
// for a resource mask, nothing for a background operation, and otherwise the
// value and its unit, as in ": 1500 cycles".
std::string ValueText(const ProfilingEvent& event);

// Returns the number in a name such as "node_id_12:Conv", which begins with
// "node_id_" and contains this text only once: its first run of decimal digits.
// Returns -1 if the name is not like that, has no digit, or the number is not a
// 32-bit signed integer.
std::int32_t ParseNodeId(std::string_view name);

}  // namespace lumo

#endif  // LUMO_MODEL_EVENT_FIELDS_H_
