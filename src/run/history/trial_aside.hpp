#pragma once

#include <string>

#include "core/workbench.hpp"
#include "run/recipe/run_start.hpp"

namespace velmora {

/// The trial and what is known of it, out of the way while it is made anew from its file, so that it can come
/// back.
class TrialAside {
 public:
  /// Not one of more than a gigabyte: two of them may not fit into memory.
  static bool CanHold(const Trial& trial);

  explicit TrialAside(Workbench& workbench);
  void PutBack(Workbench& workbench);

 private:
  Trial trial_;
  NativeRecords records_;
  MergeStore merge_;
  TimeMemory time_;
  EventMemory events_;
  ResultMemory results_;
  std::string loadedFile_;
  RunStart start_;
};

}  // namespace velmora
