#pragma once

#include <functional>
#include <string>

namespace velmora {

/// While it lives, every OutputFile of this process asks `check` before it is begun and tells
/// `written` when it is in its place. Whoever saves knows
/// only its own file; whoever runs many commands at once knows which files are somebody else's.
class OutputGuard {
 public:
  /// Gets the absolute path of the file to be written. Throws FileError to refuse it.
  using Check = std::function<void(const std::string& path)>;

  /// Gets the path of a file that has been put in its place.
  using Written = std::function<void(const std::string& path)>;

  explicit OutputGuard(Check check, Written written = {});
  OutputGuard(const OutputGuard&) = delete;
  OutputGuard& operator=(const OutputGuard&) = delete;
  ~OutputGuard();

  static void Ask(const std::string& path);
  static void Tell(const std::string& path);

 private:
  Check check_;
  Written written_;
  OutputGuard* before_;
};

}  // namespace velmora
