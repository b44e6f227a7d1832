#include "statistics/statistics_commands.hpp"

#include <algorithm>
#include <array>

#include "emg/emg_statistics_form.hpp"
#include "graph/graph_view.hpp"
#include "impact/integral_form.hpp"
#include "spectra/fourier_statistics.hpp"

namespace velmora {
namespace {

enum class Range { All, BetweenCursors };

void ShowIntegrals(Workbench& workbench) {
  ShowIntegrationStatistics(workbench, [&workbench] {
    return SampleRange{workbench.graph.StatLo, workbench.graph.StatHi};
  });
}

void ShowFourier(Workbench& workbench) {
  ShowFourierStatistics(workbench, {workbench.graph.StatLo, workbench.graph.StatHi});
}

// From one table to another, over the samples of the first.
template <void (*table)(Workbench&)>
void ShowOther(Workbench& workbench) {
  const Trial& trial = workbench.trial;
  GraphMemory& graph = workbench.graph;
  if (trial.NData < 1 || trial.NChan < 1) {
    return;
  }
  graph.StatLo = std::clamp(graph.StatLo, 1, trial.NData);
  graph.StatHi = graph.StatHi < graph.StatLo ? trial.NData : std::min(graph.StatHi, trial.NData);
  workbench.TimeStep = 1.0 / trial.Rate;
  table(workbench);
}

// Sets StatLo and StatHi, then opens the table.
template <void (*table)(Workbench&), Range range>
void Show(Workbench& workbench) {
  GraphView& view = OpenGraphView(workbench);
  workbench.TimeStep = 1.0 / workbench.trial.Rate;
  if (range == Range::BetweenCursors) {
    view.SetStatRange();
  } else {
    workbench.graph.StatLo = 1;
    workbench.graph.StatHi = workbench.trial.NData;
  }
  table(workbench);
}

constexpr std::string_view kAll = "&Single-axis graph/S&tatistics/&All data";
constexpr std::string_view kWindow = "&Single-axis graph/S&tatistics/&Between cursors";
constexpr std::string_view kNoMenu;  // buttons of the tables lead there
constexpr std::string_view kEmg = "&EMG stats.";
constexpr std::string_view kIntegral = "&Integration stats.";

constexpr std::array kCommands = {
    Command{"all-stats.emg", kEmg, kAll, Needs::View, Show<ShowEmgStatistics, Range::All>},
    Command{"all-stats.integral", kIntegral, kAll, Needs::View, Show<ShowIntegrals, Range::All>},
    Command{"window-stats.emg", kEmg, kWindow, Needs::View, Show<ShowEmgStatistics, Range::BetweenCursors>},
    Command{"window-stats.integral", kIntegral, kWindow, Needs::View,
            Show<ShowIntegrals, Range::BetweenCursors>},
    Command{"table-stats.emg", kEmg, kNoMenu, Needs::Data, ShowOther<ShowEmgStatistics>},
    Command{"table-stats.fourier", "&Fourier stats.", kNoMenu, Needs::Data, ShowOther<ShowFourier>},
    Command{"table-stats.integral", kIntegral, kNoMenu, Needs::Data, ShowOther<ShowIntegrals>},
};

}  // namespace

std::span<const Command> StatisticsCommands() {
  return kCommands;
}

}  // namespace velmora
