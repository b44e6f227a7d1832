#include "spectra/spectrum_form.hpp"

#include <algorithm>
#include <cmath>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"

namespace velmora {
namespace {

constexpr std::array<const char*, 5> kSeriesNames = {"Normalized power", "Cumulative power", "Relative power",
                                                     "", "Absolute power"};

const std::vector<double>& ListOf(const SpectrumMemory& spectrum, int series) {
  switch (series) {
    case 1:
      return spectrum.PowerCum;
    case 2:
      return spectrum.PowerRel;
    case 4:
      return spectrum.PowerAbs;
    default:
      return spectrum.PowerNorm;
  }
}

}  // namespace

SpectrumForm::SpectrumForm(Workbench& workbench, const Look& look)
    : Form(look.name, look.title),
      workbench_(workbench),
      look_(look),
      abscissa_(look.abscissa),
      upperLine_(look.lines),
      upperFrequency_(look.lines * look.step),
      exact_(ExactFrequencies(workbench.spectrum, look.step)) {}

void SpectrumForm::AddMenuFields() {
  const auto draw = [this] { DrawGraph(); };
  const auto menu = [&](const char* name, const char* caption, std::int32_t& value,
                        std::vector<std::string> choices) {
    fields_.push_back(
        {.name = name, .caption = caption, .target = &value, .choices = std::move(choices), .edited = draw});
  };
  menu("mnuAbscissa", "&Abscissa", abscissa_, look_.abscissas);
  menu("mnuOrdinate", "&Ordinate", ordinate_, {"Linear", "Log"});
  menu("mnuSeries", "&Series", series_, look_.series);
  menu("mnuBackground", "&Background", background_, {"Black", "White"});
}

void SpectrumForm::AddFrequencyFields(const FourFrequencies& reported) {
  reported_ = reported;
  const auto show = [this](const char* name, const char* caption, double& value) {
    fields_.push_back({.name = name, .caption = caption, .target = &value, .units = "Hz", .readOnly = true});
  };
  show("MedianFreq", "Median, as reported", reported_.median);
  show("MeanFreq", "Mean, as reported", reported_.mean);
  show("Percentile95Freq", "95 %, as reported", reported_.p95);
  show("Percentile99Freq", "99 %, as reported", reported_.p99);
  show("ExactMedian", "Median, exact", exact_.median);
  show("ExactMean", "Mean, exact", exact_.mean);
  show("ExactPercentile95", "95 %, exact", exact_.p95);
  show("ExactPercentile99", "99 %, exact", exact_.p99);
}

double SpectrumForm::PlaceOf(std::size_t line) const {
  return static_cast<double>(line) * (ByFrequency() ? look_.step : 1.0);
}

FormGraph::Plot SpectrumForm::PlotOf(int series) const {
  const std::vector<double>& powers = ListOf(workbench_.spectrum, series);
  FormGraph::Plot plot{.name = kSeriesNames[static_cast<std::size_t>(series)], .colour = series + 1};
  plot.x.reserve(powers.size());
  plot.y.reserve(powers.size());
  for (std::size_t line = 1; line < powers.size(); ++line) {
    plot.x.push_back(PlaceOf(line));
    plot.y.push_back(powers[line]);
  }
  return plot;
}

// From zero, or from the decade of the least power that is one, but not over more than ten decades.
FormGraph::Axis SpectrumForm::OrdinateOf(const std::vector<FormGraph::Plot>& plots) const {
  constexpr double kDecades = 1e-10;
  double most = 0.0;
  double least = INFINITY;
  for (const FormGraph::Plot& plot : plots) {
    for (const double power : plot.y) {
      most = std::max(most, power);
      least = power > 0 ? std::min(least, power) : least;
    }
  }
  most = most > 0 ? most : 1.0;
  least = std::max(std::min(least, most / 10), most * kDecades);
  FormGraph::Axis axis{.maximum = most, .log = ordinate_ == 1, .caption = "Power (%)"};
  if (axis.log) {
    axis.minimum = std::pow(10.0, std::floor(std::log10(least)));
  }
  if (series_ == Absolute) {
    axis.caption = "Power (" + workbench_.trial.ChanUnits[look_.channel].Text() + ")";
  }
  return axis;
}

std::vector<FormGraph::Mark> SpectrumForm::Marks() const {
  if (!(look_.step > 0) || !(exact_.p99 > 0)) {
    return {};
  }
  const double perUnit = ByFrequency() ? 1.0 : 1.0 / look_.step;
  const auto mark = [&](const char* name, double frequency, int colour) {
    return FormGraph::Mark{frequency * perUnit, name + FormatNumber(frequency, "0.0 Hz"), colour};
  };
  return {mark("Median ", exact_.median, 2), mark("Mean ", exact_.mean, 4), mark("95 % ", exact_.p95, 8),
          mark("99 % ", exact_.p99, 6)};
}

std::string SpectrumForm::ReadOut(double x) const {
  const double line = ByFrequency() && look_.step > 0 ? x / look_.step : x;
  if (look_.lines < 1) {
    return {};
  }
  const auto k =
      static_cast<std::size_t>(std::clamp(std::round(line), 1.0, static_cast<double>(look_.lines)));
  std::string text =
      "Harmonic " + std::to_string(k) + ",  " + FormatNumber(static_cast<double>(k) * look_.step, "0.000 Hz");
  for (const FormGraph::Plot& plot : graph_->plots) {
    text += ",  " + plot.name + " " + PlainNumber(static_cast<float>(plot.y[k - 1])) +
            (series_ == Absolute ? "" : " %");
  }
  return text;
}

void SpectrumForm::DrawGraph() {
  const Trial& trial = workbench_.trial;
  FormGraph graph;
  graph.title = "Channel " + ChannelNumber(look_.channel) + " " +
                Trim(trial.ChanLabel[look_.channel].Text()) + ", " + workbench_.spectrum.WindowName +
                " window";
  graph.background = background_ == 1 ? FormGraph::Background::White : FormGraph::Background::Black;
  if (series_ == AllThree) {
    graph.plots = {PlotOf(Normalized), PlotOf(Cumulative), PlotOf(Relative)};
  } else {
    graph.plots = {PlotOf(series_)};
  }
  graph.x = {.maximum = ByFrequency() ? upperFrequency_ : upperLine_,
             .caption = ByFrequency() ? "Frequency (Hz)" : "Harmonic number"};
  graph.y = OrdinateOf(graph.plots);
  graph.marks = Marks();
  graph.readOut = [this](double x, double /*y*/) { return ReadOut(x); };
  graph.hidden = graph_ && graph_->hidden;
  graph.resets = graph_ ? graph_->resets : 0;
  graph_ = std::move(graph);
}

void SpectrumForm::ShowWhole() {
  upperLine_ = look_.lines;
  upperFrequency_ = look_.lines * look_.step;
  DrawGraph();
  ++graph_->resets;
}

bool SpectrumForm::AskMaximum() {
  const std::int32_t limit = ByFrequency() ? look_.MaxFreq : look_.MaxHarm;
  const std::string prompt =
      ByFrequency() ? "Enter maximum frequency for abscissa.  Must be less than or equal to "
                    : "Enter maximum number of harmonics for abscissa.  Must be less than or equal to ";
  const std::string typed =
      workbench_.questions.AskInput({.title = ByFrequency() ? "Maximum Frequency" : "Maximum Harmonic",
                                     .prompt = prompt + std::to_string(limit) + ".",
                                     .isNumber = true});
  const double maximum = Val(typed);
  if (!typed.empty() && maximum > 0 && maximum <= limit) {
    (ByFrequency() ? upperFrequency_ : upperLine_) = maximum;
    DrawGraph();
    ++graph_->resets;
  }
  return false;
}

}  // namespace velmora
