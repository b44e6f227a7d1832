#include "graph/multi/multi_choose_form.hpp"

#include <algorithm>

#include "core/trial/helpers.hpp"
#include "graph/view_window.hpp"

namespace velmora {

MultiChooseForm::MultiChooseForm(Workbench& workbench, Offer offer)
    : GraphChannelForm(workbench, "frmGraph2Choose", "Multiaxis Graph Channel Selection") {
  OfferLayout(offer);
  AddChannelFields();
  fields_[0].edited = [this] { CountChecked(); };
  fields_.push_back({.name = "txtChannels",
                     .caption = "Graph",
                     .target = &numbers_,
                     .lowest = 0,
                     .highest = kMaxChannels,
                     .pattern = "0",
                     .hidden = !combinations_});
  fields_.push_back({.name = "txtChecked", .caption = "Channels", .target = &checked_, .readOnly = true});
  AddScaleField();
  AddWindowFields("txtWindow", "txtPan", "0.0");
  AddLayoutFields();
  AddMaximizedField();
  AddButtons("O&K", {"&Deselect", "D&eselect All"});
  CountChecked();
}

void MultiChooseForm::OfferLayout(Offer offer) {
  const Trial& trial = workbench_.trial;
  const GraphMemory& memory = workbench_.graph;
  paired_ = trial.PairedGraphs;
  for (int c = 1; c <= trial.NChan; ++c) {
    const int slot = trial.ChanGraphSlot[c];
    numbers_[c] = slot > 0 ? slot : c;
  }
  if (offer == Offer::OfView) {
    const auto layout = static_cast<GraphLayout>(memory.Layout);
    paired_ = layout == GraphLayout::Pairs && !memory.ShowDeviations;
    halfToHalf_ = layout == GraphLayout::HalfToHalf;
    halves_ = layout == GraphLayout::Halves;
    triplets_ = layout == GraphLayout::Triplets;
    combinations_ = layout == GraphLayout::Combinations;
    sds_ = memory.ShowDeviations;
    scale_ = memory.MultiScaleChoice;
  }
}

void MultiChooseForm::AddScaleField() {
  FormField field{.name = "cmbScale", .caption = "Scale of Y-Axis", .target = &scale_};
  field.choices = {"Autoscale", "SD of 1", "SD of 2", "SD of 3", "SD of 4"};
  if (!workbench_.graph.GraphLimits.empty()) {
    field.choices.emplace_back("No change");
  }
  scale_ = std::min(scale_, static_cast<std::int32_t>(field.choices.size()) - 1);
  fields_.push_back(std::move(field));
}

void MultiChooseForm::AddLayoutFields() {
  const auto add = [this](const char* name, const char* caption, bool& target) {
    fields_.push_back({.name = name, .caption = caption, .target = &target});
  };
  add("chkPaired", "&Paired", paired_);
  add("chkAB", "A/&B", halfToHalf_);
  add("chkTop", "1&/2", halves_);
  add("chk3D", "&Triplets (3D)", triplets_);
  add("chkSDs", "&SDs", sds_);
  add("chkCombinations", "&Combinations", combinations_);
  fields_.back().edited = [this] {
    const auto numbers = std::find_if(fields_.begin(), fields_.end(),
                                      [](const FormField& field) { return field.name == "txtChannels"; });
    numbers->hidden = !combinations_;
  };
  fields_.push_back({.name = "optSingle",
                     .caption = "Graph type",
                     .target = &single_,
                     .choices = {"Multiaxis", "Single-axis"}});
}

GraphLayout MultiChooseForm::Layout() const {
  return combinations_     ? GraphLayout::Combinations
         : paired_ || sds_ ? GraphLayout::Pairs
         : halfToHalf_     ? GraphLayout::HalfToHalf
         : halves_         ? GraphLayout::Halves
         : triplets_       ? GraphLayout::Triplets
                           : GraphLayout::OneByOne;
}

PerChannel<std::int16_t> MultiChooseForm::Assigned() const {
  return AssignGraphs(Layout(), workbench_.trial.NChan, channels_, numbers_);
}

void MultiChooseForm::CountChecked() {
  const auto end = channels_.begin() + workbench_.trial.NChan + 1;
  checked_ = "Total=" + std::to_string(std::count(channels_.begin() + 1, end, true));
}

bool MultiChooseForm::Accept() {
  const PerChannel<std::int16_t> graphs = Assigned();
  if (LargestGraph(graphs) == 0) {
    ShowRefusal(workbench_, {.text = "No graphs selected.", .icon = Icon::Exclamation});
    return false;
  }
  TakeChannels();
  GraphMemory& memory = workbench_.graph;
  memory.MultiAxisMode = single_ == 0;
  memory.GraphCombinations = combinations_;
  memory.Layout = static_cast<std::int32_t>(Layout());
  memory.ShowDeviations = sds_;
  memory.MultiScaleChoice = scale_;
  memory.GraphOfChannel = graphs;
  memory.NGraphs = static_cast<std::int16_t>(LargestGraph(graphs));
  workbench_.trial.PairedGraphs = paired_ || sds_;
  std::copy(graphs.begin() + 1, graphs.end(), workbench_.trial.ChanGraphSlot.begin() + 1);
  SettleViewWindow(workbench_, LongPan::Window);
  return true;
}

void TellPanningKeys(Workbench& workbench) {
  GraphMemory& memory = workbench.graph;
  if (memory.ViewDuration < workbench.trial.Duration && !memory.PanningTold) {
    memory.PanningTold = true;
    workbench.questions.AskBox({.title = "Panning Keys",
                                .text = "Use PageUp/PageDown to pan right and left, respectively.\nSee "
                                        "Help/Keyboard for other keyboad functions.",
                                .icon = Icon::Information});
  }
}

}  // namespace velmora
