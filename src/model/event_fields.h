// The fields of an event as text, and the node id in its name.

#ifndef LUMO_MODEL_EVENT_FIELDS_H_
#define LUMO_MODEL_EVENT_FIELDS_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "profiling_log_generated.h"

namespace lumo {

// Returns "us", "bytes", "cycles" or "count", or an empty text for any other
// unit. The text is a constant of the program.
std::string_view UnitText(ProfileEventUnit unit);

// Returns the engines of a resource mask in the order of their bits, such as
// "VPU, TMU, DMA". Other bits are ignored.
std::string ResourceMaskText(std::uint8_t mask);

// Returns the text that follows the name of an event in a listing: ": VPU, TMU"
// for a resource mask, an empty text for a background operation, otherwise the
// value and the unit, such as ": 1500 cycles".
std::string ValueText(const ProfilingEvent& event);

// Returns the node id in a name such as "node_id_12:Conv": the first run of
// decimal digits in a name that begins with "node_id_" and does not contain
// this text again. Returns -1 for a name of another form, without digits, or
// with a number that does not fit into a 32-bit signed integer.
std::int32_t ParseNodeId(std::string_view name);

// Returns the name without its beginning "node_id_<digits>:", if it has one.
std::string_view BareName(std::string_view name);

}  // namespace lumo

#endif  // LUMO_MODEL_EVENT_FIELDS_H_
