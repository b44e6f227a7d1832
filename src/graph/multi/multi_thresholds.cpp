#include "graph/multi/multi_thresholds.hpp"

#include <array>
#include <cmath>
#include <stdexcept>

#include "core/text/numbers.hpp"
#include "events/event_help.hpp"
#include "events/thresholds.hpp"
#include "graph/threshold_lines.hpp"

namespace velmora {

std::vector<int> MultiView::ThresholdChannels(int graph) const {
  const int channel = ChannelOf(graph);
  return channel == 0 ? std::vector<int>() : std::vector<int>{channel};
}

void MultiView::DoMoveThreshold(const ThresholdMove& move) {
  GraphCursor* line = ThresholdLineOf(GraphAt(move.graph));
  if (line == nullptr) {
    throw std::out_of_range("there is no threshold line in graph " + std::to_string(move.graph));
  }
  if (!std::isfinite(move.y)) {
    throw std::invalid_argument("a threshold line cannot be moved there");
  }
  line->YPosition = move.y;
}

namespace {

// Up to the one cursor, or between the first two.
SampleRange RegionOf(const MultiView& view, const Trial& trial) {
  if (view.Cursors() >= 2) {
    return view.PairRange();
  }
  return {1, view.Cursors() == 1 ? view.SampleOf(1) : trial.NData};
}

/// The threshold that was chosen; nothing to leave it.
std::optional<double> AskThreshold(Workbench& workbench, int graph, const GraphCursor* line,
                                   double candidate) {
  const std::string number = std::to_string(graph);
  if (line == nullptr) {
    const Button answer = workbench.questions.AskBox(
        {.title = "Change Threshold",
         .text = "Do you want to change the threshold for the channel in graph " + number + " to " +
                 FormatNumber(candidate, workbench.patterns.ValuePattern),
         .icon = Icon::Question,
         .buttons = {Button::Yes, Button::No}});
    return answer == Button::Yes ? std::optional(candidate) : std::nullopt;
  }
  const double dragged = line->YPosition;
  const Button answer = workbench.questions.AskBox(
      {.title = "Change Threshold.",
       .text = "Press Yes to change the threshold for the channel in graph " + number +
               " to the value identified by the horizontal cursor, or\n press No to change the threshold to "
               "value computed from the mean + confidence interval, or\n press Cancel to leave threshold "
               "unchanged.",
       .icon = Icon::Question,
       .buttons = {Button::Yes, Button::No, Button::Cancel}});
  if (answer == Button::Cancel) {
    return std::nullopt;
  }
  return answer == Button::Yes ? dragged : candidate;
}

void CalculateHere(Workbench& workbench) {
  CalculateThresholds(workbench, RegionOf(OpenMultiView(workbench), workbench.trial));
}

void Display(Workbench& workbench) {
  MultiView& view = OpenMultiView(workbench);
  if (workbench.thresholds.ThresholdsValid) {
    ToggleThresholdLines(view, workbench.thresholds);
  }
}

bool Displayed(const Workbench& workbench) {
  const MultiView* view = FindMultiView(workbench);
  return view != nullptr && ThresholdsShown(*view);
}

template <void (*procedure)(Workbench&)>
void OnThresholds(Workbench& workbench) {
  OpenMultiView(workbench);
  procedure(workbench);
}

void HowToChange(Workbench& workbench) {
  if (workbench.thresholds.ThresholdsValid) {
    ShowHowToChangeThreshold(workbench);
  }
}

const char* NeedsThresholds(const Workbench& workbench) {
  return workbench.thresholds.ThresholdsValid ? nullptr : "Calculate, edit or read thresholds first";
}

const char* NeedsBaseline(const Workbench& workbench) {
  return workbench.thresholds.BaselineTaken ? nullptr : "Calculate thresholds first";
}

constexpr std::string_view kThresholdMenu = "&Multi-axis graph/&Threshold";
constexpr std::string_view kThresholdHelpMenu = "&Multi-axis graph/&Help";

constexpr std::array kThresholdCommands = {
    Command{"threshold.calculate", "&Calculate thresholds", kThresholdMenu, Needs::View, CalculateHere},
    Command{"threshold.display", "&Display thresholds", kThresholdMenu, Needs::View, Display, NeedsThresholds,
            Displayed},
    Command{"threshold.edit", "&Edit threshold level(s)", kThresholdMenu, Needs::View,
            OnThresholds<EditThresholds>},
    Command{"threshold.help", "&Help on thresholds", kThresholdMenu, Needs::View,
            OnThresholds<ShowThresholdHelp>},
    Command{"threshold.change", "Chan&ge a threshold", kThresholdMenu, Needs::View, OnThresholds<HowToChange>,
            NeedsThresholds},
    Command{"threshold.sd-level", "Set SD &Level", kThresholdMenu, Needs::View, OnThresholds<SetSDLevel>,
            NeedsBaseline},
    Command{"threshold.read", "&Read thresholds", kThresholdMenu, Needs::View, OnThresholds<ReadThresholds>},
    Command{"threshold.save", "&Save thresholds", kThresholdMenu, Needs::View, OnThresholds<SaveThresholds>,
            NeedsThresholds},
    Command{"help.thresholds", "&Create thresholds", kThresholdHelpMenu, Needs::View,
            OnThresholds<ShowThresholdHelp>},
};

}  // namespace

std::span<const Command> ThresholdCommands() {
  return kThresholdCommands;
}

void ChangeThreshold(Workbench& workbench, MultiView& view) {
  const int graph = view.Selected();
  const int channel = graph > 0 ? view.ChannelOf(graph) : 0;
  if (channel == 0) {
    return;
  }
  if (!workbench.thresholds.ThresholdsValid) {
    ShowRefusal(workbench,
                {.title = "Thresholds Not Calculated",
                 .text = "Before you can change an individual threshold you must select 'Calculate "
                         "thresholds' from the 'Threshold' menu.",
                 .icon = Icon::Exclamation});
    return;
  }
  GraphCursor* line = ThresholdLineOf(view.GraphAt(graph));
  const double candidate = CandidateThreshold(workbench, channel, RegionOf(view, workbench.trial));
  const std::optional<double> chosen = AskThreshold(workbench, graph, line, candidate);
  if (!chosen) {
    return;
  }
  workbench.thresholds.ChanThreshold[channel] = *chosen;
  if (line != nullptr) {
    line->YPosition = *chosen;
  }
  Did(workbench, "Threshold " + PlainNumber(static_cast<float>(*chosen)), std::array{channel});
}

}  // namespace velmora
