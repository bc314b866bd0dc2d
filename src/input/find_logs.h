// The logs that an argument of a program stands for.

#ifndef LUMO_INPUT_FIND_LOGS_H_
#define LUMO_INPUT_FIND_LOGS_H_

#include <optional>
#include <string>
#include <vector>

namespace lumo {

struct FoundLog {
  std::string path;
  // Why this is not a log, as a message that names the path; empty if it is.
  std::string error;
};

// Returns the logs at `path`. If that is a folder, they are the files in it and
// its subfolders whose names end in ".bin" and do not begin with a dot, in the
// byte order of their paths. A file that is found twice, through symbolic or
// hard links, is listed once, under its first path; symbolic links to folders
// are ignored. Otherwise, returns only `path`, which need not exist.
//
// A folder that cannot be read or has no log, and something that has such a
// name but is not a regular file, has an entry with an error in its place.
std::vector<FoundLog> FindEachLog(const std::string& path);

// Returns the paths of FindEachLog(). Returns nothing, with the first error in
// `error`, if there is one.
std::optional<std::vector<std::string>> FindLogs(const std::string& path,
                                                 std::string* error);

}  // namespace lumo

#endif  // LUMO_INPUT_FIND_LOGS_H_
