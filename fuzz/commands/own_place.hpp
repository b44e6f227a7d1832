#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "core/files/output_guard.hpp"

namespace velmora::fuzz {

/// While it lives, an empty directory of this process's own is the current one, where all files of an input
/// lie; temporary files lie beside it. A command that writes a file elsewhere breaks a promise.
class OwnPlace {
 public:
  explicit OwnPlace(const std::string& name);
  OwnPlace(const OwnPlace&) = delete;
  OwnPlace& operator=(const OwnPlace&) = delete;
  ~OwnPlace();

  [[nodiscard]] std::string Path(const std::string& name) const;
  void Write(const std::string& name, const std::string& bytes) const;
  /// The files, those of other names first.
  [[nodiscard]] std::vector<std::string> Files() const;
  /// Names and bytes of all of them.
  [[nodiscard]] std::vector<std::string> Contents() const;
  /// Breaks off when the file lies outside.
  void WantInside(const std::string& path) const;

 private:
  std::filesystem::path directory_;
  std::filesystem::path before_ = std::filesystem::current_path();
  OutputGuard guard_{[this](const std::string& path) { WantInside(path); }};
};

}  // namespace velmora::fuzz
