// The logs that an argument of a program stands for.

#ifndef LUMO_INPUT_FIND_LOGS_H_
#define LUMO_INPUT_FIND_LOGS_H_

#include <optional>
#include <string>
#include <vector>

namespace lumo {

// Returns the paths of the logs at `path`. If that is a folder, they are the
// files in it and its subfolders whose names end in ".bin" and do not begin
// with a dot, in the byte order of their paths. A file that is found twice,
// through symbolic or hard links, is listed once, under its first path;
// symbolic links to folders are ignored. Otherwise, returns only `path`, which
// need not exist.
//
// Returns nothing, with a message that names the path in `error`, if a folder
// cannot be read or has no log, or if something that has such a name is not a
// regular file.
std::optional<std::vector<std::string>> FindLogs(const std::string& path,
                                                 std::string* error);

}  // namespace lumo

#endif  // LUMO_INPUT_FIND_LOGS_H_
