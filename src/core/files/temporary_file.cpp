#include "core/files/temporary_file.hpp"

#include "core/files/files.hpp"
#include "core/files/output_guard.hpp"
#include "core/files/own_directory.hpp"
#include "core/files/paths.hpp"

namespace velmora {

std::string WriteTemporaryFile(std::string_view name, std::string_view bytes) {
  std::string path = MakeTemporaryDirectory() + "/" + FileNamePart(name);
  OutputGuard::Ask(path);
  const OutputGuard noOutputOfTheRun([](const std::string&) {});  // nobody could make it again at this path
  OutputFile file(path);
  file.Write(bytes);
  file.Commit();
  return path;
}

}  // namespace velmora
