// One side of a comparison: the series of a log, or of several logs.

#ifndef LUMO_COMPARE_SIDE_H_
#define LUMO_COMPARE_SIDE_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "input/input_log.h"
#include "model/figures.h"
#include "model/log_series.h"

namespace lumo {

// The names of the series of a comparison, each stored once, so that equal
// names have equal addresses. They live as long as this set.
using Names = std::set<std::string, std::less<>>;

// The figures of a series in one of the logs of a side.
struct LogFigures {
  // The index of the log.
  std::size_t log;
  // Of the values after the warm-up, see CountedValues().
  Figures figures;
};

// A series of a side. Series of different logs are one series if they agree in
// kind, graph, level, unit, name and occurrence, and parts also in the series
// directly above them.
struct SideSeries {
  Level level;
  // Points into Names.
  std::string_view name;
  // See UnitText().
  std::string_view unit;
  // Of the series in its log, see Series.
  std::int32_t occurrence;
  // Whether another event or operation of the side differs only in its
  // occurrence, so that the name alone does not identify this one.
  bool is_repeated;
  // Of the first value.
  ProfileEventType type;
  // The logs that have the series, in their order.
  std::vector<LogFigures> logs = {};
  // The indices, in SideRuns::series, of the parts directly below it.
  std::vector<std::size_t> parts = {};
  // The values of an event or operation and their runs, see Series, if the side
  // has a single log and keeps them. Otherwise empty.
  std::vector<std::uint64_t> values = {};
  std::vector<std::int32_t> runs = {};
};

// The series of one kind of run of one graph.
struct SideRuns {
  // How many logs have such runs, and how many runs they have.
  std::int64_t log_count = 0;
  std::int64_t run_count = 0;
  // In the order of the first log that has them and of their positions there.
  std::vector<SideSeries> series;
  // The index of each series, by level, unit, name and occurrence, the texts by
  // their addresses, and by the index of the series directly above it if it is
  // a part, otherwise 0.
  std::map<
      std::tuple<Level, const char*, const char*, std::int32_t, std::size_t>,
      std::size_t>
      indices;
};

// Slow first runs of a graph in a log: the first counted values are above the
// median of all counted values by more than 5 percent, and by more than ten
// times their median absolute deviation, scaled to a standard deviation.
struct SlowStart {
  // The index of the log.
  std::size_t log;
  // How many values are slow, their mean, and the median of all counted values.
  std::int32_t count;
  double mean;
  double median;
};

struct Side {
  // The argument of the program, a log or a folder, and the logs that it stands
  // for.
  std::string path;
  std::vector<std::string> logs;
  // How many first values of each log the figures exclude, 0 or more.
  std::int32_t num_warmup = 1;
  // See SideSeries::values.
  bool keeps_values = true;
  // By kind and graph.
  std::map<std::pair<RunKind, std::int32_t>, SideRuns> runs = {};
  // In the order of the logs.
  std::vector<SlowStart> slow_starts = {};
};

// Adds the series of the log with this index to the side; a log with parts adds
// them, too. Logs must be added in their order, to a side that already has
// their paths; afterwards, they are not needed.
void AddLog(std::size_t log, std::vector<RunSeries> run_series, Names* names,
            Side* side);

// Called with each log. `side` is the index of its side.
using LogVisitor = std::function<void(std::size_t side, const InputLog& log)>;

// Returns a side for each of the paths: a log, or a folder that stands for the
// logs of FindLogs(). Logs are read one after the other. If there is a `visit`,
// parts are read, too, and sides with a single log keep their values. Shows the
// progress on a terminal if a path is a folder.
//
// Returns nothing, with a message that names a path in `error`, if FindLogs()
// or LoadInputLog() fails.
std::optional<std::vector<Side>> ReadSides(
    const std::vector<std::string>& paths, std::int32_t num_warmup,
    Names* names, const LogVisitor& visit, std::string* error);

// Returns the paths of the logs of all sides.
std::vector<std::string> AllLogs(const std::vector<Side>& sides);

}  // namespace lumo

#endif  // LUMO_COMPARE_SIDE_H_
