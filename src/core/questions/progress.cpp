#include "core/questions/progress.hpp"

#include "core/workbench.hpp"

namespace velmora {

ProgressPanel::ProgressPanel(Workbench& workbench, Kind kind) : workbench_(workbench), kind_(kind) {
  if (kind_ == Kind::Loading) {
    workbench_.CancelRequested = false;
    fileName_ = workbench_.trial.FileName;
    format_ = std::to_string(workbench_.trial.FileTypeCode);
    status_ = "Status or number of data per channel";
  } else {
    status_ = "Data are being processed. Please wait.";
  }
  Changed();
}

ProgressPanel::~ProgressPanel() {
  try {
    workbench_.questions.EndProgress(*this);
  } catch (...) {  // NOLINT: a panel that cannot say goodbye must not end the program
  }
}

void ProgressPanel::SetFileName(std::string_view name) {
  fileName_ = name;
  Changed();
}

void ProgressPanel::SetFormat(std::string_view text) {
  format_ = text;
  Changed();
}

void ProgressPanel::SetStatus(std::string_view text) {
  status_ = text;
  Changed();
}

void ProgressPanel::SetLimits(double lowest, double highest) {
  lowest_ = lowest;
  highest_ = highest;
  value_ = lowest;
  Changed();
}

void ProgressPanel::SetValue(double value) {
  value_ = value;
  Changed();
}

void ProgressPanel::ShowTable(const ResultTable& table) {
  table_ = &table;
  Changed();
}

void ProgressPanel::Finish() {
  finished_ = true;
  Changed();
}

bool ProgressPanel::GiveTurn() {
  Changed();
  return workbench_.CancelRequested;
}

void ProgressPanel::PressCancel() {
  workbench_.CancelRequested = true;
}

std::string ProgressPanel::Title() const {
  return kind_ == Kind::Processing ? "Processing. ... Please wait." : "";
}

bool ProgressPanel::OffersGraph() const {
  return finished_ && workbench_.trial.FileTypeCode != kUnknownFileType;
}

void ProgressPanel::Changed() {
  workbench_.questions.ShowProgress(*this);
}

}  // namespace velmora
