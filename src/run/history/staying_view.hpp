#pragma once

#include <memory>
#include <vector>

#include "core/workbench.hpp"
#include "run/history/recorder.hpp"

namespace velmora {

/// The graph that is open while steps are repeated from the load on: it shows the trial as it is then, unless
/// the steps open one of their own. Who compares before and after has it before their eyes.
class StayingView {
 public:
  /// Closes the graph, as far as the steps see.
  StayingView(Workbench& workbench, Recorder& recorder);
  void ComeBack();

 private:
  Workbench& workbench_;
  Recorder& recorder_;
  std::vector<RecordedStep> looks_;
  std::unique_ptr<OpenView> view_;
};

}  // namespace velmora
