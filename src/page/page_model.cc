#include "page/page_model.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

#include <flatbuffers/flatbuffers.h>

#include "model/event_fields.h"
#include "page/page_text.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

using Texts = std::vector<std::string>;

// "ORX_BACKEND_ID_GPU", or "graph 0: ORX_BACKEND_ID_GPU; graph 1: 9" if graphs
// have different backends. A backend without a name is a number.
std::string BackendsText(const MessageGroups& groups) {
  std::vector<Texts> graphs(static_cast<std::size_t>(groups.graph_count));
  for (std::int32_t i = 0; i < groups.execute_runs.end; ++i) {
    const ProfilingMessage& message = MessageAt(*groups.messages, i);
    const BackendId backend = message.delegate_type();
    std::string name = EnumNameBackendId(backend);
    if (name.empty()) {
      name = std::to_string(static_cast<std::uint32_t>(backend));
    }
    Texts& known = graphs[*GraphOf(message, groups.graph_count)];
    if (std::ranges::find(known, name) == known.end()) {
      known.push_back(name);
    }
  }
  if (AreEqual(graphs)) {
    return Join(graphs.front(), ", ");
  }
  Texts texts;
  for (std::size_t i = 0; i < graphs.size(); ++i) {
    texts.push_back("graph " + std::to_string(i) + ": " +
                    Join(graphs[i], ", "));
  }
  return Join(texts, "; ");
}

// "60 runs of each graph", or "10 to 60 runs of each graph".
std::string RunsText(const MessageGroups& groups, RunKind kind) {
  const std::vector<std::int32_t> counts = CountRuns(groups, kind);
  const auto [least, most] = std::ranges::minmax(counts);
  return (least == most ? "" : std::to_string(least) + " to ") +
         CountText(most, "run") + (counts.size() == 1 ? "" : " of each graph");
}

// Adds a row to its table.
void AddRow(RunKind kind, std::vector<PairSide> sides, const SeriesPair* pair,
            Graph* graph) {
  const PairSide& first = sides.front();
  const PairSide& last = sides.back();
  Row row = {};
  row.series = first.series != nullptr ? first.series : last.series;
  row.verdict = pair != nullptr ? VerdictText(pair->verdict) : "";
  row.size = first.figures.n + last.figures.n == 0 ? -1.0
             : pair == nullptr
                 ? first.figures.mean
                 : std::abs(last.figures.mean - first.figures.mean);
  row.sides = std::move(sides);
  row.pair = pair;
  Table* const table = row.series->level == Level::kOperation
                           ? &graph->operations
                       : kind == RunKind::kExecute ? &graph->execute_events
                                                   : &graph->finalize_events;
  table->rows.push_back(std::move(row));
}

// Sorts the rows, and sets what depends on all of them.
void FinishTable(std::size_t* row_count, Table* table) {
  std::ranges::stable_sort(table->rows, {}, [](const Row& row) {
    const bool is_first = row.pair == nullptr || IsDifferent(*row.pair);
    const bool is_pair = row.pair != nullptr && IsOnBothSides(*row.pair);
    const bool has_order = row.series->level == Level::kEvent;
    return std::tuple(!is_first, is_pair, has_order ? 0.0 : -row.size);
  });
  for (Row& row : table->rows) {
    UnitRows& unit = table->units[row.series->unit];
    for (std::size_t i = 0; i < row.sides.size(); ++i) {
      unit.sums[i] += row.sides[i].figures.mean;
    }
    unit.largest_size = std::max(unit.largest_size, row.size);
    table->has_nodes |= NodeIdSize(*row.series) > 0;
    row.number = (*row_count)++;
  }
  for (Row& row : table->rows) {
    const std::size_t i = row.series == row.sides.front().series ? 0 : 1;
    const Figures& figures = row.sides[i].figures;
    if (figures.n > 0) {
      row.share =
          PercentOf(figures.mean, table->units.at(row.series->unit).sums[i]);
    }
  }
}

// The order of a side is that of its series in memory.
const Row* FindWholeRun(const std::vector<Row>& events) {
  return &*std::ranges::min_element(events, {}, [](const Row& row) {
    return std::tuple(!IsRunTime(row.series->unit, row.series->name),
                      row.sides.front().series == nullptr, row.series);
  });
}

}  // namespace

LogFacts ReadFacts(const InputLog& log) {
  const ProfilingLog& root = *log.log.root;
  const auto text = [](const flatbuffers::String* field) {
    return TextHtml(flatbuffers::GetStringView(field));
  };
  return {log.log.bytes.size(),
          PlainText(flatbuffers::GetStringView(root.log_date())),
          {TextHtml(log.log.path), text(root.log_date()),
           text(root.profiler_api_version()), text(root.orx_api_version()),
           text(root.orx_delegate_api_version()), BackendsText(log.groups),
           RunsText(log.groups, RunKind::kExecute),
           RunsText(log.groups, RunKind::kFinalize)}};
}

std::size_t NodeIdSize(const SideSeries& series) {
  const std::string_view start = series.name.substr(0, 100);
  return series.level == Level::kOperation
             ? start.size() - BareName(start).size()
             : 0;
}

Page MakePage(const std::vector<Side>& sides,
              const std::vector<std::vector<LogFacts>>& facts,
              const Comparison* comparison) {
  const Sample sample =
      AllLogs(sides).size() == sides.size() ? Sample::kRuns : Sample::kLogs;
  Page page = {sides, facts, comparison, sample, {}, 0};
  if (comparison == nullptr) {
    for (const auto& [key, runs] : sides.front().runs) {
      for (const SideSeries& series : runs.series) {
        if (series.level != Level::kPart) {
          AddRow(key.first, {MakePairSide(&series, runs, sample)}, nullptr,
                 &page.graphs[key.second]);
        }
      }
    }
  } else {
    for (const Block& block : comparison->blocks) {
      for (const SeriesPair& pair : block.pairs) {
        AddRow(block.kind, {pair.before, pair.after}, &pair,
               &page.graphs[block.graph]);
      }
    }
  }
  for (auto& [number, graph] : page.graphs) {
    for (Table* const table :
         {&graph.operations, &graph.execute_events, &graph.finalize_events}) {
      FinishTable(&page.row_count, table);
    }
    graph.whole_run = FindWholeRun(graph.execute_events.rows.empty()
                                       ? graph.finalize_events.rows
                                       : graph.execute_events.rows);
  }
  return page;
}

std::string ExplainSize(const Page& page) {
  std::uint64_t text = 0;
  for (const Side& side : page.sides) {
    for (const auto& [key, runs] : side.runs) {
      for (const SideSeries& series : runs.series) {
        text += 40;  // for the other parts of its JSON
        for (const char c : series.name.substr(0, kLongestText)) {
          text += c >= ' ' && c <= '~' ? 1 : 6;  // such as "\u0645"
        }
      }
    }
  }
  std::uint64_t most_text = 1000000;
  for (const std::vector<LogFacts>& logs : page.facts) {
    for (const LogFacts& log : logs) {
      most_text += 10 * log.size;
    }
  }
  // A browser takes minutes for more. Only artificial logs have as many events
  // or graphs, or use the same long names again and again.
  const std::tuple<const char*, std::uint64_t, std::uint64_t> bounds[] = {
      {"graphs", page.graphs.size(), 1000},
      {"different events", page.row_count, 100000},
      {"bytes of text", text, most_text}};
  for (const auto& [what, count, most] : bounds) {
    if (count > most) {
      return std::string("too many ") + what +
             " for a page: " + std::to_string(count) + ", more than " +
             std::to_string(most);
    }
  }
  return "";
}

}  // namespace lumo
