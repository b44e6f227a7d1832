#include "core/files/paths.hpp"

#include <filesystem>
#include <fstream>

#include "core/files/output_elsewhere.hpp"

namespace velmora {
namespace {

std::size_t NameStart(std::string_view path) {
  const std::size_t separator = path.find_last_of("/\\:");
  return separator == std::string_view::npos ? 0 : separator + 1;
}

}  // namespace

std::string FileNamePart(std::string_view path) {
  return std::string(path.substr(NameStart(path)));
}

std::string FileExtension(std::string_view path) {
  const std::string name = FileNamePart(path);
  const std::size_t point = name.rfind('.');
  return point == std::string::npos ? std::string() : name.substr(point + 1);
}

std::string BaseName(std::string_view path) {
  const std::string name = FileNamePart(path);
  return name.substr(0, name.rfind('.'));
}

std::string DirectoryOf(std::string_view path) {
  const std::size_t start = NameStart(path);
  return start == 0 ? "./" : std::string(path.substr(0, start));
}

std::string FullPath(const std::string& path) {
  std::error_code error;
  const std::filesystem::path full = std::filesystem::absolute(path, error);
  return error ? path : full.string();
}

bool PathExists(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(OutputElsewhere::ToRead(path), error);
}

bool FileExists(std::string_view directory, std::string_view name) {
  const std::filesystem::path path = std::filesystem::path(directory) / name;
  std::error_code error;
  const std::filesystem::file_type type = std::filesystem::status(path, error).type();
  const bool waits = type == std::filesystem::file_type::fifo;  // opening it waits for a writer
  return type != std::filesystem::file_type::directory && !waits && std::ifstream(path).is_open();
}

std::string FileSizeText(const std::string& path) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  return error ? std::string() : std::to_string(size);
}

std::string ShortNameOf(std::string_view path) {
  return FileNamePart(path);
}

}  // namespace velmora
