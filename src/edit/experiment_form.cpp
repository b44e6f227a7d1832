#include "edit/experiment_form.hpp"

#include <array>
#include <string>

#include "core/questions/form.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "edit/experiment_texts.hpp"

namespace velmora {
namespace {

constexpr std::size_t kFirstLine = kExperimentTexts - native::kExperimentLines;

class ExperimentForm : public Form {
 public:
  explicit ExperimentForm(Workbench& workbench)
      : Form("frmExperiment", "Experiment Information"), workbench_(workbench) {
    const NativeRecords& records = workbench.records;
    for (std::size_t row = 0; row < kExperimentTexts; ++row) {
      const auto& [name, caption, record, field] = kExperiment[row];
      texts_[row] = ExperimentTextOf(records, kExperiment[row]);
      fields_.push_back({.name = name,
                         .caption = caption,
                         .target = &texts_[row],
                         .prompt = "At most " + std::to_string(field.bytes) + " characters."});
    }
    mass_ = SubjectMass(records);
    height_ = SubjectHeight(records);
    fields_.push_back({.name = "txtMass", .caption = "&Mass", .target = &mass_});
    fields_.push_back({.name = "txtHeight", .caption = "&Height", .target = &height_});
    fields_.push_back({.name = "lblNote", .caption = "", .target = &note_, .readOnly = true});
    buttons_ = {{.caption = "&OK", .role = FormButton::Role::Accept, .press = [this] { return Keep(); }},
                {.caption = "&Cancel", .role = FormButton::Role::Cancel, .press = [] { return true; }}};
    before_ = texts_;
  }

 private:
  bool Keep() {
    for (std::size_t row = 0; row < kExperimentTexts; ++row) {
      if (CharacterCount(texts_[row]) > kExperiment[row].field.bytes) {
        ShowRefusal(workbench_, {.title = Title(),
                                 .text = WithoutMnemonic(kExperiment[row].caption) + " is longer than " +
                                         std::to_string(kExperiment[row].field.bytes) + " characters.",
                                 .icon = Icon::Exclamation});
        return false;
      }
    }
    for (std::size_t row = 0; row < kExperimentTexts; ++row) {
      if (texts_[row] != before_[row]) {
        KeepText(row);
      }
    }
    KeepNumber(native::kMass, mass_, "Mass");
    KeepNumber(native::kHeight, height_, "Height");
    if (!kept_.empty()) {
      Did(workbench_, "Experiment information entered: " + kept_);  // not what it says: it names people
    }
    return true;
  }

  void KeepText(std::size_t row) {
    const native::TextField& field = kExperiment[row].field;
    std::string bytes = ToWindows1252(texts_[row]);
    bytes.resize(field.bytes, ' ');
    (workbench_.records.*kExperiment[row].record).replace(field.offset, field.bytes, bytes);
    if (row >= kFirstLine) {
      workbench_.trial.HeaderLines[row - kFirstLine + 1] = texts_[row];
    }
    Kept(kExperiment[row].caption);
  }

  void KeepNumber(std::size_t offset, double value, const char* caption) {
    const auto stored = static_cast<float>(value);
    if (stored != native::Get<float>(workbench_.records.FILMINFO, offset)) {
      native::Put(workbench_.records.FILMINFO, offset, stored);
      Kept(caption);
    }
  }

  void Kept(const char* caption) {
    kept_ += (kept_.empty() ? "" : ", ") + ToLower(WithoutMnemonic(caption));
    MarkChanged(workbench_, true);
  }

  Workbench& workbench_;
  std::array<std::string, kExperimentTexts> texts_;
  std::array<std::string, kExperimentTexts> before_;
  std::string kept_;  // what was changed
  double mass_ = 0.0;
  double height_ = 0.0;
  std::string note_ = "Note, these parameters are only saved in the .VMB file format.";
};

}  // namespace

void ShowExperimentInformation(Workbench& workbench) {
  ExperimentForm(workbench).Show(workbench);
}

}  // namespace velmora
