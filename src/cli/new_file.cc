#include "cli/new_file.h"

#include <cerrno>
#include <cstdio>
#include <functional>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace lumo {
namespace {

namespace fs = std::filesystem;

// Calls `make` with one path in `folder` after the other until it succeeds or
// fails without EEXIST. Sets `name` to the path if it succeeded. Returns the
// last result, which is -1 after a failure.
int TryNames(const fs::path& folder, std::string* name,
             const std::function<int(const char*)>& make) {
  const std::string prefix = folder / (".lumo-" + std::to_string(getpid()));
  for (int number = 0;; ++number) {
    const std::string path = prefix + "-" + std::to_string(number);
    const int result = make(path.c_str());
    if (result != -1) {
      *name = path;
      return result;
    }
    if (errno != EEXIST) {
      return result;
    }
  }
}

// The kernel's name of an open file.
std::string NameOfOpenFile(int fd) {
  return "/proc/self/fd/" + std::to_string(fd);
}

}  // namespace

std::optional<fs::path> FollowLinks(fs::path path) {
  for (int links = 0; links < 40; ++links) {  // the limit of the kernel
    std::error_code error;
    const fs::path folder =
        fs::canonical(path.has_parent_path() ? path.parent_path() : ".", error);
    if (error || folder.native().starts_with("/proc/")) {
      errno = error ? error.value() : ENOENT;  // no files are created in /proc
      return std::nullopt;
    }
    path = folder / path.filename();
    const fs::path link = fs::read_symlink(path, error);
    if (error) {
      return path;
    }
    path = folder / link;  // which is `link` if that is absolute
  }
  errno = ELOOP;
  return std::nullopt;
}

NewFile MakeNewFile(const fs::path& folder) {
  constexpr mode_t kMode = 0666;  // before the umask
  NewFile file;
  file.fd = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, kMode);
  if (file.fd >= 0 && access(NameOfOpenFile(file.fd).c_str(), F_OK) == 0) {
    return file;
  }
  if (file.fd >= 0) {
    close(file.fd);  // without /proc, it cannot be given a name
  }
  file.fd = TryNames(folder, &file.name, [](const char* path) {
    return open(path, O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, kMode);
  });
  return file;
}

void CopyOwnerAndMode(int older, int newer) {
  struct stat status = {};
  fstat(older, &status);
  // The owner first, because changing it clears some bits of the mode.
  [[maybe_unused]] const int ignored =
      fchown(newer, status.st_uid, status.st_gid);
  fchmod(newer, status.st_mode & 07777U);
}

bool RenameNewFile(NewFile* file, const fs::path& target) {
  if (file->name.empty()) {
    const std::string open_name = NameOfOpenFile(file->fd);
    const auto link = [&open_name](const char* path) {
      return linkat(AT_FDCWD, open_name.c_str(), AT_FDCWD, path,
                    AT_SYMLINK_FOLLOW);
    };
    if (TryNames(target.parent_path(), &file->name, link) != 0) {
      return false;
    }
  }
  return rename(file->name.c_str(), target.c_str()) == 0;
}

void DiscardNewFile(const NewFile& file) {
  if (!file.name.empty()) {
    unlink(file.name.c_str());
  }
}

}  // namespace lumo
