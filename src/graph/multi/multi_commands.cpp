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
void TrackWithSelected(Workbench& workbench) {
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

void PrintStack(Workbench& workbench) {
  MultiView& view = OpenMultiView(workbench);
  const Button answer = workbench.questions.AskBox({.title = "Print Graph",
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
bool HasMultiScale(const Workbench& workbench) {
  const MultiView* view = FindMultiView(workbench);
  return view != nullptr && view->ShownScale() == static_cast<std::int32_t>(scale);
}

constexpr std::string_view kMultiView = "&View";
constexpr std::string_view kMultiFile = "&Multi-axis graph/&File";
constexpr std::string_view kMultiScale = "&Multi-axis graph/&Scale";
constexpr std::string_view kMultiZoom = "&Multi-axis graph/&Zoom";
constexpr std::string_view kMultiLine = "&Multi-axis graph/&Line";
constexpr std::string_view kMultiFormat = "&Multi-axis graph/&Format";
constexpr std::string_view kMultiFixDouble = "&Multi-axis graph/&Fix double-keying";

constexpr std::array kMultiCommands = {
    Command{"graph.multi", "Select Channels for &Multiaxis Graph", kMultiView, Needs::Data, OpenMulti},
    Command{"view.print", "&Print", kMultiFile, Needs::View, PrintStack},
    Command{"scale.same", "&Same scaling", kMultiScale, Needs::View, SetSameScale, nullptr,
            HasMultiScale<MultiScale::Same>},
    Command{"scale.min-max", "&Min./max", kMultiScale, Needs::View, CheckMinMax, nullptr,
            HasMultiScale<MultiScale::MinMax>},
    Command{"line.solid-dashed", "Alternate Solid and Dashed", kMultiLine, Needs::View,
            AlternateSolidAndDashed},
    Command{"format.number", "&Number format", kMultiFormat, Needs::View, ChooseNumberFormat},
    Command{"zoom.pan-x", "Pan &X-only", kMultiZoom, Needs::View, TrackWithSelected<TrackMode::PanX>},
    Command{"zoom.pan-y", "Pan &Y-only", kMultiZoom, Needs::View, TrackWithSelected<TrackMode::PanY>},
    Command{"zoom.reset-all", "Reset &All graphs", kMultiZoom, Needs::View, ResetAll},
    Command{"view.fix-double-keying", "&Fix double-keying", kMultiFixDouble, Needs::View, ToggleFixDouble,
            nullptr, FixesDouble},
};

}  // namespace

std::span<const Command> MultiCommands() {
  return kMultiCommands;
}

// Another view takes the place of this one.
void MultiView::ChangeChannels() {
  Workbench& workbench = workbench_;
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
