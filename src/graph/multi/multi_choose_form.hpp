#pragma once

#include <cstdint>
#include <string>

#include "graph/graph_channel_form.hpp"
#include "graph/multi/graph_layout.hpp"

namespace velmora {

/// Which channels the multi-axis graph shows and on which graphs, at which scale and through how long a
/// window. What was chosen goes to the picker's state, the trial's colours, graph numbers and pairing, and
/// `workbench.graph`; nothing does when the form is cancelled.
class MultiChooseForm : public GraphChannelForm {
 public:
  /// Offers the layout chosen last to a view that is open, else the trial's own.
  enum class Offer { OfTrial, OfView };
  MultiChooseForm(Workbench& workbench, Offer offer);

  /// The graph of each channel as the fields stand; 0: not shown.
  [[nodiscard]] PerChannel<std::int16_t> Assigned() const;
  [[nodiscard]] const ChannelNumbers& Colours() const { return colours_; }
  [[nodiscard]] bool ShowsDeviations() const { return sds_; }

 private:
  [[nodiscard]] GraphLayout Layout() const;
  void OfferLayout(Offer offer);
  void AddLayoutFields();
  void AddScaleField();
  void CountChecked();
  void SelectionChanged() override { CountChecked(); }
  bool Accept() override;

  std::string checked_;
  ChannelNumbers numbers_{};
  std::int32_t scale_ = 0;
  std::int32_t single_ = 0;
  bool paired_ = false;
  bool halfToHalf_ = false;
  bool halves_ = false;
  bool triplets_ = false;
  bool sds_ = false;
  bool combinations_ = false;
};

/// "Use PageUp/PageDown ...", once a run, when the view window is shorter than the trial.
void TellPanningKeys(Workbench& workbench);

}  // namespace velmora
