// The content of a page: the compared series, grouped into tables.

#ifndef LUMO_PAGE_PAGE_TABLES_H_
#define LUMO_PAGE_PAGE_TABLES_H_

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "compare/compared_log.h"
#include "compare/comparison.h"
#include "model/op_averages.h"
#include "profiling_log_generated.h"

namespace lumo {

// An operation in one run, for its details.
struct SampleOperation {
  // Points into the log.
  const ProfilingEvent* event;
  // Which execute run of its graph it is from, from 0.
  std::int32_t run;
};

// A log of a page, with data that the comparison does not have. Element g of
// each list belongs to graph g.
struct PageLog {
  const ComparedLog* source;
  // The averages and shares of the operations over all runs, as in the report.
  // Empty for a graph with operations in several units, which cannot be added.
  std::vector<OpAverageMap> op_averages;
  // Each operation in the first run after the warm-up that has it or, if none
  // has, in the first warm-up run that has it.
  std::vector<std::map<EventKey, SampleOperation>> samples;
};

// One table of a graph.
struct PageTable {
  // The table shows the pairs of these runs at this level.
  const ComparedRuns& runs;
  Level level;
  std::vector<const SeriesPair*> pairs;
  // Whether the rows are sorted by descending mean.
  bool is_sorted_by_mean;
};

struct PageGraph {
  std::int32_t number;
  // The operations, the top-level events of the execute runs, and those of the
  // finalize runs. Empty tables are omitted.
  std::vector<PageTable> tables;
};

// All data of a page.
struct Page {
  PageLog before;
  // Absent on a page about one log.
  std::optional<PageLog> after;
  std::int32_t num_warmup;
  std::vector<ComparedRuns> all_runs;
  // Point into `all_runs`.
  std::vector<PageGraph> graphs;
};

// Returns the page about one log, or about two if `after` is not null. It
// refers to both logs, and may be moved, but not copied.
//
// Tables are in the order of CompareSeries(), except that the operations of a
// single log are sorted by their mean, largest first.
Page MakePage(const ComparedLog& before, const ComparedLog* after,
              std::int32_t num_warmup);

// Returns the share of the operation with these figures in percent. Returns
// nothing for a share of 0 in 0, or if the operations have several units.
std::optional<float> ShareOf(const PageLog& log, std::int32_t graph,
                             const SeriesFigures& figures);

}  // namespace lumo

#endif  // LUMO_PAGE_PAGE_TABLES_H_
