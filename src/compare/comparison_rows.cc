#include "compare/comparison_rows.h"

#include <optional>
#include <string>

#include "text/escape.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

// `series` is null for a side that does not have it.
void AppendFigures(const SideSeries* series, const Figures& figures,
                   std::string* row) {
  *row += series != nullptr ? std::to_string(figures.n) : "";
  *row += ',' + (figures.n > 0 ? ShortestText(figures.mean) : "");
  *row += ',' + (figures.n > 1 ? ShortestText(figures.stdev) : "") + ',';
}

void AppendNumber(const std::optional<double>& number, std::string* row) {
  *row += (number ? SignificantText(*number, 6) : "") + ',';
}

}  // namespace

void WriteComparisonRows(std::ostream& stream, const Comparison& comparison) {
  stream << "kind,graph,level,name,occurrence,unit,n_before,mean_before,"
            "stdev_before,n_after,mean_after,stdev_after,change_percent,"
            "p_adjusted,verdict,sample,change_low,change_high,name_after\n";
  std::string row;
  for (const Block& block : comparison.blocks) {
    for (const SeriesPair& pair : block.pairs) {
      if (!stream.good()) {
        return;
      }
      const SideSeries& series = SeriesOf(pair);
      row = RunKindText(block.kind);
      row += ',' + std::to_string(block.graph) + ',';
      row += LevelText(series.level);
      row += ',';
      AppendCsvField(series.name, &row);
      row += ',' + std::to_string(series.occurrence) + ',';
      row += series.unit;
      row += ',';
      AppendFigures(pair.before, pair.figures_before, &row);
      AppendFigures(pair.after, pair.figures_after, &row);
      AppendNumber(pair.change_percent, &row);
      AppendNumber(pair.p_adjusted, &row);
      row += VerdictText(pair.verdict);
      row += comparison.sample == Sample::kRuns ? ",runs," : ",logs,";
      const auto& interval = pair.interval;
      AppendNumber(interval ? std::optional(interval->low) : std::nullopt,
                   &row);
      AppendNumber(interval ? std::optional(interval->high) : std::nullopt,
                   &row);
      AppendCsvField(pair.after != nullptr ? pair.after->name : "", &row);
      row += '\n';
      stream << row;
    }
  }
}

}  // namespace lumo
