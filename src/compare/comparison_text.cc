#include "compare/comparison_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>

#include "model/event_fields.h"
#include "text/escape.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

// The cells of a line before the name, each right-aligned in its column, but
// the unit, the last one, left-aligned.
constexpr std::size_t kColumns = 11;
using Cells = std::array<std::string, kColumns>;
using Widths = std::array<std::size_t, kColumns>;

Cells MakeHeadings() {
  return {"n",      "before",   "stdev", "n",       "after", "stdev",
          "change", "interval", "p",     "verdict", "unit"};
}

Cells MakeCells(const SeriesPair& pair) {
  const auto count = [](const PairSide& side) {
    return side.series != nullptr ? std::to_string(side.figures.n) : "";
  };
  const auto mean = [](const PairSide& side) {
    return side.figures.n > 0 ? FixedText(side.figures.mean) : "";
  };
  // In percent of the mean.
  const auto deviation = [](const PairSide& side) {
    const Figures& all = side.figures;
    return all.n > 1 && all.mean != 0.0
               ? FixedText(100.0 * all.stdev / all.mean, 1) + "%"
               : "";
  };
  return {
      count(pair.before), mean(pair.before), deviation(pair.before),
      count(pair.after), mean(pair.after), deviation(pair.after),
      pair.change_percent ? ChangeText(*pair.change_percent) : "",
      pair.interval ? IntervalText(*pair.interval) : "",
      pair.p_adjusted ? SignificantText(*pair.p_adjusted, 2) : "",
      // "~" means that no difference is proven.
      pair.verdict == Verdict::kNoDifference ? "~" : VerdictWords(pair.verdict),
      std::string(SeriesOf(pair).unit)};
}

Widths MeasureColumns(const Block& block) {
  Widths widths = {};
  const auto widen = [&widths](const Cells& cells) {
    for (std::size_t column = 0; column < kColumns; ++column) {
      widths[column] = std::max(widths[column], cells[column].size());
    }
  };
  widen(MakeHeadings());
  for (const SeriesPair& pair : block.pairs) {
    widen(MakeCells(pair));
  }
  return widths;
}

// "  5  88648.00  0.9%  10  96854.80  0.4%  +9.26%  ...  higher  cycles | name"
std::string JoinCells(const Widths& widths, const Cells& cells,
                      std::string_view name) {
  std::string line;
  for (std::size_t column = 0; column < kColumns; ++column) {
    const std::string blanks(widths[column] - cells[column].size(), ' ');
    const bool is_last = column + 1 == kColumns;
    line += "  " + (is_last ? cells[column] + blanks : blanks + cells[column]);
  }
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
// folder.
std::string DescribeSide(const Side& side, const SideRuns& runs) {
  const bool is_folder = side.logs.front() != side.path;
  return Printable(side.path) + ", " +
         (is_folder ? CountText(runs.log_count, "log") + ", " : "") +
         CountText(runs.run_count, "run");
}

void WriteBlock(std::ostream& stream, const Block& block,
                const Comparison& comparison, bool in_color) {
  stream << "Graph " << block.graph << ", " << RunKindText(block.kind)
         << " runs, warm-up " << comparison.before->num_warmup
         << "\n  before: " << DescribeSide(*comparison.before, block.before)
         << "\n  after:  " << DescribeSide(*comparison.after, block.after)
         << "\n\n";
  const Widths widths = MeasureColumns(block);
  stream << JoinCells(widths, MakeHeadings(), "name") << '\n';
  std::string_view section;
  for (const SeriesPair& pair : block.pairs) {
    if (!stream.good()) {
      return;
    }
    if (SectionOf(pair) != section) {
      section = SectionOf(pair);
      stream << section << ":\n";
    }
    const bool has_color = in_color && IsDifferent(pair);
    stream << (has_color ? ColorOf(pair.verdict) : "")
           << JoinCells(widths, MakeCells(pair), LabelOf(pair))
           << (has_color ? "\033[0m\n" : "\n");
  }
  stream << '\n';
}

// The number of values, the mean and the deviation as fields of a row.
std::string FigureFields(const PairSide& side) {
  const auto& [n, mean, stdev] = side.figures;
  return (side.series != nullptr ? std::to_string(n) : "") + ',' +
         (n > 0 ? ShortestText(mean) : "") + ',' +
         (n > 1 ? ShortestText(stdev) : "");
}

std::string NumberField(std::optional<double> number) {
  return number ? SignificantText(*number, 6) : "";
}

std::string NameField(const SideSeries* series) {
  std::string field;
  AppendCsvField(series != nullptr ? series->name : "", &field);
  return field;
}

}  // namespace

std::string TotalsText(const Comparison& comparison) {
  std::map<Verdict, std::int64_t> counts = CountVerdicts(comparison);
  const std::int64_t different =
      counts[Verdict::kHigher] + counts[Verdict::kLower];
  const std::int64_t tested = different + counts[Verdict::kNoDifference];
  return CountText(tested + counts[Verdict::kNoTest], "pair") + " compared, " +
         std::to_string(different) +
         (different == 1 ? " differs (" : " differ (") +
         std::to_string(tested) + " tested, " +
         ShortestText(comparison.confidence) + "% confidence), " +
         std::to_string(counts[Verdict::kOnlyBefore]) +
         " series only before, " + std::to_string(counts[Verdict::kOnlyAfter]) +
         " only after";
}

std::string LabelOf(const SeriesPair& pair) {
  const SideSeries& series = SeriesOf(pair);
  std::string label = Printable(series.name);
  if (IsOnBothSides(pair) &&
      pair.before.series->name != pair.after.series->name) {
    const std::string_view before = pair.before.series->name;
    const std::string_view after = pair.after.series->name;
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
                     bool in_color) {
  stream << TotalsText(comparison) << "\n\n";
  for (const Block& block : comparison.blocks) {
    WriteBlock(stream, block, comparison, in_color);
  }
  for (const std::string& note : MakeNotes(comparison)) {
    stream << "Note: " << note << '\n';
  }
}

void WriteComparisonRows(std::ostream& stream, const Comparison& comparison) {
  stream << "kind,graph,level,name,occurrence,unit,n_before,mean_before,"
            "stdev_before,n_after,mean_after,stdev_after,change_percent,"
            "p_adjusted,verdict,sample,change_low,change_high,name_after\n";
  for (const Block& block : comparison.blocks) {
    for (const SeriesPair& pair : block.pairs) {
      if (!stream.good()) {
        return;
      }
      const SideSeries& series = SeriesOf(pair);
      const std::optional<Interval>& interval = pair.interval;
      stream << RunKindText(block.kind) << ',' << block.graph << ','
             << LevelText(series.level) << ',' << NameField(&series) << ','
             << series.occurrence << ',' << series.unit << ','
             << FigureFields(pair.before) << ',' << FigureFields(pair.after)
             << ',' << NumberField(pair.change_percent) << ','
             << NumberField(pair.p_adjusted) << ',' << VerdictText(pair.verdict)
             << (comparison.sample == Sample::kRuns ? ",runs," : ",logs,")
             << (interval ? NumberField(interval->low) : "") << ','
             << (interval ? NumberField(interval->high) : "") << ','
             << NameField(pair.after.series) << '\n';
    }
  }
}

}  // namespace lumo
