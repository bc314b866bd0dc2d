// A pair of series, one of each log, and its verdict.

#ifndef LUMO_COMPARE_SERIES_PAIR_H_
#define LUMO_COMPARE_SERIES_PAIR_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "compare/figures.h"
#include "model/log_series.h"

namespace lumo {

enum class Verdict {
  // The mean after is significantly higher or lower than the mean before.
  kHigher,
  kLower,
  kNoDifference,
  // Both logs have the series, but too few values or an infinite deviation.
  kNoTest,
  kOnlyBefore,
  kOnlyAfter,
};

// Returns "higher", "lower", "no_difference", "no_test", "only_before" or
// "only_after".
std::string_view VerdictText(Verdict verdict);

// As VerdictText(), but with blanks between the words.
std::string VerdictWords(Verdict verdict);

// A series of both logs or of one. At least one side exists.
struct SeriesPair {
  Level level;
  std::string_view name;
  // Its ordinal, from 0, among the series with the same graph, kind, level,
  // unit and name, in the order of their keys.
  std::int32_t occurrence;
  // Whether there are several such series, so that the name alone does not
  // identify this one.
  bool is_repeated;
  // The unit of the first value, see UnitText().
  std::string_view unit;
  std::optional<SeriesFigures> before;
  std::optional<SeriesFigures> after;
  // The change of the mean in percent of the mean before. Nothing if a mean is
  // missing or the mean before is 0.
  std::optional<double> change_percent;
  // The p-value of Welch's t test, adjusted for the number of all tests.
  // Nothing if the pair was not tested.
  std::optional<double> p_adjusted;
  Verdict verdict;
};

}  // namespace lumo

#endif  // LUMO_COMPARE_SERIES_PAIR_H_
