#pragma once

#include <string>

#include "core/results/result_form.hpp"
#include "core/workbench.hpp"
#include "dsp/channel_list.hpp"

namespace velmora {

/// Computes the distribution of a channel into the workbench, and its report. A channel that has none is
/// told, with the report as it was and an empty distribution, and false comes back.
bool ComputeApdf(Workbench& workbench, int channel);

/// frmAPDF: the distribution in the workbench as graph and table.
class ApdfForm : public ResultForm {
 public:
  /// `chosen`: the channels of this analysis, whose running sums can be laid over each other.
  ApdfForm(Workbench& workbench, int channel, ChannelList chosen);

 private:
  void AddFields();
  void AddButtons();
  void TakeBins();
  void Fill();
  void DrawGraph();
  void AddOtherChannels(FormGraph& graph) const;
  void AskMaximum();
  [[nodiscard]] ResultTable Table() const;
  [[nodiscard]] std::string FileText() const;
  [[nodiscard]] std::string ClipboardText() const override;
  std::string Save();

  int channel_;
  ChannelList chosen_;
  std::int32_t bins_;
  std::int32_t largestBin_;
  bool limits_ = false;
  bool all_ = false;
};

}  // namespace velmora
