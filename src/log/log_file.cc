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

// The verifier's limit on a buffer, which it only asserts: 2 GiB - 1.
constexpr std::uint64_t kFirstSizeTooLarge = FLATBUFFERS_MAX_BUFFER_SIZE;

}  // namespace

bool ReadLogFile(const std::string& path, std::vector<std::uint8_t>* bytes) {
  bytes->clear();

  // Opening a named pipe would wait for a writer that may never come, so it is
  // only asked whether that is allowed.
  std::error_code ignored;
  if (std::filesystem::is_fifo(path, ignored)) {
    return access(path.c_str(), R_OK) == 0;
  }

  std::ifstream file(path, std::ios::in | std::ios::binary);
  if (!file.is_open()) {
    return false;
  }
  file.seekg(0, std::ios::end);
  // -1, if the file has no size, becomes a size that is too large.
  const auto size = static_cast<std::uint64_t>(std::streamoff{file.tellg()});
  file.seekg(0, std::ios::beg);
  if (size >= kFirstSizeTooLarge) {
    return true;
  }
  bytes->resize(size);
  file.read(reinterpret_cast<char*>(bytes->data()),
            static_cast<std::streamsize>(size));
  return true;
}

const ProfilingLog* VerifyLog(const std::vector<std::uint8_t>& bytes) {
  if (bytes.size() >= kFirstSizeTooLarge) {
    return nullptr;
  }
  flatbuffers::Verifier verifier(bytes.data(), bytes.size());
  if (!VerifyProfilingLogBuffer(verifier)) {
    return nullptr;
  }
  return GetProfilingLog(bytes.data());
}

}  // namespace lumo
