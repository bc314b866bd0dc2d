// Walks the messages: three times to count, once for each kind of series.

#include "model/message_grouping.h"

#include <algorithm>
#include <cassert>
#include <iterator>
#include <unordered_set>

#include <flatbuffers/flatbuffers.h>

#include "model/event_unit.h"

namespace lumo {
namespace {

using flatbuffers::GetStringView;
using flatbuffers::uoffset_t;
using flatbuffers::VectorLength;

bool HasEventName(const ProfilingMessage& message, std::string_view text) {
  const auto* const events = message.events();
  for (uoffset_t j = 0; j < VectorLength(events); ++j) {
    const ProfilingEvent& event = *events->Get(j);
    if (GetStringView(event.name()).find(text) != std::string_view::npos) {
      return true;
    }
  }
  return false;
}

// The low 32 bits of a graph index say which graph it is.
std::int32_t GraphOf(const ProfilingMessage& message) {
  return static_cast<std::int32_t>(message.graph_index());
}

const ProfilingMessage& MessageAt(const ProfilingLog& log, std::int32_t i) {
  return *log.messages()->Get(static_cast<uoffset_t>(i));
}

EventSeriesMap& SeriesOf(const ProfilingMessage& message,
                         std::vector<EventSeriesMap>* series) {
  const auto graph = static_cast<std::size_t>(GraphOf(message));
  assert(graph < series->size());
  return (*series)[graph];
}

// Adds the event's value to the series of (position, name) and returns the
// place behind that series. Runs repeat the same events in the same order, so
// given as `expected` that place is most often the next event's own, found at
// once.
EventSeriesMap::iterator AppendValue(const ProfilingEvent& event,
                                     std::int32_t position,
                                     EventSeriesMap::iterator expected,
                                     EventSeriesMap* series) {
  const auto entry = series->try_emplace(
      expected, EventKey{position, GetStringView(event.name())},
      EventSeries{UnitText(event.unit()), {}});
  entry->second.values.push_back(static_cast<float>(event.value()));
  return std::next(entry);
}

// Adds the node events directly under `parent`.
void AppendNodeValues(const ProfilingEvent& parent, EventSeriesMap* series) {
  const auto* const events = parent.sub_events();
  std::int32_t ordinal = 0;
  auto expected = series->begin();
  for (uoffset_t j = 0; j < VectorLength(events); ++j) {
    const ProfilingEvent& event = *events->Get(j);
    if (event.type() == ProfileEventType::ORX_PROFILE_EVENTTYPE_NODE) {
      expected = AppendValue(event, ordinal, expected, series);
      ++ordinal;
    }
  }
}

}  // namespace

std::int32_t CountGraphs(const MessageVector* messages) {
  std::unordered_set<std::uint64_t> graph_indices;
  for (uoffset_t i = 0; i < VectorLength(messages); ++i) {
    graph_indices.insert(messages->Get(i)->graph_index());
  }
  return static_cast<std::int32_t>(graph_indices.size());
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

std::int32_t ClipToMessages(const MessageVector* messages, std::int32_t end) {
  return std::min(end, static_cast<std::int32_t>(VectorLength(messages)));
}

bool CheckGraphIndices(const ProfilingLog& log, std::int32_t end,
                       std::int32_t graph_count, std::string* error) {
  for (std::int32_t i = 0; i < ClipToMessages(log.messages(), end); ++i) {
    const std::int32_t graph = GraphOf(MessageAt(log, i));
    if (graph < 0 || graph >= graph_count) {
      *error = "The message at position " + std::to_string(i) +
               " has graph_index " +
               std::to_string(MessageAt(log, i).graph_index()) +
               ", but graph_count is " + std::to_string(graph_count) + ".";
      return false;
    }
  }
  return true;
}

std::vector<EventSeriesMap> CollectEventSeries(const ProfilingLog& log,
                                               std::int32_t first,
                                               std::int32_t last,
                                               std::int32_t graph_count) {
  std::vector<EventSeriesMap> series(static_cast<std::size_t>(graph_count));
  for (std::int32_t i = first; i < ClipToMessages(log.messages(), last); ++i) {
    const ProfilingMessage& message = MessageAt(log, i);
    const auto* const events = message.events();
    EventSeriesMap& graph_series = SeriesOf(message, &series);
    auto expected = graph_series.begin();
    for (uoffset_t j = 0; j < VectorLength(events); ++j) {
      const ProfilingEvent& event = *events->Get(j);
      if (event.unit() == ProfileEventUnit::ORX_PROFILE_EVENTUNIT_MICROSEC) {
        expected = AppendValue(event, static_cast<std::int32_t>(j), expected,
                               &graph_series);
      }
    }
  }
  return series;
}

std::vector<EventSeriesMap> CollectNodeSeries(const ProfilingLog& log,
                                              std::int32_t first,
                                              std::int32_t last,
                                              std::int32_t graph_count) {
  std::vector<EventSeriesMap> series(static_cast<std::size_t>(graph_count));
  for (std::int32_t i = first; i < ClipToMessages(log.messages(), last); ++i) {
    const ProfilingMessage& message = MessageAt(log, i);
    const auto* const events = message.events();
    EventSeriesMap& graph_series = SeriesOf(message, &series);
    for (uoffset_t j = 0; j < VectorLength(events); ++j) {
      AppendNodeValues(*events->Get(j), &graph_series);
    }
  }
  return series;
}

}  // namespace lumo
