#include "compare/comparison_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

#include "text/escape.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

// A percentage from the command line is written with all digits of a double.
constexpr int kAllDigits = std::numeric_limits<double>::digits10;

bool IsDifferent(const SeriesPair& pair) {
  return pair.verdict == Verdict::kHigher || pair.verdict == Verdict::kLower;
}

// The cells of the figures of one log: n, mean and deviation.
std::array<std::string, 3> FigureCells(
    const std::optional<SeriesFigures>& figures) {
  const bool has_mean = HasMean(figures);
  return {figures ? std::to_string(figures->n) : "",
          has_mean ? FixedText(figures->mean) : "",
          has_mean ? FixedText(figures->stdev) : ""};
}

// The cells of a line before the unit and the name, each right-aligned in its
// column.
constexpr std::size_t kColumns = 9;
using Cells = std::array<std::string, kColumns>;

Cells MakeHeadings() {
  return {"n",     "before", "stdev", "n",      "after",
          "stdev", "change", "p",     "verdict"};
}

Cells MakeCells(const SeriesPair& pair) {
  const auto [n_before, mean_before, stdev_before] = FigureCells(pair.before);
  const auto [n_after, mean_after, stdev_after] = FigureCells(pair.after);
  const std::string change =
      pair.change_percent ? ChangeText(*pair.change_percent) : "";
  const std::string p =
      pair.p_adjusted ? SignificantText(*pair.p_adjusted, 2) : "";
  // "~" means that no difference is proven.
  const std::string verdict =
      pair.verdict == Verdict::kNoDifference ? "~" : VerdictWords(pair.verdict);
  return {n_before, mean_before, stdev_before, n_after, mean_after, stdev_after,
          change,   p,           verdict};
}

// The widths of the columns of one block.
struct Widths {
  std::array<std::size_t, kColumns> cells;
  std::size_t unit;
};

Widths MeasureColumns(const ComparedRuns& runs) {
  Widths widths = {};
  const auto widen = [&widths](const Cells& cells, std::string_view unit) {
    for (std::size_t column = 0; column < kColumns; ++column) {
      widths.cells[column] =
          std::max(widths.cells[column], cells[column].size());
    }
    widths.unit = std::max(widths.unit, unit.size());
  };
  widen(MakeHeadings(), "unit");
  for (const SeriesPair& pair : runs.pairs) {
    widen(MakeCells(pair), pair.unit);
  }
  return widths;
}

// "  5  1949.60  7.57  10  1925.40  6.00  -1.24%  3e-05  lower  us     | name"
std::string JoinCells(const Widths& widths, const Cells& cells,
                      std::string_view unit, std::string_view name) {
  std::string line;
  for (std::size_t column = 0; column < kColumns; ++column) {
    line.append(2 + widths.cells[column] - cells[column].size(), ' ');
    line += cells[column];
  }
  line += "  ";
  line += unit;
  line.append(widths.unit - unit.size(), ' ');
  line += " | ";
  line += name;
  return line;
}

// Returns "name", or "name (occurrence 1)" where several series have the name.
std::string LabelOf(const SeriesPair& pair) {
  const std::string occurrence = std::to_string(pair.occurrence);
  return Printable(pair.name) +
         (pair.is_repeated ? " (occurrence " + occurrence + ")" : "");
}

// The heading that a pair is listed under.
std::string_view SectionOf(const SeriesPair& pair) {
  if (pair.verdict == Verdict::kOnlyBefore) {
    return "Only before";
  }
  if (pair.verdict == Verdict::kOnlyAfter) {
    return "Only after";
  }
  return pair.level == Level::kEvent
             ? "Top-level events"
             : "Operations, largest difference of means first";
}

// The terminal's escape sequence for bold and red or green.
std::string_view ColorOf(Verdict verdict) {
  return verdict == Verdict::kHigher ? "\033[1;31m" : "\033[1;32m";
}

void WriteBlock(std::ostream& stream, const ComparedRuns& runs,
                const ComparisonSettings& settings, bool in_color) {
  stream << "Graph " << runs.graph << ", " << RunKindText(runs.kind)
         << " runs, warm-up " << settings.num_warmup
         << "\n  before: " << Printable(settings.before) << ", "
         << CountText(runs.runs_before, "run")
         << "\n  after:  " << Printable(settings.after) << ", "
         << CountText(runs.runs_after, "run") << "\n\n";
  const Widths widths = MeasureColumns(runs);
  stream << JoinCells(widths, MakeHeadings(), "unit", "name") << '\n';
  std::string_view section;
  for (const SeriesPair& pair : runs.pairs) {
    if (SectionOf(pair) != section) {
      section = SectionOf(pair);
      stream << section << ":\n";
    }
    const std::string line =
        JoinCells(widths, MakeCells(pair), pair.unit, LabelOf(pair));
    if (in_color && IsDifferent(pair)) {
      stream << ColorOf(pair.verdict) << line << "\033[0m\n";
    } else {
      stream << line << '\n';
    }
  }
  stream << '\n';
}

}  // namespace

std::string TotalsText(const std::vector<ComparedRuns>& all_runs,
                       double confidence) {
  std::int64_t compared = 0;
  std::int64_t tested = 0;
  std::int64_t different = 0;
  for (const ComparedRuns& runs : all_runs) {
    for (const SeriesPair& pair : runs.pairs) {
      compared += pair.before && pair.after ? 1 : 0;
      tested += pair.p_adjusted ? 1 : 0;
      different += IsDifferent(pair) ? 1 : 0;
    }
  }
  return CountText(compared, "pair") + " compared, " +
         std::to_string(different) +
         (different == 1 ? " differs (" : " differ (") +
         std::to_string(tested) + " tested, " +
         SignificantText(confidence, kAllDigits) + "% confidence)";
}

void WriteComparison(std::ostream& stream,
                     const std::vector<ComparedRuns>& all_runs,
                     const ComparisonSettings& settings, bool in_color) {
  for (const ComparedRuns& runs : all_runs) {
    WriteBlock(stream, runs, settings, in_color);
  }
  stream << TotalsText(all_runs, settings.confidence) << '\n';
}

std::optional<std::string> DescribeWorstSlowdown(
    const std::vector<ComparedRuns>& all_runs, double max_slowdown) {
  const ComparedRuns* worst_runs = nullptr;
  const SeriesPair* worst = nullptr;
  double worst_rise = max_slowdown;
  for (const ComparedRuns& runs : all_runs) {
    for (const SeriesPair& pair : runs.pairs) {
      const double rise =
          pair.change_percent.value_or(std::numeric_limits<double>::infinity());
      if (pair.verdict == Verdict::kHigher && rise > worst_rise &&
          (pair.unit == "us" || pair.unit == "cycles")) {
        worst_runs = &runs;
        worst = &pair;
        worst_rise = rise;
      }
    }
  }
  if (worst == nullptr) {
    return std::nullopt;
  }
  return "graph " + std::to_string(worst_runs->graph) + ", " +
         std::string(RunKindText(worst_runs->kind)) + ", " +
         std::string(LevelText(worst->level)) + " [" + LabelOf(*worst) + "]: " +
         (worst->change_percent ? FixedText(worst_rise) + "% higher"
                                : "up from 0") +
         ", more than " + SignificantText(max_slowdown, kAllDigits) + "%";
}

}  // namespace lumo
