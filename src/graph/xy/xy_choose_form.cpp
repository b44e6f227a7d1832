#include "graph/xy/xy_choose_form.hpp"

#include <algorithm>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/refusals.hpp"

namespace velmora {

XYChooseForm::XYChooseForm(Workbench& workbench, XYSetup& setup)
    : AnalysisForm(workbench, "frmXYChoose", "X-Y Plot"),
      setup_(setup),
      chosen_(setup),
      x_(std::clamp<std::int32_t>(setup.X, 0, workbench.trial.NChan)),
      range_(setup.BetweenCursors ? 1 : 0) {
  FormField& x = AddChannel("comX", "&X", x_);
  x.choices.front() = OneLine(LabelOf(workbench.trial, 0));
  x.edited = [this] { FollowUnits(); };
  AddChannels("channels", "&Y", chosen_.Y).edited = [this] { FollowUnits(); };
  AddChoice("optRange", "Range", range_, {"&All data", "Between &cursors"});
  AddFlag("chkEqual", "&Equal scales", chosen_.EqualScales).edited = [this] { equalTyped_ = true; };
  AddFlag("chkMarks", "Mark start and &end", chosen_.Marks);
  AddFlag("chkTime", "Colour by &time", chosen_.ColourByTime);
  AddFlag("chkEllipse", "95% e&llipse", chosen_.Ellipse);
  AddButtons("O&K");
}

void XYChooseForm::FollowUnits() {
  chosen_.X = x_;
  if (!equalTyped_) {
    chosen_.EqualScales = UnitsAgree(chosen_, workbench_);
    NoteFilled("chkEqual");
  }
}

bool XYChooseForm::Compute() {
  const std::vector<int> y = ChannelsOfY(chosen_, workbench_.trial);
  if (y.empty()) {
    RefuseTooFewChannels(workbench_, 1);
    return false;
  }
  if (chosen_.ColourByTime && !MayColourByTime(workbench_, y.size())) {
    return false;
  }
  chosen_.X = x_;
  chosen_.BetweenCursors = range_ == 1;
  setup_ = chosen_;
  return true;
}

}  // namespace velmora
