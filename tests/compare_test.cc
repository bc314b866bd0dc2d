// The figures and tests of a comparison.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "compare/compared_log.h"
#include "compare/comparison.h"
#include "compare/figures.h"
#include "model/event_series.h"
#include "model/message_groups.h"
#include "run_viewer.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

// The expected values are the output of
//   t.test(c(...), c(...))$p.value
// in R 4.2 with 12 digits. The means are exact as floats, so that the results
// differ only by the rounding of the deviations.
TEST(WelchTest, GivesThePValuesOfR) {
  std::vector<float> steps_of_7(210);
  std::vector<float> steps_of_11(297);
  for (std::size_t i = 0; i < steps_of_11.size(); ++i) {
    steps_of_7[i % 210] = 1000.0F + static_cast<float>(i % 210 % 7);
    steps_of_11[i] = 1000.0F + static_cast<float>(i % 11);
  }
  const struct {
    std::vector<float> before;
    std::vector<float> after;
    double want;
  } kCases[] = {
      {{12, 15, 11, 19, 13}, {21, 17, 25, 20, 23, 26}, 0.00293356267652},
      {{3, 9}, {4, 5}, 0.704814596844},
      {{1949, 1955, 1941, 1958, 1947},
       {1920, 1931, 1928, 1922, 1926, 1930, 1917, 1929, 1925, 1922},
       0.000295453198467},
      // 1.00004 degrees of freedom.
      {{100, 300}, {200, 201, 199, 200, 202, 198, 200, 201}, 0.999204227456},
      {{40, 41, 42}, {60, 60, 60, 60}, 0.000922084105724},
      {{5, 6, 7}, {7, 5, 6}, 1},
      // t = 3632367.
      {{536870912.0F, 536871168.0F, 536871424.0F},
       {1, 2, 3, 2, 2},
       7.57714468029e-14},
      {{16777216.0F, 16777218.0F, 16777220.0F},
       {16777222.0F, 16777224.0F, 16777226.0F},
       0.0213116411288},
      // t = -8.69, 499.39 degrees of freedom.
      {steps_of_7, steps_of_11, 5.06411700816e-17},
      // R rejects constant values; this rule is our own.
      {{7, 7}, {7, 7, 7}, 1},
      {{7, 7}, {8, 8}, 0},
      {{0, 0}, {1e-38F, 1e-38F}, 0},
  };
  for (const auto& test : kCases) {
    const EventSeriesMap::value_type before = {{0, "before"},
                                               {"us", test.before}};
    const EventSeriesMap::value_type after = {{0, "after"}, {"us", test.after}};
    const SeriesFigures a = ComputeSeriesFigures(before, 0);
    const SeriesFigures b = ComputeSeriesFigures(after, 0);
    SCOPED_TRACE(testing::PrintToString(test.before));
    EXPECT_NEAR(WelchTest(a, b), test.want, 5e-6 * test.want);
    EXPECT_EQ(WelchTest(a, b), WelchTest(b, a));
  }
}

// The expected values are the output of p.adjust(c(...), "holm") in R.
TEST(AdjustByHolm, GivesTheValuesOfR) {
  const struct {
    std::vector<double> p_values;
    std::vector<double> want;
  } kCases[] = {
      {{}, {}},
      {{0.03}, {0.03}},
      {{0.01, 0.04, 0.03, 0.005}, {0.03, 0.06, 0.06, 0.02}},
      {{0.04, 0.03, 0.011}, {0.06, 0.06, 0.033}},
      {{0.02, 0.02, 0.02}, {0.06, 0.06, 0.06}},
      {{0.5, 0.001, 0.5, 0.9, 0.001}, {1, 0.005, 1, 1, 0.005}},
      {{0, 1e-300, 1, 0.2}, {0, 3e-300, 1, 0.4}},
  };
  for (const auto& test : kCases) {
    std::vector<double> adjusted = test.p_values;
    AdjustByHolm(&adjusted);
    ASSERT_EQ(adjusted.size(), test.want.size());
    for (std::size_t i = 0; i < adjusted.size(); ++i) {
      EXPECT_DOUBLE_EQ(adjusted[i], test.want[i])
          << testing::PrintToString(test.p_values) << " at " << i;
    }
  }
}

// SeriesFigures under keys such as "execute 0 Mean: Host RPC time".
using Texts = std::map<std::string, std::string>;
using Numbers = std::map<std::string, float>;

std::string KeyOf(std::string_view kind, std::string_view graph,
                  std::string_view list, std::string_view name) {
  std::ostringstream key;
  key << kind << ' ' << graph << ' ' << list << ' ' << name;
  return key.str();
}

Texts FiguresOfReport(const std::string& report) {
  Texts figures;
  std::istringstream lines(report);
  std::string kind = "finalize";
  std::string graph;
  std::string list;  // the list of a summary that the line is in
  for (std::string line; std::getline(lines, line);) {
    const std::string text =
        line.substr(std::min(line.size(), line.find_first_not_of(' ')));
    if (line.starts_with("---")) {
      list = "";
      kind = text.find("Execute Info") == std::string::npos ? kind : "execute";
    } else if (text.starts_with("Graph index:")) {
      graph = text.substr(12);
    } else if (text == "Mean:" || text == "Stdev:" ||
               text.starts_with("Warmup (")) {
      list = text;
    } else if ((list == "Mean:" || list == "Stdev:") && text.ends_with(" us")) {
      const std::size_t colon = text.rfind(": ");
      figures[KeyOf(kind, graph, list, text.substr(0, colon))] =
          text.substr(colon + 2, text.size() - colon - 5);
    }
  }
  return figures;
}

using Side = std::optional<SeriesFigures> SeriesPair::*;

// Returns the figures in microseconds of one side of a comparison.
Numbers FiguresOfComparison(const std::vector<ComparedRuns>& all_runs,
                            Side side) {
  Numbers numbers;
  for (const ComparedRuns& runs : all_runs) {
    for (const SeriesPair& pair : runs.pairs) {
      const std::optional<SeriesFigures>& figures = pair.*side;
      if (pair.level == Level::kEvent && pair.unit == "us" && figures) {
        const auto kind = RunKindText(runs.kind);
        const std::string graph = std::to_string(runs.graph);
        numbers[KeyOf(kind, graph, "Mean:", pair.name)] = figures->mean;
        numbers[KeyOf(kind, graph, "Stdev:", pair.name)] = figures->stdev;
      }
    }
  }
  return numbers;
}

// Checks the figures of one log against its report, on both sides of a
// comparison.
void ExpectFiguresOfReport(const std::string& path, const std::string& other) {
  SCOPED_TRACE(path + " with " + other);
  std::string error;
  const auto log = LoadComparedLog(path, &error);
  const auto other_log = LoadComparedLog(other, &error);
  ASSERT_TRUE(log && other_log) << error;
  const Numbers before =
      FiguresOfComparison(CompareSeries(log->series, other_log->series, 1, 99),
                          &SeriesPair::before);
  const Numbers after = FiguresOfComparison(
      CompareSeries(other_log->series, log->series, 1, 99), &SeriesPair::after);
  EXPECT_EQ(before, after);
  const Texts reported = FiguresOfReport(RunViewer(log->log.bytes, 5, 1));
  // At least the means and deviations of two execute events.
  EXPECT_GE(reported.size(), 4U);
  for (const auto& [key, text] : reported) {
    ASSERT_TRUE(before.contains(key)) << key;
    const float number = before.at(key);
    // The report has one of two notations.
    EXPECT_TRUE(text == FixedText(number) || text == SignificantText(number, 6))
        << key << ": " << text << ", not " << number;
  }
}

TEST(Comparison, HasTheFiguresOfTheReport) {
  const std::string logs[] = {LUMO_CASE_LOGS "/sample_basic/log.bin",
                              LUMO_CASE_LOGS "/compare_samples/before.bin",
                              LUMO_CASE_LOGS "/compare_samples/after.bin"};
  for (const std::string& log : logs) {
    for (const std::string& other : logs) {
      ExpectFiguresOfReport(log, other);
    }
  }
}

}  // namespace
}  // namespace lumo
