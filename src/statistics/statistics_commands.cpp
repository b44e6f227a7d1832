#include "statistics/statistics_commands.hpp"

#include <algorithm>
#include <array>

#include "core/trial/helpers.hpp"
#include "emg/emg_statistics_form.hpp"
#include "graph/time_view.hpp"
#include "impact/integral_form.hpp"
#include "spectra/fourier_statistics.hpp"
#include "statistics/correlation_table.hpp"
#include "statistics/cross_correlation_form.hpp"
#include "statistics/level_forms.hpp"
#include "statistics/regression_form.hpp"
#include "statistics/window_form.hpp"

namespace velmora {
namespace {

bool HasData(const Workbench& workbench) {
  return workbench.trial.NData > 0 && workbench.trial.NChan > 0;
}

SampleRange StatRange(const Workbench& workbench) {
  return {workbench.graph.StatLo, workbench.graph.StatHi};
}

void SetStatRange(Workbench& workbench, SampleRange range) {
  workbench.graph.StatLo = range.lo;
  workbench.graph.StatHi = range.hi;
  workbench.TimeStep = 1.0 / workbench.trial.Rate;
}

// --- Tables over samples StatLo to StatHi

void MeansOf(Workbench& workbench) {
  ShowMeans(workbench, StatRange(workbench));
}

void MediansOf(Workbench& workbench) {
  ShowMedians(workbench, StatRange(workbench));
}

void IntegralsOf(Workbench& workbench) {
  ShowIntegrationStatistics(workbench, [&workbench] { return StatRange(workbench); });
}

void FourierOf(Workbench& workbench) {
  ShowFourierStatistics(workbench, StatRange(workbench));
}

// --- Where they are asked for

// From the main menu: over all data, or those between the cursors.
template <void (*table)(Workbench&)>
void Ask(Workbench& workbench) {
  if (HasData(workbench)) {
    SetStatRange(workbench, AskCursorRange(workbench));
    table(workbench);
  }
}

// By the given entry of another menu, which asks by itself.
void Integration(Workbench& workbench) {
  workbench.RunById(workbench, "integrate.statistics");
}

template <void (*show)(Workbench&, SampleRange)>
void AskRange(Workbench& workbench) {
  if (HasData(workbench)) {
    show(workbench, AskCursorRange(workbench));
  }
}

void Windows(Workbench& workbench) {
  if (HasData(workbench)) {
    ShowWindowStatistics(workbench, AskCursorRange(workbench), WindowForm::Split::OfWidth);
  }
}

void Cursors(Workbench& workbench) {
  OpenTimeView(workbench);
  const Box box{.title = "Compute Stats between Cursors?",
                .text =
                    "This option will record various statistics between a series of cursors.\n"
                    "Do you want to continue (Yes/No)?",
                .icon = Icon::Question,
                .buttons = {Button::Yes, Button::No}};
  if (workbench.questions.AskBox(box) == Button::Yes) {
    ShowWindowStatistics(workbench, {1, workbench.trial.NData}, WindowForm::Split::BetweenCursors);
  }
}

// From one table to another, over the samples of the first.
template <void (*table)(Workbench&)>
void ShowOther(Workbench& workbench) {
  if (!HasData(workbench)) {
    return;
  }
  const std::int32_t last = workbench.trial.NData;
  const std::int32_t lo = std::clamp(workbench.graph.StatLo, 1, last);
  const std::int32_t hi = workbench.graph.StatHi < lo ? last : std::min(workbench.graph.StatHi, last);
  SetStatRange(workbench, {lo, hi});
  table(workbench);
}

// From a graph.
template <void (*table)(Workbench&)>
void ShowAll(Workbench& workbench) {
  OpenTimeView(workbench);
  SetStatRange(workbench, {1, workbench.trial.NData});
  table(workbench);
}

template <void (*table)(Workbench&)>
void ShowBetween(Workbench& workbench) {
  OpenTimeView(workbench).SetStatRange();
  SetStatRange(workbench, StatRange(workbench));
  table(workbench);
}

constexpr std::string_view kMenu = "&Statistics";
constexpr std::string_view kAll = "&Single-axis graph/S&tatistics/&All data";
constexpr std::string_view kBetween = "&Single-axis graph/S&tatistics/&Between cursors";
constexpr std::string_view kGraph = "&Single-axis graph/S&tatistics";
constexpr std::string_view kNoMenu;  // buttons of the tables lead there, or it is another name of an entry
constexpr std::string_view kMean = "&Mean, min. && max.";
constexpr std::string_view kMedian = "Me&dian stats.";
constexpr std::string_view kEmg = "&EMG stats.";
constexpr std::string_view kIntegral = "&Integration stats.";

constexpr std::array kCommands = {
    Command{"statistics.descriptive", kMean, kMenu, Needs::Data, Ask<MeansOf>},
    Command{"statistics.median", kMedian, kMenu, Needs::Data, Ask<MediansOf>},
    Command{"statistics.emg", kEmg, kMenu, Needs::Data, Ask<ShowEmgStatistics>},
    Command{"statistics.integration", "&Integration statistics", kMenu, Needs::Data, Integration},
    Command{"statistics.windows", "&Window statistics", kMenu, Needs::Data, Windows},
    Command{"statistics.correlation", "&Correlation", kMenu, Needs::Data, AskRange<ShowCorrelations>},
    Command{"statistics.regression", "Linear &regression", kMenu, Needs::Data, AskRange<ShowRegression>},
    Command{"statistics.cross-correlation", "Cross-c&orrelation", kMenu, Needs::Data,
            AskRange<ShowCrossCorrelation>},

    Command{"statistics.all-descriptive", kMean, kAll, Needs::View, ShowAll<MeansOf>},
    Command{"statistics.all-median", kMedian, kAll, Needs::View, ShowAll<MediansOf>},
    Command{"statistics.all-emg", kEmg, kAll, Needs::View, ShowAll<ShowEmgStatistics>},
    Command{"statistics.all-integration", kIntegral, kAll, Needs::View, ShowAll<IntegralsOf>},
    Command{"statistics.between-descriptive", kMean, kBetween, Needs::View, ShowBetween<MeansOf>},
    Command{"statistics.between-median", kMedian, kBetween, Needs::View, ShowBetween<MediansOf>},
    Command{"statistics.between-emg", kEmg, kBetween, Needs::View, ShowBetween<ShowEmgStatistics>},
    Command{"statistics.between-integration", kIntegral, kBetween, Needs::View, ShowBetween<IntegralsOf>},
    Command{"statistics.cursors", "Statistics between &Cursors", kGraph, Needs::View, Cursors},

    Command{"all-stats.mean", kMean, kNoMenu, Needs::View, ShowAll<MeansOf>},
    Command{"all-stats.median", kMedian, kNoMenu, Needs::View, ShowAll<MediansOf>},
    Command{"all-stats.emg", kEmg, kNoMenu, Needs::View, ShowAll<ShowEmgStatistics>},
    Command{"all-stats.integral", kIntegral, kNoMenu, Needs::View, ShowAll<IntegralsOf>},
    Command{"window-stats.mean", kMean, kNoMenu, Needs::View, ShowBetween<MeansOf>},
    Command{"window-stats.median", kMedian, kNoMenu, Needs::View, ShowBetween<MediansOf>},
    Command{"window-stats.emg", kEmg, kNoMenu, Needs::View, ShowBetween<ShowEmgStatistics>},
    Command{"window-stats.integral", kIntegral, kNoMenu, Needs::View, ShowBetween<IntegralsOf>},

    Command{"table-stats.mean", kMean, kNoMenu, Needs::Data, ShowOther<MeansOf>},
    Command{"table-stats.median", kMedian, kNoMenu, Needs::Data, ShowOther<MediansOf>},
    Command{"table-stats.emg", kEmg, kNoMenu, Needs::Data, ShowOther<ShowEmgStatistics>},
    Command{"table-stats.fourier", "&Fourier stats.", kNoMenu, Needs::Data, ShowOther<FourierOf>},
    Command{"table-stats.integral", kIntegral, kNoMenu, Needs::Data, ShowOther<IntegralsOf>},
};

}  // namespace

std::span<const Command> StatisticsCommands() {
  return kCommands;
}

}  // namespace velmora
