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
    file.Commit();
    Request(workbench_, ShellRequest::ShowFiles);
  } catch (const FileError& error) {
    workbench_.OutputFileName = answer.front();
    ShowSaveFailure(workbench_, error.what());
  }
}

void HistoryActions::GoBack(int step) {
  if (runner_.Busy()) {
    return;
  }
  const Button answer = person_.AskBox(
      {.title = "Go Back",
       .text =
           "The file is read again and the steps down to the selected one are repeated.\nWhat was done after "
           "it is lost.",
       .icon = Icon::Question,
       .buttons = {Button::OK, Button::Cancel}});
  if (answer != Button::OK) {
    return;
  }
  std::string why;
  runner_.Do([this, step, &why] { why = history_.GoBack(static_cast<std::size_t>(step)); });
  if (!why.empty()) {
    Tell(person_, "Go Back", why);
  }
}

}  // namespace velmora::ui
