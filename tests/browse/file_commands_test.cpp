#include "browse/file_commands.hpp"

#include <unistd.h>

#include <filesystem>

#include "browse/file_list.hpp"
#include "support/command_test.hpp"
#include "support/temporary_directory.hpp"

namespace velmora::test {
namespace {

namespace fs = std::filesystem;

/// A directory to walk in; the process is back where it was afterwards.
class FileCommands : public CommandTest {
 protected:
  TemporaryDirectory directory_;
  fs::path before_ = fs::current_path();
  std::vector<ShellRequest> requests_;

  void SetUp() override {
    workbench.onShellRequest = [this](ShellRequest request) { requests_.push_back(request); };
    ASSERT_TRUE(OpenDirectory(workbench, directory_.Path("")));
  }
  void TearDown() override { fs::current_path(before_); }
};

TEST_F(FileCommands, DirectoriesAreMadeEnteredAndRemovedWhenEmpty) {
  RunEntering("file.make-subdirectory", "sub");
  EXPECT_EQ(questions.inputs.back().title, "Make a Subdirectory.");
  EXPECT_TRUE(questions.inputs.back().prompt.starts_with("Enter subdirectory name for directory, /"));
  EXPECT_TRUE(questions.inputs.back().prompt.ends_with(", or press Cancel"));
  RunEntering("file.make-subdirectory", "sub");
  EXPECT_NE(questions.boxes.back().text.find("File exists"), std::string::npos);

  questions.fileAnswers.push_back({directory_.Path("sub")});
  Run("file.open-directory");
  EXPECT_EQ(workbench.DataDir, fs::canonical(directory_.Path("sub")).string() + "/");
  WriteFile(directory_.Path("sub/keep.txt"), "x");
  questions.boxAnswers = {Button::Yes, Button::No, Button::Yes};
  Run("file.remove-directory");
  EXPECT_TRUE(fs::exists(directory_.Path("sub/keep.txt")));
  EXPECT_TRUE(workbench.DataDir.ends_with("/sub/"));  // still there
  fs::remove(directory_.Path("sub/keep.txt"));
  Run("file.remove-directory");
  EXPECT_TRUE(fs::exists(directory_.Path("sub")));
  Run("file.remove-directory");
  EXPECT_FALSE(fs::exists(directory_.Path("sub")));
  EXPECT_EQ(questions.boxes.back().text, "Do you want to remove the current directory, " +
                                             fs::canonical(directory_.Path("")).string() +
                                             "/sub?\nNote, it must be empty of files.");
  EXPECT_FALSE(OpenDirectory(workbench, directory_.Path("sub")));
  EXPECT_EQ(fs::current_path(), fs::canonical(directory_.Path("")));

  fs::create_directories(directory_.Path("gone/deeper"));
  ASSERT_TRUE(OpenDirectory(workbench, directory_.Path("gone/deeper")));
  const std::string gone = workbench.DataDir;
  fs::current_path(directory_.Path(""));
  fs::remove_all(directory_.Path("gone"));
  Run("file.refresh");
  EXPECT_EQ(LastBox(), "Refresh|The directory " + gone + " is no longer there.");
  EXPECT_EQ(workbench.DataDir, fs::canonical(directory_.Path("")).string() + "/");
  const std::size_t boxes = questions.boxes.size();
  Run("file.refresh");
  EXPECT_EQ(questions.boxes.size(), boxes);
}

TEST_F(FileCommands, SelectedFileIsClosedAndDeletedButOnlyWhenMeant) {
  const std::string path = directory_.Path("a.vmb");
  WriteFile(path, "x");
  SelectFile(workbench, path);
  EXPECT_EQ(trial.TrialName, "a");
  EXPECT_EQ(trial.FileExt, "VMB");
  questions.boxAnswers = {Button::No, Button::Yes, Button::Yes};
  Run("file.delete");
  EXPECT_EQ(questions.boxes.back().text, "Do you want to delete file: '" + path + "'.");
  EXPECT_TRUE(fs::exists(path));
  Run("file.delete");
  EXPECT_FALSE(fs::exists(path));
  EXPECT_EQ(trial.FileName, "");
  SelectFile(workbench, directory_.Path(""));  // a directory is not deleted as a file
  Run("file.delete");
  EXPECT_TRUE(fs::exists(directory_.Path("")));
  Run("file.close");
  EXPECT_EQ(trial.FileName, "");
}

TEST_F(FileCommands, ExitAsksOnlyWhileDataAreNotSaved) {
  Run("file.exit");
  EXPECT_EQ(requests_.back(), ShellRequest::Exit);
  requests_.clear();
  MarkChanged(workbench, true);
  questions.boxAnswers = {Button::Cancel, Button::OK};
  Run("file.exit");
  EXPECT_TRUE(requests_.empty());
  Run("file.exit");
  ASSERT_EQ(requests_.size(), 1U);
  EXPECT_EQ(LastBox(),
            "File Changed but Not Saved|Data were modified but not saved.  Press Cancel to save data before "
            "exiting.");
}

TEST_F(FileCommands, ListsWhatFitsAndTellsWhatCannotBeRead) {
  for (const char* name : {"b.vmb", "A.VMB", "c.txt", ".hidden.vmb", "z.vad", "m.dat", "empty.vmb"}) {
    WriteFile(directory_.Path(name), std::string(name) == "empty.vmb" ? "" : "BioWare 2 data");
  }
  fs::create_directory(directory_.Path("d.vmb"));
  fs::create_symlink(directory_.Path("nowhere"), directory_.Path("dangling.vmb"));
  std::vector<std::string> names;
  for (const ListedFile& file : ListFiles(directory_.Path(""), "*.vmb;*.vad").files) {
    names.push_back(file.name);
  }
  EXPECT_EQ(names, (std::vector<std::string>{"A.VMB", "b.vmb", "empty.vmb", "z.vad"}));
  EXPECT_TRUE(ListFiles(directory_.Path("missing"), "*.*").files.empty());
  EXPECT_EQ(WhyUnreadable(directory_.Path("b.vmb")), "");
  EXPECT_EQ(WhyUnreadable(directory_.Path("c.txt")), "");
  EXPECT_EQ(
      WhyUnreadable(directory_.Path("z.vad")),
      "Vicon analog files cannot be read. Open the trial in the program that made it and export C3D or text "
      "(.CSV).");
  EXPECT_EQ(WhyUnreadable(directory_.Path("m.dat")), "");
  EXPECT_EQ(WhyUnreadable(directory_.Path("empty.vmb")), "The file is empty.");
}

}  // namespace
}  // namespace velmora::test
