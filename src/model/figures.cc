#include "model/figures.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include <boost/multiprecision/cpp_bin_float.hpp>
#include <boost/multiprecision/cpp_int.hpp>

namespace lumo {
namespace {

// 113 bits hold the sum of 2^49 values exactly.
using Quad = boost::multiprecision::cpp_bin_float_quad;

// Returns sum / n, rounded once.
double Divide(const boost::multiprecision::uint128_t& sum, std::int32_t n) {
  constexpr std::uint64_t kExact = std::uint64_t{1} << 53;
  return sum <= kExact ? static_cast<double>(sum) / n  // the common case
                       : static_cast<double>(Quad(sum) / n);
}

double Divide(const Quad& sum, std::int32_t n) {
  return static_cast<double>(sum / n);
}

// `sum` is the sum of the values; there is at least one.
template <typename Number, typename Sum>
Figures MakeFigures(std::span<const Number> values, const Sum& sum) {
  Figures figures;
  figures.n = static_cast<std::int32_t>(values.size());
  figures.mean = Divide(sum, figures.n);
  if (figures.n > 1) {
    double squares = 0.0;
    for (const Number value : values) {
      const double difference = static_cast<double>(value) - figures.mean;
      squares += difference * difference;
    }
    figures.stdev = std::sqrt(squares / (figures.n - 1));
  }
  return figures;
}

// Returns the median of ascending values.
template <typename Number>
double MedianOf(const std::vector<Number>& sorted) {
  const std::size_t size = sorted.size();
  const std::span<const Number> all(sorted);
  return ComputeFigures(all.subspan((size - 1) / 2, 2 - size % 2)).mean;
}

// Returns the value at `position`, which may lie between two, of ascending
// values.
double Interpolate(const std::vector<std::uint64_t>& sorted, double position) {
  const double below = std::floor(position);
  const auto i = static_cast<std::size_t>(below);
  const auto lower = static_cast<double>(sorted[i]);
  const auto upper =
      static_cast<double>(sorted[std::min(i + 1, sorted.size() - 1)]);
  return lower + (upper - lower) * (position - below);
}

}  // namespace

std::span<const std::uint64_t> CountedValues(
    std::span<const std::uint64_t> values, std::int32_t num_warmup) {
  return values.size() == 1
             ? values
             : values.subspan(std::min(values.size(),
                                       static_cast<std::size_t>(num_warmup)));
}

Figures ComputeFigures(std::span<const std::uint64_t> values) {
  if (values.empty()) {
    return {};
  }
  boost::multiprecision::uint128_t sum = 0;
  for (const std::uint64_t value : values) {
    sum += value;
  }
  return MakeFigures(values, sum);
}

Figures ComputeFigures(std::span<const double> values) {
  if (values.empty()) {
    return {};
  }
  Quad sum = 0;
  for (const double value : values) {
    sum += value;
  }
  return MakeFigures(values, sum);
}

std::optional<double> PercentOf(double part, double whole) {
  return whole == 0.0 ? std::nullopt : std::optional(100.0 * part / whole);
}

Distribution ComputeDistribution(std::span<const std::uint64_t> values) {
  std::vector<std::uint64_t> sorted(values.begin(), values.end());
  std::sort(sorted.begin(), sorted.end());
  const auto last = static_cast<double>(sorted.size() - 1);
  return {sorted.front(), MedianOf(sorted), Interpolate(sorted, 0.9 * last),
          sorted.back()};
}

double Median(std::span<const double> values) {
  std::vector<double> sorted(values.begin(), values.end());
  std::sort(sorted.begin(), sorted.end());
  return MedianOf(sorted);
}

}  // namespace lumo
