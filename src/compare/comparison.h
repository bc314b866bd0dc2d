// Compares two logs: pairs of series, their figures, and whether they differ.

#ifndef LUMO_COMPARE_COMPARISON_H_
#define LUMO_COMPARE_COMPARISON_H_

#include <cstdint>
#include <vector>

#include "compare/series_pair.h"
#include "model/event_series.h"
#include "model/message_groups.h"

namespace lumo {

// The default confidence, in percent.
inline constexpr double kDefaultConfidence = 99.0;

// The series of the runs of one kind. Element g of each list belongs to graph
// g.
struct KindSeries {
  // The top-level events in every unit.
  std::vector<EventSeriesMap> events;
  // The number of runs.
  std::vector<std::int32_t> run_counts;
};

// The series of one log.
struct LogSeries {
  KindSeries finalize;
  KindSeries execute;
  // The operations of the execute runs. Element g belongs to graph g.
  std::vector<EventSeriesMap> operations;
};

// Returns the series of a log with these messages. The graph of every run must
// be in range. Names point into the log.
LogSeries CollectLogSeries(const MessageGroups& groups);

// The runs of one kind of one graph.
struct ComparedRuns {
  RunKind kind;
  std::int32_t graph;
  std::int32_t runs_before;
  std::int32_t runs_after;
  // Pairs of events in the order of the first log; pairs of operations by the
  // difference of their means, largest first; the series that only the first
  // log has; and those that only the second log has, each in the order of its
  // log, events before operations. Ties are in the order of the log.
  std::vector<SeriesPair> pairs;
};

// Compares the series of two logs. The figures exclude the first `num_warmup`
// values, 0 or more, of each series of at least two values. A difference is
// significant if its adjusted p-value is below 1 - `confidence` / 100; the
// confidence must be above 0 and below 100.
//
// Returns the finalize runs of all graphs, then the execute runs of all graphs,
// without those that have no series. The result refers to both arguments.
std::vector<ComparedRuns> CompareSeries(const LogSeries& before,
                                        const LogSeries& after,
                                        std::int32_t num_warmup,
                                        double confidence);

}  // namespace lumo

#endif  // LUMO_COMPARE_COMPARISON_H_
