#include "log/log.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

#include <flatbuffers/flatbuffers.h>

#include "text/escape.h"

namespace lumo {
namespace {

static_assert(sizeof(void*) == 8,
              "a 64-bit machine is needed: where pointers have 32 bits the "
              "library's verifier accepts offsets that wrap around, and a log "
              "dated after 2038 cannot be protected from being overwritten");

// The verifier checks its limit, 2 GiB - 1, only by an assertion.
constexpr std::uint64_t kMaxLogSize = FLATBUFFERS_MAX_BUFFER_SIZE - 1;

// Returns whether the size and the modification time are the same.
bool IsUnchanged(const struct stat& a, const struct stat& b) {
  return a.st_size == b.st_size && a.st_mtim.tv_sec == b.st_mtim.tv_sec &&
         a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

// Returns LogFile::other_type.
std::string DescribeOtherType(mode_t mode) {
  return S_ISDIR(mode)    ? "a folder"
         : S_ISFIFO(mode) ? "a pipe"
         : S_ISCHR(mode)  ? "a device"
                          : "";
}

// Sets `bytes` to the content of the file, or to nothing if it cannot be a log.
// Returns LogFile::read_error.
std::string ReadWhole(std::FILE* file, std::vector<std::uint8_t>* bytes) {
  struct stat before = {};
  struct stat after = {};
  if (fstat(fileno(file), &before) != 0) {
    return std::strerror(errno);
  }
  if (S_ISDIR(before.st_mode) || fseeko(file, 0, SEEK_END) != 0) {
    return "";  // it has no size, so it cannot be a log
  }
  const auto size = static_cast<std::uint64_t>(ftello(file));
  if (size > kMaxLogSize) {
    return "";
  }
  if (fseeko(file, 0, SEEK_SET) != 0) {
    return std::strerror(errno);
  }
  bytes->resize(size);
  errno = 0;
  if (std::fread(bytes->data(), 1, size, file) < size) {
    return std::ferror(file) != 0 ? std::strerror(errno)
                                  : "it became shorter while it was read";
  }
  if (fstat(fileno(file), &after) != 0 || !IsUnchanged(before, after)) {
    return "it changed while it was read";
  }
  return "";
}

}  // namespace

LogFile ReadLogFile(const std::string& path) {
  LogFile log;
  struct stat status = {};
  if (stat(path.c_str(), &status) == 0) {
    log.other_type = DescribeOtherType(status.st_mode);
  }
  // Opening a named pipe would wait for a writer that may never come.
  if (S_ISFIFO(status.st_mode)) {
    if (access(path.c_str(), R_OK) != 0) {
      log.open_error = std::strerror(errno);
    }
    return log;
  }
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(
      std::fopen(path.c_str(), "rbe"), std::fclose);
  if (file == nullptr) {
    log.open_error = std::strerror(errno);
    return log;
  }
  log.read_error = ReadWhole(file.get(), &log.bytes);
  return log;
}

const ProfilingLog* VerifyLog(const std::vector<std::uint8_t>& bytes,
                              std::string* error) {
  if (bytes.size() <= kMaxLogSize) {
    flatbuffers::Verifier verifier(bytes.data(), bytes.size());
    if (VerifyProfilingLogBuffer(verifier)) {
      return GetProfilingLog(bytes.data());
    }
  }
  *error =
      "Verify Profiling Log Buffer failed. The buffer might be ill-formatted";
  return nullptr;
}

std::optional<Log> LoadLog(const std::string& path, std::string* error) {
  LogFile file = ReadLogFile(path);
  const ProfilingLog* root = nullptr;
  if (!file.open_error.empty()) {
    *error = "cannot be opened: " + file.open_error;
  } else if (!file.read_error.empty()) {
    *error = "cannot be read whole: " + file.read_error;
  } else if (!file.other_type.empty()) {
    *error = "is " + file.other_type + ", not a log";
  } else {
    root = VerifyLog(file.bytes, error);
  }
  if (root == nullptr) {
    *error = Printable(path) + ": " + *error;
    return std::nullopt;
  }
  return Log{path, std::move(file.bytes), root};
}

}  // namespace lumo
