#include "compare/read_sides.h"

#include <utility>

#include "cli/progress.h"
#include "input/find_logs.h"
#include "model/log_series.h"

namespace lumo {
namespace {

// Reads the logs of a side. Returns false, with a message in `error`, at the
// first one that cannot be read.
bool ReadLogs(std::size_t number, std::int32_t num_warmup, Names* names,
              const LogVisitor& visit, Progress* progress, Side* side,
              std::string* error) {
  for (std::size_t i = 0; i < side->logs.size(); ++i) {
    const std::optional<InputLog> log = LoadInputLog(side->logs[i], error);
    if (!log) {
      return false;
    }
    AddLog(i, CollectLogSeries(log->groups, visit != nullptr), num_warmup,
           names, side);
    if (visit != nullptr) {
      visit(number, *log);
    }
    CountLog(progress);
  }
  return true;
}

}  // namespace

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
    Side& side = sides.emplace_back();
    side.path = path;
    side.logs = std::move(*logs);
    side.keeps_values = visit != nullptr;
  }
  progress.total = has_folder ? progress.total : 0;
  for (std::size_t i = 0; i < sides.size(); ++i) {
    if (!ReadLogs(i, num_warmup, names, visit, &progress, &sides[i], error)) {
      ClearProgress(&progress);
      return std::nullopt;
    }
  }
  ClearProgress(&progress);
  return sides;
}

}  // namespace lumo
