// The figures of a series, and the test of whether two series differ.

#ifndef LUMO_COMPARE_FIGURES_H_
#define LUMO_COMPARE_FIGURES_H_

#include <cstdint>
#include <optional>
#include <vector>

#include "model/event_series.h"

namespace lumo {

// The figures of one series of one log.
struct SeriesFigures {
  // Its key and all its values, in the order of the log; points into a
  // LogSeries.
  const EventSeriesMap::value_type* series;
  // The number of values that the figures are computed from: those after the
  // warm-up, or the only one.
  std::int32_t n;
  // Mean() and SampleDeviation() of these values. Undefined if n is 0.
  float mean;
  float stdev;
};

// Returns the figures of a series without its first `num_warmup` values, 0 or
// more. A series with a single value is used as it is. The figures refer to the
// series.
SeriesFigures ComputeSeriesFigures(const EventSeriesMap::value_type& series,
                                   std::int32_t num_warmup);

// Returns whether there are figures with a mean and a deviation.
bool HasMean(const std::optional<SeriesFigures>& figures);

// Returns the p-value of Welch's two-sided t test for the means of two samples:
// the probability of a difference at least this large if the means are equal.
// Both must have n >= 2 and a finite deviation. If both deviations are 0, it is
// 1 for equal means and 0 otherwise.
//
// t = (mean1 - mean2) / sqrt(v1 + v2) with v = stdev^2 / n, and the degrees of
// freedom by Welch and Satterthwaite, (v1 + v2)^2 / (v1^2 / (n1 - 1) +
// v2^2 / (n2 - 1)), computed in double precision from the figures.
double WelchTest(const SeriesFigures& before, const SeriesFigures& after);

// Adjusts p-values by Holm's method: the i-th smallest of m, from 0, is
// multiplied by m - i, raised to the adjusted p-value before it if that is
// larger, and limited to 1. The order of `p_values` does not change.
void AdjustByHolm(std::vector<double>* p_values);

}  // namespace lumo

#endif  // LUMO_COMPARE_FIGURES_H_
