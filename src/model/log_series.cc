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

  RunKind kind = RunKind::kExecute;
  bool with_parts = false;
  // How many runs there are, and how many have been added.
  std::int32_t total_runs = 0;
  std::int32_t run_count = 0;
  std::vector<Series> series = {};
  std::map<Key, std::size_t> indices = {};
  // The series of the last list of events that was not empty: of the top-level
  // events, then of the events below each series. Runs are usually alike, so
  // that most events are found here, without a search.
  std::vector<std::vector<std::size_t>> last_lists = {{}};
};

// Returns the index of the series with this key, adding it, with this parent,
// if it is new.
std::size_t FindOrAdd(const Collector::Key& key,
                      std::optional<std::size_t> parent,
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
    series.parent = parent;
    // For most logs the only allocation. The limit is for logs in which each
    // run has other events.
    const auto runs =
        static_cast<std::size_t>(std::min(collector->total_runs, 8));
    series.values.reserve(runs);
    series.runs.reserve(level == Level::kPart ? 0 : runs);
    collector->last_lists.emplace_back();
  }
  return entry->second;
}

// Returns the level of an event below `parent`; at the top level if there is no
// parent.
Level LevelOf(const ProfilingEvent& event, std::optional<std::size_t> parent,
              const Collector& collector) {
  if (!parent) {
    return Level::kEvent;
  }
  const bool is_operation =
      collector.kind == RunKind::kExecute &&
      collector.series[*parent].level == Level::kEvent &&
      event.type() == ProfileEventType::ORX_PROFILE_EVENTTYPE_NODE;
  return is_operation ? Level::kOperation : Level::kPart;
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

// Appends the values of the events of a run, which may be null, below `parent`;
// of the top-level events if there is no parent.
void AddEvents(const EventVector* events, std::optional<std::size_t> parent,
               Collector* collector) {
  if (VectorLength(events) == 0) {
    return;
  }
  // As long as the events agree with those of the last list, so do positions.
  // The list is updated in place; it may move when series are added.
  const auto last = [collector, parent]() -> std::vector<std::size_t>& {
    return collector->last_lists[parent ? *parent + 1 : 0];
  };
  const bool may_be_parts = parent && collector->with_parts;
  std::size_t next = 0;  // in this list
  std::int32_t operations = 0;
  std::optional<NameCounts> counts;  // from the first difference on
  for (uoffset_t i = 0; i < VectorLength(events); ++i) {
    const ProfilingEvent& event = *events->Get(i);
    const Level level = LevelOf(event, parent, *collector);
    if (level == Level::kPart && !may_be_parts) {
      continue;
    }
    const Name name = NameOf(event);
    if (counts || next == last().size() ||
        collector->series[last()[next]].level != level ||
        Name{collector->series[last()[next]].name} != name) {
      if (!counts) {
        counts = may_be_parts ? CountNames(*events, i) : NameCounts();
        last().resize(next);
      }
      const std::int32_t count = may_be_parts ? (*counts)[name]++ : 0;
      const std::int32_t position = level == Level::kEvent
                                        ? static_cast<std::int32_t>(i)
                                    : level == Level::kOperation ? operations
                                                                 : count;
      const std::size_t part_of = level == Level::kPart ? *parent : 0;
      const std::size_t found =
          FindOrAdd({level, part_of, position, name}, parent, event, collector);
      last().push_back(found);
    }
    const std::size_t index = last()[next];
    ++next;
    operations += level == Level::kOperation ? 1 : 0;
    collector->series[index].values.push_back(event.value());
    if (level != Level::kPart) {
      collector->series[index].runs.push_back(collector->run_count);
    }
    if (collector->with_parts ||
        (level == Level::kEvent && collector->kind == RunKind::kExecute)) {
      AddEvents(event.sub_events(), index, collector);
    }
  }
  last().resize(next);
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
      collectors.push_back({kind, with_parts, runs});
    }
    const MessageRange range = RunsOf(groups, kind);
    for (std::int32_t i = range.first; i < range.end; ++i) {
      const ProfilingMessage& message = MessageAt(*groups.messages, i);
      if (const auto graph = GraphOf(message, groups.graph_count)) {
        AddEvents(message.events(), std::nullopt, &collectors[*graph]);
        ++collectors[*graph].run_count;
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
