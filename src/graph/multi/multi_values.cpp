#include "graph/multi/multi_values.hpp"

#include <array>
#include <cmath>
#include <string>
#include <utility>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/abscissa.hpp"
#include "graph/multi/multi_view.hpp"

namespace velmora {

std::vector<SignedPart> IntegralsOf(const Trial& trial, int channel, SampleRange range) {
  std::vector<SignedPart> parts;
  const double dt = 1.0 / trial.Rate;
  std::int32_t first = range.lo;
  double sum = 0.0;
  const auto close = [&](std::int32_t i) {
    parts.push_back({(static_cast<double>(first) + i) / 2 * dt, sum * dt});
  };
  for (std::int32_t i = range.lo; i <= range.hi; ++i) {
    const double x = trial.Data(i, channel);
    if (std::isnan(x)) {
      continue;
    }
    if (sum * x < 0) {
      close(i);
      first = i;
      sum = 0.0;
    }
    sum += x;
  }
  close(range.hi);
  return parts;
}

ExtremeSamples ExtremesOf(const Trial& trial, int channel, SampleRange range) {
  ExtremeSamples found;
  float largest = 0;
  float smallest = 0;
  for (std::int32_t i = range.lo; i <= range.hi; ++i) {
    const float x = trial.Data(i, channel);
    if (std::isnan(x)) {
      continue;
    }
    if (found.maximum == 0 || x > largest) {
      largest = x;
      found.maximum = i;
    }
    if (found.minimum == 0 || x < smallest) {
      smallest = x;
      found.minimum = i;
    }
  }
  return found;
}

SampleRange CorrectedRange(Trial& trial) {
  if (trial.CursorLo < 1) {
    trial.CursorLo = 1;
  }
  if (trial.CursorHi < 1 || trial.CursorHi > trial.NData) {
    trial.CursorHi = trial.NData;
  }
  if (trial.CursorLo > trial.CursorHi) {
    std::swap(trial.CursorLo, trial.CursorHi);
  }
  if (trial.CursorHi > trial.NData) {  // CursorLo lay beyond the trial
    trial.CursorHi = trial.NData;
  }
  return {trial.CursorLo, trial.CursorHi};
}

namespace {

constexpr int kValueColour = 6;  // of the colour table

void AddMark(Graph& graph, double x, double y, std::string text) {
  GraphCursor mark;
  mark.Kind = CursorKind::Value;
  mark.XPosition = x;
  mark.YPosition = y;
  mark.Color = ColourTable[kValueColour];
  mark.Crosshair = CrosshairStyle::None;
  mark.Name = std::move(text);
  mark.NameVisible = true;
  graph.Cursors.push_back(std::move(mark));
}

/// Calls `work` with every channel shown and its graph.
template <typename Work>
void ForEachChannel(Workbench& workbench, const Work& work) {
  MultiView& view = OpenMultiView(workbench);
  for (const int graph : view.ShownGraphs()) {
    for (const int channel : view.ChannelsOf(graph)) {
      work(view.GraphAt(graph), channel);
    }
  }
}

bool AskSmallest(Workbench& workbench) {
  const std::string typed =
      workbench.questions.AskInput({.title = "Smallest Integral",
                                    .prompt = "Enter smallest reportable integral or zero to report all.",
                                    .defaultText = FormatNumber(workbench.graph.SmallestIntegral, "0.000"),
                                    .isNumber = true});
  if (typed.empty()) {
    return false;
  }
  workbench.graph.SmallestIntegral = std::abs(Val(typed));
  return true;
}

void ShowIntegralMarks(Workbench& workbench) {
  OpenMultiView(workbench);
  Trial& trial = workbench.trial;
  const SampleRange range = CorrectedRange(trial);
  if (!(trial.Rate > 0) || !AskSmallest(workbench)) {
    return;
  }
  ForEachChannel(workbench, [&](Graph& graph, int channel) {
    for (const SignedPart& part : IntegralsOf(trial, channel, range)) {
      if (std::abs(part.integral) >= workbench.graph.SmallestIntegral) {
        AddMark(graph, AbscissaStart(trial) + part.middle * (trial.Rate / SamplesPerUnit(trial)), 0.0,
                FormatNumber(part.integral, workbench.patterns.ValuePattern));
      }
    }
  });
}

enum class MarkText { Value, Time, Both };

std::string WithUnits(const std::string& number, std::string_view units) {
  return Trim(units).empty() ? number : number + " " + Trim(units);
}

std::string TextOf(const Workbench& workbench, std::int32_t sample, int channel, MarkText shown) {
  const Trial& trial = workbench.trial;
  const std::string value = WithUnits(
      FormatNumber(static_cast<double>(trial.Data(sample, channel)), workbench.patterns.ValuePattern),
      trial.ChanUnits[channel].Text());
  const std::string time =
      WithUnits(AbscissaText(workbench, PlaceOf(trial, sample), workbench.patterns.TimePattern),
                AbscissaUnits(workbench));
  return shown == MarkText::Value ? value : shown == MarkText::Time ? time : value + ", " + time;
}

template <MarkText shown, bool maximum, bool minimum>
void ShowExtremes(Workbench& workbench) {
  OpenMultiView(workbench);
  const Trial& trial = workbench.trial;
  const SampleRange range = CorrectedRange(workbench.trial);
  ForEachChannel(workbench, [&](Graph& graph, int channel) {
    const ExtremeSamples found = ExtremesOf(trial, channel, range);
    for (const auto& [wanted, sample] : {std::pair{maximum, found.maximum}, {minimum, found.minimum}}) {
      if (wanted && sample > 0) {
        AddMark(graph, PlaceOf(trial, sample), trial.Data(sample, channel),
                TextOf(workbench, sample, channel, shown));
      }
    }
  });
}

void RemoveMarks(Workbench& workbench) {
  OpenMultiView(workbench).RemoveCursors(CursorKind::Value);
  workbench.trial.CursorHi = workbench.trial.NData;
}

void DoNothing(Workbench& workbench) {
  OpenMultiView(workbench);
}

constexpr std::string_view kValueMenu = "&Multi-axis graph/&Value";

constexpr std::array kValueCommands = {
    Command{"value.decimal-format", "&Decimal format", kValueMenu, Needs::View, DoNothing},
    Command{"value.integrals", "&Integrals", kValueMenu, Needs::View, ShowIntegralMarks},
    Command{"value.extremes", "&Maxs. and Mins.", kValueMenu, Needs::View,
            ShowExtremes<MarkText::Value, true, true>},
    Command{"value.extreme-times", "Max. and min. &Times", kValueMenu, Needs::View,
            ShowExtremes<MarkText::Time, true, true>},
    Command{"value.maximums", "Ma&ximums and times", kValueMenu, Needs::View,
            ShowExtremes<MarkText::Both, true, false>},
    Command{"value.minimums", "Mi&nimums and times", kValueMenu, Needs::View,
            ShowExtremes<MarkText::Both, false, true>},
    Command{"value.remove", "&Remove values", kValueMenu, Needs::View, RemoveMarks},
};

}  // namespace

std::span<const Command> ValueCommands() {
  return kValueCommands;
}

}  // namespace velmora
