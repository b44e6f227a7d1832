#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>

#include "core/questions/form.hpp"
#include "core/workbench.hpp"
#include "dsp/filters/filter_section.hpp"

namespace velmora {

/// The dialogue of the digital filters of any order: pass type and design for all channels; cut-offs and
/// order for each. Its accepting button filters the trial.
class SmoothForm : public Form {
 public:
  explicit SmoothForm(Workbench& workbench);

  /// A click in the list of cut-offs, of upper cut-offs or of orders: asks for the channel's new value.
  void ClickCutoff(int channel);
  void ClickSecondCutoff(int channel);
  void ClickOrder(int channel);

  /// Whether it was left for the dialogue of the zero-lag filters.
  [[nodiscard]] bool WantsZeroLag() const { return wantsZeroLag_; }

 private:
  void AddFields();
  void AddButtons();
  void PassTypeEdited();
  void DesignEdited();
  void OfferCutoffs();
  bool Filter();
  bool ForEachChannel(const std::function<bool(int)>& filter);
  bool FilterByDesign();
  bool FilterByPasses(FilterDesign design);
  void DesignAndRun(int channel);
  /// Reports what was filtered and what was not.
  void Tell();
  [[nodiscard]] std::string DesignWords(int channel) const;
  void Cancel();
  [[nodiscard]] std::int16_t Order(int channel) const;

  Workbench& workbench_;
  PerChannel<float> cutoffsBefore_;
  PerChannel<float> secondCutoffsBefore_;
  ChannelFlags zeroLagBefore_;
  std::string note_;
  std::int32_t optPassType_ = 0;
  std::int32_t optFilter_ = 0;
  ChannelNumbers cutoffs_{};        // Hz
  ChannelNumbers secondCutoffs_{};  // Hz
  ChannelNumbers orders_{};
  bool wantsZeroLag_ = false;
  // Of the last press of Filter: what was done by channel, and why not.
  std::map<int, std::string> told_;
  std::map<int, std::string> refused_;
};

}  // namespace velmora
