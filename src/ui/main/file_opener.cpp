#include "ui/main/file_opener.hpp"

#include <QDir>

#include "browse/file_commands.hpp"
#include "browse/list_filters.hpp"
#include "core/files/paths.hpp"
#include "core/files/start.hpp"
#include "core/text/text.hpp"
#include "ui/main/example_file.hpp"
#include "ui/main/tell.hpp"
#include "ui/text.hpp"

namespace velmora::ui {

void FileOpener::Select(const std::string& path) {
  SelectFile(workbench_, path);
  if (onSelected) {
    onSelected();
  }
}

void FileOpener::Open(const std::string& path) {
  if (runner_.Busy() ||
      (!workbench_.merge.MergePending &&
       !ConfirmDiscard(workbench_, "The data of " + FileNamePart(workbench_.LoadedFile) +
                                       " were modified but not saved.  Press Cancel to save them before " +
                                       FileNamePart(path) + " is loaded."))) {
    return;
  }
  const std::string full = FullPath(path);
  OpenDirectory(workbench_, DirectoryOf(full));  // LoadFile takes the current directory for the file's own
  Select(full);
  LoadSelected();
  SaveLastFile(workbench_, store_);
}

void FileOpener::AskAndOpen(const std::string& path) {
  Select(path);
  if (AskReadFile(workbench_, path)) {
    Open(path);
  }
}

void FileOpener::AskForFile() {
  if (runner_.Busy()) {
    return;
  }
  std::string filter;
  const std::span<const FileFilter> filters = DataListFilters();
  for (const FileFilter& entry : filters) {
    filter +=
        (filter.empty() ? "" : "|") + WithoutMnemonic(entry.caption) + "|" + std::string(entry.patterns);
  }
  const std::vector<std::string> answer =
      workbench_.questions.AskFile({.mode = FileQuestion::Mode::Open,
                                    .title = "Open Data File",
                                    .filter = filter,
                                    .filterIndex = static_cast<int>(filters.size()),
                                    .directory = workbench_.DataDir});
  if (!answer.empty()) {
    Open(answer.front());
  }
}

void FileOpener::OpenSelected() {
  const std::string path = workbench_.trial.FileName;
  path.empty() ? AskForFile() : Open(path);
}

bool FileOpener::LoadSelected() {
  const bool graphOffered = runner_.Run("file.load");
  if (!workbench_.LoadedFile.empty()) {
    settings_.AddRecentFile(ToQt(workbench_.LoadedFile));
    settings_.AddRecentDirectory(QDir(ToQt(DirectoryOf(workbench_.LoadedFile))).absolutePath());
    if (onLoaded) {
      onLoaded();
    }
  }
  return graphOffered;
}

void FileOpener::OpenExample(const std::function<void(Trial&)>& make) {
  std::string path;
  try {
    path = ExampleFile(make);
  } catch (const std::exception& error) {
    Tell(workbench_.questions, "Example", error.what());
    return;
  }
  Open(path);
}

}  // namespace velmora::ui
