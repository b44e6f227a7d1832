#include "core/files/files.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "core/files/output_elsewhere.hpp"

namespace velmora {

void ThrowFileError(int error) {
  throw FileError(std::strerror(error));
}

InputFile::InputFile(const std::string& path) {
  // Not blocking, so that a named pipe without a writer is refused instead of waited for.
  descriptor_ = open(OutputElsewhere::ToRead(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor_ < 0) {
    ThrowFileError(errno);
  }
  struct stat status {};
  int error = fstat(descriptor_, &status) < 0 ? errno : 0;
  if (error == 0 && !S_ISREG(status.st_mode)) {
    error = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
  }
  if (error != 0) {
    close(descriptor_);
    ThrowFileError(error);
  }
  size_ = status.st_size;
}

InputFile::~InputFile() {
  close(descriptor_);
}

std::size_t InputFile::ReadAt(std::int64_t offset, void* to, std::size_t bytes) const {
  auto* out = static_cast<char*>(to);
  std::size_t done = 0;
  while (done < bytes) {
    const ssize_t got =
        pread(descriptor_, out + done, bytes - done, offset + static_cast<std::int64_t>(done));
    if (got < 0 && errno != EINTR) {
      ThrowFileError(errno);
    }
    if (got == 0) {
      break;
    }
    done += static_cast<std::size_t>(std::max<ssize_t>(got, 0));
  }
  return done;
}

void InputFile::Prefetch(std::int64_t offset, std::int64_t bytes) const {
  // The system cuts a longer request short to its read-ahead size.
  constexpr std::int64_t piece = std::int64_t{128} << 10;
  for (std::int64_t done = 0; done < bytes; done += piece) {
    posix_fadvise(descriptor_, offset + done, std::min(piece, bytes - done), POSIX_FADV_WILLNEED);
  }
}

}  // namespace velmora
