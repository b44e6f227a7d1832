#pragma once

#include <string>
#include <vector>

#include "core/questions/form.hpp"
#include "dsp/filters/filter_response.hpp"

namespace velmora::ui {

/// What a dialogue of digital filters would run on one channel.
struct ShownFilter {
  std::vector<double> edges;  // Hz; none: the channel is left as it is
  RunningFilter filter;
  std::string refusal;  // why it would be refused, one sentence

  [[nodiscard]] bool Runs() const { return !edges.empty() && refusal.empty(); }
};

/// Whether a form is such a dialogue.
bool ShowsFilter(const Form& form);

/// Of such a form as it is filled in, for a channel (from 1) of a trial sampled at `rate` Hz.
ShownFilter FilterOf(const Form& form, int channel, double rate);

}  // namespace velmora::ui
