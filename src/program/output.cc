#include "program/output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <optional>
#include <system_error>

#include <fcntl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>
#include <ext/stdio_filebuf.h>

#include "log/same_file.h"
#include "model/printable.h"

namespace lumo {
namespace {

namespace fs = std::filesystem;

// Owns a file descriptor; negative if there is none.
struct Descriptor {
  explicit Descriptor(int number) : fd(number) {}
  ~Descriptor() {
    if (fd >= 0) {
      close(fd);
    }
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  const int fd;
};

// A new file, in the folder of the file that it will replace.
struct NewFile {
  // -1, with the reason in errno, if no file could be created.
  int fd = -1;
  // Empty while the file has no name.
  std::string name;
};

// Returns the path that the symbolic links at `path` lead to; there may be no
// file yet. Returns nothing, with the reason in errno, if there is no such
// folder, or if one of the links is the kernel's name of an open file, such as
// /proc/self/fd/1.
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

// Sets `name` to one path in `folder` after the other until `make` succeeds or
// fails without EEXIST. Returns its last result, which is -1 after a failure.
int TryNames(const fs::path& folder, std::string* name,
             const std::function<int()>& make) {
  const std::string prefix = folder / (".lumo-" + std::to_string(getpid()));
  for (int number = 0;; ++number) {
    *name = prefix + "-" + std::to_string(number);
    const int result = make();
    if (result != -1 || errno != EEXIST) {
      return result;
    }
  }
}

// The kernel's name of an open file.
std::string NameOfOpenFile(int fd) {
  return "/proc/self/fd/" + std::to_string(fd);
}

// Creates a new file in `folder`. If the file system supports it, the file has
// no name, so that it disappears when the process is killed.
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
  file.fd = TryNames(folder, &file.name, [&file] {
    return open(file.name.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC,
                kMode);
  });
  return file;
}

// Gives `newer` the mode of `older` and, if the system allows it, its owner.
void CopyOwnerAndMode(int older, int newer) {
  struct stat status = {};
  fstat(older, &status);
  // The owner first, because changing it clears some bits of the mode.
  [[maybe_unused]] const int ignored =
      fchown(newer, status.st_uid, status.st_gid);
  fchmod(newer, status.st_mode & 07777U);
}

std::string Reason(const char* what) {
  return std::string(what) + ": " + std::strerror(errno);
}

std::string CannotCreate() { return Reason("cannot be created"); }
std::string CannotWrite() { return Reason("cannot be written whole"); }

// The functions below return what went wrong, or an empty text. `older` is a
// descriptor for writing to an existing file, or -1 if there is none.

// Writes the text to an open file, from its current position.
std::string WriteText(int fd, const TextWriter& write) {
  // Detects a closed stream, for which the buffer would set another reason.
  if (::write(fd, "", 0) != 0) {
    return CannotWrite();
  }
  // The buffer closes its descriptor, so give it a duplicate.
  __gnu_cxx::stdio_filebuf<char> buffer(dup(fd), std::ios::out, 1U << 16U);
  std::ostream stream(&buffer);
  write(stream);
  // After a failed write, this tries again, which sets errno again.
  const bool is_flushed = buffer.pubsync() == 0;
  return stream.good() && is_flushed ? "" : CannotWrite();
}

// Replaces the content of the open file by the text.
std::string WriteInPlace(int fd, const TextWriter& write) {
  return ftruncate(fd, 0) == 0 ? WriteText(fd, write) : CannotWrite();
}

// Replaces the content of the file `to` by that of `from`.
std::string CopyInPlace(int from, int to) {
  off_t position = 0;
  ssize_t copied = ftruncate(to, 0);
  while (copied >= 0) {
    copied = sendfile(to, from, &position, 1U << 30U);
    if (copied == 0) {
      return "";
    }
  }
  return CannotWrite();
}

// Renames a complete file to `target`, after giving it a name if it has none.
// If the system refuses, replaces the content of `target` instead.
std::string ReplaceTarget(NewFile* file, const fs::path& target, int older) {
  if (file->name.empty()) {
    const std::string open_name = NameOfOpenFile(file->fd);
    const int linked = TryNames(target.parent_path(), &file->name, [&] {
      return linkat(AT_FDCWD, open_name.c_str(), AT_FDCWD, file->name.c_str(),
                    AT_SYMLINK_FOLLOW);
    });
    if (linked != 0) {
      return CannotCreate();
    }
  }
  if (rename(file->name.c_str(), target.c_str()) == 0) {
    return "";
  }
  // The target may be a mount point, or another user's file in /tmp.
  const bool is_refused =
      errno == EBUSY || errno == EXDEV || errno == EACCES || errno == EPERM;
  std::string error =
      older >= 0 && is_refused ? CopyInPlace(file->fd, older) : CannotCreate();
  unlink(file->name.c_str());
  return error;
}

// Writes the text to a new file, which then replaces `target`.
std::string WriteNewFile(NewFile* file, const fs::path& target, int older,
                         const TextWriter& write) {
  if (older >= 0) {
    CopyOwnerAndMode(older, file->fd);
  }
  std::string error = WriteText(file->fd, write);
  // Otherwise the new file could be empty after a crash of the system, because
  // its name may reach the disk before its content.
  if (error.empty() && fsync(file->fd) != 0 && errno != EINVAL) {
    error = CannotWrite();
  }
  if (error.empty()) {
    return ReplaceTarget(file, target, older);
  }
  if (!file->name.empty()) {
    unlink(file->name.c_str());
  }
  return error;
}

// Creates or replaces a regular file through a new file in its folder. Writes
// directly to a device or a pipe, and to a file that cannot be replaced in its
// folder.
std::string WriteFile(const std::string& path, const TextWriter& write) {
  const Descriptor older(open(path.c_str(), O_WRONLY | O_CLOEXEC));
  if (older.fd < 0 && errno != ENOENT) {
    return CannotCreate();
  }
  struct stat status = {};
  if (older.fd >= 0 && fstat(older.fd, &status) == 0 &&
      !S_ISREG(status.st_mode)) {
    return WriteText(older.fd, write);
  }
  const std::optional<fs::path> target = FollowLinks(path);
  NewFile file = target ? MakeNewFile(target->parent_path()) : NewFile{};
  const Descriptor newer(file.fd);
  if (newer.fd >= 0) {
    return WriteNewFile(&file, *target, older.fd, write);
  }
  const bool is_refused =
      !target || errno == EACCES || errno == EPERM || errno == EROFS;
  return older.fd >= 0 && is_refused ? WriteInPlace(older.fd, write)
                                     : CannotCreate();
}

}  // namespace

int WriteOutput(const Program& program, const std::string& path,
                const std::vector<std::string>& logs, std::string_view noun,
                const TextWriter& write) {
  for (const std::string& log : logs) {
    if (path.empty() ? IsStandardOutput(log) : IsSameFile(path, log)) {
      return Fail(program, Printable(log) + ": the " + std::string(noun) +
                               " would be written to the log itself");
    }
  }
  const std::string error =
      path.empty() ? WriteText(STDOUT_FILENO, write) : WriteFile(path, write);
  if (error.empty()) {
    return 0;
  }
  return Fail(program, (path.empty() ? "standard output" : Printable(path)) +
                           ": " + error);
}

}  // namespace lumo
