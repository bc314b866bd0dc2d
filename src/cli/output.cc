#include "cli/output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <ext/stdio_filebuf.h>

#include "cli/streams.h"
#include "text/escape.h"

namespace lumo {
namespace {

namespace fs = std::filesystem;

std::string CannotBe(const char* what) {
  return std::string("cannot be ") + what + ": " + std::strerror(errno);
}

// Returns whether the last call failed because the folder is read-only, or the
// file in it is a mount point or, in /tmp, the file of another user.
bool IsRefused() {
  return errno == EACCES || errno == EPERM || errno == EROFS || errno == EBUSY;
}

// Returns the path that the symbolic links at `path` lead to; there may be no
// file yet. Returns an empty path if there is no such folder, or if one of the
// links is the kernel's name of an open file, such as /proc/self/fd/1.
fs::path FollowLinks(const std::string& path) {
  std::error_code error;
  fs::path target = fs::absolute(path, error);
  for (fs::path link = target; !error; link = fs::read_symlink(target, error)) {
    link = target.parent_path() / link;
    const fs::path folder = fs::canonical(link.parent_path(), error);
    if (error || folder.native().starts_with("/proc/")) {
      return {};
    }
    target = folder / link.filename();
  }
  return target;
}

// Creates a file in the folder of `target` and sets `name` to its path. Returns
// its descriptor, or -1 with the reason in errno.
int CreateFileBeside(const fs::path& target, std::string* name) {
  const std::string prefix =
      target.parent_path() / (".lumo-" + std::to_string(getpid()) + "-");
  int fd = -1;
  int number = 0;
  do {
    *name = prefix + std::to_string(number++);
    fd = open(name->c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666);
  } while (fd < 0 && errno == EEXIST);
  return fd;
}

// Gives a file the mode and, as far as the system allows it, the owner and the
// group of `older`. Users other than root may only set a group of their own.
void SetOwnerAndMode(int fd, const struct stat& older) {
  [[maybe_unused]] const bool ignored =
      fchown(fd, older.st_uid, older.st_gid) == 0 ||
      fchown(fd, static_cast<uid_t>(-1), older.st_gid) == 0;
  fchmod(fd, older.st_mode & 07777U);  // last, because fchown() clears bits
}

// Writes the text to an open file. Like the functions below, returns what went
// wrong, or an empty text.
std::string WriteText(int fd, const TextWriter& write) {
  // Detects a closed stream, for which the buffer would set another reason.
  if (::write(fd, "", 0) != 0) {
    return CannotBe("written whole");
  }
  // The buffer closes its descriptor, so give it a duplicate.
  __gnu_cxx::stdio_filebuf<char> buffer(dup(fd), std::ios::out, 1U << 16U);
  std::ostream stream(&buffer);
  write(stream);
  // After a failed write, this tries again, which sets errno again.
  return buffer.pubsync() == 0 && stream.good() ? ""
                                                : CannotBe("written whole");
}

// Writes the text to a device, a pipe or, after truncating it, a file.
std::string WriteDirectly(const std::string& path, const TextWriter& write) {
  const int fd = open(path.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
  std::string error = fd < 0 ? CannotBe("created") : WriteText(fd, write);
  close(fd);
  return error;
}

std::string WriteFile(const std::string& path, const TextWriter& write) {
  struct stat older = {};
  const bool exists = stat(path.c_str(), &older) == 0;
  if (exists ? access(path.c_str(), W_OK) != 0 : errno != ENOENT) {
    return CannotBe("created");
  }
  const fs::path target = FollowLinks(path);
  if (target.empty() || (exists && !S_ISREG(older.st_mode))) {
    return WriteDirectly(path, write);
  }
  std::string name;
  const int fd = CreateFileBeside(target, &name);
  if (fd < 0) {
    return exists && IsRefused() ? WriteDirectly(path, write)
                                 : CannotBe("created");
  }
  if (exists) {
    SetOwnerAndMode(fd, older);
  }
  std::string error = WriteText(fd, write);
  // If the name reached the disk before the text, the file could be empty after
  // a crash of the system.
  if (error.empty() && fsync(fd) != 0 && errno != EINVAL) {
    error = CannotBe("written whole");
  }
  close(fd);
  if (error.empty() && rename(name.c_str(), target.c_str()) == 0) {
    return "";
  }
  const bool is_refused = error.empty() && exists && IsRefused();
  error = error.empty() ? CannotBe("created") : error;
  unlink(name.c_str());
  return is_refused ? WriteDirectly(path, write) : error;
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
  const std::string name = path.empty() ? "standard output" : Printable(path);
  return error.empty() ? 0 : Fail(program, name + ": " + error);
}

}  // namespace lumo
