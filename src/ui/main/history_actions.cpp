#include "ui/main/history_actions.hpp"

#include "core/files/files.hpp"
#include "core/files/paths.hpp"
#include "core/trial/helpers.hpp"
#include "ui/main/tell.hpp"

namespace velmora::ui {

void HistoryActions::SaveRecipe() {
  const std::vector<std::string> answer =
      person_.AskFile({.mode = FileQuestion::Mode::Save,
                       .title = "Save Recipe",
                       .defaultName = BaseName(workbench_.LoadedFile) + ".yaml",
                       .extension = ".yaml",
                       .filter = "Recipes (.yaml)|*.yaml|All files (*.*)|*.*",
                       .directory = workbench_.DataDir});
  if (answer.empty()) {
    return;
  }
  try {
    OutputFile file(answer.front());
    file.Write(history_.Recipe());
    CommitSave(workbench_, file);
    savedRecipe_ = answer.front();
    Request(workbench_, ShellRequest::ShowFiles);
  } catch (const FileError& error) {
    workbench_.OutputFileName = answer.front();
    ShowSaveFailure(workbench_, error.what());
  }
}

void HistoryActions::GoTo(int line) {
  if (runner_.Busy()) {
    return;
  }
  std::string why;
  runner_.Do([this, line, &why] { why = history_.GoTo(static_cast<std::size_t>(line)); });
  if (!why.empty()) {
    Tell(person_, "History", why);
  }
}

}  // namespace velmora::ui
