// The node number that an event's name may carry.

#ifndef LUMO_MODEL_NODE_ID_H_
#define LUMO_MODEL_NODE_ID_H_

#include <cstdint>
#include <string_view>

namespace lumo {

// Returns the number in a name such as "node_id_12:Conv", which begins with
// "node_id_" and holds this text only once: its first run of decimal digits.
// Returns -1 if the name is not like that, has no digit, or the number is not a
// 32-bit signed integer.
std::int32_t ParseNodeId(std::string_view name);

}  // namespace lumo

#endif  // LUMO_MODEL_NODE_ID_H_
