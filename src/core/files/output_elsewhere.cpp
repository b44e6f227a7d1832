#include "core/files/output_elsewhere.hpp"

#include <filesystem>
#include <utility>

namespace velmora {
namespace {

namespace fs = std::filesystem;

OutputElsewhere* atWork = nullptr;  // files belong to the process, and so does this

// The path behind all links, whether the file is there or not.
std::string Identity(const std::string& path) {
  std::error_code error;
  const fs::path absolute = fs::absolute(path, error);
  const fs::path real = fs::weakly_canonical(absolute, error);
  return error ? absolute.string() : real.string();
}

std::string ParentOf(const std::string& path) {
  return fs::path(path).parent_path().string();
}

}  // namespace

OutputElsewhere::OutputElsewhere(std::string directory, const std::set<std::string>& toCome)
    : directory_(std::move(directory)), before_(std::exchange(atWork, this)) {
  std::error_code error;
  for (const std::string& path : toCome) {
    const std::string identity = Identity(path);
    toCome_.insert(identity);
    fs::create_directories(ParentOf(Below(identity)), error);
  }
}

OutputElsewhere::~OutputElsewhere() {
  atWork = before_;
}

std::string OutputElsewhere::ToWrite(const std::string& path) {
  if (atWork == nullptr) {
    return path;
  }
  const std::string identity = Identity(path);
  std::string place = atWork->Below(identity);
  std::error_code error;
  if (fs::exists(ParentOf(identity), error)) {
    fs::create_directories(ParentOf(place), error);
  }
  return place;
}

std::string OutputElsewhere::ToRead(const std::string& path) {
  if (atWork == nullptr) {
    return path;
  }
  const std::string identity = Identity(path);
  std::string place = atWork->Below(identity);
  std::error_code error;
  return atWork->toCome_.contains(identity) || fs::exists(place, error) ? place : path;
}

}  // namespace velmora
