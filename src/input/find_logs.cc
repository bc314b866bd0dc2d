#include "input/find_logs.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

#include <sys/stat.h>

#include "text/escape.h"

namespace lumo {
namespace {

namespace fs = std::filesystem;

bool HasLogName(std::string_view name) {
  return name.ends_with(".bin") && !name.starts_with('.');
}

bool IsFolder(const struct stat& status) { return S_ISDIR(status.st_mode); }

// Appends the paths of everything below `folder` that has the name of a log.
// Returns false, with a message in `error`, if a folder cannot be read.
bool AppendNamed(const std::string& folder, std::vector<std::string>* paths,
                 std::string* error) {
  std::vector<std::string> subfolders;
  std::error_code failure;
  fs::directory_iterator entry(folder, failure);
  for (; !failure && entry != fs::directory_iterator();
       entry.increment(failure)) {
    const std::string path = entry->path();
    struct stat status = {};
    if (lstat(path.c_str(), &status) == 0 && IsFolder(status)) {
      subfolders.push_back(path);
    } else if (HasLogName(entry->path().filename().native())) {
      paths->push_back(path);
    }
  }
  if (failure) {
    *error = Printable(folder) + ": cannot be read: " + failure.message();
    return false;
  }
  return std::all_of(subfolders.begin(), subfolders.end(),
                     [&](const std::string& subfolder) {
                       return AppendNamed(subfolder, paths, error);
                     });
}

}  // namespace

std::optional<std::vector<std::string>> FindLogs(const std::string& path,
                                                 std::string* error) {
  struct stat status = {};
  if (stat(path.c_str(), &status) != 0 || !IsFolder(status)) {
    return std::vector<std::string>{path};
  }
  std::vector<std::string> named;
  if (!AppendNamed(path, &named, error)) {
    return std::nullopt;
  }
  std::sort(named.begin(), named.end());
  std::vector<std::string> logs;
  std::set<std::pair<dev_t, ino_t>> files;
  for (const std::string& log : named) {
    if (stat(log.c_str(), &status) != 0) {
      *error = Printable(log) + ": cannot be opened: " + std::strerror(errno);
      return std::nullopt;
    }
    if (IsFolder(status)) {
      continue;  // a symbolic link
    }
    if (!S_ISREG(status.st_mode)) {
      *error = Printable(log) + ": is not a regular file";
      return std::nullopt;
    }
    if (files.emplace(status.st_dev, status.st_ino).second) {
      logs.push_back(log);
    }
  }
  if (logs.empty()) {
    *error = Printable(path) + ": the folder has no logs (files named *.bin)";
    return std::nullopt;
  }
  return logs;
}

}  // namespace lumo
