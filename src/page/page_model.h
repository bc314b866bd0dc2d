// The content of a page: the series of one or two sides, as tables.

#ifndef LUMO_PAGE_PAGE_MODEL_H_
#define LUMO_PAGE_PAGE_MODEL_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "compare/comparison.h"
#include "compare/side.h"
#include "input/input_log.h"

namespace lumo {

// What a log says about itself.
struct LogFacts {
  // The size of the log in bytes.
  std::uint64_t size;
  // See PlainText().
  std::string date;
  // The lines of the list of all in its order, see WriteHeading(), as HTML.
  std::vector<std::string> lines;
};

// Returns the facts of a log with an execute run.
LogFacts ReadFacts(const InputLog& log);

// Returns whether all elements of a list, which is not empty, are equal.
bool AreEqual(const auto& all) {
  return std::ranges::count(all, all.front()) == std::ssize(all);
}

struct Row {
  // One for each side.
  std::vector<PairSide> sides;
  // Null on a page of one side.
  const SeriesPair* pair;
  // See VerdictText(). Empty on a page of one side.
  std::string verdict;
  // On the first side that has it.
  const SideSeries* series;
  // What the row is sorted by: the mean of one side, or the absolute difference
  // of two, where the mean of a missing series is 0. -1 without a mean.
  double size;
  // The mean of `series` in percent of the sum of the means of its table in its
  // unit. Nothing without a mean, or if the sum is 0.
  std::optional<double> share;
  // From 0, in the order of the page.
  std::size_t number;
};

// The rows of a table that have the same unit.
struct UnitRows {
  // Of the means on each side.
  double sums[2] = {};
  double largest_size = 0.0;
};

struct Table {
  // Pairs that differ, then series of one side, then the other pairs.
  // Operations are sorted by their size, largest first; events are in the order
  // of the side.
  std::vector<Row> rows;
  // By the unit.
  std::map<std::string_view, UnitRows> units;
  // Whether the name of an operation begins with a node id.
  bool has_nodes = false;
};

struct Graph {
  // Any of them may be empty, but not all.
  Table operations;
  Table execute_events;
  Table finalize_events;
  // The time of a whole run: the first event in us whose name contains
  // kExecuteText, otherwise the first event. Of the finalize runs if the
  // execute runs have none.
  const Row* whole_run = nullptr;
};

// All data of a page. It refers to the sides and the comparison, and may be
// moved, but not copied.
struct Page {
  const std::vector<Side>& sides;
  // Of the logs of each side.
  const std::vector<std::vector<LogFacts>>& facts;
  // Null on a page of one side.
  const Comparison* comparison;
  // kRuns if each side has one log.
  Sample sample;
  // By number, without graphs that have no events.
  std::map<std::int32_t, Graph> graphs;
  std::size_t row_count;
};

// The names of two sides.
inline constexpr const char* kSideNames[] = {"Before", "After"};

// The names with squares in the colors of the sides in the chart, as HTML.
inline constexpr const char* kSideHeadings[] = {
    "<span class=\"key before\"></span>Before",
    "<span class=\"key after\"></span>After"};

// Returns the size of the "node_id_N:" that the name of an operation begins
// with, or 0. No real id needs more than 100 bytes.
std::size_t NodeIdSize(const SideSeries& series);

// Returns the page of a side, or of the two sides of a comparison.
Page MakePage(const std::vector<Side>& sides,
              const std::vector<std::vector<LogFacts>>& facts,
              const Comparison* comparison);

// Returns why a page would be too large for a browser, or an empty text.
std::string ExplainSize(const Page& page);

}  // namespace lumo

#endif  // LUMO_PAGE_PAGE_MODEL_H_
