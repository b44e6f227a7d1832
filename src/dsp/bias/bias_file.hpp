#pragma once

#include <stdexcept>
#include <string>

#include "core/workbench.hpp"

namespace velmora {

/// A bias file (.BSV) that cannot be used; title() and what() are the box's.
class BiasFileError : public std::runtime_error {
 public:
  BiasFileError(std::string title, const std::string& text)
      : std::runtime_error(text), title_(std::move(title)) {}
  [[nodiscard]] const std::string& title() const { return title_; }

 private:
  std::string title_;
};

/// Asks for a name and writes the levels in ChanConst, with the labels of their channels.
/// Throws FileError, with workbench.OutputFileName set, when the file cannot be written.
void WriteBiasFile(Workbench& workbench);

/// Reads one level per channel into `levels`, in the order of the file whatever its labels. Fields are
/// parted by tabs; a comma ends an item as a line end does, so that one inside a label moves the
/// levels behind it. A channel without a level has 0. Returns whether each has one.
/// Throws BiasFileError; levels read before an end that came too soon are then in `levels`.
bool ReadBiasFile(const std::string& path, int channels, PerChannel<float>& levels);

}  // namespace velmora
