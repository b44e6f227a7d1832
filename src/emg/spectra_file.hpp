#pragma once

#include <string>

#include "core/files/files.hpp"
#include "core/trial/helpers.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// Which powers of the spectra a file is to hold.
enum class SavedPower { None, Absolute, Relative };

/// A tab-separated file of spectra by interval, written as they come: heads with the frequencies, then a line
/// an interval, its time and its powers. All throw FileError.
class SpectraFile {
 public:
  SpectraFile(const std::string& path, SavedPower power) : file_(path), power_(power) {}

  /// The spectrum in the workbench is that of the interval which begins at `from`, in seconds.
  void Append(const Workbench& workbench, double from);
  void Commit(Workbench& workbench) { CommitSave(workbench, file_); }

 private:
  OutputFile file_;
  SavedPower power_;
  bool begun_ = false;
};

}  // namespace velmora
