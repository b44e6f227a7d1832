#include "core/files/files.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "core/files/paths.hpp"
#include "support/full_disk.hpp"
#include "support/temporary_directory.hpp"

namespace velmora::test {
namespace {

std::size_t FilesIn(const std::string& directory) {
  return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(directory), {}));
}

TEST(OutputFile, TheTargetChangesInOneStepOrNotAtAll) {
  const TemporaryDirectory directory;
  const std::string path = directory.Path("trial.vmb");
  WriteFile(path, "the old contents");
  {
    OutputFile abandoned(path);
    abandoned.Write("new");
  }
  EXPECT_EQ(ReadFile(path), "the old contents");
  chmod(path.c_str(), 0640);
  {
    OutputFile file(path);
    file.Write("new");
    EXPECT_EQ(ReadFile(path), "the old contents") << "until it is committed";
    file.Commit();
  }
  EXPECT_EQ(ReadFile(path), "new");
  struct stat status {};
  stat(path.c_str(), &status);
  EXPECT_EQ(status.st_mode & 0777U, 0640U);
  EXPECT_EQ(FilesIn(directory.Path("")), 1U) << "nothing is left beside it";
}

TEST(OutputFile, AKilledProgramLeavesTheOldFileAndNothingBesideIt) {
  const TemporaryDirectory directory;
  const std::string path = directory.Path("trial.vmb");
  WriteFile(path, "the old contents");
  const int unnamed = open(directory.Path("").c_str(), O_TMPFILE | O_RDWR, 0600);
  if (unnamed < 0) {
    GTEST_SKIP() << "this file system has no unnamed files";
  }
  close(unnamed);
  const pid_t writer = fork();
  if (writer == 0) {
    OutputFile file(path);
    file.Write("new");
    kill(getpid(), SIGKILL);
  }
  int status = 0;
  waitpid(writer, &status, 0);
  EXPECT_TRUE(WIFSIGNALED(status));
  EXPECT_EQ(ReadFile(path), "the old contents");
  EXPECT_EQ(FilesIn(directory.Path("")), 1U);
}

TEST(OutputFile, ALongerOldFileKeepsItsTail) {
  const TemporaryDirectory directory;
  const std::string path = directory.Path("trial.vmb");
  WriteFile(path, "0123456789");
  OutputFile file(path, OutputFile::Mode::KeepTail);
  file.WriteAt(2, "cd", 2);
  file.WriteAt(0, "ab", 2);
  file.Commit();
  EXPECT_EQ(ReadFile(path), "abcd456789");

  const std::string fresh = directory.Path("fresh.vmb");
  OutputFile other(fresh, OutputFile::Mode::KeepTail);
  other.Write("abc");
  other.Commit();
  EXPECT_EQ(ReadFile(fresh), "abc");
}

TEST(OutputFile, ALinkIsFollowedAndStays) {
  const TemporaryDirectory directory;
  WriteFile(directory.Path("real.vmb"), "old");
  std::filesystem::create_symlink("real.vmb", directory.Path("link.vmb"));
  OutputFile file(directory.Path("link.vmb"));
  file.Write("new");
  file.Commit();
  EXPECT_TRUE(std::filesystem::is_symlink(directory.Path("link.vmb")));
  EXPECT_EQ(ReadFile(directory.Path("real.vmb")), "new");
}

TEST(OutputFile, AFullDiskLeavesTheOldFileWhole) {
  const TemporaryDirectory directory;
  const std::string path = directory.Path("trial.vmb");
  WriteFile(path, "the old contents");
  {
    const FullDisk disk(4096);
    OutputFile file(path);
    EXPECT_THROW(file.Write(std::string(10000, 'x')), FileError);
  }
  EXPECT_EQ(ReadFile(path), "the old contents");
  EXPECT_EQ(FilesIn(directory.Path("")), 1U);
}

TEST(Files, WhatIsNoFileIsRefused) {
  const TemporaryDirectory directory;
  EXPECT_THROW(OutputFile(directory.Path("")), FileError);
  EXPECT_THROW(OutputFile(directory.Path("missing/trial.vmb")), FileError);
  EXPECT_THROW(InputFile(directory.Path("")), FileError);
  EXPECT_THROW(InputFile(directory.Path("missing.vmb")), FileError);
  mkfifo(directory.Path("pipe").c_str(), 0600);
  EXPECT_THROW(InputFile(directory.Path("pipe")), FileError) << "and not waited for";
  EXPECT_THROW(OutputFile(directory.Path("pipe")), FileError);
  EXPECT_TRUE(std::filesystem::is_fifo(directory.Path("pipe")));

  WriteFile(directory.Path("short"), "abc");
  const InputFile file(directory.Path("short"));
  char bytes[8] = {};
  EXPECT_EQ(file.ReadAt(1, bytes, sizeof bytes), 2U);
  EXPECT_EQ(std::string(bytes), "bc");
  EXPECT_EQ(file.ReadAt(100, bytes, sizeof bytes), 0U);
}

TEST(Paths, BothSeparatorsAreUnderstood) {
  EXPECT_EQ(FileExtension("/data.d/walk.v1.vmb"), "vmb");
  EXPECT_EQ(FileExtension("/data.d/walk"), "");
  EXPECT_EQ(BaseName("C:\\data\\walk.v1.vmb"), "walk.v1");
  EXPECT_EQ(FileNamePart("C:walk.vmb"), "walk.vmb");
  EXPECT_EQ(DirectoryOf("C:\\data\\walk.vmb"), "C:\\data\\");
  EXPECT_EQ(DirectoryOf("walk.vmb"), "./");
  const TemporaryDirectory directory;
  WriteFile(directory.Path("ä.vmb"), "x");
  EXPECT_TRUE(FileExists(directory.Path(""), "ä.vmb"));
  EXPECT_FALSE(FileExists("", directory.Path("")));
  ASSERT_EQ(mkfifo(directory.Path("pipe").c_str(), 0666), 0);
  EXPECT_FALSE(FileExists("", directory.Path("pipe"))) << "nobody writes to it: opening it would wait";
}

}  // namespace
}  // namespace velmora::test
