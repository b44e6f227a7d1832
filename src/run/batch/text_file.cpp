#include "run/batch/text_file.hpp"

#include <cstdint>

#include "core/files/files.hpp"

namespace velmora {

std::string ReadTextFile(const std::string& path) {
  const InputFile file(path);
  constexpr std::int64_t kLongest = std::int64_t{1} << 30;
  if (file.Size() > kLongest) {
    throw FileError("File too large");
  }
  std::string text(static_cast<std::size_t>(file.Size()), '\0');
  text.resize(file.ReadAt(0, text.data(), text.size()));
  return text;
}

}  // namespace velmora
