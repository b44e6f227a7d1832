#include "commands/own_place.hpp"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "commands/breach.hpp"
#include "support/temporary_directory.hpp"

namespace velmora::fuzz {
namespace {

namespace fs = std::filesystem;

// In memory where there is some: a save waits for the disk, ten times as long as for the rest.
fs::path RoomForFiles() {
  const fs::path memory = "/dev/shm";
  const bool there = std::getenv("TMPDIR") == nullptr && access(memory.c_str(), W_OK) == 0;
  return there ? memory : fs::temp_directory_path();
}

/// A directory that nobody else has, and that goes with the process. What looks for a home or for temporary
/// files finds them in it.
const fs::path& OfProcess() {
  static const test::TemporaryDirectory directory(RoomForFiles());
  static const fs::path path = [] {
    fs::path real = fs::canonical(directory.Path("."));
    for (const char* variable : {"TMPDIR", "HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME"}) {
      setenv(variable, real.c_str(), 1);
    }
    return real;
  }();
  return path;
}

}  // namespace

OwnPlace::OwnPlace(const std::string& name) : directory_(OfProcess() / name) {
  fs::create_directory(directory_);
  fs::current_path(directory_);
}

OwnPlace::~OwnPlace() {
  std::error_code error;
  fs::current_path(before_, error);
  fs::remove_all(directory_, error);
}

std::string OwnPlace::Path(const std::string& name) const {
  return (directory_ / name).string();
}

void OwnPlace::Write(const std::string& name, const std::string& bytes) const {
  test::WriteFile(Path(name), bytes);
}

std::vector<std::string> OwnPlace::Files() const {
  std::vector<std::string> files;
  for (const fs::directory_entry& entry : fs::directory_iterator(directory_)) {
    if (entry.is_regular_file()) {
      files.push_back(entry.path().string());
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::vector<std::string> OwnPlace::Contents() const {
  std::vector<std::string> contents = Files();
  for (std::string& file : contents) {
    file += "\n" + test::ReadFile(file);
  }
  return contents;
}

void OwnPlace::WantInside(const std::string& path) const {
  if (!fs::weakly_canonical(path).string().starts_with(OfProcess().string() + "/")) {
    Breach("a file outside is written: " + path);
  }
}

}  // namespace velmora::fuzz
