// From the messages of a verified log to counts and per-graph series.
//
// With F messages that have an event named with kFinalize and E that have one
// named with kExecute, the finalize messages are those at positions 0 to F - 1
// and the execute messages the E after these, whatever they hold: a writer puts
// them in that order.
//
// An absent vector counts as an empty one here, and an absent name as an empty
// name.

#ifndef LUMO_MODEL_MESSAGE_GROUPING_H_
#define LUMO_MODEL_MESSAGE_GROUPING_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <flatbuffers/flatbuffers.h>

#include "model/event_series.h"
#include "profiling_log_generated.h"

namespace lumo {

using MessageVector =
    flatbuffers::Vector<flatbuffers::Offset<ProfilingMessage>>;

// What the name of a top-level event contains in a finalize or an execute
// message.
inline constexpr std::string_view kFinalize = "(finalize)";
inline constexpr std::string_view kExecute = "(execute)";

// Returns the number of distinct graph indices, compared in all their 64 bits.
// `messages` may be null.
std::int32_t CountGraphs(const MessageVector* messages);

// Returns the number of messages with at least one top-level event whose name
// contains `text`, byte for byte. `messages` may be null.
std::int32_t CountMessagesWithEventName(const MessageVector* messages,
                                        std::string_view text);

// Returns the smaller of `end` and the number of messages: where a loop over
// message positions has to stop. The counts do not promise that a range of
// positions fits, because a message may count as two kinds.
std::int32_t ClipToMessages(const ProfilingLog& log, std::int32_t end);

// Returns the message at position `i`, from 0; there must be one.
const ProfilingMessage& MessageAt(const ProfilingLog& log, std::int32_t i);

// Returns whether every message at positions 0 to `end` - 1, as far as there
// are any, belongs to one of the graphs 0 to `graph_count` - 1. If not, `error`
// says which is the first that does not. The collectors below rely on it.
bool CheckGraphIndices(const ProfilingLog& log, std::int32_t end,
                       std::int32_t graph_count, std::string* error);

// Returns the series of the top-level events in microseconds, over the messages
// at positions `first` to `end` - 1 as far as there are any. Element g belongs
// to graph g; there are `graph_count` elements.
std::vector<EventSeriesMap> CollectEventSeries(const ProfilingLog& log,
                                               std::int32_t first,
                                               std::int32_t end,
                                               std::int32_t graph_count);

// As CollectEventSeries(), but of the node events (one per operation, in any
// unit) directly under the top-level events.
std::vector<EventSeriesMap> CollectNodeSeries(const ProfilingLog& log,
                                              std::int32_t first,
                                              std::int32_t end,
                                              std::int32_t graph_count);

}  // namespace lumo

#endif  // LUMO_MODEL_MESSAGE_GROUPING_H_
