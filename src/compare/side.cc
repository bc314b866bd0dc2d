#include "compare/side.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

#include "cli/progress.h"
#include "input/find_logs.h"

namespace lumo {
namespace {

// The stored names of a log, by the addresses of its own names: a small log can
// refer to a name of a megabyte a million times.
using KnownNames = std::map<const char*, const char*>;

std::string_view Intern(std::string_view name, KnownNames* known,
                        Names* names) {
  const auto [entry, is_new] = known->try_emplace(name.data(), nullptr);
  if (is_new) {
    entry->second = names->emplace(name).first->data();
  }
  return {entry->second, name.size()};
}

// Returns the index of the series of the side that corresponds to a series of a
// log, adding it if it is new. `parent` is the index of the series above a
// part, otherwise 0.
std::size_t FindOrAdd(const Series& series, std::string_view name,
                      std::size_t parent, SideRuns* runs) {
  const auto [entry, is_new] =
      runs->indices.try_emplace({series.level, series.unit.data(), name.data(),
                                 series.occurrence, parent},
                                runs->series.size());
  if (is_new) {
    if (series.level == Level::kPart) {
      runs->series[parent].parts.push_back(runs->series.size());
    }
    const bool is_repeated = series.occurrence > 0;
    runs->series.push_back({series.level, name, series.unit, series.occurrence,
                            is_repeated, series.type});
    if (series.level != Level::kPart && is_repeated) {
      const std::size_t first = runs->indices.at(
          {series.level, series.unit.data(), name.data(), 0, parent});
      runs->series[first].is_repeated = true;
    }
  }
  return entry->second;
}

// Returns the slow start of a graph with these counted values, if there is one.
std::optional<SlowStart> FindSlowStart(std::size_t log,
                                       std::span<const std::uint64_t> values) {
  if (values.empty()) {
    return std::nullopt;
  }
  const std::vector<double> numbers(values.begin(), values.end());
  const double median = Median(numbers);
  std::vector<double> deviations;
  deviations.reserve(numbers.size());
  for (const double number : numbers) {
    deviations.push_back(std::abs(number - median));
  }
  constexpr double kScale = 1.4826;  // to the deviation of normal values
  const double limit =
      std::max(1.05 * median, median + 10 * kScale * Median(deviations));
  const auto end = std::ranges::find_if(
      numbers, [limit](double number) { return number <= limit; });
  const auto count = static_cast<std::int32_t>(end - numbers.begin());
  if (count == 0) {
    return std::nullopt;
  }
  const double mean =
      ComputeFigures(values.first(static_cast<std::size_t>(count))).mean;
  return SlowStart{log, count, mean, median};
}

}  // namespace

void AddLog(std::size_t log, std::vector<RunSeries> run_series, Names* names,
            Side* side) {
  KnownNames known;
  for (RunSeries& runs : run_series) {
    SideRuns& side_runs = side->runs[{runs.kind, runs.graph}];
    ++side_runs.log_count;
    side_runs.run_count += runs.run_count;
    const auto timed =
        std::ranges::find_if(runs.series, [](const Series& series) {
          return series.level == Level::kEvent &&
                 IsRunTime(series.unit, series.name);
        });
    if (timed != runs.series.end()) {
      if (const auto start = FindSlowStart(
              log, CountedValues(timed->values, side->num_warmup))) {
        side->slow_starts.push_back(*start);
      }
    }
    std::vector<std::size_t> indices;  // in the side, of the series of the log
    indices.reserve(runs.series.size());
    for (Series& series : runs.series) {
      const bool is_part = series.level == Level::kPart;
      indices.push_back(FindOrAdd(series, Intern(series.name, &known, names),
                                  is_part ? indices[*series.parent] : 0,
                                  &side_runs));
      SideSeries& own = side_runs.series[indices.back()];
      own.logs.push_back({log, ComputeFigures(CountedValues(
                                   series.values, side->num_warmup))});
      if (side->keeps_values && side->logs.size() == 1 && !is_part) {
        own.values = std::move(series.values);
        own.runs = std::move(series.runs);
      }
    }
  }
}

std::optional<std::vector<Side>> ReadSides(
    const std::vector<std::string>& paths, std::int32_t num_warmup,
    Names* names, const LogVisitor& visit, std::string* error) {
  Progress progress;
  bool has_folder = false;
  std::vector<Side> sides;
  for (const std::string& path : paths) {
    std::optional<std::vector<std::string>> logs = FindLogs(path, error);
    if (!logs) {
      return std::nullopt;
    }
    has_folder |= logs->front() != path;
    progress.total += logs->size();
    sides.push_back({path, std::move(*logs), num_warmup, visit != nullptr});
  }
  progress.total = has_folder ? progress.total : 0;
  for (std::size_t side = 0; side < sides.size(); ++side) {
    for (std::size_t i = 0; i < sides[side].logs.size(); ++i) {
      const auto log = LoadInputLog(sides[side].logs[i], error);
      if (!log) {
        ClearProgress(&progress);
        return std::nullopt;
      }
      AddLog(i, CollectLogSeries(log->groups, visit != nullptr), names,
             &sides[side]);
      if (visit != nullptr) {
        visit(side, *log);
      }
      CountLog(&progress);
    }
  }
  ClearProgress(&progress);
  return sides;
}

std::vector<std::string> AllLogs(const std::vector<Side>& sides) {
  std::vector<std::string> logs;
  for (const Side& side : sides) {
    logs.insert(logs.end(), side.logs.begin(), side.logs.end());
  }
  return logs;
}

}  // namespace lumo
