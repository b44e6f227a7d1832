#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/workbench.hpp"

namespace velmora {

// Files of fixed fields cut what is longer than a field, and hold the characters of Windows-1252 alone.

/// Characters of a label or of units that a native file, binary or ASCII, keeps.
inline constexpr std::size_t kNativeNameLength = 10;

/// What is lost of a name that somebody types, in words: here, where a trial keeps `length` characters, and
/// in a save. Empty when nothing is.
std::string NameRemark(std::string_view typed, std::size_t length);

/// Collects the texts of a file that is saved, and tells once what it lost of them.
class SavedNames {
 public:
  /// A text of which the file keeps `length` characters.
  void Add(std::string_view text, std::size_t length = std::string_view::npos);
  /// Notices on the trial; none when nothing was lost.
  void Tell(Workbench& workbench) const;

 private:
  std::vector<std::string> cut_;  // "Vastus lat" for "Vastus lateralis", with its quotes
  std::vector<std::string> lacking_;
};

}  // namespace velmora
