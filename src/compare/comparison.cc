#include "compare/comparison.h"

#include <algorithm>
#include <cmath>
#include <compare>
#include <cstddef>
#include <string_view>
#include <tuple>
#include <utility>

namespace lumo {
namespace {

// A name, ordered by its bytes. If two events share one stored name, it is not
// read: in a small log, a million events can share a name of a megabyte.
struct Name {
  std::string_view text;

  friend std::strong_ordering operator<=>(const Name& a, const Name& b) {
    const bool is_shared =
        a.text.data() == b.text.data() && a.text.size() == b.text.size();
    return is_shared ? std::strong_ordering::equal : a.text <=> b.text;
  }
  friend bool operator==(const Name& a, const Name& b) {
    return (a <=> b) == std::strong_ordering::equal;
  }
};

// A series of one log, with the properties that a pair must agree in.
struct Candidate {
  std::string_view unit;
  Name name;
  std::int32_t occurrence;
  // Its position in the order of the log.
  std::size_t place;
  const EventSeriesMap::value_type* series;
};

auto KeyOf(const Candidate& candidate) {
  return std::tie(candidate.unit, candidate.name, candidate.occurrence);
}

// Returns the series of one level of one graph, ordered by KeyOf().
std::vector<Candidate> FindCandidates(const EventSeriesMap& series) {
  std::vector<Candidate> candidates;
  candidates.reserve(series.size());
  for (const auto& entry : series) {
    candidates.push_back(
        {entry.second.unit, {entry.first.name}, 0, candidates.size(), &entry});
  }
  std::sort(candidates.begin(), candidates.end(),
            [](const Candidate& a, const Candidate& b) {
              return std::tie(a.unit, a.name, a.place) <
                     std::tie(b.unit, b.name, b.place);
            });
  for (std::size_t i = 1; i < candidates.size(); ++i) {
    const Candidate& previous = candidates[i - 1];
    Candidate& candidate = candidates[i];
    if (candidate.unit == previous.unit && candidate.name == previous.name) {
      candidate.occurrence = previous.occurrence + 1;
    }
  }
  return candidates;
}

// A pair and the parts of its sort key that it does not contain.
struct PlacedPair {
  SeriesPair pair;
  // Of operations of both logs: the difference of the means, or -1 if a mean is
  // missing. Otherwise 0.
  double difference;
  // Its position in the order of the log.
  std::size_t place;
};

// Sorts the series of both logs before those of the first log alone, and these
// before those of the second log alone.
auto SortKeyOf(const PlacedPair& placed) {
  const SeriesPair& pair = placed.pair;
  return std::tuple(!pair.before, !pair.after, pair.level, -placed.difference,
                    placed.place);
}

// Sets the change, and the difference by which operations are sorted.
void SetDifference(PlacedPair* placed) {
  SeriesPair& pair = placed->pair;
  const bool has_means = HasMean(pair.before) && HasMean(pair.after);
  const double mean_before = pair.before->mean;
  const double difference = pair.after->mean - mean_before;
  if (has_means && mean_before != 0.0) {
    pair.change_percent = difference / mean_before * 100.0;
  }
  if (pair.level == Level::kOperation) {
    placed->difference = has_means ? std::abs(difference) : -1.0;
  }
}

// Returns the pair of two series. One of them may be null.
PlacedPair MakePair(Level level, const Candidate* before,
                    const Candidate* after, std::int32_t num_warmup) {
  const Candidate& candidate = before != nullptr ? *before : *after;
  PlacedPair placed = {};
  placed.place = candidate.place;
  SeriesPair& pair = placed.pair;
  pair.level = level;
  pair.name = candidate.name.text;
  pair.occurrence = candidate.occurrence;
  pair.unit = candidate.unit;
  if (before != nullptr) {
    pair.before = ComputeSeriesFigures(*before->series, num_warmup);
  }
  if (after != nullptr) {
    pair.after = ComputeSeriesFigures(*after->series, num_warmup);
  }
  if (pair.before && pair.after) {
    pair.verdict = Verdict::kNoTest;
    SetDifference(&placed);
  } else {
    pair.verdict = pair.before ? Verdict::kOnlyBefore : Verdict::kOnlyAfter;
  }
  return placed;
}

// Appends the pairs of one level of one graph.
void AppendPairs(Level level, const EventSeriesMap& before,
                 const EventSeriesMap& after, std::int32_t num_warmup,
                 std::vector<PlacedPair>* pairs) {
  const std::vector<Candidate> left = FindCandidates(before);
  const std::vector<Candidate> right = FindCandidates(after);
  auto l = left.begin();
  auto r = right.begin();
  while (l != left.end() || r != right.end()) {
    const bool has_left =
        l != left.end() && (r == right.end() || KeyOf(*l) <= KeyOf(*r));
    const bool has_right =
        r != right.end() && (l == left.end() || KeyOf(*r) <= KeyOf(*l));
    PlacedPair placed = MakePair(level, has_left ? &*l : nullptr,
                                 has_right ? &*r : nullptr, num_warmup);
    if (placed.pair.occurrence > 0) {
      // The previous pair has the same name.
      pairs->back().pair.is_repeated = true;
      placed.pair.is_repeated = true;
    }
    pairs->push_back(placed);
    l += has_left ? 1 : 0;
    r += has_right ? 1 : 0;
  }
}

const KindSeries& SeriesOf(const LogSeries& log, RunKind kind) {
  return kind == RunKind::kFinalize ? log.finalize : log.execute;
}

// Returns the element of graph `graph`, or an empty map or 0 if the log has
// fewer graphs.
template <typename T>
const T& ElementOf(const std::vector<T>& list, std::size_t graph) {
  static const T kNone{};
  return graph < list.size() ? list[graph] : kNone;
}

// Returns the pairs of the runs, not yet tested.
ComparedRuns PairRuns(const LogSeries& before, const LogSeries& after,
                      RunKind kind, std::size_t graph,
                      std::int32_t num_warmup) {
  const KindSeries& left = SeriesOf(before, kind);
  const KindSeries& right = SeriesOf(after, kind);
  std::vector<PlacedPair> placed;
  AppendPairs(Level::kEvent, ElementOf(left.events, graph),
              ElementOf(right.events, graph), num_warmup, &placed);
  if (kind == RunKind::kExecute) {
    AppendPairs(Level::kOperation, ElementOf(before.operations, graph),
                ElementOf(after.operations, graph), num_warmup, &placed);
  }
  std::sort(placed.begin(), placed.end(),
            [](const PlacedPair& a, const PlacedPair& b) {
              return SortKeyOf(a) < SortKeyOf(b);
            });
  ComparedRuns runs = {kind,
                       static_cast<std::int32_t>(graph),
                       ElementOf(left.run_counts, graph),
                       ElementOf(right.run_counts, graph),
                       {}};
  runs.pairs.reserve(placed.size());
  for (const PlacedPair& element : placed) {
    runs.pairs.push_back(element.pair);
  }
  return runs;
}

bool IsTestable(const std::optional<SeriesFigures>& figures) {
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
  const auto collect = [&groups](RunKind kind) {
    return KindSeries{CollectEventSeriesOfAllUnits(groups, kind),
                      CountRuns(groups, kind)};
  };
  return {collect(RunKind::kFinalize), collect(RunKind::kExecute),
          CollectNodeSeries(groups)};
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
