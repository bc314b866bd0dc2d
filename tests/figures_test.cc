// The figures of all programs except the viewer.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "input/input_log.h"
#include "model/event_series.h"
#include "model/figures.h"
#include "model/log_series.h"
#include "model/run_statistics.h"

namespace lumo {
namespace {

using Values = std::vector<std::uint64_t>;

// A sum in a double or in 64 bits would be wrong.
TEST(Figures, AreExact) {
  constexpr std::uint64_t kMax = std::numeric_limits<std::uint64_t>::max();
  constexpr std::uint64_t k2To53 = std::uint64_t{1} << 53;
  const struct {
    Values values;
    double mean;
    double stdev;
  } kCases[] = {
      {{}, 0, 0},
      {{7}, 7, 0},
      {{1, 2}, 1.5, std::sqrt(0.5)},
      {Values(48, 471451), 471451, 0},
      {{k2To53, 1, 1, 1, 1}, 1801439850948199.2, 4028141964097260.5},
      {{kMax, kMax, kMax}, 18446744073709551616.0, 0},
      {{0, kMax}, 9223372036854775808.0, 13043817825332782212.0},
      // 2^53 + 1 has no double; the mean of this and 2^53 + 3 has.
      {{k2To53 + 1, k2To53 + 3}, 9007199254740994.0, std::sqrt(8.0)},
  };
  for (const auto& test : kCases) {
    const Figures figures = ComputeFigures(test.values);
    SCOPED_TRACE(testing::PrintToString(test.values));
    EXPECT_EQ(figures.n, static_cast<std::int32_t>(test.values.size()));
    EXPECT_EQ(figures.mean, test.mean);
    EXPECT_DOUBLE_EQ(figures.stdev, test.stdev);
  }
  const std::vector<double> tenths(10, 0.1);
  EXPECT_EQ(ComputeFigures(std::span<const double>(tenths)).mean, 0.1);
}

TEST(Distribution, InterpolatesBetweenValues) {
  const struct {
    Values values;
    Distribution want;
  } kCases[] = {
      {{5}, {5, 5, 5, 5}},
      {{9, 1}, {1, 5, 8.2, 9}},
      {{30, 10, 20}, {10, 20, 28, 30}},
      {{4, 1, 3, 2}, {1, 2.5, 3.7, 4}},
      {{11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1}, {1, 6, 10, 11}},
  };
  for (const auto& test : kCases) {
    const Distribution got = ComputeDistribution(test.values);
    SCOPED_TRACE(testing::PrintToString(test.values));
    EXPECT_EQ(got.min, test.want.min);
    EXPECT_EQ(got.median, test.want.median);
    EXPECT_DOUBLE_EQ(got.p90, test.want.p90);
    EXPECT_EQ(got.max, test.want.max);
  }
}

// The two computations of the figures of one log agree, but for the rounding of
// the report.
TEST(LogSeries, HasTheFiguresOfTheReport) {
  for (const std::string log : {"sample_basic/log", "compare_samples/before",
                                "compare_samples/after"}) {
    std::string error;
    const auto input = LoadInputLog(LUMO_CASE_LOGS "/" + log + ".bin", &error);
    ASSERT_TRUE(input) << error;
    std::size_t compared = 0;
    for (const RunSeries& runs : CollectLogSeries(input->groups, false)) {
      const auto graph = static_cast<std::size_t>(runs.graph);
      const std::vector<EventSeriesMap> report =
          CollectEventSeries(input->groups, runs.kind);
      for (const Series& series : runs.series) {
        if (series.level != Level::kEvent || series.unit != "us") {
          continue;
        }
        const auto& floats =
            report.at(graph).at({series.position, series.name}).values;
        ASSERT_EQ(floats.size(), series.values.size());
        const auto counted = std::span(floats).subspan(floats.size() > 1);
        const float mean = Mean(counted);
        const Figures figures = ComputeFigures(CountedValues(series.values, 1));
        EXPECT_NEAR(figures.mean, mean, 1e-5 * figures.mean);
        EXPECT_NEAR(figures.stdev, SampleDeviation(counted, mean),
                    1e-3 * figures.stdev);
        ++compared;
      }
    }
    EXPECT_GE(compared, 3U);
  }
}

}  // namespace
}  // namespace lumo
