#include "emg/fatigue_form.hpp"

#include <algorithm>
#include <array>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "dsp/channel_picking.hpp"
#include "emg/fatigue_table_form.hpp"

namespace velmora {
namespace {

constexpr std::int32_t kFewestData = 32;     // the first entry of the list; each is twice the one before
constexpr std::array kDivisors = {2, 4, 1};  // of the entries of the interleave
constexpr std::int32_t kNotInterleaved = 2;

std::vector<std::string> DataChoices() {
  std::vector<std::string> choices;
  for (std::int32_t n = kFewestData; n <= 65536; n *= 2) {
    choices.push_back(std::to_string(n));
  }
  return choices;
}

}  // namespace

FatigueForm::FatigueForm(Workbench& workbench, const std::string& title)
    : Form("frmFatigue", title), workbench_(workbench), order_{.title = title, .settings = {}} {
  const Trial& trial = workbench.trial;
  const double duration = (trial.CursorHi - trial.CursorLo) / trial.Rate;
  interval_ = duration > 0 ? duration : 1.0;
  AddSpectrumFields();
  AddIntervalFields();
  AddOutputFields();
  AddShownFields();
  AddButtons();
  Follow();
}

void FatigueForm::AddSpectrumFields() {
  const auto follow = [this] { Follow(); };
  fields_.push_back({.name = "optMethod",
                     .caption = "&Method",
                     .target = &method_,
                     .choices = {"Use Harmonic Regression", "Use Fast Fourier Transform"},
                     .edited = follow});
  fields_.push_back({.name = "txtInterval",
                     .caption = "Time &interval",
                     .target = &interval_,
                     .units = "s",
                     .lowest = 0,
                     .prompt = "Enter window interval in seconds, usually 1.0.",
                     .title = "Window Duration",
                     .edited = follow,
                     .emptyKeeps = true,
                     .asksByInput = true});
  fields_.push_back({.name = "comNData",
                     .caption = "&Number of data per interval",
                     .target = &data_,
                     .choices = DataChoices(),
                     .edited = follow});
  fields_.push_back({.name = "txtHarmonics",
                     .caption = "Max. number of &harmonics (0: from the interval)",
                     .target = &harmonics_,
                     .lowest = 0,
                     .title = "Maximum Number of Harmonics",
                     .edited = follow,
                     .emptyKeeps = true,
                     .asksByInput = true});
}

void FatigueForm::AddIntervalFields() {
  const auto follow = [this] { Follow(); };
  fields_.push_back({.name = "txtRefractory",
                     .caption = "&Refractory interval",
                     .target = &refractory_,
                     .units = "s",
                     .lowest = 0,
                     .prompt = "Enter refractory interval in seconds, usually 0.0.",
                     .title = "Refractory Duration",
                     .edited = follow,
                     .emptyKeeps = true,
                     .asksByInput = true});
  fields_.push_back({.name = "optInterleave",
                     .caption = "Inter&leave",
                     .target = &interleave_,
                     .choices = {"50%", "25%", "None"},
                     .prompt = "Refractory interval must be zero (0.0) for interleaving.",
                     .edited = follow});
}

void FatigueForm::AddOutputFields() {
  fields_.push_back({.name = "chkPause", .caption = "&Pause after each interval", .target = &order_.pause});
  fields_.push_back(
      {.name = "chkSave", .caption = "Sa&ve spectrum", .target = &save_, .edited = [this] { Follow(); }});
  fields_.push_back({.name = "optPower",
                     .caption = "Po&wer",
                     .target = &power_,
                     .choices = {"Absolute power", "Relative power"}});
}

void FatigueForm::AddShownFields() {
  const auto show = [this](const char* name, const char* caption, double& value, const char* units,
                           const char* pattern) {
    fields_.push_back({.name = name,
                       .caption = caption,
                       .target = &value,
                       .units = units,
                       .pattern = pattern,
                       .group = "These settings make",
                       .readOnly = true});
  };
  show("Intervals", "Intervals", intervals_, "", "0");
  show("FrequencyStep", "Frequency step", frequencyStep_, "Hz", "0.000");
  show("Overlap", "Overlap of neighbours", overlap_, "%", "0.0");
}

void FatigueForm::AddButtons() {
  buttons_ = {{workbench_.trial.NChan > 1 ? "&Select Channel" : "&Start Analysis", FormButton::Role::Accept,
               [this] {
                 Start();
                 return false;
               }},
              {"E&xit", FormButton::Role::Cancel, [] { return true; }}};
}

bool FatigueForm::ByRegression() const {
  return method_ == static_cast<std::int32_t>(FatigueMethod::HarmonicRegression);
}

FatigueSettings FatigueForm::Settings() const {
  return {.method = static_cast<FatigueMethod>(method_),
          .interval = interval_,
          .data = kFewestData << data_,
          .harmonics = harmonics_,
          .refractory = refractory_,
          .divisor = kDivisors.at(static_cast<std::size_t>(interleave_))};
}

// What an edit changes besides its own field.
void FatigueForm::Follow() {
  const FatigueIntervals intervals = IntervalsOf(workbench_.trial, Settings());
  intervals_ = static_cast<double>(intervals.Count());
  frequencyStep_ = intervals.span > 0 ? workbench_.trial.Rate / static_cast<double>(intervals.span) : 0.0;
  overlap_ = std::max(intervals.Overlap(), 0.0);
  for (FormField& field : fields_) {
    if (field.name == "txtInterval" || field.name == "txtHarmonics") {
      field.hidden = !ByRegression();
    } else if (field.name == "comNData") {
      field.hidden = ByRegression();
    } else if (field.name == "optPower") {
      field.hidden = !save_;
    }
    if (field.name == "txtHarmonics") {
      field.prompt = "Enter maximum number of harmonics to analyze.  Must be less than or equal to " +
                     std::to_string(std::max(AllHarmonics(intervals), 0)) + ".";
    }
  }
}

bool FatigueForm::Refuse(const std::string& text) {
  ShowRefusal(workbench_, {.title = order_.title, .text = text, .icon = Icon::Exclamation});
  return false;
}

bool FatigueForm::Accepts() {
  if (refractory_ != 0 && interleave_ != kNotInterleaved) {
    return Refuse("Refractory interval must be zero (0.0) for interleaving.");
  }
  const FatigueIntervals intervals = IntervalsOf(workbench_.trial, order_.settings);
  if (intervals.Count() < kFewestIntervals) {
    return Refuse("Two few intervals.  Reduce interval or increase interleaving.");
  }
  if (intervals.Count() > kMostIntervals) {
    return Refuse("Number of intervals is greater than 2000.  Increase interval or reduce interleaving.");
  }
  if (ByRegression() && harmonics_ > AllHarmonics(intervals)) {
    return Refuse(FindField("txtHarmonics")->prompt);
  }
  return true;
}

bool FatigueForm::ChooseChannel() {
  order_.channel = 1;
  if (workbench_.trial.NChan == 1) {
    return true;
  }
  BeginPicking(workbench_, "Choose channel for fatigue analysis.");
  workbench_.chooser.ChooserSingleMode = true;
  if (!ChannelPicker(workbench_).Show()) {
    return false;
  }
  order_.channel = workbench_.chooser.ChooserChannel;
  return order_.channel >= 1 && order_.channel <= workbench_.trial.NChan;
}

// True without a spectrum to be saved, too.
bool FatigueForm::ChooseFile() {
  order_.saved = !save_ ? SavedPower::None : power_ == 0 ? SavedPower::Absolute : SavedPower::Relative;
  return !save_ ||
         AskSaveName(workbench_, {.title = "Save as .tab file",
                                  .defaultName = workbench_.trial.TrialName + ".tab",
                                  .extension = ".tab",
                                  .filter = "Velmora2 Fourier Transform File (.tab)|*.tab|Text file "
                                            "(.txt)|*.txt|All files (*.*)|*.*"});
}

void FatigueForm::Start() {
  order_.settings = Settings();
  if (!Accepts() || !ChooseChannel() || !ChooseFile()) {
    return;
  }
  const FatigueSeries series = RunFatigue(workbench_, order_);
  Tell(series);
  FatigueTableForm(workbench_, order_, series).Show(workbench_);
}

void FatigueForm::Tell(const FatigueSeries& series) {
  if (series.rows.empty()) {
    return;
  }
  const std::string of = ByRegression()
                             ? "harmonic regression, intervals of " + PlainNumber(interval_) + " s"
                             : "FFT, intervals of " + std::to_string(order_.settings.data) + " samples";
  const auto planned = static_cast<std::size_t>(intervals_);
  const std::size_t done = series.rows.size();
  Did(workbench_,
      order_.title + " by " + of + ", " + std::to_string(done) +
          (done < planned ? " of " + std::to_string(planned) : std::string()) + " intervals" +
          (order_.saved != SavedPower::None ? ", spectra saved" : ""),
      std::array{order_.channel});
}

}  // namespace velmora
