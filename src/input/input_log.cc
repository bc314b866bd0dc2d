#include "input/input_log.h"

#include <utility>

#include "text/escape.h"

namespace lumo {

std::optional<InputLog> LoadInputLog(const std::string& path,
                                     std::string* error) {
  std::optional<Log> log = LoadLog(path, error);
  if (!log) {
    return std::nullopt;
  }
  MessageGroups groups = GroupMessages(*log->root);
  const std::string problem = groups.inference_count == 0
                                  ? "the log has no execute run"
                                  : groups.graph_error;
  if (!problem.empty()) {
    *error = Printable(path) + ": " + problem;
    return std::nullopt;
  }
  return InputLog{std::move(*log), std::move(groups)};
}

}  // namespace lumo
