#include "dsp/smoothing/polynomial_commands.hpp"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <string>

#include "core/questions/progress.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "dsp/channel_list.hpp"
#include "dsp/filters/coefficient_form.hpp"
#include "dsp/interval_questions.hpp"
#include "dsp/smoothing/polynomial_fit.hpp"

namespace velmora {
namespace {

// Asks for an order for each channel, 0 to leave it. The selection is that of the last picker that
// selected: without one nothing is fitted.
bool PickOrders(Workbench& workbench) {
  ChooserState& chooser = workbench.chooser;
  chooser.ClearModes();
  chooser.ChanConst.fill(0.0F);
  chooser.ChooserValuesMode = true;
  chooser.ChooserIntegerValues = true;
  chooser.ChooserPrompt =
      "Enter order of polynomial (0=no fitting, 1=line, 2=parabolic, 3=cubic, 4=quartic, 5=quintic, ...)";
  return ChannelPicker(workbench).Show() && !SelectedChannels(workbench.trial, chooser.ChanSelected).empty();
}

SampleRange CursorRange(const Trial& trial) {
  return {trial.CursorLo == 0 ? 1 : trial.CursorLo, trial.CursorHi == 0 ? trial.NData : trial.CursorHi};
}

// The range to fit, nothing when the question was left.
std::optional<SampleRange> AskFitRange(Workbench& workbench) {
  const Trial& trial = workbench.trial;
  const SampleRange between = CursorRange(trial);
  const SampleRange all{1, trial.NData};
  if (between.lo <= 1 && between.hi >= trial.NData) {
    return all;
  }
  switch (workbench.questions.AskBox(
      {.title = "Fit between Cursors",
       .text = "Press Yes to fit between the cursors or No to fit all data or Cancel.",
       .icon = Icon::Question,
       .buttons = {Button::Yes, Button::No, Button::Cancel}})) {
    case Button::Yes:
      return between;
    case Button::No:
      return all;
    default:
      return std::nullopt;
  }
}

std::string ChannelName(const Trial& trial, int channel) {
  return FormatNumber(channel - 1, "00  ") + Trim(trial.ChanLabel[channel].Text());
}

ResultTable CoefficientTable(const Trial& trial, int channel, const PolynomialFit& fit) {
  ResultTable table{.name = "frmCoeff",
                    .title = trial.TrialName + "  " + ChannelName(trial, channel),
                    .columns = {"Order", "Coefficient"}};
  for (std::size_t power = 0; power < fit.coefficients.size(); ++power) {
    table.rows.push_back({"    + t^" + std::to_string(power) + " x ", fit.coefficients[power]});
  }
  return table;
}

std::string ReportOf(const ResultTable& table, double meanSquaredError) {
  std::string text = table.title + "\nMean squared error\t" + PlainNumber(meanSquaredError) + "\n";
  for (const std::vector<ResultTable::Cell>& row : table.rows) {
    text += std::get<std::string>(row[0]) + "\t" + PlainNumber(std::get<double>(row[1])) + "\n";
  }
  return text;
}

// Whether the channel is to be replaced by its fit; No shows the coefficients first.
bool OfferCoefficients(Workbench& workbench, int channel, const ResultTable& table) {
  const Button answer = workbench.questions.AskBox(
      {.title = "Fit or View Coefficients for channel " + ChannelName(workbench.trial, channel),
       .text = "Press Yes to fit data to the polymomial,\n          No to view the fitting coefficients or "
               "Cancel to exit.",
       .icon = Icon::Question,
       .buttons = {Button::Yes, Button::No, Button::Cancel}});
  if (answer == Button::No) {
    CoefficientForm(workbench, table).Show(workbench);
  }
  return answer != Button::Cancel;
}

// The order asked for, cut to what that many points can tell. Nothing when it is refused.
std::optional<int> OrderFor(Workbench& workbench, int channel, std::int64_t points) {
  std::int64_t order = RoundHalfEven(workbench.chooser.ChanConst[channel]);
  order = order > points ? points - 1 : order;
  if (order <= kHighestPolynomialOrder) {
    return static_cast<int>(order);
  }
  ShowRefusal(workbench,
              {.title = "Invalid Order",
               .text = "The order of a polynomial can be at most " + std::to_string(kHighestPolynomialOrder) +
                       ".\nFitting is cancelled for channel " + ChannelNumber(channel) + ".",
               .icon = Icon::Exclamation});
  LeftOut(workbench, channel,
          "order " + std::to_string(order) + ", at most " + std::to_string(kHighestPolynomialOrder));
  return std::nullopt;
}

bool AllFinite(const std::vector<double>& values) {
  return std::all_of(values.begin(), values.end(), [](double value) { return std::isfinite(value); });
}

void RefuseNotFinite(Workbench& workbench, int channel) {
  ShowRefusal(workbench, {.title = "Invalid Data",
                          .text = "Data that are not finite numbers cannot be fitted.\nFitting is cancelled "
                                  "for channel " +
                                  ChannelNumber(channel) + ".",
                          .icon = Icon::Exclamation});
}

/// Channels that were fitted, and the order of each.
using FittedOrders = std::map<int, int>;

void TellFitted(Workbench& workbench, const FittedOrders& fitted, SampleRange range) {
  ChannelList channels;
  for (const auto& [channel, order] : fitted) {
    channels.push_back(channel);
  }
  DidEach(workbench, channels, [&](int c) {
    return "Polynomial of order " + std::to_string(fitted.at(c)) + " fitted to samples " +
           std::to_string(range.lo) + " to " + std::to_string(range.hi);
  });
}

// Returns false when the command is to end.
bool FitChannel(Workbench& workbench, int channel, SampleRange range, const std::vector<double>& times,
                bool offerCoefficients, FittedOrders& fitted) {
  Trial& trial = workbench.trial;
  MarkChanged(workbench, true);
  const std::optional<int> order = OrderFor(workbench, channel, static_cast<std::int64_t>(times.size()));
  if (!order) {
    return true;
  }
  const std::vector<double> samples = SamplesOf(trial, channel, range);
  if (!AllFinite(samples) || !AllFinite(times)) {
    RefuseNotFinite(workbench, channel);
    LeftOut(workbench, channel, "data that are not finite numbers");
    return true;
  }
  const PolynomialFit fit = FitPolynomial(times, samples, *order);
  const ResultTable table = CoefficientTable(trial, channel, fit);
  workbench.results.ResultTables = {table};
  workbench.results.ResultText += ReportOf(table, fit.meanSquaredError);
  if (offerCoefficients && !OfferCoefficients(workbench, channel, table)) {
    return false;
  }
  for (std::int64_t i = range.lo; i <= range.hi; ++i) {
    trial.Data(i, channel) = static_cast<float>(fit.fitted[static_cast<std::size_t>(i - range.lo)]);
  }
  fitted[channel] = *order;
  return true;
}

void FitChannels(Workbench& workbench, SampleRange range, bool offerCoefficients) {
  workbench.results.ResultText = "Polynomial Fitting Coefficients\n";
  workbench.results.ResultTables.clear();
  const std::vector<double> times = SamplesOf(workbench.trial, 0, range);
  std::optional<ProgressPanel> panel;
  if (!offerCoefficients) {  // else each channel has its question
    panel.emplace(workbench, ProgressPanel::Kind::Processing);
  }
  FittedOrders fitted;
  for (int c = 1; c <= workbench.trial.NChan; ++c) {
    if (workbench.chooser.ChanConst[c] > 0 &&
        !FitChannel(workbench, c, range, times, offerCoefficients, fitted)) {
      break;
    }
    if (panel) {
      panel->GiveTurn();
    }
  }
  TellFitted(workbench, fitted, range);
}

}  // namespace

void FitPolynomials(Workbench& workbench) {
  if (workbench.trial.NData < 1 || !PickOrders(workbench)) {
    return;
  }
  if (const std::optional<SampleRange> range = AskFitRange(workbench)) {
    FitChannels(workbench, *range, true);
  }
}

void FitInterval(Workbench& workbench) {
  if (workbench.trial.NData < 1 || !HasInterval(workbench) || !PickOrders(workbench)) {
    return;
  }
  if (ConfirmReplacement(workbench, "Fit Spline Data")) {
    FitChannels(workbench, CursorRange(workbench.trial), false);
  }
}

}  // namespace velmora
