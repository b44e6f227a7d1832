#pragma once

#include <string>

namespace velmora {

/// Makes an empty directory among the temporary files of the system, which only this user can enter. Throws
/// FileError.
std::string MakeTemporaryDirectory();

/// Such a directory, which goes, with what is in it, when the object does.
class OwnDirectory {
 public:
  /// Throws FileError.
  OwnDirectory();
  OwnDirectory(const OwnDirectory&) = delete;
  OwnDirectory& operator=(const OwnDirectory&) = delete;
  ~OwnDirectory();

  /// Without links.
  [[nodiscard]] const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace velmora
