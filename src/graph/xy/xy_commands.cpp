#include "graph/xy/xy_commands.hpp"

#include <array>
#include <memory>

#include "core/results/result_form.hpp"
#include "core/trial/helpers.hpp"
#include "graph/xy/xy_choose_form.hpp"
#include "graph/xy/xy_view.hpp"

namespace velmora {
namespace {

void Open(Workbench& workbench) {
  if (workbench.trial.NData == 0 || workbench.trial.NChan == 0) {
    return;
  }
  XYSetup setup = FirstSetup(workbench);
  if (XYChooseForm(workbench, setup).Ask()) {
    CloseView(workbench);
    workbench.view = std::make_unique<XYView>(workbench, setup);
  }
}

template <void (XYView::*procedure)()>
void OnView(Workbench& workbench) {
  (OpenXYView(workbench).*procedure)();
}

template <bool XYSetup::*option>
bool IsOn(const Workbench& workbench) {
  const XYView* view = FindXYView(workbench);
  return view != nullptr && view->Setup().*option;
}

void ShowTable(Workbench& workbench) {
  const XYView& view = OpenXYView(workbench);
  ShowResults(workbench, {.name = view.Table().name,
                          .title = view.TitleText(),
                          .file = {.what = "X-Y plot", .extension = ".tab"},
                          .head = {.range = view.Range()},
                          .tables = {view.Table()}});
}

constexpr std::string_view kViewMenu = "&View";
constexpr std::string_view kPlot = "&X-Y plot";

constexpr std::array kXYCommands = {
    Command{"graph.xy", "&X-Y plot", kViewMenu, Needs::Data, Open},
    Command{"xy.table", "&Loop area, length, slope", kPlot, Needs::View, ShowTable},
    Command{"xy.equal-scales", "&Equal scales", kPlot, Needs::View, OnView<&XYView::ToggleEqualScales>,
            nullptr, IsOn<&XYSetup::EqualScales>},
    Command{"xy.marks", "&Mark start and end", kPlot, Needs::View, OnView<&XYView::ToggleMarks>, nullptr,
            IsOn<&XYSetup::Marks>},
    Command{"xy.colour-by-time", "Colour by &time", kPlot, Needs::View, OnView<&XYView::ToggleColourByTime>,
            nullptr, IsOn<&XYSetup::ColourByTime>},
    Command{"xy.ellipse", "&95% ellipse", kPlot, Needs::View, OnView<&XYView::ToggleEllipse>, nullptr,
            IsOn<&XYSetup::Ellipse>},
};

}  // namespace

std::span<const Command> XYCommands() {
  return kXYCommands;
}

}  // namespace velmora
