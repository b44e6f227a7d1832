#include "dsp/smoothing/epoch_duration_form.hpp"

#include "core/trial/refusals.hpp"

namespace velmora {

EpochDurationForm::EpochDurationForm(Workbench& workbench)
    : Form("frmSetEpochDuration", "Set Window Width"), workbench_(workbench), entry_(workbench) {
  if (workbench.trial.NChan == 1) {
    channels_[1] = true;
  }
  fields_ = {
      {.name = "WindowWidth",
       .caption = "&Window width",
       .target = &entry_.width,
       .edited = [this] { entry_.typed = true; }},
      {.name = "WindowInSeconds",
       .caption = "Width in &seconds",
       .target = &entry_.inSeconds,
       .edited =
           [this] {
             if (entry_.UnitEdited(workbench_)) {
               NoteFilled("WindowWidth");
             }
           }},
      {.name = "channels", .caption = "&Channels", .target = &channels_, .isSelection = true},
  };
  buttons_ = {
      {"&OK", FormButton::Role::Accept, [this] { return Accept(); }},
      {"&Cancel", FormButton::Role::Cancel, [] { return true; }},
  };
}

bool EpochDurationForm::Ask() {
  accepted_ = false;
  if (workbench_.trial.NData < 2) {  // no width would be taken
    RefuseTooFewData(workbench_);
    return false;
  }
  Show(workbench_);
  return accepted_;
}

bool EpochDurationForm::Accept() {
  accepted_ = entry_.Accept(workbench_);
  if (accepted_) {
    workbench_.chooser.ChanSelected = channels_;
  }
  return accepted_;
}

}  // namespace velmora
