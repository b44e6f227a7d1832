#include "statistics/statistics_commands.hpp"

#include <array>

#include "emg/emg_statistics_form.hpp"
#include "graph/graph_view.hpp"
#include "impact/integral_form.hpp"

namespace velmora {
namespace {

enum class Range { All, BetweenCursors };

void ShowIntegrals(Workbench& workbench) {
  ShowIntegrationStatistics(workbench, [&workbench] {
    return SampleRange{workbench.graph.StatLo, workbench.graph.StatHi};
  });
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
constexpr std::string_view kEmg = "&EMG stats.";
constexpr std::string_view kIntegral = "&Integration stats.";

constexpr std::array kCommands = {
    Command{"all-stats.emg", kEmg, kAll, Needs::View, Show<ShowEmgStatistics, Range::All>},
    Command{"all-stats.integral", kIntegral, kAll, Needs::View, Show<ShowIntegrals, Range::All>},
    Command{"window-stats.emg", kEmg, kWindow, Needs::View, Show<ShowEmgStatistics, Range::BetweenCursors>},
    Command{"window-stats.integral", kIntegral, kWindow, Needs::View,
            Show<ShowIntegrals, Range::BetweenCursors>},
};

}  // namespace

std::span<const Command> StatisticsCommands() {
  return kCommands;
}

}  // namespace velmora
