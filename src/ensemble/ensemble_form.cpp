#include "ensemble/ensemble_form.hpp"

#include <algorithm>
#include <exception>
#include <new>
#include <utility>

#include "core/files/paths.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"

namespace velmora {
namespace {

const char* ViewCaption(const Preferences& preferences) {
  const std::string program = FileNamePart(preferences.Spreadsheet);
  if (EqualNoCase(program, "QPW.exe")) {
    return "&View in QPW";
  }
  return EqualNoCase(program, "Excel.exe") ? "&View in Excel" : "&View data";
}

}  // namespace

EnsembleForm::EnsembleForm(Workbench& workbench)
    : Form("frmEnsemble", "Ensemble Averaging"),
      workbench_(workbench),
      waiting_(std::exchange(workbench.ensemble.Files, {})),
      txtMask_(workbench.ensemble.FilenameMask),
      txtNumber_(workbench.ensemble.Intervals),
      number_(txtNumber_),
      chkUseTime_(workbench.ensemble.UseMeanTime) {
  AddFields();
  AddButtons();
}

// An average that is given up has a log all the same.
EnsembleForm::~EnsembleForm() {
  log_.Close("No means were calculated.\n");
}

void EnsembleForm::AddFields() {
  fields_ = {
      {.name = "txtFilename",
       .caption = "1. Filename for &log of averaging process:",
       .target = &txtFilename_,
       .prompt = "The log tells which files were averaged, and how much each channel varies.",
       .asksByFile = FileQuestion{.mode = FileQuestion::Mode::Save,
                                  .title = "Save ensemble information to file:",
                                  .extension = ".ens",
                                  .filter = "Velmora2 Ensemble (.ens)|*.ens|Velmora1 ASCII (.vme)|*.vme|All "
                                            "files (*.*)|*.*"}},
      {.name = "txtMask",
       .caption = "2. Filename mas&k:",
       .target = &txtMask_,
       .prompt =
           "Enter filename mask.  Use ? for any single character or * for any group of characters.\n All "
           "files should have the same number of channels and the same start and end events.",
       .title = "Enter a Filename Mask",
       .edited = [this] { workbench_.ensemble.FilenameMask = txtMask_; },
       .asksByInput = true},
      {.name = "txtNumber",
       .caption = "3. Nor&malized size:",
       .target = &txtNumber_,
       .prompt = "Enter number of intervals for averaged data (usually 100).",
       .title = "Normalized Size",
       .edited = [this] { TakeNumber(); },
       .asksByInput = true},
      {.name = "chkPreview",
       .caption = "&Preview and crop a file before it is added",
       .target = &chkPreview_},
      {.name = "chkPrompt", .caption = "As&k before each file is added", .target = &chkPrompt_},
      {.name = "chkUseTime",
       .caption = "Use mean &time (s) as time base, not percent",
       .target = &chkUseTime_,
       .edited = [this] { workbench_.ensemble.UseMeanTime = chkUseTime_; }},
      {.name = "txtNfiles", .caption = "Files in average", .target = &txtNfiles_, .readOnly = true},
      {.name = "lblNext", .caption = "Next", .target = &lblNext_, .readOnly = true},
      {.name = "lstFiles", .caption = "Files", .target = &lstFiles_, .readOnly = true, .hidden = true},
  };
}

FormButton EnsembleForm::Step(const char* caption, bool (EnsembleForm::*press)(), FormButton::Role role) {
  return {.caption = caption, .role = role, .press = [this, press] { return Guarded(press); }};
}

void EnsembleForm::AddButtons() {
  using Role = FormButton::Role;
  buttons_ = {
      Step("4. Select &First File", &EnsembleForm::ChooseFirst),
      Step("5. Channel &Selection", &EnsembleForm::SelectChannels),
      Step("6. &Begin Average", &EnsembleForm::BeginAverage),
      Step("7. &Open Next File", &EnsembleForm::OpenNext),
      Step("8. &Add Last File", &EnsembleForm::AddLast),
      Step("8. &Remove Last File", &EnsembleForm::RemoveLast),
      Step("9. Calculate &Means &&SDs", &EnsembleForm::Calculate),
      Step("10. Save to .VMB", &EnsembleForm::SaveBinary),
      Step("Save to ASCII", &EnsembleForm::SaveText),
      Step("Save to .VME", &EnsembleForm::SaveEnsemble),
      Step(ViewCaption(workbench_.preferences), &EnsembleForm::ViewText),
      Step("&Graph Last File", &EnsembleForm::ShowGraph),
      Step("&Read Ensemble", &EnsembleForm::ReadEnsemble),
      Step("&Help with Ensemble Averaging", &EnsembleForm::ShowHelp),
      Step("&Cancel", &EnsembleForm::Cancel, Role::Cancel),
      Step("E&xit", &EnsembleForm::Exit, Role::Accept),
  };
  buttons_[kChoose].takesFiles = true;
  buttons_[kOpen].takesFiles = true;
  int row = 0;
  for (const auto& [first, last] : {std::pair{kChoose, kBegin}, std::pair{kOpen, kDelete},
                                    std::pair{kDone, kDone}, std::pair{kSaveBinary, kExport}}) {
    ++row;
    for (std::size_t k = first; k <= last; ++k) {
      buttons_[k].row = row;
    }
  }
  buttons_[kGraph].row = buttons_[kDone].row;
}

// A step that fails leaves the form and all that was averaged.
bool EnsembleForm::Guarded(bool (EnsembleForm::*press)()) {
  std::string fault;
  note_.clear();
  try {
    const bool closes = (this->*press)();
    Refresh();
    return closes;
  } catch (const CommandAbandoned&) {
    throw;
  } catch (const std::bad_alloc&) {
    fault = "There is not enough memory.";
  } catch (const std::exception& error) {
    fault = error.what();
  }
  ShowFailure(workbench_, {.title = Title(), .text = fault, .icon = Icon::Stop});
  Refresh();
  return false;
}

void EnsembleForm::Run() {
  if (!waiting_.empty()) {
    const std::string first = waiting_.front();
    waiting_.erase(waiting_.begin());
    Load(first);
  }
  Refresh();
  Show(workbench_);
}

void EnsembleForm::TakeNumber() {
  if (txtNumber_ < EnsembleAverage::kFewestIntervals || txtNumber_ > EnsembleAverage::kMostIntervals) {
    txtNumber_ = number_;
  }
  number_ = workbench_.ensemble.Intervals = txtNumber_;
}

void EnsembleForm::Refresh() {
  txtNfiles_ = average_.EnsembleFiles();
  LockFields();
  ShowSteps();
  tables_.clear();
  ShowFiles();
  ShowVariation();
}

// What an average has begun with holds to its end.
void EnsembleForm::LockFields() {
  for (FormField& field : fields_) {
    if (field.name == "txtFilename" || field.name == "txtNumber") {
      field.readOnly = stage_ == Stage::Averaging;
    }
  }
}

void EnsembleForm::ShowSteps() {
  const bool averaging = stage_ == Stage::Averaging;
  const bool finished = stage_ == Stage::Finished;
  const std::string underway = averaging ? "An average is under way." : "";
  const std::string begin = averaging ? "" : "Press \"6. Begin Average\" first.";
  const std::string calculate = finished ? "" : "Press \"9. Calculate Means &SDs\" first.";
  const auto unless = [](bool possible, const char* why) { return std::string(possible ? "" : why); };
  buttons_[kChoose].whyNot = underway;
  buttons_[kSelect].whyNot =
      averaging ? underway : unless(HasTrial() && !finished, "Select the first file first.");
  buttons_[kBegin].whyNot =
      averaging ? underway : unless(stage_ == Stage::Chosen && HasTrial(), "Select channels first.");
  buttons_[kOpen].whyNot = begin;
  buttons_[kNext].whyNot = averaging ? unless(pending_, "There is no file that is not added.") : begin;
  buttons_[kDelete].whyNot =
      averaging ? unless(lastAtHand_ && average_.EnsembleFiles() >= 2, "There is no last file to remove.")
                : begin;
  buttons_[kDone].whyNot = begin;
  for (const std::size_t row : {kSaveBinary, kSaveText, kSaveEnsemble, kExport}) {
    buttons_[row].whyNot = calculate;
  }
  buttons_[kGraph].caption = finished ? "&Graph Results" : "&Graph Last File";
  buttons_[kGraph].whyNot = unless(HasTrial(), "There is no file to show.");
  buttons_[kRead].whyNot = underway;
  ShowNext();
}

// In words, and as the button that Enter presses.
void EnsembleForm::ShowNext() {
  const std::string file = FileNamePart(workbench_.trial.FileName);
  Row next = kExit;
  switch (stage_) {
    case Stage::Choosing:
      next = HasTrial() ? kSelect : kChoose;
      lblNext_ = HasTrial() ? "5: channels of " + file + ", or 4: another first file" : "4: the first file";
      break;
    case Stage::Chosen:
      next = kBegin;
      lblNext_ = "6: begin with " + file;
      if (!waiting_.empty()) {
        lblNext_ += " and " + CountOf(static_cast<std::int64_t>(waiting_.size()), "more file");
      }
      break;
    case Stage::Averaging:
      next = pending_ ? kNext : kOpen;
      lblNext_ = pending_ ? "8: add " + file + ", or 7: another file"
                          : std::string(average_.EnsembleFiles() < 2 ? "7: the next files"
                                                                     : "7: more files, or 9: calculate");
      break;
    case Stage::Finished:
      next = workbench_.trial.FileChanged ? kSaveBinary : kExit;
      lblNext_ = workbench_.trial.FileChanged ? "10: save the results" : "The results are saved.";
      break;
  }
  lblNext_ += note_.empty() ? "" : "\n" + note_;
  for (std::size_t row = 0; row < buttons_.size(); ++row) {
    buttons_[row].next = row == next;
  }
}

void EnsembleForm::ShowFiles() {
  if (average_.Files().empty()) {
    return;
  }
  ResultTable table{.name = "Files",
                    .title = CountOf(average_.EnsembleFiles(), "file") + " in the average",
                    .columns = {"File", "Duration", "Rate", "Samples", "Remark"}};
  for (const AveragedFile& file : average_.Files()) {
    std::string remark = (file.averaged || file.remark.empty() ? "" : "not averaged: ") + file.remark;
    if (const double median = average_.FarFrom(file); median > 0) {
      remark += (remark.empty() ? "" : "; ") + std::string("far from the others' duration, ") +
                FormatNumber(median, workbench_.patterns.TimePattern);
    }
    table.rows.push_back({FileNamePart(file.path), file.duration, file.rate,
                          static_cast<double>(file.samples), std::move(remark)});
  }
  const std::string& time = workbench_.patterns.TimePattern;
  table.formats = {nullptr, ThroughPattern(time), ThroughPattern(workbench_.patterns.RatePattern),
                   ThroughPattern("0"), nullptr};
  tables_.push_back(std::move(table));
}

void EnsembleForm::ShowVariation() {
  if (variation_.empty()) {
    return;
  }
  ResultTable table{.name = "Variation",
                    .title = "Coefficients of variation",
                    .columns = {"Channel", "Coeff. of var. (%)"}};
  for (const auto& [channel, percent] : variation_) {
    table.rows.push_back({channel, percent});
  }
  table.formats = {nullptr, ThroughPattern(workbench_.patterns.ValuePattern)};
  tables_.push_back(std::move(table));
}

std::string EnsembleForm::Value(double value) const {
  return FormatNumber(value, workbench_.patterns.ValuePattern);
}

}  // namespace velmora
