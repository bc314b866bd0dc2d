#include "compare/gate.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

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
  std::stable_sort(
      slowdowns.begin(), slowdowns.end(),
      [](const Slowdown& a, const Slowdown& b) { return a.rise > b.rise; });
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
  bool is_paired = false;
  std::int32_t most_before = 0;
  std::int32_t most_after = 0;
  for (const Block& block : comparison.blocks) {
    for (const SeriesPair& pair : block.pairs) {
      if (block.kind != RunKind::kExecute || !IsTime(pair) ||
          pair.before == nullptr || pair.after == nullptr) {
        continue;
      }
      if (pair.p_adjusted) {
        return "";
      }
      is_paired = true;
      most_before = std::max(most_before, pair.figures_before.n);
      most_after = std::max(most_after, pair.figures_after.n);
    }
  }
  const std::string nothing = "nothing was tested for --max_slowdown: ";
  if (!is_paired) {
    return nothing +
           "no event or operation of the execute runs in us or cycles has the "
           "same name on both sides";
  }
  const bool are_runs = comparison.sample == Sample::kRuns;
  return nothing + (are_runs ? "runs" : "logs with runs") +
         " after the warm-up: " + std::to_string(most_before) + " before, " +
         std::to_string(most_after) + " after; each side needs " +
         (are_runs ? "2" : "1, and both together 3");
}

// Returns how many operations are on one side only, or an empty text if there
// are none.
std::string CountUnpaired(const Comparison& comparison) {
  std::int64_t before = 0;
  std::int64_t after = 0;
  for (const Block& block : comparison.blocks) {
    for (const SeriesPair& pair : block.pairs) {
      if (SeriesOf(pair).level == Level::kOperation) {
        before += pair.verdict == Verdict::kOnlyBefore ? 1 : 0;
        after += pair.verdict == Verdict::kOnlyAfter ? 1 : 0;
      }
    }
  }
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
