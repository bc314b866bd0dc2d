// Tests whether the means of two samples differ.

#ifndef LUMO_COMPARE_T_TEST_H_
#define LUMO_COMPARE_T_TEST_H_

#include <optional>
#include <vector>

#include "model/figures.h"

namespace lumo {

// What the values of a sample are.
enum class Sample {
  // The runs of a log.
  kRuns,
  // The means of several logs.
  kLogs,
};

// The result of a t test.
struct TTest {
  // The probability of a difference at least this large if the means are equal.
  double p;
  // The two parts of the square of the standard error of the difference, and
  // the degrees of freedom.
  double v_before;
  double v_after;
  double freedom;
};

// Returns the result of a two-sided t test for the means of two samples, or
// nothing if they are too small: runs must be at least two on each side; logs
// at least one on each side, and three together.
//
// s1^2 and s2^2 are the sample variances, but at least 1/12, because the values
// are whole numbers and rounding has this variance. Student's test has
//   s^2 = ((n1 - 1) s1^2 + (n2 - 1) s2^2) / (n1 + n2 - 2),
//   v1 = s^2 / n1, v2 = s^2 / n2 and n1 + n2 - 2 degrees of freedom;
// Welch's test has
//   v1 = s1^2 / n1, v2 = s2^2 / n2 and, by Welch and Satterthwaite,
//   (v1 + v2)^2 / (v1^2 / (n1 - 1) + v2^2 / (n2 - 1)) degrees of freedom;
// and both have t = (mean1 - mean2) / sqrt(v1 + v2).
//
// The test with the larger p decides, Student's if they are equal. For equal
// numbers of logs Student's test decides alone, because the variances of a few
// logs are too uncertain to be used apart; with a single log on one side it is
// the only one.
std::optional<TTest> TestMeans(const Figures& before, const Figures& after,
                               Sample sample);

// Adjusts p-values by Holm's method: the i-th smallest of m, from 0, is
// multiplied by m - i, raised to the adjusted p-value before it if that is
// larger, and limited to 1. The order of `p_values` does not change.
void AdjustByHolm(std::vector<double>* p_values);

// The bounds of a change of the mean, in percent of the mean before.
struct Interval {
  double low;
  double high;
};

// Returns the interval of the change that contains the true one with a
// probability of 1 - `alpha`, which must be above 0 and below 1, by Fieller's
// theorem. Nothing if it has no bounds, because the mean before is 0 or differs
// too little from 0. No bound is below -100.
std::optional<Interval> ComputeInterval(const Figures& before,
                                        const Figures& after, const TTest& test,
                                        double alpha);

}  // namespace lumo

#endif  // LUMO_COMPARE_T_TEST_H_
