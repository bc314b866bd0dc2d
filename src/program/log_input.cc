#include "program/log_input.h"

#include <utility>

#include "log/log_file.h"
#include "model/printable.h"

namespace lumo {

std::optional<Log> LoadLog(const std::string& path, std::string* error) {
  LogFile file = ReadLogFile(path);
  const ProfilingLog* root = nullptr;
  if (!file.open_error.empty()) {
    *error = "cannot be opened: " + file.open_error;
  } else if (!file.read_error.empty()) {
    *error = "cannot be read whole: " + file.read_error;
  } else {
    root = VerifyLog(file.bytes, error);
  }
  if (root == nullptr) {
    *error = Printable(path) + ": " + *error;
    return std::nullopt;
  }
  return Log{path, std::move(file.bytes), root};
}

}  // namespace lumo
