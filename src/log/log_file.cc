// Reads a file that may be anything, and verifies its bytes.

#include "log/log_file.h"

#include <filesystem>
#include <fstream>
#include <ios>
#include <system_error>

#include <unistd.h>

#include <flatbuffers/flatbuffers.h>

namespace lumo {
namespace {

static_assert(sizeof(void*) == 8,
              "a 64-bit machine is needed: where pointers have 32 bits the "
              "library's verifier accepts offsets that wrap around, and a log "
              "dated after 2038 is not recognised as the file to spare");

// The verifier's limit on a buffer, which it only asserts: 2 GiB - 1.
constexpr std::uint64_t kFirstSizeTooLarge = FLATBUFFERS_MAX_BUFFER_SIZE;

constexpr char kCannotOpen[] = "Cannot open the input file.";
constexpr char kNoLog[] =
    "Verify Profiling Log Buffer failed. The buffer might be ill-formatted";

}  // namespace

bool ReadLogFile(const std::string& path, std::vector<std::uint8_t>* bytes,
                 std::string* error) {
  bytes->clear();

  // Opening a named pipe would wait for a writer that may never come, so it is
  // only asked whether that is allowed.
  std::error_code ignored;
  if (std::filesystem::is_fifo(path, ignored)) {
    *error = access(path.c_str(), R_OK) == 0 ? kNoLog : kCannotOpen;
    return false;
  }

  std::ifstream file(path, std::ios::in | std::ios::binary);
  if (!file.is_open()) {
    *error = kCannotOpen;
    return false;
  }
  file.seekg(0, std::ios::end);
  // -1, if the file has no size, becomes a size that is too large.
  const auto size = static_cast<std::uint64_t>(std::streamoff{file.tellg()});
  file.seekg(0, std::ios::beg);
  if (size >= kFirstSizeTooLarge) {
    *error = kNoLog;
    return false;
  }
  bytes->resize(size);
  file.read(reinterpret_cast<char*>(bytes->data()),
            static_cast<std::streamsize>(size));
  return true;
}

const ProfilingLog* VerifyLog(const std::vector<std::uint8_t>& bytes,
                              std::string* error) {
  if (bytes.size() < kFirstSizeTooLarge) {
    flatbuffers::Verifier verifier(bytes.data(), bytes.size());
    if (VerifyProfilingLogBuffer(verifier)) {
      return GetProfilingLog(bytes.data());
    }
  }
  *error = kNoLog;
  return nullptr;
}

}  // namespace lumo
