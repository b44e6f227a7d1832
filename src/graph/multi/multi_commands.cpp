#include "graph/multi/multi_commands.hpp"

#include <array>
#include <memory>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "graph/multi/multi_choose_form.hpp"
#include "graph/multi/multi_values.hpp"
#include "graph/multi/multi_view.hpp"
#include "graph/opening.hpp"
#include "graph/picture.hpp"
#include "graph/single_view.hpp"

namespace velmora {
namespace {

// The dialogue may have been left for the other graph.
void OpenChosen(Workbench& workbench) {
  CloseView(workbench);
  if (!workbench.graph.MultiAxisMode) {
    workbench.view = std::make_unique<SingleView>(workbench);
    return;
  }
  workbench.view = std::make_unique<MultiView>(workbench);
  TellPanningKeys(workbench);
}

void OpenMulti(Workbench& workbench) {
  if (workbench.trial.NData == 0) {
    return;
  }
  RestoreRate(workbench.trial);
  if (ConfirmMany(workbench) && MultiChooseForm(workbench, MultiChooseForm::Offer::OfTrial).Ask()) {
    OpenChosen(workbench);
  }
}

template <TrackMode mode>
void SetTrack(Workbench& workbench) {
  MultiView& view = OpenMultiView(workbench);
  if (MayPanOrZoom(workbench)) {
    view.SetTrack(mode);
  }
}

void ResetAll(Workbench& workbench) {
  OpenMultiView(workbench).Reset();
}

void SetSameScale(Workbench& workbench) {
  OpenMultiView(workbench).SetSameScale();
}

void CheckMinMax(Workbench& workbench) {
  OpenMultiView(workbench).CheckScale(MultiScale::MinMax);
}

void AlternateSolidAndDashed(Workbench& workbench) {
  for (Graph& graph : OpenMultiView(workbench).Graphs()) {
    graph.AlternateSolidAndDashed();
  }
}

// Any other answer leaves everything as it is.
void ChooseNumberFormat(Workbench& workbench) {
  OpenMultiView(workbench);
  const std::string typed = Trim(workbench.questions.AskInput(
      {.title = "Data Format",
       .prompt = "Enter number of decimal digits (0-4) for data values, E means E format."}));
  std::string& pattern = workbench.patterns.ValuePattern;
  if (EqualNoCase(typed, "E")) {
    pattern = "#.000000E+00";
  } else if (typed.size() == 1 && typed[0] >= '0' && typed[0] <= '4') {
    const auto decimals = static_cast<std::size_t>(typed[0] - '0');
    pattern = decimals == 0 ? "0" : "0." + std::string(decimals, '0');
  }
}

void Print(Workbench& workbench) {
  MultiView& view = OpenMultiView(workbench);
  const Button answer =
      workbench.questions.AskBox({.title = "Print Graph",
                                  .text = "Press OK to print the graph or press Cancel.",
                                  .icon = Icon::Question,
                                  .buttons = {Button::OK, Button::Cancel}});
  if (answer == Button::OK && workbench.desktop.printPicture) {
    const std::vector<Lane> lanes = LanesOf(view);
    workbench.desktop.printPicture(
        {.graph = view.Lead(), .title = view.TitleText(), .paper = kWhite, .lanes = lanes});
  }
}

void ToggleFixDouble(Workbench& workbench) {
  OpenMultiView(workbench).ToggleFixDouble();
}

bool FixesDouble(const Workbench& workbench) {
  const MultiView* view = FindMultiView(workbench);
  return view != nullptr && view->FixesDouble();
}

template <MultiScale scale>
bool HasScale(const Workbench& workbench) {
  const MultiView* view = FindMultiView(workbench);
  return view != nullptr && view->ShownScale() == scale;
}

constexpr std::string_view kView = "&View";
constexpr std::string_view kFile = "&Multi-axis graph/&File";
constexpr std::string_view kScale = "&Multi-axis graph/&Scale";
constexpr std::string_view kZoom = "&Multi-axis graph/&Zoom";
constexpr std::string_view kLine = "&Multi-axis graph/&Line";
constexpr std::string_view kFormat = "&Multi-axis graph/&Format";
constexpr std::string_view kFixDouble = "&Multi-axis graph/&Fix double-keying";

constexpr std::array kMultiCommands = {
    Command{"graph.multi", "Select Channels for &Multiaxis Graph", kView, Needs::Data, OpenMulti},
    Command{"view.print", "&Print", kFile, Needs::View, Print},
    Command{"scale.same", "&Same scaling", kScale, Needs::View, SetSameScale, nullptr,
            HasScale<MultiScale::Same>},
    Command{"scale.min-max", "&Min./max", kScale, Needs::View, CheckMinMax, nullptr,
            HasScale<MultiScale::MinMax>},
    Command{"line.solid-dashed", "Alternate Solid and Dashed", kLine, Needs::View, AlternateSolidAndDashed},
    Command{"format.number", "&Number format", kFormat, Needs::View, ChooseNumberFormat},
    Command{"zoom.pan-x", "Pan &X-only", kZoom, Needs::View, SetTrack<TrackMode::PanX>},
    Command{"zoom.pan-y", "Pan &Y-only", kZoom, Needs::View, SetTrack<TrackMode::PanY>},
    Command{"zoom.reset-all", "Reset &All graphs", kZoom, Needs::View, ResetAll},
    Command{"view.fix-double-keying", "&Fix double-keying", kFixDouble, Needs::View, ToggleFixDouble, nullptr,
            FixesDouble},
};

}  // namespace

std::span<const Command> MultiCommands() {
  return kMultiCommands;
}

void ChangeMultiChannels(Workbench& workbench) {
  if (MultiChooseForm(workbench, MultiChooseForm::Offer::OfView).Ask()) {
    OpenChosen(workbench);
  }
}

bool MayPanOrZoom(Workbench& workbench) {
  const MultiView* view = FindMultiView(workbench);
  if (view == nullptr || view->Selected() > 0) {
    return true;
  }
  ShowRefusal(workbench, {.title = "Click on a Graph",
                          .text = "Currently selected graph is number 1.\nFirst click on a graph before "
                                  "panning or zooming.",
                          .icon = Icon::Exclamation});
  return false;
}

}  // namespace velmora
