#include "ui/main/example_file.hpp"

#include <QStandardPaths>
#include <filesystem>

#include "app/command_table.hpp"
#include "core/files/files.hpp"
#include "core/workbench.hpp"
#include "run/recipe/recipe_questions.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

// By the command of the File menu, in a workbench of its own.
void WriteTrial(const std::function<void(Trial&)>& make, const std::string& path) {
  const std::vector<Answer> answers = {{.what = FileAnswer{{path}}}};
  RecipeQuestions questions;
  Workbench workbench(questions);
  make(workbench.trial);
  questions.BeginStep(answers, workbench.trial);
  RunCommand(workbench, *FindCommand("save.vmb"));
  if (!workbench.report.failures.empty()) {
    throw FileError(workbench.report.failures.front());
  }
}

}  // namespace

std::string ExampleFile(const std::function<void(Trial&)>& make) {
  const std::string directory =
      ToStd(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)) + "/velmora2/examples";
  std::string path = directory + "/emg-bursts.vmb";
  std::filesystem::create_directories(directory);
  if (!std::filesystem::exists(path)) {
    WriteTrial(make, path);
  }
  return path;
}

}  // namespace velmora::ui
