#include "compare/compared_log.h"

#include <utility>

#include "model/printable.h"

namespace lumo {

std::optional<ComparedLog> LoadComparedLog(const std::string& path,
                                           std::string* error) {
  std::optional<Log> log = LoadLog(path, error);
  if (!log) {
    return std::nullopt;
  }
  MessageGroups groups = GroupMessages(*log->root);
  if (groups.inference_count == 0) {
    *error = Printable(path) + ": the log has no execute run";
    return std::nullopt;
  }
  if (!groups.graph_error.empty()) {
    *error = Printable(path) + ": " + groups.graph_error;
    return std::nullopt;
  }
  LogSeries series = CollectLogSeries(groups);
  return ComparedLog{std::move(*log), std::move(groups), std::move(series)};
}

}  // namespace lumo
