// The tests of a comparison, and the alignment of lists.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>
#include <span>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "compare/pairing.h"
#include "compare/t_test.h"
#include "model/figures.h"

namespace lumo {
namespace {

using Values = std::vector<std::uint64_t>;

// The expected values are the output of R 4.2 with 12 digits:
//   t.test(c(...), c(...), var.equal = TRUE)$p.value  # Student
//   t.test(c(...), c(...))$p.value                    # Welch
// and, where R rejects constants or a single value, of 2 * pt(-abs(t), df).
TEST(TestMeans, GivesThePValuesOfR) {
  Values steps_of_7(210);
  Values steps_of_11(297);
  for (std::size_t i = 0; i < steps_of_11.size(); ++i) {
    steps_of_7[i % 210] = 1000 + i % 210 % 7;
    steps_of_11[i] = 1000 + i % 11;
  }
  constexpr double kNone = -1;
  constexpr Sample kRuns = Sample::kRuns;
  constexpr Sample kLogs = Sample::kLogs;
  const struct {
    Values before;
    Values after;
    Sample sample;
    double want;
  } kCases[] = {
      // Of two runs each or more, the larger p decides: Welch's ...
      {{12, 15, 11, 19, 13}, {21, 17, 25, 20, 23, 26}, kRuns, 0.00293356267652},
      {{3, 9}, {4, 5}, kRuns, 0.704814596844},
      {{1949, 1955, 1941, 1958, 1947},
       {1920, 1931, 1928, 1922, 1926, 1930, 1917, 1929, 1925, 1922},
       kRuns,
       0.000295453198467},
      // 1.00004 degrees of freedom.
      {{100, 300},
       {200, 201, 199, 200, 202, 198, 200, 201},
       kRuns,
       0.999204227456},
      {{536870912, 536871168, 536871424},
       {1, 2, 3, 2, 2},
       kRuns,
       7.57714468029e-14},
      {{5, 6, 7}, {7, 5, 6}, kRuns, 1},
      // ... or Student's.
      {steps_of_7, steps_of_11, kRuns, 4.94852429055e-15},
      {{10, 12, 11, 13, 30}, {40, 44, 41}, kRuns, 0.00194628835179},
      // Constants have the variance of rounding.
      {{3, 3}, {4, 4}, kRuns, 0.0741799002274},
      {{7, 7}, {7, 7, 7}, kRuns, 1},
      {{5, 5, 5, 5, 5, 5}, {6, 6, 6, 6, 6, 6}, kRuns, 0.000132108860355},
      // For equal numbers of logs, Student's test decides.
      {{100, 110, 96}, {120, 121, 135}, kLogs, 0.0216953317518},
      // For unequal ones, the larger p does.
      {{10, 12, 11, 13, 30}, {40, 44, 41}, kLogs, 0.00194628835179},
      {{12, 15, 11, 19, 13}, {21, 17, 25, 20, 23, 26}, kLogs, 0.00293356267652},
      {{150}, {100, 110, 96, 105}, kLogs, 0.00609616298759},
      {{104}, {100, 110}, kLogs, 0.92681360496},
      // Too few values.
      {{1}, {2, 3, 4}, kRuns, kNone},
      {{}, {2, 3, 4}, kRuns, kNone},
      {{1}, {2}, kLogs, kNone},
      {{}, {2, 3, 4}, kLogs, kNone},
  };
  for (const auto& test : kCases) {
    SCOPED_TRACE(testing::PrintToString(test.before) +
                 testing::PrintToString(test.after));
    const Figures a = ComputeFigures(test.before);
    const Figures b = ComputeFigures(test.after);
    const auto result = TestMeans(a, b, test.sample);
    const auto swapped = TestMeans(b, a, test.sample);
    ASSERT_EQ(result.has_value(), test.want != kNone);
    ASSERT_EQ(swapped.has_value(), test.want != kNone);
    if (result) {
      EXPECT_NEAR(result->p, test.want, 1e-11 * test.want);
      EXPECT_DOUBLE_EQ(result->p, swapped->p);
    }
  }
}

// The expected bounds are the ratios r of the means, found by R's uniroot(),
// for which |mean2 - r * mean1| / sqrt(v2 + r^2 * v1) is the quantile of t.
TEST(Interval, HasTheBoundsOfR) {
  const struct {
    Values before;
    Values after;
    Sample sample;
    double alpha;
    std::optional<Interval> want;
  } kCases[] = {
      {{12, 15, 11, 19, 13},
       {21, 17, 25, 20, 23, 26},
       Sample::kRuns,
       0.01,
       Interval{9.053784038, 143.6597283}},
      {{100, 110, 96},
       {120, 121, 135},
       Sample::kLogs,
       0.05,
       Interval{5.049521294, 44.47156851}},
      // The lower bound would be -106.5, which is impossible.
      {{60, 62, 61},
       {0, 1, 2},
       Sample::kRuns,
       0.001,
       Interval{-100, -90.17194984}},
      {{0, 0, 0}, {3, 3, 3}, Sample::kRuns, 0.05, std::nullopt},
      {{1, 5}, {3, 4}, Sample::kRuns, 0.05, std::nullopt},
  };
  for (const auto& test : kCases) {
    SCOPED_TRACE(testing::PrintToString(test.before));
    const Figures a = ComputeFigures(test.before);
    const Figures b = ComputeFigures(test.after);
    const auto result = TestMeans(a, b, test.sample);
    ASSERT_TRUE(result);
    const auto interval = ComputeInterval(a, b, *result, test.alpha);
    ASSERT_EQ(interval.has_value(), test.want.has_value());
    if (interval) {
      EXPECT_NEAR(interval->low, test.want->low, 1e-6);
      EXPECT_NEAR(interval->high, test.want->high, 1e-6);
    }
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

// The score of the best alignment of the rest of two lists, found by trying all
// of them: pairs, and pairs that are equal in `exact`.
std::pair<int, int> BestScore(std::span<const AlignedItem> before,
                              std::span<const AlignedItem> after) {
  if (before.empty() || after.empty()) {
    return {0, 0};
  }
  std::pair<int, int> best = std::max(BestScore(before.subspan(1), after),
                                      BestScore(before, after.subspan(1)));
  if (before[0].group == after[0].group) {
    auto [pairs, equal] = BestScore(before.subspan(1), after.subspan(1));
    equal += before[0].exact == after[0].exact ? 1 : 0;
    best = std::max(best, {pairs + 1, equal});
  }
  return best;
}

TEST(Alignment, IsTheBestOfAll) {
  std::mt19937 random(20);  // NOLINT: the same lists in every run
  const auto make_list = [&random] {
    std::vector<AlignedItem> list(random() % 7);
    for (AlignedItem& item : list) {
      item.exact = random() % 9;
      item.group = item.exact / 3;
    }
    return list;
  };
  for (int i = 0; i < 3000; ++i) {
    const std::vector<AlignedItem> before = make_list();
    const std::vector<AlignedItem> after = make_list();
    const auto pairs = AlignLists(before, after);
    ASSERT_TRUE(pairs);
    int equal = 0;
    for (std::size_t k = 0; k < pairs->size(); ++k) {
      const auto [l, r] = (*pairs)[k];
      EXPECT_EQ(before.at(l).group, after.at(r).group);
      equal += before[l].exact == after[r].exact ? 1 : 0;
      if (k > 0) {
        EXPECT_LT((*pairs)[k - 1].first, l);
        EXPECT_LT((*pairs)[k - 1].second, r);
      }
    }
    EXPECT_EQ(std::pair(static_cast<int>(pairs->size()), equal),
              BestScore(before, after));
  }
}

TEST(Alignment, IsLimited) {
  // Lists of which only the first and the last elements are equal.
  const auto make_list = [](std::size_t size, std::size_t first) {
    std::vector<AlignedItem> list(size, {1, 1});
    for (std::size_t i = 1; i + 1 < size; ++i) {
      list[i] = {first + i, first + i};
    }
    return list;
  };
  const auto pairs = AlignLists(make_list(5002, 10), make_list(5002, 10000));
  ASSERT_TRUE(pairs);
  EXPECT_EQ(*pairs, (std::vector<IndexPair>{{0, 0}, {5001, 5001}}));
  EXPECT_FALSE(AlignLists(make_list(5003, 10), make_list(5002, 10000)));
  // Long lists with other ids, all elements of which certainly are pairs.
  std::vector<AlignedItem> ids;
  std::vector<AlignedItem> other_ids;
  for (std::size_t i = 0; i < 20000; ++i) {
    ids.push_back({i, 2 * i});
    other_ids.push_back({i, 2 * i + 1});
  }
  const auto all = AlignLists(ids, other_ids);
  ASSERT_TRUE(all);
  EXPECT_EQ(all->size(), ids.size());
}

}  // namespace
}  // namespace lumo
