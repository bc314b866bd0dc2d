// The figures of a sample: of the values of a series, or of the means of a
// series in several logs. All programs except the viewer show these; the report
// has figures in single precision, see run_statistics.h.

#ifndef LUMO_MODEL_FIGURES_H_
#define LUMO_MODEL_FIGURES_H_

#include <cstdint>
#include <optional>
#include <span>

namespace lumo {

// Returns the values that the figures of a series are computed from: those
// after the first `num_warmup`, 0 or more. A single value is not excluded,
// because most logs have one finalize run per graph.
std::span<const std::uint64_t> CountedValues(
    std::span<const std::uint64_t> values, std::int32_t num_warmup);

struct Figures {
  // The number of values.
  std::int32_t n = 0;
  // 0 if n is 0.
  double mean = 0.0;
  // The sample standard deviation (divisor: n - 1). 0 if n is less than 2.
  double stdev = 0.0;
};

// Returns the figures of whole numbers. The sum is exact and rounded once, when
// it is divided, so that equal values have this value as their mean, however
// many they are. The deviation is computed from the mean in a second pass, in
// double precision and in the order of the values.
Figures ComputeFigures(std::span<const std::uint64_t> values);

// As above, for the means of a series in several logs, which are finite and not
// negative. Their sum has 113 bits.
Figures ComputeFigures(std::span<const double> values);

// Returns `part` in percent of `whole`; nothing if that is 0.
std::optional<double> PercentOf(double part, double whole);

// The distribution of at least one value.
struct Distribution {
  std::uint64_t min;
  // The middle value, or the mean of the two middle ones.
  double median;
  // The 90th percentile, interpolated between the two nearest values: of the
  // ascending values 0 to n - 1, the one at position 0.9 * (n - 1).
  double p90;
  std::uint64_t max;
};

// Returns the distribution of `values`, of which there must be at least one.
Distribution ComputeDistribution(std::span<const std::uint64_t> values);

// Returns the median of `values`, see Distribution; at least one.
double Median(std::span<const double> values);

}  // namespace lumo

#endif  // LUMO_MODEL_FIGURES_H_
