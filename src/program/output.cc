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

std::string Reason(const char* what) {
  return std::string(what) + ": " + std::strerror(errno);
}

std::string CannotCreate() { return Reason("cannot be created"); }
std::string CannotWrite() { return Reason("cannot be written whole"); }

// The functions below return what went wrong, or an empty text.

// Writes the text to an open file, from where it stands.
std::string WriteText(int fd, const TextWriter& write) {
  // Tells a stream that is closed, for which the buffer has another reason.
  if (::write(fd, "", 0) != 0) {
    return CannotWrite();
  }
  // The buffer closes its descriptor, so it gets one of its own.
  __gnu_cxx::stdio_filebuf<char> buffer(dup(fd), std::ios::out, 1U << 16U);
  std::ostream stream(&buffer);
  write(stream);
  // After a failed write this tries once more, which sets the reason again.
  const bool is_flushed = buffer.pubsync() == 0;
  return stream.good() && is_flushed ? "" : CannotWrite();
}

// Writes the text in place of what the open file has.
std::string WriteInPlace(int fd, const TextWriter& write) {
  return ftruncate(fd, 0) == 0 ? WriteText(fd, write) : CannotWrite();
}

// Replaces what the file `to` has by what `from` has.
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

// Returns where the symbolic links at `path` lead, which may be where no file
// is yet. Returns nothing if one of them is the kernel's own name of an open
// file, such as /proc/self/fd/1, or, with the reason in errno, if there is no
// such folder.
std::optional<fs::path> FollowLinks(fs::path path) {
  constexpr int kMostLinks = 40;  // as the kernel
  for (int links = 0; links < kMostLinks; ++links) {
    std::error_code error;
    const fs::path folder =
        fs::canonical(path.has_parent_path() ? path.parent_path() : ".", error);
    if (error || folder.native().starts_with("/proc/")) {
      errno = error ? error.value() : ENOENT;  // nothing is created in /proc
      return std::nullopt;
    }
    path = folder / path.filename();
    const fs::path link = fs::read_symlink(path, error);
    if (error) {
      return path;
    }
    path = folder / link;  // which is `link` if that is absolute
  }
  return std::nullopt;
}

// A file that will take the place of another, in whose folder it is.
struct NewFile {
  // -1 if no file could be made.
  int fd = -1;
  // Empty while the file has no name.
  std::string name;
};

// Sets `name` to names in `folder`, one after the other, until `make` does not
// fail because there is a file of that name. Returns what it returned last.
int TryNames(const fs::path& folder, std::string* name,
             const std::function<int()>& make) {
  const std::string prefix = folder / (".lumo-" + std::to_string(getpid()));
  int result = -1;
  errno = EEXIST;
  for (int number = 0; result == -1 && errno == EEXIST; ++number) {
    *name = prefix + "-" + std::to_string(number);
    result = make();
  }
  return result;
}

// The name under which the kernel shows an open file.
std::string NameOfOpenFile(int fd) {
  return "/proc/self/fd/" + std::to_string(fd);
}

// Makes a new file in `folder`. Where the file system can, it has no name, so
// that it vanishes however the process ends.
NewFile MakeNewFile(const fs::path& folder) {
  constexpr mode_t kMode = 0666;  // less what the umask takes away
  NewFile file;
  file.fd = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, kMode);
  if (file.fd >= 0 && access(NameOfOpenFile(file.fd).c_str(), F_OK) == 0) {
    return file;
  }
  if (file.fd >= 0) {
    close(file.fd);  // without /proc it could never get a name
  }
  file.fd = TryNames(folder, &file.name, [&file] {
    return open(file.name.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC,
                kMode);
  });
  return file;
}

// Gives `newer` the owner, as far as the system lets it, and the mode of
// `older`.
void CopyOwnerAndMode(int older, int newer) {
  struct stat status = {};
  fstat(older, &status);
  // First the owner, because a new one takes some bits of the mode.
  [[maybe_unused]] const int ignored =
      fchown(newer, status.st_uid, status.st_gid);
  fchmod(newer, status.st_mode & 07777U);
}

// Puts a whole file at `target`. `older` is open for writing on the file there,
// or -1 if there was none.
std::string PutInPlace(NewFile* file, const fs::path& target, int older) {
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
  // The target may be a mount, or another user's file in a folder like /tmp.
  std::string error =
      older >= 0 ? CopyInPlace(file->fd, older) : CannotCreate();
  unlink(file->name.c_str());
  return error;
}

// Writes the text to a new file, which then takes the place of `target`.
std::string WriteNewFile(NewFile* file, const fs::path& target, int older,
                         const TextWriter& write) {
  if (older >= 0) {
    CopyOwnerAndMode(older, file->fd);
  }
  std::string error = WriteText(file->fd, write);
  if (error.empty() && fsync(file->fd) != 0 && errno != EINVAL) {
    error = CannotWrite();
  }
  if (error.empty()) {
    return PutInPlace(file, target, older);
  }
  if (!file->name.empty()) {
    unlink(file->name.c_str());
  }
  return error;
}

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
  NewFile file;
  if (target) {
    file = MakeNewFile(target->parent_path());
  }
  const Descriptor owner(file.fd);
  if (file.fd >= 0) {
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
                               " would go into the log itself");
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
