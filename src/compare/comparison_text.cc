#include "compare/comparison_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "compare/figure_text.h"
#include "model/printable.h"

namespace lumo {
namespace {

// The digits of a percentage from the command line: as many as a double has.
constexpr int kAsGiven = 15;

bool IsDifferent(const SeriesPair& pair) {
  return pair.verdict == Verdict::kHigher || pair.verdict == Verdict::kLower;
}

// The cells of a line before the unit and the name, each right-aligned in its
// column.
constexpr std::size_t kColumns = 9;
using Cells = std::array<std::string, kColumns>;

void SetFigures(const std::optional<Figures>& figures, std::string* cells) {
  if (figures) {
    cells[0] = std::to_string(figures->n);
    if (figures->n > 0) {
      cells[1] = FixedText(figures->mean);
      cells[2] = FixedText(figures->stdev);
    }
  }
}

Cells MakeCells(const SeriesPair& pair) {
  Cells cells;
  SetFigures(pair.before, &cells[0]);
  SetFigures(pair.after, &cells[3]);
  if (pair.change_percent) {
    cells[6] = ChangeText(*pair.change_percent);
  }
  if (pair.p_adjusted) {
    cells[7] = SignificantText(*pair.p_adjusted, 2);
  }
  // "~" means that no difference is proven.
  cells[8] =
      pair.verdict == Verdict::kNoDifference ? "~" : VerdictWords(pair.verdict);
  return cells;
}

const Cells kHeadings = {"n",     "before", "stdev", "n",      "after",
                         "stdev", "change", "p",     "verdict"};

// The widths of the columns of one block.
struct Widths {
  std::array<std::size_t, kColumns> cells;
  std::size_t unit;
};

Widths MeasureColumns(const ComparedRuns& runs) {
  Widths widths = {{}, 4};
  for (std::size_t column = 0; column < kColumns; ++column) {
    widths.cells[column] = kHeadings[column].size();
  }
  for (const SeriesPair& pair : runs.pairs) {
    const Cells cells = MakeCells(pair);
    for (std::size_t column = 0; column < kColumns; ++column) {
      widths.cells[column] =
          std::max(widths.cells[column], cells[column].size());
    }
    widths.unit = std::max(widths.unit, pair.unit.size());
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
  return pair.level == Level::kEvent ? "Top-level events"
                                     : "Operations, largest change first";
}

// The terminal's escape sequence for bold and red or green.
std::string_view ColorOf(Verdict verdict) {
  return verdict == Verdict::kHigher ? "\033[1;31m" : "\033[1;32m";
}

std::string CountRuns(std::int32_t runs) {
  return std::to_string(runs) + (runs == 1 ? " run" : " runs");
}

void WriteBlock(std::ostream& stream, const ComparedRuns& runs,
                const ComparisonSettings& settings, bool in_color) {
  stream << "Graph " << runs.graph << ", " << RunKindText(runs.kind)
         << " runs, warm-up " << settings.num_warmup
         << "\n  before: " << Printable(settings.before) << ", "
         << CountRuns(runs.runs_before)
         << "\n  after:  " << Printable(settings.after) << ", "
         << CountRuns(runs.runs_after) << "\n\n";
  const Widths widths = MeasureColumns(runs);
  stream << JoinCells(widths, kHeadings, "unit", "name") << '\n';
  std::string_view section;
  for (const SeriesPair& pair : runs.pairs) {
    if (!stream.good()) {
      return;
    }
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

std::string CountsText(const std::vector<ComparedRuns>& all_runs,
                       double confidence) {
  std::size_t compared = 0;
  std::size_t tested = 0;
  std::size_t different = 0;
  for (const ComparedRuns& runs : all_runs) {
    for (const SeriesPair& pair : runs.pairs) {
      compared += pair.before && pair.after ? 1U : 0U;
      tested += pair.p_adjusted ? 1U : 0U;
      different += IsDifferent(pair) ? 1U : 0U;
    }
  }
  return std::to_string(compared) + (compared == 1 ? " pair" : " pairs") +
         " compared, " + std::to_string(different) +
         (different == 1 ? " differs (" : " differ (") +
         std::to_string(tested) + " tested, " +
         SignificantText(confidence, kAsGiven) + "% confidence)";
}

void WriteComparison(std::ostream& stream,
                     const std::vector<ComparedRuns>& all_runs,
                     const ComparisonSettings& settings, bool in_color) {
  for (const ComparedRuns& runs : all_runs) {
    if (!stream.good()) {
      return;
    }
    WriteBlock(stream, runs, settings, in_color);
  }
  stream << CountsText(all_runs, settings.confidence) << '\n';
}

std::optional<std::string> DescribeWorstSlowdown(
    const std::vector<ComparedRuns>& all_runs, double max_slowdown) {
  double worst = max_slowdown;
  std::optional<std::string> text;
  for (const ComparedRuns& runs : all_runs) {
    for (const SeriesPair& pair : runs.pairs) {
      const double rise = pair.change_percent.value_or(HUGE_VAL);
      if (pair.verdict == Verdict::kHigher && rise > worst &&
          (pair.unit == "us" || pair.unit == "cycles")) {
        worst = rise;
        text =
            "graph " + std::to_string(runs.graph) + ", " +
            std::string(RunKindText(runs.kind)) + ", " +
            std::string(LevelText(pair.level)) + " [" + LabelOf(pair) + "]: " +
            (pair.change_percent ? FixedText(rise) + "% higher" : "up from 0") +
            ", more than " + SignificantText(max_slowdown, kAsGiven) + "%";
      }
    }
  }
  return text;
}

}  // namespace lumo
