#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <memory>
#include <set>
#include <system_error>
#include <vector>

#include "core/files/file_attributes.hpp"
#include "core/files/files.hpp"
#include "core/files/output_elsewhere.hpp"
#include "core/files/output_guard.hpp"

namespace velmora {
namespace {

namespace fs = std::filesystem;

// A file on its way has a name of its own length, whatever the target's is, and is locked by its program:
// one that nobody has locked was left behind by a program that was killed.
constexpr std::string_view kTemporary = ".velmora2-save-";

// What a symbolic link points to is what is replaced, or made, not the link.
std::string RealTarget(const std::string& path) {
  constexpr int kMostLinks = 40;
  fs::path target = path;
  std::error_code error;
  for (int links = 0; fs::is_symlink(fs::symlink_status(target, error)); ++links) {
    if (links == kMostLinks) {
      ThrowFileError(ELOOP);
    }
    const fs::path next = fs::read_symlink(target, error);
    if (error) {
      ThrowFileError(error.value());
    }
    target = target.parent_path() / next;
  }
  return target.string();
}

std::string DirectoryOfTarget(const std::string& target) {
  const std::string directory = fs::path(target).parent_path().string();
  return directory.empty() ? "." : directory;
}

// A file without a name: whatever ends the program, nothing is left behind. Negative where the file
// system has no such files, or no way to name one later.
int OpenUnnamed(const std::string& directory, mode_t mode) {
  if (access("/proc/self/fd", X_OK) != 0) {
    return -1;
  }
  return open(directory.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, mode);
}

std::string TemporaryName(const std::string& directory, int attempt) {
  return directory + "/" + std::string(kTemporary) + std::to_string(getpid()) + "-" + std::to_string(attempt);
}

// Whether the lock is ours and the file still there: a clean-up may have come in between.
bool LockNamed(int descriptor) {
  struct stat status {};
  return flock(descriptor, LOCK_EX | LOCK_NB) != 0 ||
         (fstat(descriptor, &status) == 0 && status.st_nlink > 0);
}

void RemoveIfAbandoned(const std::string& path) {
  const int descriptor = open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) {
    return;
  }
  struct stat status {};
  if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
      flock(descriptor, LOCK_EX | LOCK_NB) == 0) {
    unlink(path.c_str());
  }
  close(descriptor);
}

// Once is enough for a directory: ten thousand saves into one would look through it ten thousand times.
void RemoveAbandoned(const std::string& directory) {
  static std::set<std::string> cleaned;
  if (!cleaned.insert(directory).second) {
    return;
  }
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(directory.c_str()), closedir);
  while (const dirent* entry = entries ? readdir(entries.get()) : nullptr) {
    if (std::string_view(entry->d_name).starts_with(kTemporary)) {
      RemoveIfAbandoned(directory + "/" + entry->d_name);
    }
  }
}

// The new name outlives a loss of power only when the directory is on the disk, too. Where that cannot be
// done the file itself is safe, so that is no failure of the save.
void SyncDirectory(const std::string& directory) {
  const int descriptor = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor >= 0) {
    fsync(descriptor);
    close(descriptor);
  }
}

}  // namespace

OutputFile::OutputFile(const std::string& path, Mode mode)
    : name_(RealTarget(path)),
      target_(OutputElsewhere::ToWrite(name_)),
      directory_(DirectoryOfTarget(target_)),
      mode_(mode) {
  OutputGuard::Ask(name_);
  struct stat status {};
  const bool exists = stat(target_.c_str(), &status) == 0;
  // Devices and pipes would be replaced by a file, which nobody means.
  if (exists && !S_ISREG(status.st_mode)) {
    ThrowFileError(S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
  }
  // Renaming over a write-protected file would succeed; its owner meant it to stay.
  if (exists && access(target_.c_str(), W_OK) != 0) {
    ThrowFileError(errno);
  }
  RemoveAbandoned(directory_);
  // Nobody reads what replaces a private file meanwhile; a new file is what the directory makes of it.
  Open(exists ? 0600 : 0666);
  if (exists) {
    notKept_ = CopyAttributes(target_, status, descriptor_);
  }
}

void OutputFile::Open(unsigned mode) {
  descriptor_ = OpenUnnamed(directory_, mode);
  if (descriptor_ >= 0) {
    flock(descriptor_, LOCK_EX | LOCK_NB);
    return;
  }
  for (int attempt = 0; descriptor_ < 0; ++attempt) {
    const std::string name = TemporaryName(directory_, attempt);
    descriptor_ = open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (descriptor_ < 0 && errno != EEXIST) {
      ThrowFileError(errno);
    }
    if (descriptor_ >= 0 && LockNamed(descriptor_)) {
      temporary_ = name;
    } else if (descriptor_ >= 0) {
      close(descriptor_);
      descriptor_ = -1;
    }
  }
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
      ThrowFileError(errno);
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
    name = TemporaryName(directory_, attempt++);
    if (linkat(AT_FDCWD, unnamed.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0) {
      temporary_ = name;
      return;
    }
  } while (errno == EEXIST);
  ThrowFileError(errno);
}

void OutputFile::Commit() {
  if (mode_ == Mode::KeepTail) {
    CopyTail();
  }
  if (fsync(descriptor_) != 0) {
    ThrowFileError(errno);
  }
  if (temporary_.empty()) {
    GiveName();
  }
  // Unlocked behind the rename: until then nobody may take it for left behind.
  if (rename(temporary_.c_str(), target_.c_str()) != 0) {
    ThrowFileError(errno);
  }
  temporary_.clear();
  close(descriptor_);  // nothing is left to fail: the contents are on the disk
  descriptor_ = -1;
  SyncDirectory(directory_);
  OutputGuard::Tell(name_);
}

}  // namespace velmora
