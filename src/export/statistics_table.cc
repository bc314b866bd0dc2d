#include "export/statistics_table.h"

#include <span>
#include <string>

#include "model/figures.h"
#include "model/log_series.h"
#include "model/message_groups.h"
#include "text/escape.h"
#include "text/figure_text.h"

namespace lumo {
namespace {

void AppendFigures(std::span<const std::uint64_t> values, std::string* row) {
  const Figures figures = ComputeFigures(values);
  *row += std::to_string(figures.n);
  if (figures.n == 0) {
    *row += ",,,,,";
    return;
  }
  const Distribution distribution = ComputeDistribution(values);
  *row += ',';
  *row += ShortestText(figures.mean);
  *row += ',';
  if (figures.n > 1) {
    *row += ShortestText(figures.stdev);
  }
  *row += ',';
  *row += std::to_string(distribution.min);
  *row += ',';
  *row += ShortestText(distribution.median);
  *row += ',';
  *row += std::to_string(distribution.max);
}

}  // namespace

void WriteStatisticsColumns(std::ostream& stream) {
  stream << "log,kind,graph,level,parent,name,occurrence,unit,n,mean,stdev,min,"
            "median,max\n";
}

void WriteStatistics(std::ostream& stream, const InputLog& log,
                     const StatisticsOptions& options) {
  std::string path;
  AppendCsvField(log.log.path, &path);
  std::string row;
  for (const RunSeries& runs :
       CollectLogSeries(log.groups, options.with_parts)) {
    const std::string run_columns = path + ',' +
                                    std::string(RunKindText(runs.kind)) + ',' +
                                    std::to_string(runs.graph) + ',';
    for (const Series& series : runs.series) {
      if (!stream.good()) {
        return;
      }
      row = run_columns;
      row += LevelText(series.level);
      row += ',';
      if (series.parent) {
        AppendCsvField(runs.series[*series.parent].name, &row);
      }
      row += ',';
      AppendCsvField(series.name, &row);
      row += ',';
      row += std::to_string(series.occurrence);
      row += ',';
      row += series.unit;
      row += ',';
      AppendFigures(CountedValues(series.values, options.num_warmup), &row);
      row += '\n';
      stream.write(row.data(), static_cast<std::streamsize>(row.size()));
    }
  }
}

}  // namespace lumo
