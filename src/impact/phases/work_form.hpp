#pragma once

#include "impact/phases/phases_form.hpp"

namespace velmora {

/// Positive and negative work of powers, angular impulse of moments, impulse of forces.
class WorkForm : public PhasesForm {
 public:
  WorkForm(Workbench& workbench, SampleRange range);

 private:
  bool Compute() override;
  /// Appends the running integral of each channel: 0 before the range, and what it reached behind it.
  void AddIntegrals();

  ChannelFlags channels_{};
  bool addIntegral_ = false;
};

/// Asks for the range, then the dialogue, and shows the phases.
void AnalyseWork(Workbench& workbench);

}  // namespace velmora
