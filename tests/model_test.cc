// Tables of cases for statistics, top lists and node ids.

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "model/event_fields.h"
#include "model/event_series.h"
#include "model/op_averages.h"
#include "model/run_statistics.h"

namespace lumo {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

// Whether both have the same value and sign, or both are NaN.
bool IsSame(float a, float b) {
  return std::isnan(a) ? std::isnan(b)
                       : a == b && std::signbit(a) == std::signbit(b);
}

TEST(RunStatistics, FollowTheOrderAndPrecisionOfFloats) {
  const float inf = std::numeric_limits<float>::infinity();
  const struct {
    std::vector<float> values;
    std::int32_t num_warmup;
    struct {
      float warmup_mean, mean, stdev;
    } want;
  } kCases[] = {
      {{10, 20, 30, 40}, 1, {10, 30, 10}},
      {{5, 7}, 1, {5, 7, 0}},
      {{5, 7}, 2, {6, 0, -0.0F}},
      {{5, 7}, 0, {0, 6, std::sqrt(2.0F)}},
      // A sum in single precision absorbs each 1; a wider or reordered sum
      // would not.
      {{16777216, 1, 1, 1}, 0, {0, 4194304, 8388608}},
      {{1, 1, 16777216}, 2, {1, 16777216, 0}},
      // Summed backwards or in double precision, the mean would be 4.9250002
      // and the deviation 2.8814058; the deviation also if only its division
      // were in double precision or a square and a sum were fused.
      {{6.8F, 3.8F, 7.7F, 1.4F}, 0, {0, 4.9249997F, 2.8814056F}},
      // Compilers that vectorize groups of four values fuse only the remaining
      // ones. If the last three were fused, the deviation would be 3.4936674.
      {{4.5F, 8.2F, 9.4F, 1.5F, 7.3F, 0.8F, 2.1F},
       0,
       {0, 4.8285708F, 3.4936678F}},
      {{3e38F, 3e38F, 1}, 0, {0, inf, inf}},
      {{inf, inf}, 0, {0, inf, kNaN}},
  };
  for (const auto& test : kCases) {
    // A longer first series, so that the statistics are not omitted.
    const std::vector<EventSeriesMap> series = {
        {}, {{{0, "a"}, {"us", {1, 1, 1}}}, {{1, "a"}, {"us", test.values}}}};
    std::vector<StatisticsMap> statistics;
    std::string error;
    ASSERT_TRUE(
        ComputeRunStatistics(series, test.num_warmup, &statistics, &error));
    ASSERT_EQ(statistics.size(), 2U);
    const RunStatistics got = statistics[1].at({1, "a"});
    SCOPED_TRACE(testing::PrintToString(test.values));
    EXPECT_TRUE(IsSame(got.warmup_mean, test.want.warmup_mean))
        << got.warmup_mean;
    EXPECT_TRUE(IsSame(got.mean, test.want.mean)) << got.mean;
    EXPECT_TRUE(IsSame(got.stdev, test.want.stdev)) << got.stdev;
  }
}

// Entries are named "a", "b", ... in the order of `percents`.
std::string Select(const std::vector<float>& percents, std::int32_t topK) {
  const std::string names = "abcdefghijklmnopqrstuvwxyz";
  std::vector<TopOpEntry> entries;
  entries.reserve(percents.size());
  for (const float percent : percents) {
    entries.push_back(
        {std::string_view(names).substr(entries.size(), 1), "", percent, 0});
  }
  std::string selected;
  for (const TopOpEntry& entry : SelectTopOps(entries, topK)) {
    selected += entry.name;
  }
  return selected;
}

TEST(TopOps, TiesFollowTheHeap) {
  const struct {
    std::vector<float> percents;
    std::int32_t topK;
    std::string want;
  } kCases[] = {
      {{12.5F, 25, 62.5F}, 2, "cb"},
      {{12.5F, 25, 62.5F}, 0, ""},
      {{25, 12.5F, 62.5F}, -1, "cab"},
      {{25, 12.5F, 62.5F}, std::numeric_limits<std::int32_t>::min(), "cab"},
      {{1, 1, 1, 1, 1, 1, 1, 1, 1}, 3, "cih"},
      {{1, 1, 1, 1}, -1, "cdba"},
      {{2, 1, 2, 1, 2}, 3, "cea"},
      {std::vector<float>(20, 1), -1, "cefgijklmnoqrstphdba"},
      {std::vector<float>(26, 1), 17, "cefgijklmnoqzyxwv"},
      {{kNaN, kNaN, kNaN}, 5, "cba"},
      {{kNaN, kNaN, kNaN}, 2, "cb"},
  };
  for (const auto& test : kCases) {
    EXPECT_EQ(Select(test.percents, test.topK), test.want)
        << testing::PrintToString(test.percents) << " K " << test.topK;
  }
}

TEST(NodeId, IsTheFirstRunOfDigitsAfterThePrefix) {
  const struct {
    std::string name;
    std::int32_t want;
  } kCases[] = {
      {"node_id_12_conv3", 12},
      {"node_id_x7", 7},
      {"node_id_-4", 4},
      {"node_id_2147483647", 2147483647},
      {"node_id_2147483648", -1},
      {"node_id_" + std::string(50, '0') + "9:op", 9},
      {"node_id_" + std::string(100000, '9'), -1},
      {std::string("node_id_\n\0\xff\x31", 12), 1},
      {"node_id", -1},
      {"node_id_abc", -1},
      {"Node_id_5", -1},
      {"xnode_id_5", -1},
      {"node_id_4_node_id_5", -1},
      {"node_id_node_id_5", -1},
      {"", -1},
  };
  for (const auto& test : kCases) {
    EXPECT_EQ(ParseNodeId(test.name), test.want) << test.name.substr(0, 40);
  }
}

}  // namespace
}  // namespace lumo
