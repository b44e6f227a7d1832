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
  std::string what;                   // with the parameters in force, without the channels; empty: nothing
  std::vector<std::string> channels;  // labels of those it changed; empty: it is not about channels
  bool allChannels = false;           // they were all that the trial had
  std::vector<LeftChannel> refused;
};

/// How much a sentence names before it says how many there are.
enum class Telling {
  Briefly,  // for a line of a list: "EMG 1, EMG 2, EMG 3, EMG 4 and 8 others (12 channels)"
  InFull,
};

/// The deed as a sentence without its full stop.
std::string SentenceOf(const Deed& deed, Telling telling = Telling::Briefly);

/// What a command did, one sentence after the other: "Scaled by 2: EMG 1. Scaled by 3: EMG 2". Briefly, not
/// all of many are told.
std::string WordsOf(const std::vector<Deed>& deeds, Telling telling = Telling::Briefly);

/// Whether anything was done, and not only refused.
bool DidAnything(const std::vector<Deed>& deeds);

/// What was done since the trial was loaded.
struct StepsDone {
  std::vector<std::string> words;  // a sentence each, without its full stop
  std::string recipe;              // YAML that repeats it
};

/// What came of a command beyond its effect on the trial: a recipe stops at a failure and lists warnings
/// in its closing table. A command that reports no deed did nothing and is no step of the history.
struct CommandReport {
  std::vector<std::string> failures;
  std::vector<std::string> warnings;
  std::vector<Deed> deeds;
};

}  // namespace velmora
