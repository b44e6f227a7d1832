#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace velmora::test {

/// A directory of its own for one test, gone when the test ends.
class TemporaryDirectory {
 public:
  explicit TemporaryDirectory(const std::filesystem::path& in = std::filesystem::temp_directory_path());
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
  ~TemporaryDirectory();

  [[nodiscard]] std::string Path(std::string_view name) const;

 private:
  std::filesystem::path path_;
};

std::string ReadFile(const std::string& path);
void WriteFile(const std::string& path, std::string_view bytes);

}  // namespace velmora::test
