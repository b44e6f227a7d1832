#pragma once

#include <string>
#include <vector>

namespace velmora {

/// A channel that a command left as it was, and why: "600 Hz, at most 250 Hz".
struct LeftChannel {
  std::string channel;  // its label
  std::string why;
};

/// What a command did, as the history, the runner's closing table, the transcript and a report tell it:
/// "Low-pass Butterworth, 2nd order, zero-lag, 6 Hz: Vastus lat, Biceps fem. Refused: Footswitch (600 Hz,
/// at most 250 Hz)". Labels are those at the time.
struct Deed {
  std::string what;                   // with the parameters in force, without the channels
  std::vector<std::string> channels;  // labels of those it changed; empty: it is not about channels
  std::vector<LeftChannel> refused;
};

/// What came of a command beyond its effect on the trial: a recipe stops at a failure and lists warnings
/// in its closing table. A command that reports no deed did nothing and is no step of the history.
struct CommandReport {
  std::vector<std::string> failures;
  std::vector<std::string> warnings;
  std::vector<Deed> deeds;
};

}  // namespace velmora
