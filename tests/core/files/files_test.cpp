#include "core/files/files.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <csignal>

#include "core/files/output_guard.hpp"
#include "core/files/paths.hpp"
#include "core/files/temporary_file.hpp"
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

TEST(OutputFile, AKilledProgramLeavesTheOldFileAndNothingThatStays) {
  const TemporaryDirectory directory;
  const std::string path = directory.Path("trial.vmb");
  WriteFile(path, "the old contents");
  const int unnamed = open(directory.Path("").c_str(), O_TMPFILE | O_RDWR, 0600);
  const bool leavesNothing = unnamed >= 0 && access("/proc/self/fd", X_OK) == 0;
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
  EXPECT_EQ(FilesIn(directory.Path("")), leavesNothing ? 1U : 2U);
  OutputFile next(path);
  next.Write("new");
  next.Commit();
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

TEST(OutputFile, LinksAreFollowedAndStay) {
  const TemporaryDirectory directory;
  std::filesystem::create_directory(directory.Path("there"));
  std::filesystem::create_symlink("there/second.vmb", directory.Path("first.vmb"));
  std::filesystem::create_symlink("real.vmb", directory.Path("there/second.vmb"));
  for (const char* contents : {"made", "written again"}) {
    OutputFile file(directory.Path("first.vmb"));
    file.Write(contents);
    file.Commit();
    EXPECT_TRUE(std::filesystem::is_symlink(directory.Path("first.vmb")));
    EXPECT_TRUE(std::filesystem::is_symlink(directory.Path("there/second.vmb")));
    EXPECT_EQ(ReadFile(directory.Path("there/real.vmb")), contents);
  }
  std::filesystem::create_symlink("round.vmb", directory.Path("round.vmb"));
  EXPECT_THROW(OutputFile(directory.Path("round.vmb")), FileError);
}

TEST(OutputFile, NamesOf255BytesAreWritten) {
  const TemporaryDirectory directory;
  const std::string path = directory.Path(std::string(255, 'n'));
  for (const char* contents : {"first", "second"}) {
    OutputFile file(path);
    file.Write(contents);
    file.Commit();
    EXPECT_EQ(ReadFile(path), contents);
  }
  EXPECT_EQ(FilesIn(directory.Path("")), 1U);
}

TEST(OutputFile, WhatAKilledProgramLeftIsRemovedAndWhatIsInWorkStays) {
  const TemporaryDirectory directory;
  WriteFile(directory.Path(".velmora2-save-4711-0"), "half a trial");
  WriteFile(directory.Path(".velmora2-save-4711-1"), "half of another");
  const int working = open(directory.Path(".velmora2-save-4711-1").c_str(), O_RDWR);
  ASSERT_EQ(flock(working, LOCK_EX | LOCK_NB), 0);
  OutputFile file(directory.Path("trial.vmb"));
  file.Write("new");
  file.Commit();
  EXPECT_FALSE(std::filesystem::exists(directory.Path(".velmora2-save-4711-0")));
  EXPECT_EQ(ReadFile(directory.Path(".velmora2-save-4711-1")), "half of another");
  close(working);
}

// An access list as the system keeps it: version, then tag, permissions and id of each entry.
std::string AccessListFor(std::uint32_t user) {
  struct Entry {
    std::uint16_t tag;
    std::uint16_t permissions;
    std::uint32_t id;
  };
  constexpr std::uint32_t kNone = 0xFFFFFFFF;
  const std::uint32_t version = 2;
  std::string list(reinterpret_cast<const char*>(&version), sizeof version);
  for (const Entry& entry : {Entry{1, 6, kNone}, Entry{2, 6, user}, Entry{4, 4, kNone}, Entry{16, 6, kNone},
                             Entry{32, 0, kNone}}) {
    list.append(reinterpret_cast<const char*>(&entry), sizeof entry);
  }
  return list;
}

std::string Attribute(const std::string& path, const char* name) {
  std::string value(256, '\0');
  const ssize_t size = getxattr(path.c_str(), name, value.data(), value.size());
  return value.substr(0, static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
}

TEST(OutputFile, AColleaguesFileStaysTheirs) {
  if (geteuid() != 0) {
    GTEST_SKIP() << "only root can give files to others";
  }
  const TemporaryDirectory directory;
  const std::string path = directory.Path("trial.vmb");
  WriteFile(path, "old");
  const std::string list = AccessListFor(1234);
  const bool hasLists = setxattr(path.c_str(), "system.posix_acl_access", list.data(), list.size(), 0) == 0;
  const bool hasAttributes = setxattr(path.c_str(), "user.origin", "lab", 3, 0) == 0;
  ASSERT_EQ(chown(path.c_str(), 4321, 5432), 0);
  OutputFile file(path);
  file.Write("new");
  file.Commit();
  EXPECT_EQ(file.NotKept(), "");
  struct stat status {};
  stat(path.c_str(), &status);
  EXPECT_EQ(status.st_uid, 4321U);
  EXPECT_EQ(status.st_gid, 5432U);
  if (hasLists) {
    EXPECT_EQ(Attribute(path, "system.posix_acl_access"), list);
  }
  if (hasAttributes) {
    EXPECT_EQ(Attribute(path, "user.origin"), "lab");
  }

  // Somebody else, who may write it: what cannot be kept is told, and the strange group gains nothing.
  WriteFile(path, "old");
  removexattr(path.c_str(), "system.posix_acl_access");
  chmod(path.c_str(), 0676);
  chmod(directory.Path("").c_str(), 0777);
  const pid_t other = fork();
  if (other == 0) {
    bool told = setgid(9999) == 0 && setuid(9998) == 0;
    try {
      OutputFile theirs(path);
      theirs.Commit();
      told = told && theirs.NotKept() == "owner and group";
    } catch (const FileError&) {
      told = false;
    }
    _exit(told ? 0 : 1);
  }
  int ended = 0;
  waitpid(other, &ended, 0);
  EXPECT_EQ(ended, 0);
  stat(path.c_str(), &status);
  EXPECT_EQ(status.st_mode & 0777U, 0666U);
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

TEST(TemporaryFile, IsNoOutputOfTheRun) {
  std::vector<std::string> asked;
  std::vector<std::string> written;
  const OutputGuard guard([&](const std::string& path) { asked.push_back(path); },
                          [&](const std::string& path) { written.push_back(path); });
  const std::string path = WriteTemporaryFile("results.trg", "1");
  EXPECT_EQ(asked, std::vector<std::string>{path}) << "whoever only checks refuses it";
  EXPECT_EQ(written, std::vector<std::string>{});
  std::filesystem::remove_all(std::filesystem::path(path).parent_path());
}

}  // namespace
}  // namespace velmora::test
