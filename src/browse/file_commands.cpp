#include "browse/file_commands.hpp"

#include <array>
#include <filesystem>
#include <system_error>

#include "core/files/output_elsewhere.hpp"
#include "core/files/paths.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "events/event_tracking.hpp"

namespace velmora {
namespace {

namespace fs = std::filesystem;

template <ShellRequest request>
void Ask(Workbench& workbench) {
  Request(workbench, request);
}

fs::path CurrentDirectory() {
  std::error_code error;
  return fs::current_path(error);
}

void Tell(Workbench& workbench, const std::string& title, const std::string& what,
          const std::error_code& error) {
  ShowFailure(workbench,
              {.title = title, .text = what + "\n\n\"" + error.message() + "\"", .icon = Icon::Exclamation});
}

void OpenAskedDirectory(Workbench& workbench) {
  const std::vector<std::string> answer = workbench.questions.AskFile(
      {.mode = FileQuestion::Mode::Directory, .title = "Open Directory", .directory = workbench.DataDir});
  if (!answer.empty()) {
    OpenDirectory(workbench, answer.front());
  }
}

void MakeSubdirectory(Workbench& workbench) {
  const std::string title = "Make a Subdirectory.";
  const fs::path current = CurrentDirectory();
  const std::string name = workbench.questions.AskInput(
      {.title = title,
       .prompt = "Enter subdirectory name for directory, " + current.string() + ", or press Cancel"});
  if (name.empty()) {
    return;
  }
  std::error_code error;
  const bool made = fs::create_directory(current / name, error);
  if (!made && !error) {
    error = std::make_error_code(std::errc::file_exists);
  }
  if (error) {
    Tell(workbench, title, "Could not make the directory " + name + ".", error);
  } else {
    Did(workbench, "Made the directory " + name);
  }
  Request(workbench, ShellRequest::ShowFiles);
}

void RemoveDirectory(Workbench& workbench) {
  const fs::path current = CurrentDirectory();
  const Button answer =
      workbench.questions.AskBox({.title = "Remove Directory",
                                  .text = "Do you want to remove the current directory, " + current.string() +
                                          "?\nNote, it must be empty of files.",
                                  .icon = Icon::Exclamation,
                                  .buttons = {Button::Yes, Button::No}});
  if (answer != Button::Yes || !OpenDirectory(workbench, current.parent_path().string())) {
    return;
  }
  std::error_code error;
  fs::remove(current, error);
  if (error) {
    Tell(workbench, "Remove Directory", "Could not remove the directory " + current.string() + ".", error);
    OpenDirectory(workbench, current.string());
  } else {
    Did(workbench, "Removed the directory " + current.filename().string());
  }
  Request(workbench, ShellRequest::ShowFiles);
}

void ForgetFile(Workbench& workbench) {
  workbench.trial.FileName.clear();
  Request(workbench, ShellRequest::ShowFiles);
}

void DeleteFile(Workbench& workbench) {
  const std::string path = workbench.trial.FileName;
  if (path.empty()) {
    ShowRefusal(workbench,
                {.title = "Delete File", .text = "No file was selected.", .icon = Icon::Exclamation});
    return;
  }
  const Button answer = workbench.questions.AskBox({.title = "Delete File",
                                                    .text = "Do you want to delete file: '" + path + "'.",
                                                    .icon = Icon::Exclamation,
                                                    .buttons = {Button::Yes, Button::No}});
  if (answer != Button::Yes) {
    return;
  }
  std::error_code error;
  const std::string place = OutputElsewhere::ToWrite(path);
  const bool removed = fs::is_regular_file(place, error) && fs::remove(place, error);
  if (!removed) {
    error = error ? error : std::make_error_code(std::errc::no_such_file_or_directory);
    Tell(workbench, "Delete File", "Could not delete the file " + path + ".", error);
    return;
  }
  Did(workbench, "Deleted " + FileNamePart(path));
  ForgetFile(workbench);
}

void Exit(Workbench& workbench) {
  if (ConfirmDiscard(workbench,
                     "Data were modified but not saved.  Press Cancel to save data before exiting.") &&
      MayLeaveEvents(workbench)) {
    Request(workbench, ShellRequest::Exit);
  }
}

// A directory that has gone, with a disk or by another program's hand, gives way to what is left above it.
void Refresh(Workbench& workbench) {
  std::error_code error;
  fs::path directory = workbench.DataDir;
  while (directory.has_relative_path() && !fs::is_directory(directory, error)) {
    directory = directory.parent_path();
  }
  if (directory == workbench.DataDir || !fs::is_directory(directory, error)) {
    Request(workbench, ShellRequest::ShowFiles);
    return;
  }
  workbench.questions.AskBox({.title = "Refresh",
                              .text = "The directory " + workbench.DataDir + " is no longer there.",
                              .icon = Icon::Exclamation});
  OpenDirectory(workbench, directory.string());
}

constexpr std::string_view kFileMenu = "&File";

constexpr std::array kFileCommands = {
    Command{"file.open-directory", "&Open directory", kFileMenu, Needs::Nothing, OpenAskedDirectory},
    Command{"file.make-subdirectory", "Create a &Subdirectory", kFileMenu, Needs::Nothing, MakeSubdirectory},
    Command{"file.remove-directory", "&Remove the Current directory", kFileMenu, Needs::Nothing,
            RemoveDirectory},
    Command{"file.close", "&Close selected file", kFileMenu, Needs::Nothing, ForgetFile},
    Command{"file.delete", "&Delete selected file", kFileMenu, Needs::Nothing, DeleteFile},
    Command{"file.explore", "Explore Current directory", kFileMenu, Needs::Nothing,
            Ask<ShellRequest::ExploreDirectory>},
    Command{"file.refresh", "&Refresh", kFileMenu, Needs::Nothing, Refresh},
    Command{"file.exit", "E&xit", kFileMenu, Needs::Nothing, Exit},
};

}  // namespace

std::span<const Command> FileCommands() {
  return kFileCommands;
}

bool OpenDirectory(Workbench& workbench, const std::string& directory) {
  std::error_code error;
  fs::current_path(directory, error);
  if (error) {
    Tell(workbench, "Open Directory", "Could not open the directory " + directory + ".", error);
    return false;
  }
  workbench.DataDir = (CurrentDirectory() / "").string();
  workbench.trial.TrialName.clear();
  workbench.trial.FileExt.clear();
  Request(workbench, ShellRequest::ShowFiles);
  return true;
}

void SelectFile(Workbench& workbench, const std::string& path) {
  Trial& trial = workbench.trial;
  trial.FileName = path;
  trial.TrialName = BaseName(path);
  trial.FileExt = ToUpper(FileExtension(path));
}

bool AskReadFile(Workbench& workbench, const std::string& path) {
  return workbench.questions.AskBox({.title = "Read the File?",
                                     .text = FileNamePart(path) + "\nSize: " + FileSizeText(path) +
                                             "\nPress OK to open the file or press Cancel.",
                                     .icon = Icon::Question,
                                     .buttons = {Button::OK, Button::Cancel}}) == Button::OK;
}

bool ConfirmDiscard(Workbench& workbench, const std::string& text) {
  const bool storedChanged = workbench.merge.MergePending && workbench.merge.changed;
  return (!workbench.trial.FileChanged && !storedChanged) ||
         workbench.questions.AskBox({.title = "File Changed but Not Saved",
                                     .text = text,
                                     .icon = Icon::Exclamation,
                                     .buttons = {Button::OK, Button::Cancel},
                                     .about = workbench.trial.FileChanged
                                                  ? workbench.trial.FileName
                                                  : workbench.merge.stored.FileName}) == Button::OK;
}

}  // namespace velmora
