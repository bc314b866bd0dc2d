#include "compare/figures.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <span>

#include <boost/math/distributions/students_t.hpp>

#include "model/run_statistics.h"

namespace lumo {

SeriesFigures ComputeSeriesFigures(const EventSeriesMap::value_type& series,
                                   std::int32_t num_warmup) {
  const std::span<const float> values(series.second.values);
  const std::size_t excluded =
      values.size() == 1
          ? 0
          : std::min(values.size(), static_cast<std::size_t>(num_warmup));
  const std::span<const float> measured = values.subspan(excluded);
  const float mean = Mean(measured);
  return {&series, static_cast<std::int32_t>(measured.size()), mean,
          SampleDeviation(measured, mean)};
}

bool HasMean(const std::optional<SeriesFigures>& figures) {
  return figures && figures->n > 0;
}

double WelchTest(const SeriesFigures& before, const SeriesFigures& after) {
  const double v1 = double{before.stdev} * before.stdev / before.n;
  const double v2 = double{after.stdev} * after.stdev / after.n;
  if (v1 + v2 == 0.0) {
    return before.mean == after.mean ? 1.0 : 0.0;
  }
  const double t = (double{before.mean} - after.mean) / std::sqrt(v1 + v2);
  const double freedom =
      (v1 + v2) * (v1 + v2) /
      (v1 * v1 / (before.n - 1.0) + v2 * v2 / (after.n - 1.0));
  const boost::math::students_t distribution(freedom);
  return 2.0 * boost::math::cdf(distribution, -std::abs(t));
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

}  // namespace lumo
