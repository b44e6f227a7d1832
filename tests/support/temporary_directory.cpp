#include "support/temporary_directory.hpp"

#include <stdlib.h>

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace velmora::test {

TemporaryDirectory::TemporaryDirectory(const std::filesystem::path& in) {
  std::string name = (in / "velmora2-test-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) {
    throw std::runtime_error("no temporary directory");
  }
  path_ = name;
}

TemporaryDirectory::~TemporaryDirectory() {
  std::error_code error;
  std::filesystem::remove_all(path_, error);
}

std::string TemporaryDirectory::Path(std::string_view name) const {
  return (path_ / name).string();
}

std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    throw std::runtime_error("cannot read " + path);
  }
  return {std::istreambuf_iterator<char>(in), {}};
}

void WriteFile(const std::string& path, std::string_view bytes) {
  std::ofstream out(path, std::ios::binary);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!out.flush()) {
    throw std::runtime_error("cannot write " + path);
  }
}

}  // namespace velmora::test
