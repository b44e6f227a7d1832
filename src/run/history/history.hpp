#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "core/workbench.hpp"
#include "run/history/history_lines.hpp"
#include "run/history/recorder.hpp"
#include "run/history/trial_aside.hpp"
#include "run/recipe/recipe_questions.hpp"

namespace velmora {

/// What was done to the trial since it was loaded, and the way back: the file is read again and the steps
/// are repeated. The steps gone back behind can be done again until something else is done.
class History {
 public:
  /// Whoever makes the workbench gives it `Recording()` to ask through.
  explicit History(Questions& person) : recorder_(person) {}
  void Attach(Workbench& workbench);

  [[nodiscard]] Questions& Recording() { return recorder_; }
  void SetOnDone(std::function<void(const Action&)> onDone);

  /// All lines, those that can be done again last.
  [[nodiscard]] std::vector<HistoryLine> Lines() const;
  /// The line (from 0) that the trial stands at; -1 without a trial.
  [[nodiscard]] int Place() const;

  /// YAML that velmora2-run repeats to the same bits on the same file.
  [[nodiscard]] std::string Recipe() const;

  /// What was done, in full, with the program's version: a paragraph for a report.
  [[nodiscard]] std::string Text() const;

  /// Back or on to what the trial was after this line. Files are not saved again. Returns why it could not
  /// be done, empty when it was. A file that changed since it was loaded is not read. The trial as it was
  /// after the last step is never lost: it comes back when steps cannot be repeated.
  std::string GoTo(std::size_t line);

 private:
  // A report leaves out that reports were saved.
  [[nodiscard]] std::string RecipeOf(bool withReports) const;
  [[nodiscard]] std::vector<std::string> Sentences(bool withReports) const;
  void ActionDone(const Action& action);
  [[nodiscard]] std::string WhyNotReadable(const std::vector<RecordedStep>& steps, std::size_t first,
                                           std::size_t last) const;
  [[nodiscard]] bool IsAsOpened(const std::string& file) const;
  std::string RepeatAll(const std::vector<RecordedStep>& steps, std::size_t first, std::size_t last);
  std::string Repeat(const RecordedStep& recorded, RecipeQuestions& answers);
  std::string Repeat(const Step& step, RecipeQuestions& answers);

  Recorder recorder_;
  Workbench* workbench_ = nullptr;
  std::function<void(const Action&)> onDone_;
  std::string file_;
  /// The trial after the last step, while it stands at an earlier one.
  std::optional<TrialAside> newest_;
  std::map<std::string, std::filesystem::file_time_type> fileTimes_;  // when they were loaded
};

}  // namespace velmora
