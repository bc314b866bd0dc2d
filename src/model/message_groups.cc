#include "model/message_groups.h"

#include <algorithm>
#include <iterator>

namespace lumo {
namespace {

using flatbuffers::GetStringView;
using flatbuffers::uoffset_t;
using flatbuffers::VectorLength;

bool HasEventName(const ProfilingMessage& message, std::string_view text) {
  const auto* const events = message.events();
  for (uoffset_t j = 0; j < VectorLength(events); ++j) {
    if (GetStringView(events->Get(j)->name()).find(text) !=
        std::string_view::npos) {
      return true;
    }
  }
  return false;
}

// Returns an error message about the first message at positions 0 to `end` - 1
// whose graph is not from 0 to `graph_count` - 1, or an empty text.
std::string FindGraphError(const MessageVector* messages, std::int32_t end,
                           std::int32_t graph_count) {
  for (std::int32_t i = 0; i < end; ++i) {
    const ProfilingMessage& message = MessageAt(*messages, i);
    if (!GraphOf(message, graph_count)) {
      return "The message at position " + std::to_string(i) +
             " has graph_index " + std::to_string(message.graph_index()) +
             ", but graph_count is " + std::to_string(graph_count) + ".";
    }
  }
  return "";
}

}  // namespace

MessageGroups GroupMessages(const ProfilingLog& log) {
  MessageGroups groups = {};
  groups.messages = log.messages();
  groups.graph_count = CountGraphs(groups.messages);
  groups.prepare_count =
      CountMessagesWithEventName(groups.messages, kFinalizeText);
  groups.inference_count =
      CountMessagesWithEventName(groups.messages, kExecuteText);
  const auto size = static_cast<std::int32_t>(VectorLength(groups.messages));
  const std::int32_t execute_end =
      std::min(groups.prepare_count + groups.inference_count, size);
  groups.finalize_runs = {0, groups.prepare_count};
  groups.execute_runs = {groups.prepare_count, execute_end};
  groups.graph_error =
      FindGraphError(groups.messages, execute_end, groups.graph_count);
  return groups;
}

MessageRange RunsOf(const MessageGroups& groups, RunKind kind) {
  return kind == RunKind::kFinalize ? groups.finalize_runs
                                    : groups.execute_runs;
}

std::vector<std::int32_t> CountRuns(const MessageGroups& groups, RunKind kind) {
  std::vector<std::int32_t> counts(
      static_cast<std::size_t>(groups.graph_count));
  const MessageRange runs = RunsOf(groups, kind);
  for (std::int32_t i = runs.first; i < runs.end; ++i) {
    const ProfilingMessage& message = MessageAt(*groups.messages, i);
    if (const auto graph = GraphOf(message, groups.graph_count)) {
      ++counts[*graph];
    }
  }
  return counts;
}

std::optional<std::size_t> GraphOf(const ProfilingMessage& message,
                                   std::int32_t graph_count) {
  const auto graph = static_cast<std::int32_t>(message.graph_index());
  if (graph < 0 || graph >= graph_count) {
    return std::nullopt;
  }
  return static_cast<std::size_t>(graph);
}

const ProfilingMessage& MessageAt(const MessageVector& messages,
                                  std::int32_t i) {
  return *messages.Get(static_cast<uoffset_t>(i));
}

std::int32_t CountGraphs(const MessageVector* messages) {
  // Sorted, because a log can choose indices that all collide in a hash set.
  std::vector<std::uint64_t> indices;
  indices.reserve(VectorLength(messages));
  for (uoffset_t i = 0; i < VectorLength(messages); ++i) {
    indices.push_back(messages->Get(i)->graph_index());
  }
  std::sort(indices.begin(), indices.end());
  return static_cast<std::int32_t>(std::distance(
      indices.begin(), std::unique(indices.begin(), indices.end())));
}

std::int32_t CountMessagesWithEventName(const MessageVector* messages,
                                        std::string_view text) {
  std::int32_t count = 0;
  for (uoffset_t i = 0; i < VectorLength(messages); ++i) {
    if (HasEventName(*messages->Get(i), text)) {
      ++count;
    }
  }
  return count;
}

std::string_view RunKindText(RunKind kind) {
  return kind == RunKind::kFinalize ? "finalize" : "execute";
}

}  // namespace lumo
