#include "dsp/smoothing/window_width.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"

namespace velmora {

WindowWidthEntry::WindowWidthEntry(const Workbench& workbench)
    : width(workbench.smoothing.WindowWidth), inSeconds(workbench.smoothing.WindowInSeconds) {
  if (inSeconds) {
    width = workbench.trial.Rate > 0 ? width / workbench.trial.Rate : 0.0;
  }
}

bool WindowWidthEntry::UnitEdited(const Workbench& workbench) {
  if (typed) {
    return false;
  }
  const double rate = workbench.trial.Rate;
  const double samples = workbench.smoothing.WindowWidth;
  width = inSeconds ? (rate > 0 ? samples / rate : 0.0) : samples;
  return true;
}

bool WindowWidthEntry::Accept(Workbench& workbench) const {
  const Trial& trial = workbench.trial;
  const std::int32_t highest =
      std::min<std::int32_t>(trial.NData - 1, std::numeric_limits<std::int16_t>::max());
  const double samples = inSeconds ? width * trial.Rate : width;
  const std::int64_t whole = std::isfinite(samples) ? RoundHalfEven(samples) : 0;
  if (whole < 1 || whole > highest) {
    std::string text = "The window must be from 1 to " + std::to_string(highest) + " samples wide.";
    if (inSeconds && trial.Rate > 0) {
      text += "\nThat is at most " + FormatNumber(highest / trial.Rate, "0.000 s.");
    }
    ShowRefusal(workbench, {.title = "Invalid Window Width", .text = text, .icon = Icon::Exclamation});
    return false;
  }
  workbench.smoothing.WindowWidth = static_cast<std::int16_t>(whole);
  workbench.smoothing.WindowInSeconds = inSeconds;
  return true;
}

}  // namespace velmora
