// Logs at and over the limits, and a small log damaged at every bit.

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <ostream>
#include <sstream>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "compare/comparison.h"
#include "compare/comparison_text.h"
#include "compare/side.h"
#include "export/event_table.h"
#include "generated_log.h"
#include "log/log.h"
#include "model/log_series.h"
#include "model/message_groups.h"
#include "page/page_graphs.h"
#include "page/page_model.h"
#include "profiling_log_generated.h"
#include "run_viewer.h"

namespace lumo {
namespace {

using Bytes = std::vector<std::uint8_t>;

bool IsValid(const Bytes& log) {
  std::string error;
  return VerifyLog(log, &error) != nullptr;
}

TEST(Limits, EventsNest62LevelsDeep) {
  // The operation and the event that contains it are two of the levels.
  EXPECT_TRUE(IsValid(GenerateLog({.sub_events = 60, .is_nested = true})));
  EXPECT_FALSE(IsValid(GenerateLog({.sub_events = 61, .is_nested = true})));
}

TEST(Limits, EveryReferenceToATableCounts) {
  LogShape shape = {.is_shared = true};
  for (const std::int64_t tables : {1000000, 1000001}) {
    shape.operations += tables - CountTables(shape);
    EXPECT_EQ(IsValid(GenerateLog(shape)), tables == 1000000);
  }
}

TEST(Limits, ALogMayHaveMoreThan1GiB) {
  Bytes log = GenerateLog({});
  log.resize((std::size_t{1} << 30U) + 8);
  EXPECT_TRUE(IsValid(log));
}

// A log that only consists of an empty root table, which may be anywhere.
TEST(Limits, TheRootTableMayHaveAnyAlignedOffset) {
  const Bytes vtable_and_table = {4, 0, 4, 0, 4, 0, 0, 0};
  for (std::uint8_t offset = 8; offset < 100; ++offset) {
    Bytes log(offset - 4U);
    log[0] = offset;
    log.insert(log.end(), vtable_and_table.begin(), vtable_and_table.end());
    EXPECT_EQ(IsValid(log), offset % 4 == 0) << "offset " << int{offset};
  }
}

// Each run is listed, and each event of a table has its own number and that of
// its parent, also when the numbers need more than 16 bits.
TEST(Limits, AllRunsAndEventsAreListed) {
  const LogShape shape = {.executes = 22000, .events = 1};
  const Bytes log = GenerateLog(shape);
  std::istringstream report(RunViewer(log, 1, 1));
  std::int64_t runs = 0;
  for (std::string line; std::getline(report, line);) {
    runs += line == "        Graph index: 0" ? 1 : 0;
  }
  // One finalize run, and once in the graph statistics, the averages and the
  // top list.
  EXPECT_EQ(runs, shape.executes + 4);

  std::stringstream table;
  WriteEventTable(table, *GetProfilingLog(log.data()));
  std::string row;
  std::getline(table, row);
  std::int64_t number = 0;
  std::vector<std::string> last = {""};  // the last event of each level
  for (; std::getline(table, row); ++number) {
    std::istringstream fields(row);
    std::vector<std::string> texts;
    for (std::string text; std::getline(fields, text, ',');) {
      texts.push_back(text);
    }
    const std::size_t level = std::stoul(texts[8]);
    ASSERT_EQ(texts[6], std::to_string(number));
    ASSERT_EQ(texts[7], last[level]) << row;
    last.resize(level + 1);
    last.push_back(texts[6]);
  }
  EXPECT_GT(number, 65536);
}

// In a hash set of this size, all of these indices would share a bucket, and
// counting them would take minutes.
TEST(Limits, CollidingGraphIndicesAreCountedQuickly) {
  std::unordered_set<std::uint64_t> hash_set;
  for (std::uint64_t i = 0; i < 300000; ++i) {
    hash_set.insert(i);
  }
  const Bytes log = GenerateLog(
      {.graphs = 300000, .executes = 0, .graph_step = hash_set.bucket_count()});
  EXPECT_EQ(CountGraphs(GetProfilingLog(log.data())->messages()), 300000);
}

// The names of this log in a table are 20 GB.
TEST(Limits, AFailedWriteEndsTheText) {
  Log log = {
      "",
      GenerateLog({.operations = 20000, .zeros = 1000000, .is_shared = true}),
      nullptr};
  log.root = GetProfilingLog(log.bytes.data());
  const MessageGroups groups = GroupMessages(*log.root);
  Names names;
  std::vector<Side> sides(1);
  sides.front().logs.emplace_back("log");
  AddLog(0, CollectLogSeries(groups, true), &names, &sides.front());
  std::string error;
  const Side none;
  const auto comparison =
      CompareSides(sides.front(), none, 99.0, false, &error);
  ASSERT_TRUE(comparison) << error;
  std::ostream failed(nullptr);
  const std::clock_t start = std::clock();
  WriteEventTable(failed, *log.root);
  WriteComparisonRows(failed, *comparison);
#ifdef LUMO_HAS_PAGE
  const std::vector<std::vector<LogFacts>> facts = {
      {ReadFacts({std::move(log), groups})}};
  const Page page = MakePage(sides, facts, nullptr);
  EXPECT_NE(ExplainSize(page), "");
  WriteGraphs(failed, page);
#endif
  EXPECT_LT((std::clock() - start) / CLOCKS_PER_SEC, 5) << "seconds";
}

// A run ends with either a report or an error line.
void ExpectAnOutcome(const Bytes& log) {
  const std::string written = RunViewer(log, 2, 1);
  const bool rejected =
      written.find("[Profile Viewer] Error: ") != std::string::npos &&
      written.ends_with('\n');
  const bool reported =
      written.find("[PROFILER API VERSION] : ") != std::string::npos &&
      written.ends_with("\n\n");
  ASSERT_NE(rejected, reported) << written;
}

TEST(DamagedLog, GivesAReportOrAnError) {
  Bytes log;
  log = ReadLogFile(LUMO_CASE_LOGS "/every_kind/log.bin").bytes;
  ASSERT_NE(RunViewer(log, 2, 1).find("---Top 2 by"), std::string::npos);
  for (std::size_t length = 0; length < log.size(); ++length) {
    ASSERT_NO_FATAL_FAILURE(
        ExpectAnOutcome(Bytes(log.data(), log.data() + length)))
        << length << " bytes";
  }
  for (std::size_t bit = 0; bit < log.size() * 8; ++bit) {
    Bytes flipped = log;
    flipped[bit / 8] ^= static_cast<std::uint8_t>(1U << (bit % 8));
    ASSERT_NO_FATAL_FAILURE(ExpectAnOutcome(flipped)) << "bit " << bit;
  }
}

}  // namespace
}  // namespace lumo
