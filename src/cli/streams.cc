#include "cli/streams.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace lumo {
namespace {

// Compares by device and inode. std::filesystem::equivalent() does so only for
// files and folders, but a log may be read directly from a block device.
bool IsSame(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

}  // namespace

void OccupyStandardStreams() {
  for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO;
       ++descriptor) {
    if (fcntl(descriptor, F_GETFD) == -1) {
      // The descriptor is the lowest free number. A folder always exists and
      // cannot be read or written as a file.
      open("/", O_RDONLY | O_DIRECTORY);
    }
  }
}

bool IsSameFile(const std::string& a, const std::string& b) {
  struct stat a_status = {};
  struct stat b_status = {};
  return stat(a.c_str(), &a_status) == 0 && stat(b.c_str(), &b_status) == 0 &&
         IsSame(a_status, b_status);
}

bool IsStandardOutput(const std::string& path) {
  struct stat output = {};
  struct stat file = {};
  return fstat(STDOUT_FILENO, &output) == 0 && stat(path.c_str(), &file) == 0 &&
         IsSame(output, file);
}

}  // namespace lumo
