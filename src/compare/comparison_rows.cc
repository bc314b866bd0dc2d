#include "compare/comparison_rows.h"

#include <optional>
#include <string>

#include "text/escape.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

void AppendFigures(const std::optional<SeriesFigures>& figures,
                   std::string* row) {
  const bool has_mean = HasMean(figures);
  *row += figures ? std::to_string(figures->n) : "";
  *row += ',' + (has_mean ? ShortestText(figures->mean) : "");
  *row += ',' + (has_mean ? ShortestText(figures->stdev) : "") + ',';
}

}  // namespace

void WriteComparisonRows(std::ostream& stream,
                         const std::vector<ComparedRuns>& all_runs) {
  stream << "kind,graph,level,name,occurrence,unit,n_before,mean_before,"
            "stdev_before,n_after,mean_after,stdev_after,change_percent,"
            "p_adjusted,verdict\n";
  std::string row;
  for (const ComparedRuns& runs : all_runs) {
    for (const SeriesPair& pair : runs.pairs) {
      if (!stream.good()) {
        return;
      }
      row = RunKindText(runs.kind);
      row += ',' + std::to_string(runs.graph) + ',';
      row += LevelText(pair.level);
      row += ',';
      AppendCsvField(pair.name, &row);
      row += ',' + std::to_string(pair.occurrence) + ',';
      row += pair.unit;
      row += ',';
      AppendFigures(pair.before, &row);
      AppendFigures(pair.after, &row);
      row +=
          pair.change_percent ? SignificantText(*pair.change_percent, 6) : "";
      row += ',';
      row += pair.p_adjusted ? SignificantText(*pair.p_adjusted, 6) : "";
      row += ',';
      row += VerdictText(pair.verdict);
      row += '\n';
      stream << row;
    }
  }
}

}  // namespace lumo
