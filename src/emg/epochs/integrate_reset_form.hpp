#pragma once

#include <utility>
#include <vector>

#include "core/questions/analysis_form.hpp"
#include "core/results/result_form.hpp"
#include "dsp/channel_list.hpp"
#include "dsp/smoothing/window_width.hpp"
#include "emg/epochs/epochs.hpp"

namespace velmora {

/// The resetting integrator over whole channels.
class IntegrateResetForm : public AnalysisForm {
 public:
  explicit IntegrateResetForm(Workbench& workbench);

  /// What was done.
  [[nodiscard]] Results TakeResults() { return std::move(results_); }

 private:
  void Follow();
  bool Compute() override;
  void AddRows(ResultTable& table, int channel, const std::vector<IntegratorReset>& resets);
  [[nodiscard]] std::string Words() const;

  std::int32_t reset_ = 0;
  WindowWidthEntry width_;
  double level_ = 1.0;
  bool rectify_ = true;
  ChannelFlags channels_{};
  Results results_;
};

/// Shows the dialogue and what came of it. Refuses a trial that is not over time.
void IntegrateWithReset(Workbench& workbench);

}  // namespace velmora
