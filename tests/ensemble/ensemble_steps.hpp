#pragma once

#include <filesystem>
#include <set>

#include "graph/single_view.hpp"
#include "support/command_test.hpp"
#include "support/signals.hpp"

namespace velmora::test {

inline constexpr const char* kFirst = "4. Select First File";
inline constexpr const char* kChannels = "5. Channel Selection";
inline constexpr const char* kBegin = "6. Begin Average";
inline constexpr const char* kOpen = "7. Open Next File";
inline constexpr const char* kAdd = "8. Add Last File";
inline constexpr const char* kRemove = "8. Remove Last File";
inline constexpr const char* kCalculate = "9. Calculate Means &SDs";

struct EnsembleFormTest : FileTest {
  /// A file of these channels, at `rate` Hz.
  std::string File(const std::string& name, const std::vector<std::vector<float>>& channels,
                   double rate = 100.0) {
    const std::string path = directory.Path(name);
    WriteTrialFile(path, [&](Trial& made) {
      SetChannels(made, channels, rate);
      for (int c = 1; c <= made.NChan; ++c) {
        made.ChanLabel[c] = "Force " + std::to_string(c);
        made.ChanUnits[c] = "N";
      }
    });
    return path;
  }
  /// One channel that runs evenly from a to b in `samples` samples.
  std::string Ramp(const std::string& name, float a, float b, int samples, double rate = 100.0) {
    const auto line = [=](int i) {
      return a + (b - a) * static_cast<float>(i) / static_cast<float>(samples - 1);
    };
    return File(name, {Sampled(samples, line)}, rate);
  }
  std::string Out(const char* name) const { return directory.Path(name); }

  void Press(const char* button, const Edits& edits = {}) {
    questions.formAnswers.emplace_back([this, edits, button](Form& form) {
      Type(form, edits);
      Look(form);
      return std::string(button);
    });
  }
  void End() {
    questions.formAnswers.emplace_back([this](Form& form) {
      Look(form);
      return std::string("Exit");
    });
    Run("ensemble.average");
  }
  void Look(Form& form) {
    list = *std::get<std::string*>(form.FindField("lstFiles")->target);
    files = *std::get<std::int32_t*>(form.FindField("txtNfiles")->target);
    tables = form.Tables();
    possible.clear();
    for (const FormButton& button : form.Buttons()) {
      if (button.whyNot.empty()) {
        possible.insert(WithoutMnemonic(button.caption));
      }
    }
  }
  /// Steps 4 to 6 of an average of 10 intervals.
  void Begin(const std::string& first, std::vector<int> channels = {}, Edits edits = {}) {
    edits.insert(edits.begin(), {{"txtFilename", Out("log.ens")}, {"txtNumber", "10"}});
    Press(kFirst, edits);
    questions.fileAnswers.push_back({first});
    Press(kChannels);
    if (!channels.empty()) {
      questions.PickChannels(std::move(channels));
    }
    Press(kBegin);
  }
  void Open(const std::vector<std::string>& paths) {
    Press(kOpen);
    questions.fileAnswers.push_back(paths);
  }
  /// Nothing is saved of what was calculated.
  void EndUnsaved() {
    questions.boxAnswers.push_back(Button::No);
    End();
  }
  void Average() {
    Press(kCalculate);
    EndUnsaved();
  }
  [[nodiscard]] std::string Warnings() const {
    std::string all;
    for (const std::string& warning : workbench.report.warnings) {
      all += warning + "\n";
    }
    return all;
  }
  [[nodiscard]] Texts Remarks() const {
    Texts remarks;
    for (const auto& row : tables.at(0).rows) {
      remarks.push_back(std::get<std::string>(row[0]) + "|" + std::get<std::string>(row[4]));
    }
    return remarks;
  }

  // The form when a button was pressed last.
  std::string list;
  std::int32_t files = 0;
  std::vector<ResultTable> tables;
  std::set<std::string> possible;
};

}  // namespace velmora::test
