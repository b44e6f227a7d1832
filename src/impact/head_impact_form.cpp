#include "impact/head_impact_form.hpp"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "core/files/paths.hpp"
#include "core/questions/patience.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "dsp/filters/filter_messages.hpp"
#include "impact/acceleration_units.hpp"
#include "results/result_presses.hpp"

namespace velmora {
namespace {

constexpr std::string_view kMetricScaling = "9.80667";  // multiplies, as asked for by "g"
constexpr std::string_view kNoScaling = "1.000";
constexpr std::string_view kNotTimeBased = "The abscissa is not in seconds: what is over time means nothing.";
constexpr double kDefaultCutoff = 1000.0;  // Hz
constexpr double kLeastGsi = 10.0;         // below it samples are rather not in g

SampleRange RangeBetweenCursors(const Trial& trial) {
  return {trial.CursorLo > 0 ? trial.CursorLo : 1, trial.CursorHi > 0 ? trial.CursorHi : trial.NData};
}

bool RateCarries(double cutoff, double rate) {
  return DesignSection(PassType::Low, FilterDesign::CriticallyDamped, static_cast<float>(cutoff), rate,
                       kHeadImpactPasses, true)
      .verdict.Accepted();
}

}  // namespace

HeadImpactForm::HeadImpactForm(Workbench& workbench, int channel, bool last)
    : Form("frmGSIHIC", "Gadd Severity Index and Head Injury Criterion"),
      workbench_(workbench),
      channel_(channel),
      range_(RangeBetweenCursors(workbench.trial)),
      rateCarriesFilter_(RateCarries(kDefaultCutoff, workbench.trial.Rate)),
      cutoff_(rateCarriesFilter_ ? kDefaultCutoff : 0.0),
      mass_(workbench.impact.HeadformMass) {
  AddFields();
  AddButtons(last);
  Reduce(false);
}

void HeadImpactForm::AddFields() {
  const auto reduce = [this] { Reduce(false); };
  fields_ = {
      {.name = "txtScaling",
       .caption = "&Scaling",
       .target = &scalingText_,
       .prompt = "Enter what the samples are multiplied by, or g.",
       .title = "Scaling to g's",
       .edited = [this] { TakeScaling(); },
       .emptyKeeps = true},
      {.name = "chkMtoG",
       .caption = "&m/s^2 to g",
       .target = &metresToG_,
       .edited =
           [this] {
             scalingText_ = metresToG_ ? kMetricScaling : kNoScaling;
             Reduce(false);
           }},
      {.name = "optAbscissa",
       .caption = "Abscissa",
       .target = &abscissa_,
       .choices = {"Abcissa in m&illiseconds", "Abcissa in s&econds"},
       .edited = reduce},
      {.name = "cwnCutoff",
       .caption = "&Cutoff frequency",
       .target = &cutoff_,
       .units = "Hz",
       .lowest = 0,
       .edited =
           [this] {
             Reduce(false);
             ShowRefusedFilter();
           }},
      {.name = "cwnHICtime",
       .caption = "&HIC span",
       .target = &hicSpan_,
       .units = "ms",
       .lowest = 3,
       .highest = 36,
       .edited = reduce},
      {.name = "HeadformMass",
       .caption = "Headform m&ass",
       .target = &mass_,
       .units = "kg",
       .edited =
           [this] {
             mass_ = workbench_.impact.HeadformMass = static_cast<float>(mass_);
             Reduce(false);
           }},
      {.name = "txtWarnings", .caption = "Warnings", .target = &warnings_, .readOnly = true},
      {.name = "txtReduction", .caption = "Reduction", .target = &reduction_, .readOnly = true},
      {.name = "GSIFlagged",
       .caption = "GSI should NOT exceed 1200.",
       .target = &gsiFlagged_,
       .readOnly = true},
      {.name = "HICFlagged",
       .caption = "HIC values > 1000 are considerd to be life threatening.",
       .target = &hicFlagged_,
       .readOnly = true},
  };
}

void HeadImpactForm::AddButtons(bool last) {
  const auto reducing = [this](bool zeroNegatives) {
    return [this, zeroNegatives] {
      Reduce(zeroNegatives);
      return false;
    };
  };
  buttons_ = {
      {.caption = "&Recalculate", .press = reducing(false)},
      {.caption = "&Zero Negative Numbers", .press = reducing(true)},
  };
  for (FormButton& button : PictureButtons(workbench_, *this)) {
    buttons_.push_back(std::move(button));
  }
  buttons_.push_back({last ? "E&xit" : "&Next channel", FormButton::Role::Accept, [this] {
                        KeepTable(workbench_.results.ResultTables, tables_.front());
                        return true;
                      }});
}

void HeadImpactForm::TakeScaling() {
  if (EqualNoCase(Trim(scalingText_), "g")) {
    scalingText_ = kMetricScaling;
  }
  Reduce(false);
}

void HeadImpactForm::Reduce(bool zeroNegatives) {
  constexpr std::int32_t kLong = 200'000;  // samples that take a noticeable time where they are filtered
  const auto reduce = [&] {
    return ReduceHeadImpact(workbench_.trial, channel_, range_,
                            {.scaling = static_cast<float>(Val(scalingText_)),
                             .inSeconds = abscissa_ == 1,
                             .cutoff = static_cast<float>(cutoff_),
                             .hicSpan = hicSpan_,
                             .headformMass = mass_,
                             .zeroNegatives = zeroNegatives});
  };
  impact_ = range_.hi - range_.lo >= kLong ? WithPatience(workbench_, reduce) : reduce();
  gsiFlagged_ = impact_.gsi > kGsiLimit;
  hicFlagged_ = impact_.hic.value >= kHicLimit;
  TellWarnings();
  TellReduction();
  FillTable();
  DrawGraph();
}

void HeadImpactForm::ShowRefusedFilter() {
  if (!impact_.filter.Accepted()) {
    ShowVerdict(workbench_, channel_, impact_.filter);
  }
}

bool HeadImpactForm::IsBeyondNumbers() const {
  return workbench_.trial.Rate > 0 && (!std::isfinite(impact_.gsi) || !std::isfinite(impact_.hic.value));
}

bool HeadImpactForm::HasNoResult() const {
  return IsBeyondNumbers() || impact_.samples < 1 || impact_.missing > 0 || !(workbench_.trial.Rate > 0);
}

void HeadImpactForm::TellWarnings() {
  warnings_.clear();
  const auto tell = [this](std::string_view line) {
    warnings_ += warnings_.empty() ? "" : "\n";
    warnings_ += line;
  };
  if (!rateCarriesFilter_) {
    tell("Sampling rate too low for 1000 Hz cutoff.  ");
  }
  if (impact_.negatives > 0) {
    tell(" Data values cannot be negative. ");
    tell("Press Zero Negative Numbers button.");
  } else if (HasNoResult()) {
    tell(" Could not perform integration.");
    if (IsBeyondNumbers()) {
      tell("Values are too large.  Is the scaling right?");
    }
  } else if (!(impact_.gsi >= kLeastGsi)) {
    tell("Results are low.  Did you scale the data to g's?");
  }
  if (!(mass_ > 0)) {
    tell("Headform mass is zero.");
  }
  if (!IsTimeBased(workbench_)) {
    tell(kNotTimeBased);
  }
  if (warnings_.empty()) {
    tell("   No warnings.");
  }
}

// A trial in m/s^2 wants dividing by g, and what "g" sets multiplies.
std::string HeadImpactForm::MetricHint() const {
  const std::string units = Trim(workbench_.trial.ChanUnits[channel_].Text());
  const bool metric = AccelerationUnitsOf(units) == AccelerationUnits::Metric;
  const double scaling = Val(scalingText_);
  const bool intoG = std::abs(scaling * kGravityConstant - 1) < 0.01;
  return metric && !intoG ? "is in " + units + ": a scaling of 0.101972 makes g's of it." : "";
}

void HeadImpactForm::TellReduction() {
  const bool filtered = !impact_.unfiltered.empty() && impact_.filter.Accepted();
  reduction_ = std::to_string(impact_.samples) + " samples times " + PlainNumber(Val(scalingText_)) + "; " +
               (filtered ? "low-pass " + PlainNumber(cutoff_) + " Hz, critically damped, 3 passes, zero-lag"
                         : std::string("no filter")) +
               "; HIC over " + std::to_string(impact_.hicWindow) + " samples, " +
               FormatNumber(static_cast<double>(impact_.hicWindow) * 1000 / workbench_.trial.Rate, "0.000") +
               " ms";
  if (const std::string hint = MetricHint(); !hint.empty()) {
    reduction_ += "\nThe channel " + hint;
  }
}

double HeadImpactForm::TimeOfSample(std::int64_t sample) const {
  return sample > 0 ? impact_.time[static_cast<std::size_t>(sample - 1)] : 0.0;
}

double HeadImpactForm::HicEnd() const {
  const double span = impact_.hic.spanMilliseconds;
  return TimeOfSample(impact_.hic.start) + (abscissa_ == 1 ? span / 1000 : span);
}

void HeadImpactForm::FillTable() {
  const std::string time = abscissa_ == 1 ? "s" : "ms";
  const auto& a = impact_;
  ResultTable table{
      .name = "frmGSIHIC",
      .title = ChannelNumber(channel_) + " " + Trim(workbench_.trial.ChanLabel[channel_].Text()),
      .columns = {"Quantify", "Value", "Units"}};
  table.rows = {
      {"Duration", a.duration, time},
      {"Integral", a.integral, "m/s"},
      {"Average acc.", a.average, "g"},
      {"Maximum acc.", a.peak, "g"},
      {"Maximum acc.", a.peakMetric, "m/s^2"},
      {"Time to peak", a.timeOfPeak, time},
      {"Onset rate", a.onsetRate, "g/s"},
      {"delta g", a.delta, "m/s"},
      {"GSI", a.gsi, ""},
      {"HIC", a.hic.value, ""},
      {"HIC start time", TimeOfSample(a.hic.start), time},
      {"       end time", HicEnd(), time},
      {"A-3", a.a3Level, "g"},
      {"A-3 time", TimeOfSample(a.a3Sample), time},
      {"NSI", mass_ > 0 ? FormatNumber(a.nsi, "0.00") : std::string("mass=0"), ""},
  };
  if (HasNoResult()) {
    for (std::vector<ResultTable::Cell>& row : table.rows) {
      row[1] = std::monostate();  // 0 would be a harmless impact
    }
  }
  table.formats = {nullptr, ThroughPattern(workbench_.patterns.ValuePattern), nullptr};
  tables_ = {std::move(table)};
}

void HeadImpactForm::DrawGraph() {
  const auto curve = [this](std::string name, int colour, const std::vector<float>& y) {
    return FormGraph::Plot{.name = std::move(name),
                           .colour = colour,
                           .x = {impact_.time.begin(), impact_.time.end()},
                           .y = {y.begin(), y.end()}};
  };
  constexpr int kUnfilteredColour = 14;
  const std::string label = Trim(workbench_.trial.ChanLabel[channel_].Text());
  FormGraph graph{.title = label + ", " + FileNamePart(workbench_.trial.FileName),
                  .x = {.caption = abscissa_ == 1 ? "Time (s)" : "Time (ms)"},
                  .y = {.caption = "Acceleration (g)"}};
  if (!impact_.unfiltered.empty()) {
    graph.plots.push_back(curve("Unfiltered", kUnfilteredColour, impact_.unfiltered));
  }
  graph.plots.push_back(curve("GSI " + FormatNumber(impact_.gsi, "0.0") + " (limit 1200), HIC " +
                                  FormatNumber(impact_.hic.value, "0.0") + " (limit 1000)",
                              workbench_.trial.ChanColour[channel_], impact_.acceleration));
  graph.x.minimum = impact_.time.empty() ? 0.0 : impact_.time.front();
  graph.x.maximum = impact_.time.empty() ? 1.0 : impact_.time.back();
  for (const FormGraph::Plot& plot : graph.plots) {
    for (const double y : plot.y) {
      graph.y.minimum = std::min(graph.y.minimum, y);
      graph.y.maximum = std::max(graph.y.maximum, y * 1.05);
    }
  }
  if (impact_.hic.start > 0) {
    graph.bands.push_back({.from = TimeOfSample(impact_.hic.start), .to = HicEnd(), .text = "HIC"});
  }
  const bool together = impact_.a3Sample > 0 && impact_.a3Level == impact_.peak;
  if (impact_.peak > 0) {
    graph.points.push_back(
        {impact_.timeOfPeak, impact_.peak,
         (together ? "peak and A-3 " : "peak ") + FormatNumber(impact_.peak, "0.0 ") + "g"});
  }
  if (impact_.a3Sample > 0 && !together) {
    graph.points.push_back({TimeOfSample(impact_.a3Sample), impact_.a3Level,
                            "A-3 " + FormatNumber(impact_.a3Level, "0.0 ") + "g"});
  }
  graph_ = std::move(graph);
}

void HeadImpactForm::NoteDoubts() const {
  const auto note = [this](const std::string& text) {
    AddNotice(workbench_, "Channel " + ChannelNumber(channel_) + " " + text);
  };
  if (impact_.negatives > 0) {
    note("has " + CountOf(impact_.negatives, "value") +
         " below 0: nothing was reduced, and all its measures of an impact are 0.");
    return;
  }
  if (HasNoResult()) {
    note("gave no measures of an impact: it has " +
         (impact_.missing > 0 ? CountOf(impact_.missing, "sample") + " without a number."
          : IsBeyondNumbers() ? std::string("values too large for them.")
                              : std::string("no sampling rate or no samples.")));
    return;
  }
  if (!rateCarriesFilter_ && impact_.unfiltered.empty()) {
    note("was reduced without a filter: the sampling rate is too low for the cut-off of 1000 Hz.");
  }
  if (const std::string hint = MetricHint(); !hint.empty()) {
    note(hint);
  }
  if (!IsTimeBased(workbench_)) {
    AddNotice(workbench_, std::string(kNotTimeBased));
  }
}

std::string HeadImpactForm::Words() const {
  if (impact_.negatives > 0 || HasNoResult()) {
    return "Head impact, nothing reduced";
  }
  return "Head impact, GSI " + FormatNumber(impact_.gsi, "0.0") + ", HIC " +
         FormatNumber(impact_.hic.value, "0.0") + " over " + PlainNumber(hicSpan_) + " ms, peak " +
         FormatNumber(impact_.peak, "0.0 ") + "g";
}

}  // namespace velmora
