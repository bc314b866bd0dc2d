#include "page/page_tables.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace lumo {
namespace {

using Samples = std::map<EventKey, SampleOperation>;

// Adds the operations of a run that are not there yet.
void AddOperations(const ProfilingMessage& message, std::int32_t run,
                   Samples* samples) {
  for (const Operation& operation : OperationsOf(message)) {
    samples->try_emplace(operation.key, SampleOperation{operation.event, run});
  }
}

std::vector<Samples> FindSamples(const ComparedLog& log,
                                 std::int32_t num_warmup) {
  const auto graph_count = static_cast<std::size_t>(log.groups.graph_count);
  std::vector<Samples> samples(graph_count);
  for (const bool is_warmup : {false, true}) {
    std::vector<std::int32_t> runs(graph_count);
    const MessageRange range = log.groups.execute_runs;
    for (std::int32_t i = range.first; i < range.end; ++i) {
      const ProfilingMessage& message = MessageAt(*log.groups.messages, i);
      const auto graph = GraphOf(message, log.groups.graph_count);
      const std::int32_t run = runs[*graph]++;
      if ((run < num_warmup) == is_warmup) {
        AddOperations(message, run, &samples[*graph]);
      }
    }
  }
  return samples;
}

bool HasOneUnit(const EventSeriesMap& series) {
  return std::all_of(series.begin(), series.end(), [&series](const auto& item) {
    return item.second.unit == series.begin()->second.unit;
  });
}

PageLog MakePageLog(const ComparedLog& log, std::int32_t num_warmup) {
  PageLog page_log = {&log, {}, FindSamples(log, num_warmup)};
  for (const EventSeriesMap& operations : log.series.operations) {
    page_log.op_averages.push_back(
        HasOneUnit(operations) ? AverageOps(operations) : OpAverageMap{});
  }
  return page_log;
}

// Appends the table of the pairs of `level`, if there are any.
void AppendTable(const ComparedRuns& runs, Level level, PageGraph* graph) {
  PageTable table = {runs, level, {}, false};
  for (const SeriesPair& pair : runs.pairs) {
    if (pair.level == level) {
      table.pairs.push_back(&pair);
    }
  }
  if (!table.pairs.empty()) {
    graph->tables.push_back(std::move(table));
  }
}

// The mean of a pair on a page about one log. A missing mean is less than all
// others.
float MeanBefore(const SeriesPair* pair) {
  return HasMean(pair->before) ? pair->before->mean : -1.0F;
}

// Sorts a table of a single log.
void SortByMean(PageTable* table) {
  std::stable_sort(table->pairs.begin(), table->pairs.end(),
                   [](const SeriesPair* a, const SeriesPair* b) {
                     return MeanBefore(a) > MeanBefore(b);
                   });
  table->is_sorted_by_mean = true;
}

std::vector<PageGraph> MakeGraphs(const std::vector<ComparedRuns>& all_runs) {
  std::map<std::int32_t, PageGraph> graphs;
  for (const RunKind kind : {RunKind::kExecute, RunKind::kFinalize}) {
    for (const ComparedRuns& runs : all_runs) {
      if (runs.kind == kind) {
        PageGraph& graph = graphs[runs.graph];
        graph.number = runs.graph;
        AppendTable(runs, Level::kOperation, &graph);
        AppendTable(runs, Level::kEvent, &graph);
      }
    }
  }
  std::vector<PageGraph> sorted;
  sorted.reserve(graphs.size());
  for (auto& [number, graph] : graphs) {
    sorted.push_back(std::move(graph));
  }
  return sorted;
}

}  // namespace

Page MakePage(const ComparedLog& before, const ComparedLog* after,
              std::int32_t num_warmup) {
  Page page = {
      MakePageLog(before, num_warmup), std::nullopt, num_warmup, {}, {}};
  if (after != nullptr) {
    page.after = MakePageLog(*after, num_warmup);
  }
  // A single log is compared with an empty one: every series is "only before".
  const LogSeries none;
  page.all_runs =
      CompareSeries(before.series, after == nullptr ? none : after->series,
                    num_warmup, kDefaultConfidence);
  page.graphs = MakeGraphs(page.all_runs);
  for (PageGraph& graph : page.graphs) {
    PageTable& first = graph.tables.front();
    if (after == nullptr && first.level == Level::kOperation) {
      SortByMean(&first);
    }
  }
  return page;
}

std::optional<float> ShareOf(const PageLog& log, std::int32_t graph,
                             const SeriesFigures& figures) {
  const OpAverageMap& averages =
      log.op_averages[static_cast<std::size_t>(graph)];
  const auto entry = averages.find(figures.series->first);
  if (entry == averages.end() || std::isnan(entry->second.percent)) {
    return std::nullopt;
  }
  return entry->second.percent;
}

}  // namespace lumo
