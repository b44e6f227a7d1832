#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/files/files.hpp"

namespace velmora {

/// Samples that a writer of text puts down between two looks at its progress panel.
inline constexpr std::int32_t kSamplesPerTurn = 1000;

/// Collects text in front of a file, so that numbers are put straight into their place and the file is
/// written in large pieces.
class TextBlock {
 public:
  explicit TextBlock(OutputFile& file) : file_(file), bytes_(kBlock) {}

  /// Where the next `room` bytes (at most 64 KiB) may go. Throws FileError.
  char* Begin(std::size_t room) {
    if (room > bytes_.size() - used_) {
      Flush();
    }
    return bytes_.data() + used_;
  }
  /// What was put ends at `end`.
  void End(const char* end) { used_ = static_cast<std::size_t>(end - bytes_.data()); }

  /// Everything is in the file when this returns. Throws FileError.
  void Flush() {
    file_.Write({bytes_.data(), used_});
    used_ = 0;
  }

 private:
  static constexpr std::size_t kBlock = std::size_t{256} << 10;

  OutputFile& file_;
  std::vector<char> bytes_;
  std::size_t used_ = 0;
};

}  // namespace velmora
