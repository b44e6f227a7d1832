#include "formats/delimited_text/layout/dialect_finish.hpp"

#include <array>
#include <cmath>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"

namespace velmora {
namespace {

// Counts of a bioPlux are centred on 2048 and span 5 mV over the converter's range.
void FinishBioPlux(Trial& trial, double resolutionBits) {
  constexpr int kFirstSignal = 3;
  const double factor = 5.0 / std::exp2(resolutionBits);
  trial.TrialTitle = trial.HeaderLines[1] + "  " + trial.HeaderLines[2];
  trial.ChanLabel[1] = "Counter";
  trial.ChanUnits[1] = "n";
  trial.ChanLabel[2] = "Digital Port";
  trial.ChanUnits[2] = "0/1";
  for (int c = kFirstSignal; c <= trial.NChan; ++c) {
    const auto i = static_cast<std::size_t>(c);
    trial.ChanLabel[i] = "EMG ch." + FormatNumber(c, "00");
    trial.ChanUnits[i] = "mV";
    trial.ChanGain[i] = factor;
    const ChannelView samples = trial.Channel(c);
    for (std::int64_t s = 0; s < samples.size(); ++s) {
      samples[s] = static_cast<float>((static_cast<double>(samples[s]) - 2048) * factor);
    }
  }
}

ChannelFlags FirstChannels(int count) {
  ChannelFlags flags{};
  for (int c = 1; c <= count; ++c) {
    flags[c] = true;
  }
  return flags;
}

bool AskDropRaw(Workbench& workbench) {
  return workbench.questions.AskBox(
             {.title = "Delete Raw (A/D) Data?",
              .text = "Do you want the raw data (first 16 channels) deleted?\nOriginal file is not affected.",
              .icon = Icon::Question,
              .buttons = {Button::Yes, Button::No}}) == Button::Yes;
}

// The formulas of the force program stand behind its 16 raw channels, in this order.
void FinishFormula1(Workbench& workbench) {
  constexpr int kRawChannels = 16;
  struct Formula {
    const char* label;
    const char* units;
  };
  constexpr std::array<Formula, 9> kFormulas = {{{"Fx", "N"},
                                                 {"Fy", "N"},
                                                 {"Fz", "N"},
                                                 {"Fz", "N"},
                                                 {"CofPy", "N.mm"},
                                                 {"CofPx", "N.mm"},
                                                 {"", "N"},
                                                 {"CofPx", "cm"},
                                                 {"CofPy", "cm"}}};
  Trial& trial = workbench.trial;
  int raw = trial.NChan > kRawChannels ? kRawChannels : 0;
  if (raw > 0 && AskDropRaw(workbench)) {
    trial.EraseChannels(FirstChannels(raw));
    raw = 0;
  }
  for (int c = raw + 1; c <= trial.NChan; ++c) {
    const auto i = static_cast<std::size_t>(c);
    const auto formula = static_cast<std::size_t>(c - raw - 1);
    const bool known = formula < kFormulas.size();
    trial.ChanLabel[i] =
        known ? Label(kFormulas[formula].label) : Label("Formula" + FormatNumber(c - raw, "00"));
    trial.ChanUnits[i] = known ? kFormulas[formula].units : "N";
  }
}

// Counts up by one from sample to sample.
bool IsCounter(const ChannelView& samples) {
  for (std::int64_t s = 1; s < samples.size(); ++s) {
    if (samples[s] != samples[s - 1] + 1.0F) {
      return false;
    }
  }
  return samples.size() > 1;
}

bool AreEqual(const ChannelView& a, const ChannelView& b) {
  for (std::int64_t s = 0; s < a.size(); ++s) {
    if (a[s] != b[s]) {
      return false;
    }
  }
  return true;
}

// Leading channels, at most two, that only repeat what the time column says, or one another.
int DuplicateCounters(Trial& trial, bool hasTime) {
  constexpr int kMost = 2;
  int count = 0;
  while (count < kMost && count + 1 < trial.NChan) {
    const ChannelView next = trial.Channel(count + 1);
    if (!hasTime || !(IsCounter(next) || AreEqual(next, trial.Channel(0)))) {
      break;
    }
    ++count;
  }
  const bool repeated = count == 0 && trial.NChan > kMost && IsCounter(trial.Channel(1)) &&
                        AreEqual(trial.Channel(1), trial.Channel(2));
  return repeated ? kMost : count;
}

bool RemovesCounters(int code) {
  return code == 93 || code == 33 || code == 51 || code == 82;
}

}  // namespace

void FinishDialect(Workbench& workbench, const TextHeader& header, const ParseSettings& settings) {
  Trial& trial = workbench.trial;
  if (!settings.ParseLeaveOut.empty() && RemovesCounters(trial.FileTypeCode)) {
    return;  // the columns have been chosen one by one
  }
  switch (trial.FileTypeCode) {
    case 25:
      FinishBioPlux(trial, header.resolutionBits);
      break;
    case 26:
      FinishFormula1(workbench);
      break;
    case 93:
      trial.EraseChannels(FirstChannels(std::min<int>(2, trial.NChan - 1)));
      break;
    case 33:
    case 51:
    case 82:
      trial.EraseChannels(FirstChannels(DuplicateCounters(trial, settings.HasTime())));
      ShowFirstChannelPage(workbench);
      break;
    default:
      break;
  }
}

}  // namespace velmora
