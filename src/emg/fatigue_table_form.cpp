#include "emg/fatigue_table_form.hpp"

#include <algorithm>
#include <utility>

#include "core/files/paths.hpp"
#include "core/results/trial_lines.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "emg/fatigue_slopes.hpp"
#include "emg/fatigue_table.hpp"
#include "results/result_presses.hpp"

namespace velmora {
namespace {

constexpr int kFirstColour = 1;
constexpr int kSecondColour = 2;

double Largest(const std::vector<FormGraph::Plot>& plots) {
  double most = 0.0;
  for (const FormGraph::Plot& plot : plots) {
    for (const double y : plot.y) {
      most = std::max(most, y);
    }
  }
  return most > 0 ? most : 1.0;
}

}  // namespace

FatigueTableForm::FatigueTableForm(Workbench& workbench, const FatigueOrder& order,
                                   const FatigueSeries& series)
    : ResultForm(workbench, "frmFatigueTable", order.title + " for file: " + workbench.trial.FileName),
      order_(order),
      series_(series) {
  fields_ = {{.name = "optGraph",
              .caption = "G&raph of",
              .target = &drawn_,
              .choices = {"Frequency", "Percent first interval", "Integrated", "Spectra by interval",
                          "First and last spectrum"},
              .edited = [this] {
                DrawGraph();
                ShowTables(false);
              }}};
  AddButtons();
  SetTables({Table(), FatigueSlopeTable(workbench_, series_.rows)});
  DrawGraph();
  ShowTables(true);
}

void FatigueTableForm::AddButtons() {
  buttons_ = {
      StayButton("&Graph", [this] { ShowTables(false); }),
      StayButton("&Table", [this] { ShowTables(true); }),
      StayButton("Sa&ve", [this] { Save(); }),
  };
  for (auto& more :
       {ProgramButtons(workbench_, [this] { return SavedFile(); }), PictureButtons(workbench_, *this)}) {
    buttons_.insert(buttons_.end(), more.begin(), more.end());
  }
  buttons_.push_back(ExitButton("&Done"));
}

std::string FatigueTableForm::ChannelName() const {
  return ChannelNumber(order_.channel) + " " + Trim(workbench_.trial.ChanLabel[order_.channel].Text());
}

std::string FatigueTableForm::Units() const {
  return Trim(workbench_.trial.ChanUnits[order_.channel].Text());
}

ResultTable FatigueTableForm::Table() const {
  ResultTable table = EmptyFatigueTable(workbench_, order_.channel);
  table.rows.reserve(series_.rows.size());
  for (const FatigueRow& row : series_.rows) {
    AddFatigueRow(table, row);
  }
  return table;
}

// --- Graphs

void FatigueTableForm::DrawGraph() {
  FormGraph graph{.title = "Channel " + ChannelName() + ", " + FileNamePart(workbench_.trial.FileName),
                  .resets = graph_ ? graph_->resets + 1 : 0};
  if (drawn_ == Spectra) {
    DrawSpectra(graph);
  } else if (drawn_ == FirstAndLast) {
    DrawFirstAndLast(graph);
  } else {
    DrawOverTime(graph);
  }
  graph.hidden = TablesShown();
  graph_ = std::move(graph);
}

void FatigueTableForm::DrawOverTime(FormGraph& graph) const {
  const auto add = [&](const char* name, int colour, double FatigueRow::*of) {
    FormGraph::Plot plot{.name = name, .colour = colour};
    for (const FatigueRow& row : series_.rows) {
      plot.x.push_back(row.from);
      plot.y.push_back(row.*of);
    }
    graph.plots.push_back(std::move(plot));
  };
  if (drawn_ == Integrated) {
    graph.y.caption = "Integrated " + Units() + ".s";
    add("Abs. Integ'l", kFirstColour, &FatigueRow::absoluteIntegral);
  } else {
    const bool percent = drawn_ == PercentFirst;
    graph.y.caption = percent ? "Percent first interval" : "Frequency (Hz)";
    add("Median", kFirstColour, percent ? &FatigueRow::percentMedian : &FatigueRow::median);
    add("Mean", kSecondColour, percent ? &FatigueRow::percentMean : &FatigueRow::mean);
    if (!percent) {
      DrawSlope(graph, "Slope of median", kFirstColour, &FatigueRow::median);
      DrawSlope(graph, "Slope of mean", kSecondColour, &FatigueRow::mean);
    }
  }
  graph.y.maximum = Largest(graph.plots) * 1.05;
  graph.x.caption = "Time (s)";
  if (series_.rows.size() > 1) {
    graph.x.minimum = series_.rows.front().from;
    graph.x.maximum = series_.rows.back().from;
  }
}

// The graph has its intervals at their beginnings, the line goes through their middles.
void FatigueTableForm::DrawSlope(FormGraph& graph, const char* name, int colour,
                                 double FatigueRow::*of) const {
  std::vector<double> time;
  std::vector<double> value;
  for (const FatigueRow& row : series_.rows) {
    time.push_back(MiddleOf(row, series_.rows.front()));
    value.push_back(row.*of);
  }
  if (const auto slope = SlopeOver(time, value)) {
    graph.plots.push_back(
        {.name = name,
         .colour = colour,
         .x = {series_.rows.front().from, series_.rows.back().from},
         .y = {slope->initial + slope->slope * time.front(), slope->initial + slope->slope * time.back()},
         .width = 2.0});
  }
}

// Each spectrum stands at the time of its interval, the largest power of all as high as three of them lie
// apart.
void FatigueTableForm::DrawSpectra(FormGraph& graph) const {
  const std::vector<FatigueSeries::Spectrum>& spectra = series_.spectra;
  graph.title += ", Power (" + Units() + ")";
  graph.x.caption = "Freq (hertz)";
  graph.y.caption = "Time (s)";
  if (spectra.size() < 2 || series_.frequencies.size() < 2) {
    return;
  }
  for (const FatigueSeries::Spectrum& spectrum : spectra) {
    graph.plots.push_back({.colour = kFirstColour,
                           .x = {series_.frequencies.begin() + 1, series_.frequencies.end()},
                           .y = {spectrum.power.begin() + 1, spectrum.power.end()}});
  }
  const double height = 3 * (spectra[1].from - spectra[0].from) / Largest(graph.plots);
  for (std::size_t k = 0; k < spectra.size(); ++k) {
    for (double& y : graph.plots[k].y) {
      y = spectra[k].from + y * height;
    }
  }
  graph.x.maximum = series_.frequencies.back();
  graph.y.minimum = spectra.front().from;
  graph.y.maximum = Largest(graph.plots);
}

void FatigueTableForm::DrawFirstAndLast(FormGraph& graph) const {
  graph.x.caption = "Freq (hertz)";
  graph.y.caption = "Power (" + Units() + ")";
  if (series_.spectra.empty() || series_.frequencies.size() < 2) {
    return;
  }
  const auto add = [&](const char* name, int colour, const std::vector<double>& power) {
    graph.plots.push_back({.name = name,
                           .colour = colour,
                           .x = {series_.frequencies.begin() + 1, series_.frequencies.end()},
                           .y = {power.begin() + 1, power.end()}});
  };
  add("First interval", kFirstColour, series_.spectra.front().power);
  add("Last interval", kSecondColour, series_.lastPower);
  graph.x.maximum = series_.frequencies.back();
  graph.y.maximum = Largest(graph.plots);
}

// --- Files

std::string FatigueTableForm::FileText() const {
  const Trial& trial = workbench_.trial;
  const FatigueSettings& settings = order_.settings;
  const double interval =
      settings.method == FatigueMethod::HarmonicRegression ? settings.interval : settings.data / trial.Rate;
  std::string text = TrialLines(workbench_) + ChannelLine(trial, order_.channel) +
                     "Windowing type:\trectangular\nNumber of harmonics:\t" +
                     std::to_string(series_.harmonics) + "\nTime interval (s):\t" + PlainNumber(interval) +
                     "\n\nCount\tChan.\tTime\tMedian f\tMean f\t%Med.1\t%Mean1\tAbs.Mean\tRMS\tAbs.Int'l\n";
  int count = 0;
  for (const FatigueRow& of : series_.rows) {
    text += FormatNumber(++count, "000") + "\t    " + ChannelNumber(order_.channel);
    for (const double value : {of.from, of.median, of.mean}) {
      text += "\t" + FormatNumber(value, "0.0000");
    }
    for (const double percent : {of.percentMedian, of.percentMean}) {
      text += "\t" + FormatNumber(percent, "0.00");
    }
    for (const double value : {of.absoluteMean, of.rms, of.absoluteIntegral}) {
      text += "\t" + FormatNumber(value, "0.0000");
    }
    text += "\n";
  }
  return text + "\n" + TableTextInFull(FatigueSlopeTable(workbench_, series_.rows));
}

void FatigueTableForm::Save() {
  const std::string path =
      SaveResults(workbench_,
                  {.title = "Save as .FAT file",
                   .defaultName = workbench_.trial.TrialName + ".fat",
                   .extension = ".fat",
                   .filter = "Velmora2 Fatigue Analysis (.fat)|*.fat|Text file (*.txt)|*.txt|All files "
                             "(*.*)|*.*"},
                  [this] { return FileText(); });
  if (!path.empty()) {
    savedFile_ = path;
  }
}

// For the programs; empty, and told, as long as nothing was saved.
std::string FatigueTableForm::SavedFile() {
  if (savedFile_.empty()) {
    ShowRefusal(workbench_, {.title = "Data Not Saved",
                             .text = "To send data to Notepad or a spreadsheet, first press the Save button "
                                     "to asve the data to a file.",
                             .icon = Icon::Exclamation});
  }
  return savedFile_;
}

}  // namespace velmora
