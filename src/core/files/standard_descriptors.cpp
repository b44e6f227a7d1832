#include "core/files/standard_descriptors.hpp"

#include <fcntl.h>
#include <unistd.h>

namespace velmora {

void OpenStandardDescriptors() {
  // open takes the lowest number that is free.
  int opened = open("/dev/null", O_RDWR);
  while (opened >= 0 && opened <= STDERR_FILENO) {
    opened = open("/dev/null", O_RDWR);
  }
  if (opened >= 0) {
    close(opened);
  }
}

}  // namespace velmora
