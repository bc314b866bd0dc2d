#include "compare/gate.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <string_view>
#include <utility>

#include "compare/comparison_text.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

struct Slowdown {
  const Block* block;
  const SeriesPair* pair;
  // The change in percent; infinite if the mean before is 0.
  double rise;
};

bool IsTime(const SeriesPair& pair) {
  const std::string_view unit = SeriesOf(pair).unit;
  return unit == "us" || unit == "cycles";
}

// Returns the slowdowns above the limit, largest first.
std::vector<Slowdown> FindSlowdowns(const Comparison& comparison,
                                    double max_slowdown) {
  std::vector<Slowdown> slowdowns;
  for (const Block& block : comparison.blocks) {
    for (const SeriesPair& pair : block.pairs) {
      const double rise =
          pair.change_percent.value_or(std::numeric_limits<double>::infinity());
      if (pair.verdict == Verdict::kHigher && IsTime(pair) &&
          rise > max_slowdown) {
        slowdowns.push_back({&block, &pair, rise});
      }
    }
  }
  std::ranges::stable_sort(slowdowns, std::greater(), &Slowdown::rise);
  return slowdowns;
}

std::string DescribeSlowdown(const Slowdown& slowdown, double max_slowdown) {
  const auto& [block, pair, rise] = slowdown;
  std::string line = "graph " + std::to_string(block->graph) + ", ";
  line += RunKindText(block->kind);
  line += ", ";
  line += LevelText(SeriesOf(*pair).level);
  line += " [" + LabelOf(*pair) + "]: ";
  line += pair->change_percent ? FixedText(rise) + "% higher" : "up from 0";
  if (pair->interval) {
    line += " (" + IntervalText(*pair->interval) + ")";
  }
  return line + ", more than " + ShortestText(max_slowdown) + "%";
}

// Returns why no event or operation of the execute runs in us or cycles was
// tested, or an empty text if one was.
std::string ExplainNoTest(const Comparison& comparison) {
  const SeriesPair* largest = nullptr;  // the pair that lacks the fewest values
  const auto size_of = [](const SeriesPair& pair) {
    const auto [fewer, more] =
        std::minmax(pair.before.figures.n, pair.after.figures.n);
    return std::pair(fewer, more);
  };
  for (const Block& block : comparison.blocks) {
    for (const SeriesPair& pair : block.pairs) {
      if (block.kind != RunKind::kExecute || !IsTime(pair) ||
          !IsOnBothSides(pair)) {
        continue;
      }
      if (pair.p_adjusted) {
        return "";
      }
      if (largest == nullptr || size_of(pair) > size_of(*largest)) {
        largest = &pair;
      }
    }
  }
  const std::string nothing = "nothing was tested for --max_slowdown: ";
  if (largest == nullptr) {
    return nothing +
           "no event or operation of the execute runs in us or cycles has the "
           "same graph, unit and name on both sides";
  }
  return nothing +
         (comparison.sample == Sample::kRuns
              ? "each side needs 2 runs after the warm-up"
              : "each side needs a log with runs after the warm-up, and both "
                "together need 3") +
         ", but there are " + std::to_string(largest->before.figures.n) +
         " before and " + std::to_string(largest->after.figures.n) + " after";
}

// Returns how many operations are on one side only, or an empty text if there
// are none.
std::string CountUnpaired(const Comparison& comparison) {
  std::map<Verdict, std::int64_t> counts =
      CountVerdicts(comparison, Level::kOperation);
  const std::int64_t before = counts[Verdict::kOnlyBefore];
  const std::int64_t after = counts[Verdict::kOnlyAfter];
  return before + after == 0 ? ""
                             : "not compared: operations on one side only, " +
                                   std::to_string(before) + " before and " +
                                   std::to_string(after) + " after";
}

}  // namespace

GateResult CheckSlowdowns(const Comparison& comparison, double max_slowdown) {
  constexpr std::size_t kMaxLines = 20;
  GateResult result;
  const std::vector<Slowdown> slowdowns =
      FindSlowdowns(comparison, max_slowdown);
  result.is_exceeded = !slowdowns.empty();
  for (std::size_t i = 0; i < std::min(kMaxLines, slowdowns.size()); ++i) {
    result.lines.push_back(DescribeSlowdown(slowdowns[i], max_slowdown));
  }
  if (slowdowns.size() > kMaxLines) {
    result.lines.push_back(
        "and " + std::to_string(slowdowns.size() - kMaxLines) + " more");
  }
  const std::string reason = ExplainNoTest(comparison);
  result.is_tested = reason.empty();
  result.lines.push_back(CountUnpaired(comparison));
  result.lines.push_back(reason);
  std::erase(result.lines, "");
  return result;
}

}  // namespace lumo
