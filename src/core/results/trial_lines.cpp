#include "core/results/trial_lines.hpp"

#include "core/files/paths.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"

namespace velmora {

std::string TrialLines(const Workbench& workbench) {
  const Trial& trial = workbench.trial;
  const NumberPatterns& patterns = workbench.patterns;
  return "Filename:\t" + OneLine(trial.FileName) + "\nTrial code:\t" + OneLine(trial.TrialName) +
         "\tTrial:\t" + std::to_string(trial.TrialIndex) + "\nDuration (s):\t" +
         FormatNumber(trial.Duration, patterns.TimePattern) + "\nSampling rate (Hz):\t" +
         FormatNumber(trial.Rate, patterns.RatePattern) + "\n";
}

bool TitleIsPath(const Trial& trial) {
  const std::string title = Trim(trial.TrialTitle);
  return title.starts_with('/') || (title.size() > 2 && title[1] == ':' && title[2] == '\\');
}

std::string TitleOnOneLine(const Trial& trial) {
  const std::string title = OneLine(Trim(trial.TrialTitle));
  return TitleIsPath(trial) ? FileNamePart(title) : title;
}

std::string LabelOnOneLine(const Trial& trial, int channel) {
  return OneLine(Trim(trial.ChanLabel[channel].Text()));
}

std::string ChannelLine(const Trial& trial, int channel) {
  return "Channel:\t" + ChannelNumber(channel) + "\t" + OneLine(Trim(trial.ChanLabel[channel].Text())) + "\n";
}

}  // namespace velmora
