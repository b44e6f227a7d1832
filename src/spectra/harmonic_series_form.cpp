#include "spectra/harmonic_series_form.hpp"

#include <algorithm>
#include <array>

#include "core/text/numbers.hpp"
#include "formats/fourier/fourier_file_writer.hpp"
#include "results/result_presses.hpp"

namespace velmora {
namespace {

double Step(const SpectrumMemory& spectrum) {
  return spectrum.HarmFreq.size() > 1 ? spectrum.HarmFreq[1] : 0.0;
}

std::int32_t HighestHarmonic(const Trial& trial) {
  return RoundHalfEven32((trial.CursorHi - (trial.CursorLo - 1.0)) / 2);
}

std::int32_t HighestFrequency(const Trial& trial) {
  const double intervals = trial.CursorHi - trial.CursorLo;
  const bool any = intervals > 0 && trial.Rate > 0;
  return any ? RoundHalfEven32(HighestHarmonic(trial) * (1.0 / (intervals / trial.Rate))) : 0;
}

}  // namespace

HarmonicSeriesForm::HarmonicSeriesForm(Workbench& workbench, int channel)
    : SpectrumForm(workbench, {.name = "frm4Series",
                               .title = "Power Spectrum for file: " + workbench.trial.FileName,
                               .abscissas = {"Harmonic number", "Frequency (Hz)"},
                               .series = {"Normalized power", "Cumulative power", "Relative power",
                                          "1, 2 and 3", "Absolute power"},
                               .channel = channel,
                               .lines = workbench.spectrum.NHarm,
                               .step = Step(workbench.spectrum),
                               .MaxHarm = HighestHarmonic(workbench.trial),
                               .MaxFreq = HighestFrequency(workbench.trial)}) {
  AddMenuFields();
  fields_.push_back(
      {.name = "MaxHarm", .caption = "Highest harmonic", .target = &look_.MaxHarm, .readOnly = true});
  fields_.push_back({.name = "MaxFreq",
                     .caption = "Highest frequency",
                     .target = &look_.MaxFreq,
                     .units = "Hz",
                     .readOnly = true});
  AddFrequencyFields(KeptFrequencies(workbench.spectrum));
  KeepTable(workbench.results.ResultTables, MakeTable());
  AddButtons();
  DrawGraph();
}

void HarmonicSeriesForm::AddButtons() {
  const auto add = [this](const char* caption, std::function<void()> press) {
    buttons_.push_back(StayButton(caption, std::move(press)));
  };
  buttons_.push_back({"E&xit", FormButton::Role::Accept, [] { return true; }});
  add("&Max.", [this] { AskMaximum(); });
  add("&Table", [this] { ShowTable(true); });
  add("&Graph", [this] { ShowTable(false); });
  add("Table to &Clipboard", [this] { SendToClipboard(workbench_, ClipboardText(), ""); });
  for (FormButton& button : ProgramButtons(workbench_, [this] { return Save(); })) {
    buttons_.push_back(std::move(button));
  }
  add("&Save", [this] { Save(); });
  for (FormButton& button : PictureButtons(workbench_, *this)) {
    buttons_.push_back(std::move(button));
  }
}

ResultTable HarmonicSeriesForm::MakeTable() const {
  const SpectrumMemory& spectrum = workbench_.spectrum;
  ResultTable table{
      .name = "frm4Series",
      .title = "Bias=" + FormatNumber(spectrum.SinCoef[0], workbench_.patterns.ValuePattern),
      .columns = {"Harmonic number", "Frequency (hertz)", "Ci Cos(Ø)", "Bi Sin(Ø)", "Normalized power",
                  "Cumulative % max.", "Relative %", "Absolute", "Cum. Abs."}};
  table.formats.assign(table.columns.size(), ThroughPattern(workbench_.patterns.ValuePattern));
  table.formats[0] = ThroughPattern("0");
  table.formats[1] = ThroughPattern("0.000");
  table.rows.reserve(static_cast<std::size_t>(spectrum.NHarm));
  const std::array<const std::vector<double>*, 8> lists = {
      &spectrum.HarmFreq, &spectrum.CosCoef,  &spectrum.SinCoef,  &spectrum.PowerNorm,
      &spectrum.PowerCum, &spectrum.PowerRel, &spectrum.PowerAbs, &spectrum.PowerAbsCum};
  for (std::size_t k = 1; k <= static_cast<std::size_t>(spectrum.NHarm); ++k) {
    std::vector<ResultTable::Cell>& row = table.rows.emplace_back();
    row.reserve(1 + lists.size());
    row.emplace_back(static_cast<double>(k));
    for (const std::vector<double>* list : lists) {
      row.emplace_back((*list)[k]);
    }
  }
  return table;
}

// It may be long: one copy serves the info and this view.
const ResultTable& HarmonicSeriesForm::Table() const {
  const std::vector<ResultTable>& tables = workbench_.results.ResultTables;
  return *std::find_if(tables.begin(), tables.end(),
                       [this](const ResultTable& table) { return table.name == Name(); });
}

void HarmonicSeriesForm::ShowTable(bool on) {
  if (on == !tables_.empty()) {
    return;
  }
  tables_.clear();
  if (on) {
    tables_.push_back(Table());
  }
  graph_->hidden = on;
}

// The heads stand in two lines, as in a grid of narrow columns.
std::string HarmonicSeriesForm::ClipboardText() const {
  const std::string cells = TableText(Table());
  return "Power spectrum for: " + workbench_.trial.TrialTitle + "\n" + Table().title +
         "\nHarmonic\tFrequency\tCi Cos(Ø)\tBi Sin(Ø)\tNormalized\tCumulative\tRelative\tAbsolute\tCum. "
         "Abs.\n"
         "number\t(hertz)\t\t\tpower\t% max.\t%\t\t\n" +
         cells.substr(cells.find('\n') + 1);
}

std::string HarmonicSeriesForm::Save() {
  return SaveResults(
      workbench_,
      {.title = "Save as .FTF file",
       .defaultName = workbench_.trial.TrialName + ".ftf",
       .extension = ".ftf",
       .filter = "Velmora2 Fourier Transform File (.ftf)|*.ftf|Text file (.txt)|*.txt|All files "
                 "(*.*)|*.*"},
      [this] { return FourierFileText(workbench_, look_.channel); }, SaveTrouble::StaySilent);
}

}  // namespace velmora
