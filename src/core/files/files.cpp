#include "core/files/files.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <vector>

#include "core/files/output_guard.hpp"

namespace velmora {
namespace {

[[noreturn]] void Fail(int error) {
  throw FileError(std::strerror(error));
}

// What a symbolic link points to is what is replaced, not the link.
std::string RealTarget(const std::string& path) {
  std::error_code error;
  const std::filesystem::path real = std::filesystem::canonical(path, error);
  return error ? path : real.string();
}

// A file without a name: whatever ends the program, nothing is left behind. Negative where the file
// system has no such files, or no way to name one later.
int OpenUnnamed(const std::string& target) {
  const std::string directory = std::filesystem::path(target).parent_path().string();
  if (access("/proc/self/fd", X_OK) != 0) {
    return -1;
  }
  return open(directory.empty() ? "." : directory.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
}

}  // namespace

InputFile::InputFile(const std::string& path) {
  // Not blocking, so that a named pipe without a writer is refused instead of waited for.
  descriptor_ = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor_ < 0) {
    Fail(errno);
  }
  struct stat status {};
  int error = fstat(descriptor_, &status) < 0 ? errno : 0;
  if (error == 0 && !S_ISREG(status.st_mode)) {
    error = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
  }
  if (error != 0) {
    close(descriptor_);
    Fail(error);
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
      Fail(errno);
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

OutputFile::OutputFile(const std::string& path, Mode mode) : target_(RealTarget(path)), mode_(mode) {
  OutputGuard::Ask(target_);
  struct stat status {};
  const bool exists = stat(target_.c_str(), &status) == 0;
  // Devices and pipes would be replaced by a file, which nobody means.
  if (exists && !S_ISREG(status.st_mode)) {
    Fail(S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
  }
  // Renaming over a write-protected file would succeed; its owner meant it to stay.
  if (exists && access(target_.c_str(), W_OK) != 0) {
    Fail(errno);
  }
  descriptor_ = OpenUnnamed(target_);
  if (descriptor_ < 0) {
    std::string name = target_ + ".XXXXXX";
    descriptor_ = mkostemp(name.data(), O_CLOEXEC);
    if (descriptor_ < 0) {
      Fail(errno);
    }
    temporary_ = name;
  }
  const mode_t mask = umask(0);
  umask(mask);
  fchmod(descriptor_, exists ? status.st_mode & 07777U : 0666U & ~mask);
}

OutputFile::~OutputFile() {
  if (descriptor_ >= 0) {
    close(descriptor_);
  }
  if (!temporary_.empty()) {
    unlink(temporary_.c_str());
  }
}

void OutputFile::Write(std::string_view bytes) {
  WriteAt(end_, bytes.data(), bytes.size());
}

void OutputFile::WriteAt(std::int64_t offset, const void* from, std::size_t bytes) {
  const auto* in = static_cast<const char*>(from);
  std::size_t done = 0;
  while (done < bytes) {
    const ssize_t put =
        pwrite(descriptor_, in + done, bytes - done, offset + static_cast<std::int64_t>(done));
    if (put < 0 && errno != EINTR) {
      Fail(errno);
    }
    done += static_cast<std::size_t>(std::max<ssize_t>(put, 0));
  }
  end_ = std::max(end_, offset + static_cast<std::int64_t>(bytes));
}

void OutputFile::CopyTail() {
  if (access(target_.c_str(), F_OK) != 0) {
    return;
  }
  const InputFile old(target_);
  std::vector<char> piece(std::size_t{1} << 20);
  while (end_ < old.Size()) {
    const std::size_t got = old.ReadAt(end_, piece.data(), piece.size());
    if (got == 0) {
      break;
    }
    Write({piece.data(), got});
  }
}

void OutputFile::GiveName() {
  const std::string unnamed = "/proc/self/fd/" + std::to_string(descriptor_);
  int attempt = 0;
  std::string name;
  do {
    name = target_ + "." + std::to_string(getpid()) + "-" + std::to_string(attempt++);
    if (linkat(AT_FDCWD, unnamed.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0) {
      temporary_ = name;
      return;
    }
  } while (errno == EEXIST);
  Fail(errno);
}

void OutputFile::Commit() {
  if (mode_ == Mode::KeepTail) {
    CopyTail();
  }
  if (fsync(descriptor_) != 0) {
    Fail(errno);
  }
  if (temporary_.empty()) {
    GiveName();
  }
  const int closed = close(descriptor_);
  descriptor_ = -1;
  if (closed != 0 || rename(temporary_.c_str(), target_.c_str()) != 0) {
    Fail(errno);
  }
  temporary_.clear();
}

}  // namespace velmora
