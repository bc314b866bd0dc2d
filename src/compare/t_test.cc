#include "compare/t_test.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

#include <boost/math/distributions/students_t.hpp>

namespace lumo {
namespace {

using boost::math::students_t;

// The variance of the sample, at least that of rounding.
double VarianceOf(const Figures& figures) {
  return std::max(figures.stdev * figures.stdev, 1.0 / 12.0);
}

TTest MakeTest(const Figures& before, const Figures& after, double v_before,
               double v_after, double freedom) {
  const double t = (before.mean - after.mean) / std::sqrt(v_before + v_after);
  const double tail = boost::math::cdf(students_t(freedom), -std::abs(t));
  return {2.0 * tail, v_before, v_after, freedom};
}

TTest TestByStudent(const Figures& before, const Figures& after) {
  const double freedom = before.n + after.n - 2.0;
  const double variance = ((before.n - 1) * VarianceOf(before) +
                           (after.n - 1) * VarianceOf(after)) /
                          freedom;
  return MakeTest(before, after, variance / before.n, variance / after.n,
                  freedom);
}

TTest TestByWelch(const Figures& before, const Figures& after) {
  const double v1 = VarianceOf(before) / before.n;
  const double v2 = VarianceOf(after) / after.n;
  const double freedom =
      (v1 + v2) * (v1 + v2) /
      (v1 * v1 / (before.n - 1.0) + v2 * v2 / (after.n - 1.0));
  return MakeTest(before, after, v1, v2, freedom);
}

}  // namespace

std::optional<TTest> TestMeans(const Figures& before, const Figures& after,
                               Sample sample) {
  const std::int32_t fewest = std::min(before.n, after.n);
  const bool is_large_enough = sample == Sample::kRuns
                                   ? fewest >= 2
                                   : fewest >= 1 && before.n + after.n >= 3;
  if (!is_large_enough) {
    return std::nullopt;
  }
  const TTest student = TestByStudent(before, after);
  if (fewest < 2 || (sample == Sample::kLogs && before.n == after.n)) {
    return student;
  }
  const TTest welch = TestByWelch(before, after);
  return welch.p > student.p ? welch : student;
}

void AdjustByHolm(std::vector<double>* p_values) {
  std::vector<std::size_t> order(p_values->size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::sort(order.begin(), order.end(),
            [p_values](std::size_t a, std::size_t b) {
              return (*p_values)[a] < (*p_values)[b];
            });
  double previous = 0.0;
  auto factor = static_cast<double>(order.size());
  for (const std::size_t i : order) {
    double& p = (*p_values)[i];
    p = std::min(1.0, std::max(previous, p * factor));
    previous = p;
    factor -= 1.0;
  }
}

std::optional<Interval> ComputeInterval(const Figures& before,
                                        const Figures& after, const TTest& test,
                                        double alpha) {
  const double q = boost::math::quantile(
      boost::math::complement(students_t(test.freedom), alpha / 2.0));
  const double m1 = before.mean;
  const double m2 = after.mean;
  const double d = m1 * m1 - q * q * test.v_before;
  if (m1 == 0.0 || d <= 0.0) {
    return std::nullopt;
  }
  const double half = q * std::sqrt(test.v_after * d + m2 * m2 * test.v_before);
  const auto bound = [&](double ratio) {
    return std::max(-100.0, 100.0 * (ratio / d - 1.0));
  };
  return Interval{bound(m1 * m2 - half), bound(m1 * m2 + half)};
}

}  // namespace lumo
