#include "model/log_series.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

#include <flatbuffers/flatbuffers.h>

#include "model/event_fields.h"
#include "model/series_order.h"

namespace lumo {
namespace {

using flatbuffers::uoffset_t;
using flatbuffers::VectorLength;

Name NameOf(const ProfilingEvent& event) {
  return {flatbuffers::GetStringView(event.name())};
}

// Collects the series of one kind of one graph. Series are added in the order
// of their first values, so a parent comes before its parts.
struct Collector {
  // What identifies a series: its level, its parent if it is a part (otherwise
  // 0), its position and its name.
  using Key = std::tuple<Level, std::size_t, std::int32_t, Name>;

  bool with_parts = false;
  // How many runs there are, and how many have been added.
  std::int32_t total_runs = 0;
  std::int32_t run_count = 0;
  std::vector<Series> series = {};
  std::map<Key, std::size_t> indices = {};
  // The series of the last run that had events: of the top-level events, and
  // below each series. Runs are usually alike, so that most events are found
  // here, without a search.
  std::vector<std::size_t> last_events = {};
  std::vector<std::vector<std::size_t>> last_below = {};
};

// Returns the index of the series with this key, adding it if it is new.
std::size_t FindOrAdd(const Collector::Key& key, std::size_t parent,
                      const ProfilingEvent& event, Collector* collector) {
  const auto [entry, is_new] =
      collector->indices.try_emplace(key, collector->series.size());
  if (is_new) {
    const auto& [level, part_of, position, name] = key;
    Series& series = collector->series.emplace_back();
    series.level = level;
    series.name = name.text;
    series.unit = UnitText(event.unit());
    series.type = event.type();
    series.position = position;
    if (level != Level::kEvent) {
      series.parent = parent;
    }
    // For most logs the only allocation. The limit is for logs in which each
    // run has other events.
    const auto runs =
        static_cast<std::size_t>(std::min(collector->total_runs, 8));
    series.values.reserve(runs);
    series.runs.reserve(level == Level::kPart ? 0 : runs);
    collector->last_below.emplace_back();
  }
  return entry->second;
}

// How often each name occurs among the first events of a list.
using NameCounts = std::map<Name, std::int32_t>;

NameCounts CountNames(const EventVector& events, uoffset_t end) {
  NameCounts counts;
  for (uoffset_t i = 0; i < end; ++i) {
    ++counts[NameOf(*events.Get(i))];
  }
  return counts;
}

// Appends the values of the events below one event, which may be null.
// `parent` is the series of that event. Only the events below a top-level event
// of an execute run `may_be_operations`.
void AddEventsBelow(const EventVector* events, std::size_t parent,
                    bool may_be_operations, Collector* collector) {
  if (VectorLength(events) == 0) {
    return;
  }
  // As long as the events agree with those of the last run, so do positions.
  // The list is updated in place; it may move when series are added.
  const auto last = [collector, parent]() -> std::vector<std::size_t>& {
    return collector->last_below[parent];
  };
  std::size_t next = 0;  // in this list
  std::int32_t operations = 0;
  std::optional<NameCounts> counts;  // from the first difference on
  for (uoffset_t i = 0; i < VectorLength(events); ++i) {
    const ProfilingEvent& event = *events->Get(i);
    const bool is_operation =
        may_be_operations &&
        event.type() == ProfileEventType::ORX_PROFILE_EVENTTYPE_NODE;
    if (!is_operation && !collector->with_parts) {
      continue;
    }
    const Level level = is_operation ? Level::kOperation : Level::kPart;
    const Name name = NameOf(event);
    if (counts || next == last().size() ||
        collector->series[last()[next]].level != level ||
        Name{collector->series[last()[next]].name} != name) {
      if (!counts) {
        counts = collector->with_parts ? CountNames(*events, i) : NameCounts();
        last().resize(next);
      }
      std::int32_t& count = (*counts)[name];
      const std::int32_t position = is_operation ? operations : count;
      ++count;
      const std::size_t index =
          FindOrAdd({level, is_operation ? 0 : parent, position, name}, parent,
                    event, collector);
      last().push_back(index);
    }
    const std::size_t index = last()[next];
    ++next;
    operations += is_operation ? 1 : 0;
    collector->series[index].values.push_back(event.value());
    if (is_operation) {
      collector->series[index].runs.push_back(collector->run_count);
    }
    if (collector->with_parts) {
      AddEventsBelow(event.sub_events(), index, false, collector);
    }
  }
  last().resize(next);
}

// Appends the values of a run.
void AddRun(const ProfilingMessage& message, RunKind kind,
            Collector* collector) {
  const auto* const events = message.events();
  std::vector<std::size_t>& last = collector->last_events;
  for (uoffset_t i = 0; i < VectorLength(events); ++i) {
    const ProfilingEvent& event = *events->Get(i);
    const Name name = NameOf(event);
    if (i == last.size()) {
      last.push_back(0);
    }
    std::size_t& index = last[i];
    // A new entry of `last` is 0, which can also be the series of this name at
    // position 0.
    if (index >= collector->series.size() ||
        collector->series[index].level != Level::kEvent ||
        collector->series[index].position != static_cast<std::int32_t>(i) ||
        Name{collector->series[index].name} != name) {
      index = FindOrAdd({Level::kEvent, 0, static_cast<std::int32_t>(i), name},
                        0, event, collector);
    }
    const std::size_t series = index;
    collector->series[series].values.push_back(event.value());
    collector->series[series].runs.push_back(collector->run_count);
    if (kind == RunKind::kExecute || collector->with_parts) {
      AddEventsBelow(event.sub_events(), series, kind == RunKind::kExecute,
                     collector);
    }
  }
  ++collector->run_count;
}

}  // namespace

std::string_view LevelText(Level level) {
  switch (level) {
    case Level::kEvent:
      return "event";
    case Level::kOperation:
      return "operation";
    case Level::kPart:
      return "part";
  }
  return "";
}

std::vector<RunSeries> CollectLogSeries(const MessageGroups& groups,
                                        bool with_parts) {
  std::vector<RunSeries> run_series;
  for (const RunKind kind : {RunKind::kExecute, RunKind::kFinalize}) {
    std::vector<Collector> collectors;
    for (const std::int32_t runs : CountRuns(groups, kind)) {
      collectors.push_back({with_parts, runs});
    }
    const MessageRange range = RunsOf(groups, kind);
    for (std::int32_t i = range.first; i < range.end; ++i) {
      const ProfilingMessage& message = MessageAt(*groups.messages, i);
      if (const auto graph = GraphOf(message, groups.graph_count)) {
        AddRun(message, kind, &collectors[*graph]);
      }
    }
    std::int32_t graph = 0;
    for (Collector& collector : collectors) {
      if (collector.run_count > 0) {
        run_series.push_back({kind, graph, collector.run_count,
                              OrderSeries(std::move(collector.series))});
      }
      ++graph;
    }
  }
  return run_series;
}

bool IsRunTime(std::string_view unit, std::string_view name) {
  return unit == "us" && name.find(kExecuteText) != std::string_view::npos;
}

}  // namespace lumo
