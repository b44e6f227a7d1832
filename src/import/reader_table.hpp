#pragma once

#include <string_view>

namespace velmora {

class ProgressPanel;
struct Workbench;

/// One row per format: a reader takes its path from trial.FileName, fills the trial, drives the
/// panel, and leaves NData 0 on failure.
struct Reader {
  std::string_view extension;  // upper case
  void (*read)(Workbench&, ProgressPanel&);
};

/// nullptr when no reader takes the extension (upper case).
const Reader* FindReader(std::string_view extension);

}  // namespace velmora
