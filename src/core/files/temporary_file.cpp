#include "core/files/temporary_file.hpp"

#include <stdlib.h>  // NOLINT: mkdtemp

#include <cerrno>
#include <filesystem>

#include "core/files/files.hpp"
#include "core/files/output_guard.hpp"
#include "core/files/paths.hpp"

namespace velmora {

std::string WriteTemporaryFile(std::string_view name, std::string_view bytes) {
  std::error_code error;
  std::string directory = (std::filesystem::temp_directory_path(error) / "velmora2-XXXXXX").string();
  if (error || ::mkdtemp(directory.data()) == nullptr) {
    ThrowFileError(error ? error.value() : errno);
  }
  std::string path = directory + "/" + std::string(FileNamePart(name));
  OutputGuard::Ask(path);
  const OutputGuard noOutputOfTheRun([](const std::string&) {});  // nobody could make it again at this path
  OutputFile file(path);
  file.Write(bytes);
  file.Commit();
  return path;
}

}  // namespace velmora
