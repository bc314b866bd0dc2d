#include "compare/comparison.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>
#include <tuple>
#include <utility>

namespace lumo {
namespace {

// What the series of a pair agree in: unit, name, occurrence.
using PairKey = std::tuple<std::string_view, std::string_view, std::int32_t>;

// A series of one log, and its place in the log's order.
struct Candidate {
  std::size_t place;
  const EventSeries* series;
};

std::map<PairKey, Candidate> FindCandidates(const EventSeriesMap& series) {
  std::map<PairKey, Candidate> candidates;
  std::map<std::pair<std::string_view, std::string_view>, std::int32_t> seen;
  std::size_t place = 0;
  for (const auto& [key, one] : series) {
    const std::int32_t occurrence = seen[{one.unit, key.name}]++;
    candidates.emplace(PairKey{one.unit, key.name, occurrence},
                       Candidate{place, &one});
    ++place;
  }
  return candidates;
}

// A pair and what decides on its place: first the group, then, within the
// operations that both logs have, the difference of the means, then the place
// in the log's order.
struct PlacedPair {
  int group;
  double difference;
  std::size_t place;
  SeriesPair pair;
};

bool IsBefore(const PlacedPair& a, const PlacedPair& b) {
  return std::tuple(a.group, -a.difference, a.place) <
         std::tuple(b.group, -b.difference, b.place);
}

PlacedPair MakePair(Level level, Verdict verdict, const PairKey& key,
                    std::size_t place) {
  PlacedPair placed = {};
  placed.group = verdict == Verdict::kOnlyBefore  ? 2
                 : verdict == Verdict::kOnlyAfter ? 4
                                                  : 0;
  placed.group += level == Level::kOperation ? 1 : 0;
  placed.place = place;
  placed.pair.level = level;
  placed.pair.verdict = verdict;
  std::tie(placed.pair.unit, placed.pair.name, placed.pair.occurrence) = key;
  return placed;
}

// Sets the change, and the difference by which operations are sorted.
void SetDifference(PlacedPair* placed) {
  SeriesPair& pair = placed->pair;
  const bool has_means = pair.before->n > 0 && pair.after->n > 0;
  const double mean_before = pair.before->mean;
  const double difference = pair.after->mean - mean_before;
  if (has_means && mean_before != 0.0) {
    pair.change_percent = difference / mean_before * 100.0;
  }
  if (pair.level == Level::kOperation) {
    // Pairs without two means come last.
    placed->difference = has_means ? std::abs(difference) : -1.0;
  }
}

// Appends the pairs of one level of one graph.
void AppendPairs(Level level, const EventSeriesMap& before,
                 const EventSeriesMap& after, std::int32_t num_warmup,
                 std::vector<PlacedPair>* pairs) {
  std::map<PairKey, Candidate> unmatched = FindCandidates(after);
  for (const auto& [key, candidate] : FindCandidates(before)) {
    const auto match = unmatched.find(key);
    const bool is_common = match != unmatched.end();
    PlacedPair placed =
        MakePair(level, is_common ? Verdict::kNoTest : Verdict::kOnlyBefore,
                 key, candidate.place);
    placed.pair.before = ComputeFigures(*candidate.series, num_warmup);
    if (is_common) {
      placed.pair.after = ComputeFigures(*match->second.series, num_warmup);
      SetDifference(&placed);
      unmatched.erase(match);
    }
    pairs->push_back(placed);
  }
  for (const auto& [key, candidate] : unmatched) {
    PlacedPair placed =
        MakePair(level, Verdict::kOnlyAfter, key, candidate.place);
    placed.pair.after = ComputeFigures(*candidate.series, num_warmup);
    pairs->push_back(placed);
  }
}

// Returns the element of graph `graph`, which is empty if the log has fewer
// graphs.
const EventSeriesMap& SeriesOf(const std::vector<EventSeriesMap>& series,
                               std::size_t graph) {
  static const EventSeriesMap kNone;
  return graph < series.size() ? series[graph] : kNone;
}

std::int32_t RunsOf(const LogSeries& log, RunKind kind, std::size_t graph) {
  const auto& counts = log.run_counts[static_cast<std::size_t>(kind)];
  return graph < counts.size() ? counts[graph] : 0;
}

// Returns the pairs of the runs, not yet tested.
ComparedRuns PairRuns(const LogSeries& before, const LogSeries& after,
                      RunKind kind, std::size_t graph,
                      std::int32_t num_warmup) {
  const auto k = static_cast<std::size_t>(kind);
  std::vector<PlacedPair> placed;
  AppendPairs(Level::kEvent, SeriesOf(before.events[k], graph),
              SeriesOf(after.events[k], graph), num_warmup, &placed);
  if (kind == RunKind::kExecute) {
    AppendPairs(Level::kOperation, SeriesOf(before.operations, graph),
                SeriesOf(after.operations, graph), num_warmup, &placed);
  }
  std::sort(placed.begin(), placed.end(), IsBefore);
  ComparedRuns runs = {kind,
                       static_cast<std::int32_t>(graph),
                       RunsOf(before, kind, graph),
                       RunsOf(after, kind, graph),
                       {}};
  for (const PlacedPair& one : placed) {
    runs.pairs.push_back(one.pair);
  }
  return runs;
}

bool IsTestable(const std::optional<Figures>& figures) {
  return figures && figures->n >= 2 && std::isfinite(figures->stdev);
}

// Tests every pair that can be tested and sets its verdict.
void SetVerdicts(double confidence, std::vector<ComparedRuns>* all_runs) {
  std::vector<SeriesPair*> tested;
  std::vector<double> p_values;
  for (ComparedRuns& runs : *all_runs) {
    for (SeriesPair& pair : runs.pairs) {
      if (IsTestable(pair.before) && IsTestable(pair.after)) {
        tested.push_back(&pair);
        p_values.push_back(WelchTest(*pair.before, *pair.after));
      }
    }
  }
  AdjustByHolm(&p_values);
  for (std::size_t i = 0; i < tested.size(); ++i) {
    SeriesPair& pair = *tested[i];
    pair.p_adjusted = p_values[i];
    if (p_values[i] >= (100.0 - confidence) / 100.0) {
      pair.verdict = Verdict::kNoDifference;
    } else {
      pair.verdict = pair.after->mean > pair.before->mean ? Verdict::kHigher
                                                          : Verdict::kLower;
    }
  }
}

}  // namespace

LogSeries CollectLogSeries(const MessageGroups& groups) {
  LogSeries log;
  for (const RunKind kind : {RunKind::kFinalize, RunKind::kExecute}) {
    const auto k = static_cast<std::size_t>(kind);
    log.events[k] = CollectEventSeriesOfAllUnits(groups, kind);
    log.run_counts[k] = CountRuns(groups, kind);
  }
  log.operations = CollectNodeSeries(groups);
  return log;
}

std::vector<ComparedRuns> CompareSeries(const LogSeries& before,
                                        const LogSeries& after,
                                        std::int32_t num_warmup,
                                        double confidence) {
  std::vector<ComparedRuns> all_runs;
  const std::size_t graph_count =
      std::max(before.operations.size(), after.operations.size());
  for (const RunKind kind : {RunKind::kFinalize, RunKind::kExecute}) {
    for (std::size_t graph = 0; graph < graph_count; ++graph) {
      ComparedRuns runs = PairRuns(before, after, kind, graph, num_warmup);
      if (!runs.pairs.empty()) {
        all_runs.push_back(std::move(runs));
      }
    }
  }
  SetVerdicts(confidence, &all_runs);
  return all_runs;
}

}  // namespace lumo
