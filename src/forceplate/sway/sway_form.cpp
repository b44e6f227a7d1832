#include "forceplate/sway/sway_form.hpp"

#include <array>
#include <string>

#include "core/results/trial_lines.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/missing_samples.hpp"
#include "core/trial/refusals.hpp"
#include "dsp/design/cancellable_run.hpp"
#include "dsp/design/smooth_low_pass.hpp"
#include "dsp/filters/filter_design.hpp"
#include "forceplate/force_samples.hpp"
#include "results/pictured_results.hpp"
#include "results/signal_picture.hpp"

namespace velmora {
namespace {

constexpr int kPathColour = 1;
constexpr int kEllipseColour = 3;

}  // namespace

SwayForm::SwayForm(Workbench& workbench, SampleRange range)
    : AnalysisForm(workbench, "frmSway", "Sway of the Centre of Pressure"), range_(range) {
  const Trial& trial = workbench.trial;
  ml_ = ChannelByLabel(trial, {"Ax comb", "Ax#1", "COPx", "Ax"});
  ap_ = ChannelByLabel(trial, {"Ay comb", "Ay#1", "COPy", "Ay"});
  AddChannel("comML", "&Medio-lateral", ml_);
  AddChannel("comAP", "&Antero-posterior", ap_);
  AddNumber("txtCutoff", "&Low-pass", cutoff_, {.lowest = 0, .highest = trial.Rate / 2, .openAbove = true})
      .units = "Hz, 0 = none";
  AddFlag("chkDetrend", "Remove a straight &line", detrend_);
  AddButtons();
}

std::string SwayForm::Units() const {
  return OneLine(Trim(workbench_.trial.ChanUnits[ml_].Text()));
}

std::string SwayForm::EllipseInWords(const Sway& sway) const {
  return "95 % ellipse of " + FormatNumber(sway.ellipse->Area(), "0.000") + " " + Units() + "²";
}

bool SwayForm::HasChannels() {
  if (ml_ == 0 || ap_ == 0) {
    RefuseTooFewChannels(workbench_, 2);
    return false;
  }
  if (ml_ == ap_) {
    ShowRefusal(workbench_, {.title = "Channel Chosen Twice",
                             .text = "The two directions must be different channels.",
                             .icon = Icon::Exclamation});
    return false;
  }
  if (!EqualNoCase(Units(), Trim(workbench_.trial.ChanUnits[ap_].Text()))) {
    ShowRefusal(workbench_, {.title = "Different Units",
                             .text = "Channels " + ChannelNumber(ml_) + " and " + ChannelNumber(ap_) +
                                     " must have the same units.",
                             .icon = Icon::Exclamation});
    return false;
  }
  const bool isMissing = RefuseMissing(workbench_, ml_, range_);
  return !RefuseMissing(workbench_, ap_, range_) && !isMissing;
}

std::vector<double> SwayForm::Prepared(int channel) const {
  std::vector<double> samples = SamplesOf(workbench_.trial, channel, range_);
  if (cutoff_ > 0) {
    SmoothByLowPass(samples, workbench_.trial.Rate, cutoff_);
  }
  if (detrend_) {
    RemoveLine(samples);
  }
  return samples;
}

ResultTable SwayForm::Table(const Sway& sway) const {
  const std::string units = Units();
  ResultTable table{.name = "frmSway",
                    .title =
                        "Sway about the mean (Prieto 1996), 95 % prediction ellipse by F (Schubert and "
                        "Kirchner 2014)",
                    .columns = {"Measure", "ML", "AP", "Both", "Units"},
                    .rows = {},
                    .formats = {}};
  const auto add = [&](const char* name, const auto& of, const std::string& in) {
    const auto cell = [&of](const SwayMeasures& measures) {
      return CellOf(std::optional<double>(of(measures)));
    };
    table.rows.push_back(
        {std::string(name), cell(sway.direction[0]), cell(sway.direction[1]), cell(sway.both), in});
  };
  const auto addBoth = [&table](const char* name, std::optional<double> value, const std::string& in) {
    table.rows.push_back({std::string(name), std::monostate(), std::monostate(), CellOf(value), in});
  };
  add(
      "Mean position", [](const auto& of) { return of.meanPosition; }, units);
  add(
      "Mean distance", [](const auto& of) { return of.meanDistance; }, units);
  add(
      "RMS distance", [](const auto& of) { return of.rmsDistance; }, units);
  add(
      "Range", [](const auto& of) { return of.range; }, units);
  add(
      "Path length", [](const auto& of) { return of.pathLength; }, units);
  add(
      "Mean velocity", [](const auto& of) { return of.meanVelocity; }, units + "/s");
  add(
      "Mean frequency", [](const auto& of) { return of.meanFrequency; }, "Hz");
  addBoth("Sway area per s", sway.areaPerSecond, units + "²/s");
  if (sway.ellipse) {
    addBoth("95% ellipse area", sway.ellipse->Area(), units + "²");
    addBoth("Major axis", sway.ellipse->major, units);
    addBoth("Minor axis", sway.ellipse->minor, units);
    addBoth("Angle", sway.ellipse->angle, "deg");
  }
  add(
      "Spectral mean frequency", [](const auto& of) { return of.spectralMeanFrequency; }, "Hz");
  return table;
}

FormGraph SwayForm::Picture(std::vector<double> ml, std::vector<double> ap, const Sway& sway) const {
  const Trial& trial = workbench_.trial;
  const std::string units = Units().empty() ? "" : " (" + Units() + ")";
  FormGraph graph{.title = TitleOnOneLine(trial),
                  .x = {.caption = LabelOnOneLine(trial, ml_) + units},
                  .y = {.caption = LabelOnOneLine(trial, ap_) + units},
                  .background = FormGraph::Background::White,
                  .equalScales = true};
  graph.points = {{.x = ml.front(), .y = ap.front(), .text = "start"},
                  {.x = ml.back(), .y = ap.back(), .text = "end"}};
  graph.plots = {{.name = "path", .colour = kPathColour, .x = std::move(ml), .y = std::move(ap)}};
  if (sway.ellipse) {
    graph.title += (graph.title.empty() ? "" : ", ") + EllipseInWords(sway);
    graph.ellipses = {{.x = sway.ellipse->x,
                       .y = sway.ellipse->y,
                       .major = sway.ellipse->major,
                       .minor = sway.ellipse->minor,
                       .angle = sway.ellipse->angle,
                       .colour = kEllipseColour}};
  }
  FitAxes(graph);
  return graph;
}

// A reduction leaves 0, 0 where nobody stands on the plate, and no person sways back to it exactly.
void SwayForm::NoteUnloaded() {
  const Trial& trial = workbench_.trial;
  std::int64_t unloaded = 0;
  for (std::int64_t i = range_.lo; i <= range_.hi; ++i) {
    unloaded += trial.Data(i, ml_) == 0 && trial.Data(i, ap_) == 0 ? 1 : 0;
  }
  if (unloaded > 0) {
    AddNotice(workbench_, "The centre of pressure is 0, 0 in " + CountOf(unloaded, "sample") +
                              " of the sway: there is none while a plate is not loaded.  Use another range.");
  }
}

bool SwayForm::Compute() {
  if (!HasChannels()) {
    return false;
  }
  std::vector<double> ml;
  std::vector<double> ap;
  Sway sway;
  try {
    const bool done = ReadCancellable(workbench_, "Sway", [&](const Turn& turn) {
      ml = Prepared(ml_);
      Give(turn);
      ap = Prepared(ap_);
      Give(turn);
      sway = SwayOf(ml, ap, workbench_.trial.Rate);
    });
    if (!done) {
      return false;
    }
  } catch (const FilterDesignError& error) {
    ShowRefusal(workbench_, {.title = "Invalid Filter", .text = error.what(), .icon = Icon::Exclamation});
    return false;
  }
  results_ = {.name = "frmSway",
              .title = "Sway of the centre of pressure",
              .file = {.what = "Sway", .extension = ".cog"},
              .head = {.range = range_, .parameters = ParametersOf(workbench_.trial, *this)},
              .tables = {Table(sway)},
              .graph = Picture(std::move(ml), std::move(ap), sway)};
  Did(workbench_,
      "Sway of the centre of pressure" + (sway.ellipse ? ", " + EllipseInWords(sway) : std::string()),
      std::array{static_cast<int>(ml_), static_cast<int>(ap_)});
  NoteUnloaded();
  return true;
}

void MeasureSway(Workbench& workbench) {
  constexpr int kFewestSamples = 5;
  if (const auto range = AskTimedRange(workbench, kFewestSamples)) {
    SwayForm form(workbench, *range);
    if (form.Ask()) {
      ShowPicturedResults(workbench, form.TakeResults());
    }
  }
}

}  // namespace velmora
