#include "compare/comparison_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "model/event_fields.h"
#include "text/escape.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

// The cells of a line before the unit and the name, each right-aligned in its
// column.
constexpr std::size_t kColumns = 10;
using Cells = std::array<std::string, kColumns>;

Cells MakeHeadings() {
  return {"n",     "before", "stdev",    "n", "after",
          "stdev", "change", "interval", "p", "verdict"};
}

// `series` is null for a side that does not have it.
std::string CountCell(const SideSeries* series, const Figures& figures) {
  return series != nullptr ? std::to_string(figures.n) : "";
}

std::string MeanCell(const Figures& figures) {
  return figures.n > 0 ? FixedText(figures.mean) : "";
}

// The deviation in percent of the mean.
std::string DeviationCell(const Figures& figures) {
  return figures.n > 1 && figures.mean != 0.0
             ? FixedText(100.0 * figures.stdev / figures.mean, 1) + "%"
             : "";
}

Cells MakeCells(const SeriesPair& pair) {
  return {CountCell(pair.before, pair.figures_before),
          MeanCell(pair.figures_before), DeviationCell(pair.figures_before),
          CountCell(pair.after, pair.figures_after),
          MeanCell(pair.figures_after), DeviationCell(pair.figures_after),
          pair.change_percent ? ChangeText(*pair.change_percent) : "",
          pair.interval ? IntervalText(*pair.interval) : "",
          pair.p_adjusted ? SignificantText(*pair.p_adjusted, 2) : "",
          // "~" means that no difference is proven.
          pair.verdict == Verdict::kNoDifference ? "~"
                                                 : VerdictWords(pair.verdict)};
}

// The widths of the columns of one block.
struct Widths {
  std::array<std::size_t, kColumns> cells;
  std::size_t unit;
};

Widths MeasureColumns(const Block& block) {
  Widths widths = {};
  const auto widen = [&widths](const Cells& cells, std::string_view unit) {
    for (std::size_t column = 0; column < kColumns; ++column) {
      widths.cells[column] =
          std::max(widths.cells[column], cells[column].size());
    }
    widths.unit = std::max(widths.unit, unit.size());
  };
  widen(MakeHeadings(), "unit");
  for (const SeriesPair& pair : block.pairs) {
    widen(MakeCells(pair), SeriesOf(pair).unit);
  }
  return widths;
}

// "  5  88648.00  0.9%  10  96854.80  0.4%  +9.26%  ...  higher  cycles | name"
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

// The heading that a pair is listed under.
std::string_view SectionOf(const SeriesPair& pair) {
  if (pair.verdict == Verdict::kOnlyBefore) {
    return "Only before";
  }
  if (pair.verdict == Verdict::kOnlyAfter) {
    return "Only after";
  }
  if (SeriesOf(pair).level == Level::kEvent) {
    return IsDifferent(pair) ? "Events that differ" : "Other events";
  }
  return IsDifferent(pair)
             ? "Operations that differ, largest difference of means first"
             : "Other operations, largest difference of means first";
}

// The terminal's escape sequence for bold and red or green.
std::string_view ColorOf(Verdict verdict) {
  return verdict == Verdict::kHigher ? "\033[1;31m" : "\033[1;32m";
}

// "base/, 5 logs, 105 runs", or without the number of logs if the side is not a
// folder. `runs` may be null.
std::string DescribeSide(const Side& side, const SideRuns* runs) {
  std::string text = Printable(side.path) + ", ";
  if (side.logs.front() != side.path) {
    text += CountText(runs != nullptr ? runs->log_count : 0, "log") + ", ";
  }
  return text + CountText(runs != nullptr ? runs->run_count : 0, "run");
}

void WriteBlock(std::ostream& stream, const Block& block,
                const ComparisonSettings& settings, bool in_color) {
  stream << "Graph " << block.graph << ", " << RunKindText(block.kind)
         << " runs, warm-up " << settings.num_warmup
         << "\n  before: " << DescribeSide(settings.before, block.before)
         << "\n  after:  " << DescribeSide(settings.after, block.after)
         << "\n\n";
  const Widths widths = MeasureColumns(block);
  stream << JoinCells(widths, MakeHeadings(), "unit", "name") << '\n';
  std::string_view section;
  for (const SeriesPair& pair : block.pairs) {
    if (!stream.good()) {
      return;
    }
    if (SectionOf(pair) != section) {
      section = SectionOf(pair);
      stream << section << ":\n";
    }
    const std::string line =
        JoinCells(widths, MakeCells(pair), SeriesOf(pair).unit, LabelOf(pair));
    if (in_color && IsDifferent(pair)) {
      stream << ColorOf(pair.verdict) << line << "\033[0m\n";
    } else {
      stream << line << '\n';
    }
  }
  stream << '\n';
}

}  // namespace

std::string TotalsText(const Comparison& comparison, double confidence) {
  std::int64_t compared = 0;
  std::int64_t tested = 0;
  std::int64_t different = 0;
  std::int64_t only_before = 0;
  std::int64_t only_after = 0;
  for (const Block& block : comparison.blocks) {
    for (const SeriesPair& pair : block.pairs) {
      only_before += pair.after == nullptr ? 1 : 0;
      only_after += pair.before == nullptr ? 1 : 0;
      tested += pair.p_adjusted ? 1 : 0;
      different += IsDifferent(pair) ? 1 : 0;
    }
    compared += static_cast<std::int64_t>(block.pairs.size());
  }
  compared -= only_before + only_after;
  return CountText(compared, "pair") + " compared, " +
         std::to_string(different) +
         (different == 1 ? " differs (" : " differ (") +
         std::to_string(tested) + " tested, " + ShortestText(confidence) +
         "% confidence), " + std::to_string(only_before) +
         " series only before, " + std::to_string(only_after) + " only after";
}

std::string LabelOf(const SeriesPair& pair) {
  const SideSeries& series = SeriesOf(pair);
  std::string label = Printable(series.name);
  if (pair.before != nullptr && pair.after != nullptr &&
      pair.before->name != pair.after->name) {
    const std::string_view before = pair.before->name;
    const std::string_view after = pair.after->name;
    const std::string_view bare = BareName(before);
    if (bare != before && BareName(after) != after) {
      constexpr std::string_view kPrefix = "node_id_";
      const std::size_t id_end = before.size() - bare.size() - 1;
      label = Printable(before.substr(0, id_end)) + "→" +
              Printable(after.substr(kPrefix.size()));
    } else {
      label += "→" + Printable(after);
    }
  }
  return pair.is_repeated
             ? label + " (occurrence " + std::to_string(series.occurrence) + ")"
             : label;
}

std::string IntervalText(const Interval& interval) {
  std::string low = ChangeText(interval.low);
  low.pop_back();  // the percent sign
  return low + ".." + ChangeText(interval.high);
}

void WriteComparison(std::ostream& stream, const Comparison& comparison,
                     const ComparisonSettings& settings, bool in_color) {
  stream << TotalsText(comparison, settings.confidence) << "\n\n";
  for (const Block& block : comparison.blocks) {
    WriteBlock(stream, block, settings, in_color);
  }
  for (const std::string& note : settings.notes) {
    stream << "Note: " << note << '\n';
  }
}

}  // namespace lumo
