#include "ui/main/file_opener.hpp"

#include "browse/file_commands.hpp"
#include "core/files/paths.hpp"
#include "core/files/start.hpp"
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
       !ConfirmDiscard(workbench_,
                       "Data were modified but not saved.  Press Cancel to save data before loading "
                       "another file."))) {
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

void FileOpener::LoadSelected() {
  runner_.Run("file.load");
  if (!workbench_.LoadedFile.empty()) {
    settings_.AddRecentFile(ToQt(workbench_.LoadedFile));
  }
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
