#pragma once

#include "results/statistics_form.hpp"

namespace velmora {

/// frmEMGstats: amplitude statistics of all channels over samples StatLo to StatHi. Opening it takes each
/// channel's mean and deviation, from which thresholds are made.
class EmgStatisticsForm : public StatisticsForm {
 public:
  explicit EmgStatisticsForm(Workbench& workbench);

 private:
  void Compute();
  void CalculateThresholds();
  void EnterThresholds();
  [[nodiscard]] std::string ClipboardText() const override;
};

/// Shows the form over samples StatLo to StatHi.
void ShowEmgStatistics(Workbench& workbench);

}  // namespace velmora
