#include "model/event_series.h"

#include <cstddef>

#include <flatbuffers/flatbuffers.h>

#include "model/event_fields.h"

namespace lumo {
namespace {

using flatbuffers::uoffset_t;
using flatbuffers::VectorLength;

EventKey KeyOf(const ProfilingEvent& event, std::int32_t position) {
  return {position, flatbuffers::GetStringView(event.name())};
}

// Appends the event's value to its series, creating the series on first use.
void AppendValue(const EventKey& key, const ProfilingEvent& event,
                 EventSeriesMap* series) {
  const auto [entry, is_new] = series->try_emplace(key);
  if (is_new) {
    entry->second.unit = UnitText(event.unit());
  }
  entry->second.values.push_back(static_cast<float>(event.value()));
}

void AppendEventValues(const ProfilingMessage& message,
                       EventSeriesMap* series) {
  const auto* const events = message.events();
  for (uoffset_t j = 0; j < VectorLength(events); ++j) {
    const ProfilingEvent& event = *events->Get(j);
    AppendValue(KeyOf(event, static_cast<std::int32_t>(j)), event, series);
  }
}

// Events in other units have no series, but count in the positions.
void AppendMicrosecondValues(const ProfilingMessage& message,
                             EventSeriesMap* series) {
  const auto* const events = message.events();
  for (uoffset_t j = 0; j < VectorLength(events); ++j) {
    const ProfilingEvent& event = *events->Get(j);
    if (event.unit() == ProfileEventUnit::ORX_PROFILE_EVENTUNIT_MICROSEC) {
      AppendValue(KeyOf(event, static_cast<std::int32_t>(j)), event, series);
    }
  }
}

void AppendOperationValues(const ProfilingMessage& message,
                           EventSeriesMap* series) {
  for (const Operation& operation : OperationsOf(message)) {
    AppendValue(operation.key, *operation.event, series);
  }
}

// Calls `append_values` for each run of `kind` with its graph's series.
std::vector<EventSeriesMap> CollectSeries(
    const MessageGroups& groups, RunKind kind,
    void (*append_values)(const ProfilingMessage&, EventSeriesMap*)) {
  std::vector<EventSeriesMap> series(
      static_cast<std::size_t>(groups.graph_count));
  const MessageRange runs = RunsOf(groups, kind);
  for (std::int32_t i = runs.first; i < runs.end; ++i) {
    const ProfilingMessage& message = MessageAt(*groups.messages, i);
    if (const auto graph = GraphOf(message, groups.graph_count)) {
      append_values(message, &series[*graph]);
    }
  }
  return series;
}

}  // namespace

std::vector<Operation> OperationsOf(const ProfilingMessage& message) {
  std::vector<Operation> operations;
  const auto* const events = message.events();
  for (uoffset_t j = 0; j < VectorLength(events); ++j) {
    const auto* const sub_events = events->Get(j)->sub_events();
    std::int32_t position = 0;
    for (uoffset_t k = 0; k < VectorLength(sub_events); ++k) {
      const ProfilingEvent& event = *sub_events->Get(k);
      if (event.type() == ProfileEventType::ORX_PROFILE_EVENTTYPE_NODE) {
        operations.push_back({KeyOf(event, position), &event});
        ++position;
      }
    }
  }
  return operations;
}

std::vector<EventSeriesMap> CollectEventSeries(const MessageGroups& groups,
                                               RunKind kind) {
  return CollectSeries(groups, kind, AppendMicrosecondValues);
}

std::vector<EventSeriesMap> CollectEventSeriesOfAllUnits(
    const MessageGroups& groups, RunKind kind) {
  return CollectSeries(groups, kind, AppendEventValues);
}

std::vector<EventSeriesMap> CollectNodeSeries(const MessageGroups& groups) {
  return CollectSeries(groups, RunKind::kExecute, AppendOperationValues);
}

}  // namespace lumo
