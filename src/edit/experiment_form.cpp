#include "edit/experiment_form.hpp"

#include <array>
#include <string>

#include "core/questions/form.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "formats/native_binary/native_binary_layout.hpp"

namespace velmora {
namespace {

using native::TextField;

constexpr std::size_t kLines = native::kExperimentLines;
constexpr std::size_t kTexts = 7 + kLines;

/// A text of the form and its place in a record.
struct TextRow {
  const char* name;
  const char* caption;
  std::string NativeRecords::*record;
  TextField field;
};

constexpr TextField Line(std::size_t line) {
  return {line * native::kExperimentLineBytes, native::kExperimentLineBytes};
}

constexpr std::array<TextRow, kTexts> kRows = {{
    {"txtProject", "&Project name", &NativeRecords::FILMINFO, native::kProject},
    {"txtSurname", "&Surname", &NativeRecords::FILMINFO, native::kSurname},
    {"txtFirstName", "&First name", &NativeRecords::FILMINFO, native::kFirstName},
    {"txtSex", "Se&x", &NativeRecords::FILMINFO, native::kSex},
    {"txtAge", "&Age", &NativeRecords::FILMINFO, native::kAge},
    {"txtCode", "&Code", &NativeRecords::FILMINFO, native::kCode},
    {"txtDate", "&Date", &NativeRecords::FILMINFO, native::kDate},
    {"txtLine1", "Experiment line &1", &NativeRecords::EXPTINFO, Line(0)},
    {"txtLine2", "Experiment line &2", &NativeRecords::EXPTINFO, Line(1)},
    {"txtLine3", "Experiment line &3", &NativeRecords::EXPTINFO, Line(2)},
    {"txtLine4", "Experiment line &4", &NativeRecords::EXPTINFO, Line(3)},
}};
constexpr std::size_t kFirstLine = kTexts - kLines;

class ExperimentForm : public Form {
 public:
  explicit ExperimentForm(Workbench& workbench)
      : Form("frmExperiment", "Experiment Information"), workbench_(workbench) {
    const NativeRecords& records = workbench.records;
    for (std::size_t row = 0; row < kTexts; ++row) {
      const auto& [name, caption, record, field] = kRows[row];
      texts_[row] = Trim(FromWindows1252((records.*record).substr(field.offset, field.bytes)));
      fields_.push_back({.name = name,
                         .caption = caption,
                         .target = &texts_[row],
                         .prompt = "At most " + std::to_string(field.bytes) + " characters."});
    }
    mass_ = native::Get<float>(records.FILMINFO, native::kMass);
    height_ = native::Get<float>(records.FILMINFO, native::kHeight);
    fields_.push_back({.name = "txtMass", .caption = "&Mass", .target = &mass_});
    fields_.push_back({.name = "txtHeight", .caption = "&Height", .target = &height_});
    fields_.push_back({.name = "lblNote", .caption = "", .target = &note_, .readOnly = true});
    buttons_ = {{.caption = "&OK", .role = FormButton::Role::Accept, .press = [this] { return Keep(); }},
                {.caption = "&Cancel", .role = FormButton::Role::Cancel, .press = [] { return true; }}};
    before_ = texts_;
  }

 private:
  bool Keep() {
    for (std::size_t row = 0; row < kTexts; ++row) {
      if (CharacterCount(texts_[row]) > kRows[row].field.bytes) {
        ShowRefusal(workbench_, {.title = Title(),
                                 .text = WithoutMnemonic(kRows[row].caption) + " is longer than " +
                                         std::to_string(kRows[row].field.bytes) + " characters.",
                                 .icon = Icon::Exclamation});
        return false;
      }
    }
    for (std::size_t row = 0; row < kTexts; ++row) {
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
    const TextField& field = kRows[row].field;
    std::string bytes = ToWindows1252(texts_[row]);
    bytes.resize(field.bytes, ' ');
    (workbench_.records.*kRows[row].record).replace(field.offset, field.bytes, bytes);
    if (row >= kFirstLine) {
      workbench_.trial.HeaderLines[row - kFirstLine + 1] = texts_[row];
    }
    Kept(kRows[row].caption);
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
  std::array<std::string, kTexts> texts_;
  std::array<std::string, kTexts> before_;
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
