// Counts over the messages, and the loops that collect a value per run and
// event.

#include "model/message_grouping.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <iterator>

#include "model/event_unit.h"

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

// A graph is found by the low 32 bits of its index, read as a signed number,
// although CountGraphs() tells indices apart by all 64.
std::int32_t GraphOf(const ProfilingMessage& message) {
  return static_cast<std::int32_t>(message.graph_index());
}

// Appends the event's value to its series, which its first value makes.
void AppendValue(const ProfilingEvent& event, std::int32_t position,
                 EventSeriesMap* series) {
  const EventKey key = {position, GetStringView(event.name())};
  const auto [entry, is_new] = series->try_emplace(key);
  if (is_new) {
    entry->second.unit = UnitText(event.unit());
  }
  entry->second.values.push_back(static_cast<float>(event.value()));
}

// Appends the values of the top-level events in microseconds. The others have
// no series, but take a position too.
void AppendEventValues(const ProfilingMessage& message,
                       EventSeriesMap* series) {
  const auto* const events = message.events();
  for (uoffset_t j = 0; j < VectorLength(events); ++j) {
    const ProfilingEvent& event = *events->Get(j);
    if (event.unit() == ProfileEventUnit::ORX_PROFILE_EVENTUNIT_MICROSEC) {
      AppendValue(event, static_cast<std::int32_t>(j), series);
    }
  }
}

// Appends the values of the node events directly under the top-level events,
// at the positions that EventKey describes.
void AppendNodeValues(const ProfilingMessage& message, EventSeriesMap* series) {
  const auto* const events = message.events();
  for (uoffset_t j = 0; j < VectorLength(events); ++j) {
    const auto* const sub_events = events->Get(j)->sub_events();
    std::int32_t ordinal = 0;
    for (uoffset_t k = 0; k < VectorLength(sub_events); ++k) {
      const ProfilingEvent& event = *sub_events->Get(k);
      if (event.type() == ProfileEventType::ORX_PROFILE_EVENTTYPE_NODE) {
        AppendValue(event, ordinal, series);
        ++ordinal;
      }
    }
  }
}

// Calls `append_values` for each message of the range with its graph's series.
std::vector<EventSeriesMap> CollectSeries(
    const ProfilingLog& log, std::int32_t first, std::int32_t end,
    std::int32_t graph_count,
    void (*append_values)(const ProfilingMessage&, EventSeriesMap*)) {
  std::vector<EventSeriesMap> series(static_cast<std::size_t>(graph_count));
  const std::int32_t stop = ClipToMessages(log, end);
  for (std::int32_t i = first; i < stop; ++i) {
    const ProfilingMessage& message = MessageAt(log, i);
    const auto graph = static_cast<std::size_t>(GraphOf(message));
    assert(graph < series.size());
    append_values(message, &series[graph]);
  }
  return series;
}

}  // namespace

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

std::int32_t ClipToMessages(const ProfilingLog& log, std::int32_t end) {
  return std::min(end, static_cast<std::int32_t>(VectorLength(log.messages())));
}

const ProfilingMessage& MessageAt(const ProfilingLog& log, std::int32_t i) {
  return *log.messages()->Get(static_cast<uoffset_t>(i));
}

bool CheckGraphIndices(const ProfilingLog& log, std::int32_t end,
                       std::int32_t graph_count, std::string* error) {
  const std::int32_t stop = ClipToMessages(log, end);
  for (std::int32_t i = 0; i < stop; ++i) {
    const ProfilingMessage& message = MessageAt(log, i);
    const std::int32_t graph = GraphOf(message);
    if (graph < 0 || graph >= graph_count) {
      *error = "The message at position " + std::to_string(i) +
               " has graph_index " + std::to_string(message.graph_index()) +
               ", but graph_count is " + std::to_string(graph_count) + ".";
      return false;
    }
  }
  return true;
}

std::vector<EventSeriesMap> CollectEventSeries(const ProfilingLog& log,
                                               std::int32_t first,
                                               std::int32_t end,
                                               std::int32_t graph_count) {
  return CollectSeries(log, first, end, graph_count, AppendEventValues);
}

std::vector<EventSeriesMap> CollectNodeSeries(const ProfilingLog& log,
                                              std::int32_t first,
                                              std::int32_t end,
                                              std::int32_t graph_count) {
  return CollectSeries(log, first, end, graph_count, AppendNodeValues);
}

}  // namespace lumo
