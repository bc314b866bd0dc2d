// Which messages of a log are the finalize and the execute runs of which graph.
//
// If F messages have an event whose name contains kFinalizeText, and E messages
// have one whose name contains kExecuteText, the messages at positions 0 to
// F - 1 are the finalize runs and the next E messages are the execute runs,
// whatever they contain. A writer puts them in that order.

#ifndef LUMO_MODEL_MESSAGE_GROUPS_H_
#define LUMO_MODEL_MESSAGE_GROUPS_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <flatbuffers/flatbuffers.h>

#include "profiling_log_generated.h"

namespace lumo {

using MessageVector =
    flatbuffers::Vector<flatbuffers::Offset<ProfilingMessage>>;
using EventVector = flatbuffers::Vector<flatbuffers::Offset<ProfilingEvent>>;

// A message counts as a finalize or an execute message if the name of one of
// its top-level events contains this text.
inline constexpr std::string_view kFinalizeText = "(finalize)";
inline constexpr std::string_view kExecuteText = "(execute)";

// In the order of the tables: execute runs come first.
enum class RunKind { kExecute, kFinalize };

// The messages at positions `first` to `end` - 1.
struct MessageRange {
  std::int32_t first;
  std::int32_t end;
};

// The messages of one log, counted and divided into runs.
struct MessageGroups {
  // Null in a log without messages. Points into the log.
  const MessageVector* messages;
  // The numbers of distinct graph indices, of finalize messages and of execute
  // messages.
  std::int32_t graph_count;
  std::int32_t prepare_count;
  std::int32_t inference_count;
  // The runs of each kind. They are limited to the positions of `messages`,
  // because the counts may be too large: a message may count as both kinds.
  MessageRange finalize_runs;
  MessageRange execute_runs;
  // Empty if each run belongs to one of the graphs 0 to `graph_count` - 1,
  // otherwise a message about the first run that does not.
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

// Returns the graph of a message: the low 32 bits of its index, as a signed
// number. Returns nothing if it is not from 0 to `graph_count` - 1.
std::optional<std::size_t> GraphOf(const ProfilingMessage& message,
                                   std::int32_t graph_count);

// Returns the message at position `i`, from 0, which must exist.
const ProfilingMessage& MessageAt(const MessageVector& messages,
                                  std::int32_t i);

// Returns the number of distinct graph indices, compared as 64-bit numbers.
// `messages` may be null.
std::int32_t CountGraphs(const MessageVector* messages);

// Returns the number of messages with at least one top-level event whose name
// contains `text`, byte for byte. `messages` may be null.
std::int32_t CountMessagesWithEventName(const MessageVector* messages,
                                        std::string_view text);

// Returns "finalize" or "execute".
std::string_view RunKindText(RunKind kind);

}  // namespace lumo

#endif  // LUMO_MODEL_MESSAGE_GROUPS_H_
