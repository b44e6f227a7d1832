#include "data/header_view.hpp"

#include <algorithm>
#include <string>
#include <utility>

#include "core/results/result_form.hpp"
#include "core/results/trial_lines.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "import/format_name.hpp"

namespace velmora {
namespace {

std::string LineNumber(int line) {
  return FormatNumber(line, "00");
}

ResultTable HeaderLinesOf(const Trial& trial) {
  ResultTable table{.name = "frmHeaderLines", .title = "Lines of the header", .columns = {"Line", "Text"}};
  for (int k = 1; k <= std::min(trial.HeaderLineCount, kMaxHeaderLines); ++k) {
    table.rows.push_back({LineNumber(k), TrimRight(trial.HeaderLines[k])});
  }
  return table;
}

// Which samples of a recording these are, where its file counts them.
std::string OfTheFile(const Trial& trial) {
  return trial.LastSample <= 0 ? ""
                               : " (" + FormatCount(trial.FirstSample) + " to " +
                                     FormatCount(trial.LastSample) + " of the recording)";
}

class HeaderForm : public ResultForm {
 public:
  explicit HeaderForm(Workbench& workbench)
      : ResultForm(workbench, {.name = "frmHeaderLines",
                               .title = "Header",
                               .file = {.what = "header", .extension = ".txt"},
                               .head = {},
                               .tables = {HeaderLinesOf(workbench.trial), ChannelFacts(workbench)}}) {
    const Trial& trial = workbench.trial;
    const NumberPatterns& patterns = workbench.patterns;
    for (const auto& row : Tables().front().rows) {
      lines_ += (lines_.empty() ? "" : "\n") + std::get<std::string>(row[0]) + "  " +
                OneLine(std::get<std::string>(row[1]));
    }
    // As one text for whoever asks by the field; a person has the table.
    fields_.push_back({.name = "lstHeader", .caption = "Lines", .target = &lines_, .readOnly = true});
    fields_.back().hidden = true;
    Fact("File", workbench.LoadedFile.empty() ? trial.FileName : workbench.LoadedFile);
    Fact("Format", FormatNameOf(trial));
    Fact("Channels", std::to_string(trial.NChan));
    Fact("Samples", FormatCount(trial.NData) + OfTheFile(trial));
    Fact("Sampling rate", FormatNumber(trial.Rate, patterns.RatePattern) + " Hz");
    Fact("Duration", FormatNumber(trial.Duration, patterns.TimePattern) + " s");
    if (trial.TrialIndex >= 0) {
      Fact("Trial of the file", std::to_string(trial.TrialIndex));
    }
    fields_.push_back({.name = "txtInfo", .caption = "", .target = &info_, .readOnly = true});
  }

 private:
  void Fact(const char* what, const std::string& text) {
    info_ += (info_.empty() ? "" : "\n") + std::string(what) + ":  " + OneLine(text);
  }

  std::string lines_;
  std::string info_;
};

}  // namespace

ResultTable ChannelFacts(const Workbench& workbench) {
  const Trial& trial = workbench.trial;
  ResultTable table{
      .name = "frmHeaderChannels",
      .title = "Channels",
      .columns = {"Channel", "Label", "Units", "Rate (Hz)", "Gain", "Offset", "Number", "Autozero"}};
  table.formats.resize(4);
  table.formats.back() = ThroughPattern(workbench.patterns.RatePattern);
  for (int c = 1; c <= trial.NChan; ++c) {
    table.rows.push_back({ChannelNumber(c), LabelOnOneLine(trial, c), Trim(trial.ChanUnits[c].Text()),
                          CellOf(trial.ChanRate[c]), CellOf(trial.ChanGain[c]), CellOf(trial.ChanOffset[c]),
                          static_cast<double>(trial.ChanNumber[c]),
                          trial.ChanAutozero[c] != 0 ? "yes" : "no"});
  }
  return table;
}

void ShowHeader(Workbench& workbench) {
  HeaderForm(workbench).Show(workbench);
}

}  // namespace velmora
