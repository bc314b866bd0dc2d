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

// Appends everything below `folder` that has the name of a log, and the folders
// that cannot be read.
void AppendNamed(const std::string& folder, std::vector<FoundLog>* found) {
  std::vector<std::string> subfolders;
  std::error_code failure;
  fs::directory_iterator entry(folder, failure);
  for (; !failure && entry != fs::directory_iterator();
       entry.increment(failure)) {
    const std::string path = entry->path();
    struct stat status = {};
    if (lstat(path.c_str(), &status) != 0) {
      if (errno != ENOENT) {  // otherwise it was removed in the meantime
        // It may be a folder with logs, under a path that is too long.
        found->push_back({path, Printable(path) + ": cannot be read: " +
                                    std::strerror(errno)});
      }
    } else if (IsFolder(status)) {
      subfolders.push_back(path);
    } else if (HasLogName(entry->path().filename().native())) {
      found->push_back({path, ""});
    }
  }
  if (failure) {
    found->push_back(
        {folder, Printable(folder) + ": cannot be read: " + failure.message()});
  }
  for (const std::string& subfolder : subfolders) {
    AppendNamed(subfolder, found);
  }
}

// The devices and inodes of the logs found so far.
using Files = std::set<std::pair<dev_t, ino_t>>;

// Sets the error of something with the name of a log, if it is none. Returns
// false for a symbolic link to a folder and for another name of a log in
// `files`, to which it adds the log.
bool IsListed(FoundLog* log, Files* files) {
  struct stat status = {};
  if (!log->error.empty()) {
    return true;
  }
  if (stat(log->path.c_str(), &status) != 0) {
    log->error =
        Printable(log->path) + ": cannot be opened: " + std::strerror(errno);
    return true;
  }
  if (S_ISREG(status.st_mode)) {
    return files->emplace(status.st_dev, status.st_ino).second;
  }
  log->error = Printable(log->path) + ": is not a regular file";
  return !IsFolder(status);
}

}  // namespace

std::vector<FoundLog> FindEachLog(const std::string& path) {
  struct stat status = {};
  if (stat(path.c_str(), &status) != 0 || !IsFolder(status)) {
    return {{path, ""}};
  }
  std::vector<FoundLog> named;
  AppendNamed(path, &named);
  std::sort(
      named.begin(), named.end(),
      [](const FoundLog& a, const FoundLog& b) { return a.path < b.path; });
  std::vector<FoundLog> found;
  Files files;
  for (FoundLog& log : named) {
    if (IsListed(&log, &files)) {
      found.push_back(std::move(log));
    }
  }
  if (found.empty()) {
    found.push_back({path, Printable(path) + ": the folder has no logs (files "
                                             "named *.bin)"});
  }
  return found;
}

std::optional<std::vector<std::string>> FindLogs(const std::string& path,
                                                 std::string* error) {
  std::vector<std::string> logs;
  for (FoundLog& log : FindEachLog(path)) {
    if (!log.error.empty()) {
      *error = std::move(log.error);
      return std::nullopt;
    }
    logs.push_back(std::move(log.path));
  }
  return logs;
}

}  // namespace lumo
