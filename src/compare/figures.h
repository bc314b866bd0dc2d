// The figures of a series, and the test whether those of two differ.

#ifndef LUMO_COMPARE_FIGURES_H_
#define LUMO_COMPARE_FIGURES_H_

#include <cstdint>
#include <vector>

#include "model/event_series.h"

namespace lumo {

// One series of one log.
struct Figures {
  // Its key and all its values, in the log's order; points into a LogSeries.
  const EventSeriesMap::value_type* series;
  // How many values the figures are computed from: those after the warm-up, or
  // the only one.
  std::int32_t n;
  // Mean() and SampleDeviation() of these values. Without a meaning if n is 0.
  float mean;
  float stdev;
};

// Returns the figures of a series, without the first `num_warmup` values, from
// 0, unless it has only one. They refer to the series.
Figures ComputeFigures(const EventSeriesMap::value_type& series,
                       std::int32_t num_warmup);

// Returns the p-value of Welch's t test, two-sided, for the means of two
// samples: the probability of a difference as large as theirs if there is none.
// Both must have n >= 2 and a finite deviation. If both deviations are 0 it is
// 1 for equal means and 0 for others.
//
// t = (mean1 - mean2) / sqrt(v1 + v2) with v = stdev^2 / n, and the degrees of
// freedom by Welch and Satterthwaite, (v1 + v2)^2 / (v1^2 / (n1 - 1) +
// v2^2 / (n2 - 1)), in double precision from the figures as they are.
double WelchTest(const Figures& before, const Figures& after);

// Replaces p-values by those adjusted by Holm's method: the i-th smallest of m,
// from 0, is multiplied by m - i, is at least the adjusted one before it, and
// at most 1. The order of `p_values` stays.
void AdjustByHolm(std::vector<double>* p_values);

}  // namespace lumo

#endif  // LUMO_COMPARE_FIGURES_H_
