#pragma once

#include <functional>
#include <string>

namespace velmora {

/// While it lives, every OutputFile of this process asks `check` before it is begun. Whoever saves knows
/// only its own file; whoever runs many commands at once knows which files are somebody else's.
class OutputGuard {
 public:
  /// Gets the absolute path of the file to be written. Throws FileError to refuse it.
  using Check = std::function<void(const std::string& path)>;

  explicit OutputGuard(Check check);
  OutputGuard(const OutputGuard&) = delete;
  OutputGuard& operator=(const OutputGuard&) = delete;
  ~OutputGuard();

  static void Ask(const std::string& path);

 private:
  Check check_;
  OutputGuard* before_;
};

}  // namespace velmora
