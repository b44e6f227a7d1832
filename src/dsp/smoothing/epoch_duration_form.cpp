#include "dsp/smoothing/epoch_duration_form.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"

namespace velmora {

EpochDurationForm::EpochDurationForm(Workbench& workbench)
    : Form("frmSetEpochDuration", "Set Window Width"),
      workbench_(workbench),
      width_(workbench.smoothing.WindowWidth),
      inSeconds_(workbench.smoothing.WindowInSeconds) {
  const double rate = workbench.trial.Rate;
  if (inSeconds_) {
    width_ = rate > 0 ? width_ / rate : 0.0;
  }
  if (workbench.trial.NChan == 1) {
    channels_[1] = true;
  }
  fields_ = {
      {.name = "WindowWidth",
       .caption = "&Window width",
       .target = &width_,
       .edited = [this] { typed_ = true; }},
      {.name = "WindowInSeconds",
       .caption = "Width in &seconds",
       .target = &inSeconds_,
       .edited = [this] { UnitEdited(); }},
      {.name = "channels", .caption = "&Channels", .target = &channels_, .isSelection = true},
  };
  buttons_ = {
      {"&OK", FormButton::Role::Accept, [this] { return Accept(); }},
      {"&Cancel", FormButton::Role::Cancel, [] { return true; }},
  };
}

bool EpochDurationForm::Ask() {
  Show(workbench_);
  return accepted_;
}

// The width offered is shown in the other unit; a width that was typed is meant in the unit chosen.
void EpochDurationForm::UnitEdited() {
  if (!typed_) {
    const double rate = workbench_.trial.Rate;
    const double width = workbench_.smoothing.WindowWidth;
    width_ = inSeconds_ ? (rate > 0 ? width / rate : 0.0) : width;
  }
}

bool EpochDurationForm::Accept() {
  const Trial& trial = workbench_.trial;
  const std::int32_t highest =
      std::min<std::int32_t>(trial.NData - 1, std::numeric_limits<std::int16_t>::max());
  const double samples = inSeconds_ ? width_ * trial.Rate : width_;
  const std::int64_t width = std::isfinite(samples) ? RoundHalfEven(samples) : 0;
  if (width < 1 || width > highest) {
    std::string text = "The window must be from 1 to " + std::to_string(highest) + " samples wide.";
    if (inSeconds_ && trial.Rate > 0) {
      text += "\nThat is at most " + FormatNumber(highest / trial.Rate, "0.000 s.");
    }
    ShowRefusal(workbench_, {.title = "Invalid Window Width", .text = text, .icon = Icon::Exclamation});
    return false;
  }
  workbench_.smoothing.WindowWidth = static_cast<std::int16_t>(width);
  workbench_.smoothing.WindowInSeconds = inSeconds_;
  workbench_.chooser.ChanSelected = channels_;
  accepted_ = true;
  return true;
}

}  // namespace velmora
