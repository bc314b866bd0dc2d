#include "model/event_series.h"

#include <cstddef>

#include <flatbuffers/flatbuffers.h>

#include "model/event_fields.h"

namespace lumo {
namespace {

using flatbuffers::uoffset_t;
using flatbuffers::VectorLength;

// Appends the event's value to its series, creating the series on first use.
void AppendValue(const ProfilingEvent& event, std::int32_t position,
                 EventSeriesMap* series) {
  const auto [entry, is_new] =
      series->try_emplace({position, flatbuffers::GetStringView(event.name())});
  if (is_new) {
    entry->second.unit = UnitText(event.unit());
  }
  entry->second.values.push_back(static_cast<float>(event.value()));
}

// Events in other units have no series, but count in the positions.
void AppendMicrosecondValues(const ProfilingMessage& message,
                             EventSeriesMap* series) {
  const auto* const events = message.events();
  for (uoffset_t j = 0; j < VectorLength(events); ++j) {
    const ProfilingEvent& event = *events->Get(j);
    if (event.unit() == ProfileEventUnit::ORX_PROFILE_EVENTUNIT_MICROSEC) {
      AppendValue(event, static_cast<std::int32_t>(j), series);
    }
  }
}

void AppendOperationValues(const ProfilingMessage& message,
                           EventSeriesMap* series) {
  const auto* const events = message.events();
  for (uoffset_t j = 0; j < VectorLength(events); ++j) {
    const auto* const sub_events = events->Get(j)->sub_events();
    std::int32_t position = 0;
    for (uoffset_t k = 0; k < VectorLength(sub_events); ++k) {
      const ProfilingEvent& event = *sub_events->Get(k);
      if (event.type() == ProfileEventType::ORX_PROFILE_EVENTTYPE_NODE) {
        AppendValue(event, position, series);
        ++position;
      }
    }
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

std::vector<EventSeriesMap> CollectEventSeries(const MessageGroups& groups,
                                               RunKind kind) {
  return CollectSeries(groups, kind, AppendMicrosecondValues);
}

std::vector<EventSeriesMap> CollectNodeSeries(const MessageGroups& groups) {
  return CollectSeries(groups, RunKind::kExecute, AppendOperationValues);
}

}  // namespace lumo
