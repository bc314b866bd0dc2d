#include "compare/compared_log.h"

#include <utility>

#include "text/escape.h"

namespace lumo {

std::optional<ComparedLog> MakeComparedLog(Log log, std::string* error) {
  MessageGroups groups = GroupMessages(*log.root);
  if (groups.inference_count == 0) {
    *error = Printable(log.path) + ": the log has no execute run";
    return std::nullopt;
  }
  if (!groups.graph_error.empty()) {
    *error = Printable(log.path) + ": " + groups.graph_error;
    return std::nullopt;
  }
  LogSeries series = CollectLogSeries(groups);
  return ComparedLog{std::move(log), std::move(groups), std::move(series)};
}

std::optional<ComparedLog> LoadComparedLog(const std::string& path,
                                           std::string* error) {
  std::optional<Log> log = LoadLog(path, error);
  return log ? MakeComparedLog(std::move(*log), error) : std::nullopt;
}

}  // namespace lumo
