#include "cli/output.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <optional>

#include <fcntl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>
#include <ext/stdio_filebuf.h>

#include "cli/new_file.h"
#include "cli/streams.h"
#include "text/escape.h"

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

// Writes the text to the new file, which then replaces `target`. If the system
// refuses, replaces the content of `target` instead.
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
    if (RenameNewFile(file, target)) {
      return "";
    }
    // The target may be a mount point, or another user's file in /tmp.
    const bool is_refused =
        errno == EBUSY || errno == EXDEV || errno == EACCES || errno == EPERM;
    error = older >= 0 && is_refused ? CopyInPlace(file->fd, older)
                                     : CannotCreate();
  }
  DiscardNewFile(*file);
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
