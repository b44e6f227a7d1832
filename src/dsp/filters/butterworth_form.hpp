#pragma once

#include <cstdint>
#include <string>

#include "core/questions/form.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// The dialogue of the recursive filters: pass type, design and padding for all channels; cut-off,
/// passes and zero lag for each. Its accepting button filters the trial.
class ButterworthForm : public Form {
 public:
  explicit ButterworthForm(Workbench& workbench);

  /// A click in the list of cut-offs or of passes: asks for the channel's new value.
  void ClickCutoff(int channel);
  void ClickPasses(int channel);

 private:
  enum class Touched { Neither, Cutoffs, Passes };

  void AddFields();
  void AddButtons();
  void CutoffEdited();
  void PassesEdited();
  void ZeroLagEdited();
  void SetCutoff(int channel, double cutoff);
  void UpdateOrders();
  void ClearChannels();
  void Filter();
  /// What its report says behind the cut-off.
  [[nodiscard]] std::string MoreWords() const;
  void CopyLastToAll();
  void Cancel();
  void Help();

  Workbench& workbench_;
  std::int32_t optPassType_ = 0;
  std::int32_t optFilter_ = -1;  // none set: Butterworth
  std::int32_t optPad_ = 2;
  std::int32_t cwnPadding_ = 0;
  std::int32_t paddingOffered_ = 0;
  bool chkRectify_ = false;
  ChannelNumbers cutoffs_{};  // Hz
  ChannelNumbers passes_{};
  ChannelNumbers orders_{};

  Touched touched_ = Touched::Neither;
  double lastCutoff_ = 0.0;
  double lastPasses_ = 1.0;
  bool lastZeroLag_ = true;
};

}  // namespace velmora
