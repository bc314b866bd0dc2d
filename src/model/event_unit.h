// The words for the units of event values.

#ifndef LUMO_MODEL_EVENT_UNIT_H_
#define LUMO_MODEL_EVENT_UNIT_H_

#include <string_view>

#include "profiling_log_generated.h"

namespace lumo {

// Returns "us", "bytes", "cycles" or "count"; empty for every other number,
// named or not. The text lives as long as the program.
std::string_view UnitText(ProfileEventUnit unit);

}  // namespace lumo

#endif  // LUMO_MODEL_EVENT_UNIT_H_
