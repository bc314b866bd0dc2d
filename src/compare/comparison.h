// Compares two sides: pairs of series, their figures, and whether they differ.

#ifndef LUMO_COMPARE_COMPARISON_H_
#define LUMO_COMPARE_COMPARISON_H_

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "compare/side.h"
#include "compare/t_test.h"
#include "model/figures.h"
#include "model/message_groups.h"

namespace lumo {

// The default confidence, in percent.
inline constexpr double kDefaultConfidence = 99.0;

enum class Verdict {
  // The mean after is significantly higher or lower than the mean before.
  kHigher,
  kLower,
  kNoDifference,
  // Both sides have the series, but with too few values.
  kNoTest,
  kOnlyBefore,
  kOnlyAfter,
};

// Returns "higher", "lower", "no_difference", "no_test", "only_before" or
// "only_after".
std::string_view VerdictText(Verdict verdict);

// As VerdictText(), but with blanks between the words.
std::string VerdictWords(Verdict verdict);

// A series on one side.
struct PairSide {
  // Null if the side does not have it.
  const SideSeries* series = nullptr;
  // The runs of the series, which have its parts.
  const SideRuns* runs = nullptr;
  // Of the sample. n is 0 without a series, or if it has no value after the
  // warm-up.
  Figures figures = {};
};

// A series of both sides or of one.
struct SeriesPair {
  PairSide before;
  PairSide after;
  // Whether it is on one of the sides, see SideSeries.
  bool is_repeated;
  // The mean after minus the mean before. Nothing if a mean is missing.
  std::optional<double> difference;
  // The difference in percent of the mean before. Nothing if a mean is
  // missing or the mean before is 0.
  std::optional<double> change_percent;
  // The p-value of the t test, adjusted for the number of all tests. Nothing if
  // the pair was not tested.
  std::optional<double> p_adjusted;
  // Of the change, at the confidence of the whole comparison. It contains 0 or
  // has it as a bound, unless the pair differs. Nothing if the pair was not
  // tested or the interval has no bounds.
  std::optional<Interval> interval;
  Verdict verdict;
};

// Returns the series, which may be null, with its figures as a sample: of the
// runs of its only log, or of its means in several logs.
PairSide MakePairSide(const SideSeries* series, const SideRuns& runs,
                      Sample sample);

// Returns the series of the first side that has it: `before` or `after`. Its
// name, occurrence and unit are those of the pair.
const SideSeries& SeriesOf(const SeriesPair& pair);

// Returns whether both sides have the series.
bool IsOnBothSides(const SeriesPair& pair);

// Returns whether the verdict is kHigher or kLower.
bool IsDifferent(const SeriesPair& pair);

// The pairs of the runs of one kind of one graph.
struct Block {
  RunKind kind;
  std::int32_t graph;
  // Empty for a side without such runs.
  const SideRuns& before;
  const SideRuns& after;
  // The pairs that differ, the other pairs, the series that only `before` has,
  // and those that only `after` has. In each of these, events come first, in
  // the order of the side. The operations of both sides are sorted by the
  // difference of their means, largest first, those without a mean last; the
  // operations of one side are in its order.
  std::vector<SeriesPair> pairs;
};

// A comparison with its options. It refers to its sides.
struct Comparison {
  const Side* before;
  const Side* after;
  // In percent.
  double confidence;
  bool ignores_node_ids;
  // kRuns if each side has one log.
  Sample sample;
  // The execute runs of all graphs, then the finalize runs of all graphs,
  // without those that have no series.
  std::vector<Block> blocks;
};

// Compares two sides. A difference is significant if its adjusted p-value is
// below 1 - `confidence` / 100; the confidence must be above 0 and below 100.
//
// Series are paired by PairSeries(). Returns nothing, with a message in
// `error`, if a graph has too many operations for that.
std::optional<Comparison> CompareSides(const Side& before, const Side& after,
                                       double confidence, bool ignore_node_ids,
                                       std::string* error);

// Returns how many pairs of a comparison, or of one of its levels, have each
// verdict.
std::map<Verdict, std::int64_t> CountVerdicts(const Comparison& comparison,
                                              std::optional<Level> level = {});

}  // namespace lumo

#endif  // LUMO_COMPARE_COMPARISON_H_
