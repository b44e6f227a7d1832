#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/trial/trial.hpp"

namespace velmora {

/// An event that came with the file, as a header line tells it: "Event 2.720 s RIC Right".
struct EventLine {
  double time = 0.0;  // seconds, on the abscissa of the trial
  std::string words;
};

std::string EventLineText(const EventLine& event);
/// Nothing when the line tells of something else.
std::optional<EventLine> ReadEventLine(std::string_view line);

/// The events of the header lines as times from the first sample, where their samples are now: a stretch that
/// was cropped with its times takes them along. Those whose samples are gone are left out, and all of them
/// while the abscissa does not count seconds.
std::vector<EventLine> EventsFromFirstSample(const Trial& trial);

/// The header lines tell the events anew, at `timeOf` their seconds from the first sample. Nothing happens
/// while row 0 does not count seconds.
void RetimeEventLines(Trial& trial, const std::function<double(double)>& timeOf);

}  // namespace velmora
