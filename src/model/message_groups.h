// Which messages of a log are the finalize and the execute runs of which graph.
//
// With F messages that have an event named with kFinalizeText and E that have
// one named with kExecuteText, the finalize runs are the messages at positions
// 0 to F - 1 and the execute runs are the E messages after these, whatever they
// contain: a writer puts them in that order.

#ifndef LUMO_MODEL_MESSAGE_GROUPS_H_
#define LUMO_MODEL_MESSAGE_GROUPS_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <flatbuffers/flatbuffers.h>

#include "profiling_log_generated.h"

namespace lumo {

using MessageVector =
    flatbuffers::Vector<flatbuffers::Offset<ProfilingMessage>>;

// What the name of a top-level event contains in a finalize or an execute
// message.
inline constexpr std::string_view kFinalizeText = "(finalize)";
inline constexpr std::string_view kExecuteText = "(execute)";

enum class RunKind { kFinalize, kExecute };

// The messages at positions `first` to `end` - 1.
struct MessageRange {
  std::int32_t first;
  std::int32_t end;
};

// The messages of one log, counted and divided into runs.
struct MessageGroups {
  // Null in a log without messages. Points into the log.
  const MessageVector* messages;
  // The numbers of distinct graph indices, of messages with an event named with
  // kFinalizeText, and of those with kExecuteText.
  std::int32_t graph_count;
  std::int32_t prepare_count;
  std::int32_t inference_count;
  // The runs of each kind. Every position is one of `messages`, although the
  // counts do not promise that: a message may count as both kinds.
  MessageRange finalize_runs;
  MessageRange execute_runs;
  // Empty if each run belongs to one of the graphs 0 to `graph_count` - 1;
  // otherwise says which is the first that does not.
  std::string graph_error;
};

// Returns the groups of the messages of a verified log. They refer to the log
// and live as long as its bytes do.
MessageGroups GroupMessages(const ProfilingLog& log);

// Returns the range of the runs of `kind`.
MessageRange RunsOf(const MessageGroups& groups, RunKind kind);

// Returns how many runs of `kind` each graph has, element g for graph g. Runs
// that belong to no graph are ignored.
std::vector<std::int32_t> CountRuns(const MessageGroups& groups, RunKind kind);

// Returns the graph that a message belongs to: the low 32 bits of its index,
// read as a signed number. It is that of a graph only if it is in 0 to
// `graph_count` - 1.
std::int32_t GraphOf(const ProfilingMessage& message);

// Returns the message at position `i`, from 0, which must exist.
const ProfilingMessage& MessageAt(const MessageVector& messages,
                                  std::int32_t i);

// Returns the number of distinct graph indices, compared in all their 64 bits.
// `messages` may be null.
std::int32_t CountGraphs(const MessageVector* messages);

// Returns the number of messages with at least one top-level event whose name
// contains `text`, byte for byte. `messages` may be null.
std::int32_t CountMessagesWithEventName(const MessageVector* messages,
                                        std::string_view text);

}  // namespace lumo

#endif  // LUMO_MODEL_MESSAGE_GROUPS_H_
