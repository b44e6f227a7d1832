#pragma once

#include <string>

#include "core/questions/form.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// Computes the distribution of a channel into the workbench, and its report. A channel that has none is
/// told, with the report as it was and an empty distribution.
void ComputeApdf(Workbench& workbench, int channel);

/// frmAPDF: the distribution in the workbench as graph and table.
class ApdfForm : public Form {
 public:
  ApdfForm(Workbench& workbench, int channel);

 private:
  void AddFields();
  void AddButtons();
  void TakeBins();
  void Fill();
  void DrawGraph();
  void AskMaximum();
  [[nodiscard]] ResultTable Table() const;
  void ShowTable(bool on);
  [[nodiscard]] std::string FileText() const;
  [[nodiscard]] std::string ClipboardText() const;
  std::string Save();

  Workbench& workbench_;
  int channel_;
  std::int32_t bins_;
  std::int32_t largestBin_;
  bool tableShown_ = false;
};

}  // namespace velmora
