#pragma once

#include "core/questions/form.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// frmEMGstats: amplitude statistics of all channels over samples StatLo to StatHi. Opening it takes each
/// channel's mean and deviation, from which thresholds are made.
class EmgStatisticsForm : public Form {
 public:
  explicit EmgStatisticsForm(Workbench& workbench);

 private:
  void Compute();
  void AddButtons();
  void CalculateThresholds();
  void EnterThresholds();
  [[nodiscard]] std::string ClipboardText() const;

  Workbench& workbench_;
  std::int32_t firstSample_;
  std::int32_t lastSample_;
  std::int32_t count_;
  double startTime_;
  double endTime_;
  double duration_;
};

/// Shows the form over samples StatLo to StatHi.
void ShowEmgStatistics(Workbench& workbench);

}  // namespace velmora
