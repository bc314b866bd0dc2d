// The content of a page: the series of one or two sides, as tables.

#ifndef LUMO_PAGE_PAGE_MODEL_H_
#define LUMO_PAGE_PAGE_MODEL_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "compare/comparison.h"
#include "compare/side.h"
#include "page/page_logs.h"

namespace lumo {

// A series on one side.
struct RowSide {
  // Null if the side does not have it.
  const SideSeries* series;
  // Of the sample; n is 0 if there is none.
  Figures figures;
  // Of an operation: its mean in percent of the sum of the means of the
  // operations of its graph in its unit. Nothing without a mean, or if the sum
  // is 0.
  std::optional<double> share;
};

struct Row {
  // From 0, in the order of the page.
  std::size_t number;
  // One for each side.
  std::vector<RowSide> sides;
  // Null on a page of one side.
  const SeriesPair* pair;
  // Whether the name alone does not identify the series, see SeriesPair.
  bool is_repeated;
};

// The rows of a table that have the same unit.
struct UnitRows {
  // The sum of the means on each side.
  std::vector<double> sums;
  // The largest SizeOf() of a row.
  double largest_size = 0.0;
};

struct Table {
  RunKind kind;
  Level level;
  // Pairs that differ, then series of one side, then the other pairs.
  // Operations are sorted by their size, largest first; events are in the order
  // of the side.
  std::vector<Row> rows;
  // By the unit.
  std::map<std::string_view, UnitRows> units;
  // Whether a name begins with a node id.
  bool has_nodes;
};

struct Graph {
  std::int32_t number;
  // The operations, the top-level events of the execute runs, and those of the
  // finalize runs. Empty tables are omitted.
  std::vector<Table> tables;
  // The rows in `tables` of the series of all sides.
  std::map<const SideSeries*, const Row*> rows_of;
  // The time of a whole run: the first event in us whose name contains
  // kExecuteText, otherwise the first event. Of the finalize runs if the
  // execute runs have none.
  const Row* whole_run;
  RunKind whole_run_kind;
};

// All data of a page. It refers to the sides, the logs and the comparison, and
// may be moved, but not copied.
struct Page {
  const std::vector<Side>& sides;
  // One element for each side.
  const std::vector<PageLogs>& logs;
  // Null on a page of one side.
  const Comparison* comparison;
  // kRuns if each side has one log.
  Sample sample;
  std::int32_t num_warmup;
  // See MakeNotes().
  std::vector<std::string> notes;
  // Without graphs that have no events.
  std::vector<Graph> graphs;
};

Page MakePage(const std::vector<Side>& sides, const std::vector<PageLogs>& logs,
              const Comparison* comparison, std::int32_t num_warmup);

// Returns the series of the first side that has it.
const SideSeries& SeriesOf(const Row& row);

// Returns the difference of the means of two sides. Nothing if one is missing.
std::optional<double> DifferenceOf(const Row& row);

// Returns what a row is sorted by: the mean of one side, or the absolute
// difference of two, where the mean of a missing series is 0. Returns -1
// without a mean.
double SizeOf(const Row& row);

// Returns the runs of a graph on a side, or null.
const SideRuns* FindRuns(const Side& side, RunKind kind, std::int32_t graph);

// Returns all series of `runs`, which may be null.
std::span<const SideSeries> AllSeries(const SideRuns* runs);

// Returns why a page would be too large for a browser, or an empty text.
std::string ExplainSize(const Page& page);

}  // namespace lumo

#endif  // LUMO_PAGE_PAGE_MODEL_H_
