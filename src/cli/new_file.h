// A file that is written beside another one, which it then replaces.

#ifndef LUMO_CLI_NEW_FILE_H_
#define LUMO_CLI_NEW_FILE_H_

#include <filesystem>
#include <optional>
#include <string>

namespace lumo {

// Returns the path that the symbolic links at `path` lead to; there may be no
// file yet. Returns nothing, with the reason in errno, if there is no such
// folder, or if one of the links is the kernel's name of an open file, such as
// /proc/self/fd/1.
std::optional<std::filesystem::path> FollowLinks(std::filesystem::path path);

struct NewFile {
  // Open for reading and writing. -1, with the reason in errno, if no file
  // could be created. The caller closes it.
  int fd = -1;
  // The path of the file; empty while it has no name.
  std::string name;
};

// Creates an empty file in `folder`. If the file system supports it, the file
// has no name, so that it disappears if the process is killed.
NewFile MakeNewFile(const std::filesystem::path& folder);

// Gives `newer` the mode of `older` and, if the system allows it, its owner.
void CopyOwnerAndMode(int older, int newer);

// Renames the file to `target`, in the same folder. Returns false, with the
// reason in errno, if it cannot be given a name or renamed.
bool RenameNewFile(NewFile* file, const std::filesystem::path& target);

// Removes the name of a file that has not been renamed, if it has one.
void DiscardNewFile(const NewFile& file);

}  // namespace lumo

#endif  // LUMO_CLI_NEW_FILE_H_
