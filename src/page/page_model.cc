#include "page/page_model.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <set>
#include <tuple>
#include <type_traits>
#include <utility>

#include "model/event_fields.h"

namespace lumo {
namespace {

// Graphs are moved, and must keep their rows where they are.
static_assert(std::is_nothrow_move_constructible_v<Graph>);

// The rows of a single side, not yet sorted.
std::vector<Row> ListRows(const SideRuns& runs, Sample sample) {
  const auto name_of = [](const SideSeries& series) {
    return std::tuple(series.level, series.unit.data(), series.name.data());
  };
  std::set<std::tuple<Level, const char*, const char*>> repeated;
  for (const SideSeries& series : runs.series) {
    if (series.occurrence > 0) {
      repeated.insert(name_of(series));
    }
  }
  std::vector<Row> rows;
  for (const SideSeries& series : runs.series) {
    if (series.level != Level::kPart) {
      rows.push_back({0,
                      {{&series, SampleFigures(&series, sample), {}}},
                      nullptr,
                      repeated.contains(name_of(series))});
    }
  }
  return rows;
}

std::vector<Row> ListRows(const Comparison& comparison, RunKind kind,
                          std::int32_t graph) {
  std::vector<Row> rows;
  for (const Block& block : comparison.blocks) {
    if (block.kind == kind && block.graph == graph) {
      for (const SeriesPair& pair : block.pairs) {
        rows.push_back({0,
                        {{pair.before, pair.figures_before, {}},
                         {pair.after, pair.figures_after, {}}},
                        &pair,
                        pair.is_repeated});
      }
    }
  }
  return rows;
}

void SortRows(Table* table) {
  const auto key_of = [table](const Row& row) {
    const bool is_whole = row.pair == nullptr || IsDifferent(*row.pair);
    const bool is_one_sided =
        std::any_of(row.sides.begin(), row.sides.end(),
                    [](const RowSide& side) { return side.series == nullptr; });
    return std::pair(is_whole       ? 0
                     : is_one_sided ? 1
                                    : 2,
                     table->level == Level::kOperation ? -SizeOf(row) : 0.0);
  };
  std::stable_sort(
      table->rows.begin(), table->rows.end(),
      [&key_of](const Row& a, const Row& b) { return key_of(a) < key_of(b); });
}

// Sets `units`, `has_nodes` and the shares of operations.
void AddUp(std::size_t side_count, Table* table) {
  for (const Row& row : table->rows) {
    UnitRows& unit = table->units[SeriesOf(row).unit];
    unit.sums.resize(side_count);
    unit.largest_size = std::max(unit.largest_size, SizeOf(row));
    table->has_nodes |= table->level == Level::kOperation &&
                        ParseNodeId(SeriesOf(row).name.substr(0, 100)) != -1;
    for (std::size_t i = 0; i < side_count; ++i) {
      unit.sums[i] += row.sides[i].figures.mean;
    }
  }
  for (Row& row : table->rows) {
    for (std::size_t i = 0; i < side_count; ++i) {
      const Figures& figures = row.sides[i].figures;
      if (table->level == Level::kOperation && figures.n > 0) {
        row.sides[i].share =
            PercentOf(figures.mean, table->units[SeriesOf(row).unit].sums[i]);
      }
    }
  }
}

// Appends the tables of the runs of one kind.
void AppendTables(const Page& page, RunKind kind, Graph* graph) {
  const SideRuns* const first =
      FindRuns(page.sides.front(), kind, graph->number);
  std::vector<Row> rows;
  if (page.comparison != nullptr) {
    rows = ListRows(*page.comparison, kind, graph->number);
  } else if (first != nullptr) {
    rows = ListRows(*first, page.sample);
  }
  for (const Level level : {Level::kOperation, Level::kEvent}) {
    Table table = {kind, level, {}, {}, false};
    std::copy_if(
        rows.begin(), rows.end(), std::back_inserter(table.rows),
        [level](const Row& row) { return SeriesOf(row).level == level; });
    if (!table.rows.empty()) {
      SortRows(&table);
      AddUp(page.sides.size(), &table);
      graph->tables.push_back(std::move(table));
    }
  }
}

// Sets the row of the whole run. The first side that has the runs decides.
void FindWholeRun(const Page& page, Graph* graph) {
  for (const RunKind kind : {RunKind::kFinalize, RunKind::kExecute}) {
    for (std::size_t i = page.sides.size(); i > 0; --i) {
      const SideSeries* found = nullptr;
      bool is_named = false;
      for (const SideSeries& series :
           AllSeries(FindRuns(page.sides[i - 1], kind, graph->number))) {
        const bool has_name =
            series.unit == "us" &&
            series.name.find(kExecuteText) != std::string_view::npos;
        if (series.level == Level::kEvent && !is_named &&
            (found == nullptr || has_name)) {
          found = &series;
          is_named = has_name;
        }
      }
      if (found != nullptr) {
        graph->whole_run = graph->rows_of.at(found);
        graph->whole_run_kind = kind;
      }
    }
  }
}

// Sets the fields that refer to the rows, and their numbers.
void NumberRows(const Page& page, std::size_t* count, Graph* graph) {
  for (Table& table : graph->tables) {
    for (Row& row : table.rows) {
      row.number = (*count)++;
      for (const RowSide& side : row.sides) {
        graph->rows_of[side.series] = &row;
      }
    }
  }
  FindWholeRun(page, graph);
}

}  // namespace

Page MakePage(const std::vector<Side>& sides, const std::vector<PageLogs>& logs,
              const Comparison* comparison, std::int32_t num_warmup) {
  const bool has_one_log =
      std::all_of(sides.begin(), sides.end(),
                  [](const Side& side) { return side.logs.size() == 1; });
  Page page = {
      sides,      logs, comparison, has_one_log ? Sample::kRuns : Sample::kLogs,
      num_warmup, {},   {}};
  std::set<std::int32_t> numbers;
  for (const Side& side : sides) {
    for (const auto& [key, runs] : side.runs) {
      numbers.insert(key.second);
    }
  }
  std::size_t row_count = 0;
  for (const std::int32_t number : numbers) {
    Graph graph = {number, {}, {}, nullptr, RunKind::kExecute};
    AppendTables(page, RunKind::kExecute, &graph);
    AppendTables(page, RunKind::kFinalize, &graph);
    if (!graph.tables.empty()) {
      NumberRows(page, &row_count, &graph);
      page.graphs.push_back(std::move(graph));
    }
  }
  return page;
}

const SideSeries& SeriesOf(const Row& row) {
  return row.sides.front().series != nullptr ? *row.sides.front().series
                                             : *row.sides.back().series;
}

std::optional<double> DifferenceOf(const Row& row) {
  const Figures& before = row.sides.front().figures;
  const Figures& after = row.sides.back().figures;
  return row.pair == nullptr || before.n == 0 || after.n == 0
             ? std::nullopt
             : std::optional(after.mean - before.mean);
}

double SizeOf(const Row& row) {
  const Figures& first = row.sides.front().figures;
  const Figures& last = row.sides.back().figures;
  if (first.n + last.n == 0) {
    return -1.0;
  }
  return row.sides.size() == 1 ? first.mean : std::abs(last.mean - first.mean);
}

const SideRuns* FindRuns(const Side& side, RunKind kind, std::int32_t graph) {
  const auto runs = side.runs.find({kind, graph});
  return runs == side.runs.end() ? nullptr : &runs->second;
}

std::span<const SideSeries> AllSeries(const SideRuns* runs) {
  return runs == nullptr ? std::span<const SideSeries>() : runs->series;
}

}  // namespace lumo
