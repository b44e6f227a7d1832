#pragma once

#include "core/workbench.hpp"

// What the analyses of spectra begin with.
namespace velmora {

/// "Process within Window?", unless the cursors span the trial; No puts them at its ends. False after Cancel.
bool AskCursorWindow(Workbench& workbench);

/// An analysis changes no data; the picker marks them as changed all the same.
class KeepsChanged {
 public:
  explicit KeepsChanged(Workbench& workbench);
  KeepsChanged(const KeepsChanged&) = delete;
  KeepsChanged& operator=(const KeepsChanged&) = delete;
  ~KeepsChanged();

 private:
  Workbench& workbench_;
  bool before_;
};

}  // namespace velmora
