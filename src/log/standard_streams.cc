#include "log/standard_streams.h"

#include <fcntl.h>
#include <unistd.h>

namespace lumo {

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

}  // namespace lumo
