#include "core/files/own_directory.hpp"

#include <stdlib.h>  // NOLINT: mkdtemp

#include <cerrno>
#include <filesystem>

#include "core/files/files.hpp"

namespace velmora {

std::string MakeTemporaryDirectory() {
  std::error_code error;
  std::string name = (std::filesystem::temp_directory_path(error) / "velmora2-XXXXXX").string();
  if (error || ::mkdtemp(name.data()) == nullptr) {
    ThrowFileError(error ? error.value() : errno);
  }
  return name;
}

OwnDirectory::OwnDirectory() {
  const std::string name = MakeTemporaryDirectory();
  std::error_code error;
  const std::filesystem::path real = std::filesystem::canonical(name, error);
  path_ = error ? name : real.string();
}

OwnDirectory::~OwnDirectory() {
  std::error_code error;
  std::filesystem::remove_all(path_, error);
}

}  // namespace velmora
