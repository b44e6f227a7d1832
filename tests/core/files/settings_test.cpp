#include "core/files/settings.hpp"

#include <sys/stat.h>

#include <cstdlib>

#include "core/files/start.hpp"
#include "support/environment_variable.hpp"
#include "support/scripted_questions.hpp"
#include "support/temporary_directory.hpp"

namespace velmora::test {
namespace {

TEST(Settings, TextsUnderApplicationSectionAndKeyOfAnyCase) {
  const TemporaryDirectory directory;
  SettingsStore store(directory.Path("config"));
  EXPECT_EQ(store.Get("Velmora2", "Startup", "Lastfile", "none"), "none");
  EXPECT_TRUE(store.Save("Velmora2", "Startup", {{"Lastfile", "/data/a.vmb"}, {"Viewer", "µ \"x\"\n"}}));
  EXPECT_TRUE(store.Save("VELMORA2", "startup", {{"LastFile", "/data/b.vmb"}}));
  EXPECT_TRUE(store.Save("Tavorin", "Startup", {{"Lastfile", "\xFF.dat"}, {"Empty", ""}}));

  SettingsStore later(directory.Path("config"));
  EXPECT_EQ(later.Get("velmora2", "STARTUP", "LASTFILE", ""), "/data/b.vmb") << "one key, whatever its case";
  EXPECT_EQ(later.Get("Velmora2", "Startup", "viewer", ""), "µ \"x\"\n");
  EXPECT_EQ(later.Get("Tavorin", "Startup", "Empty", "otherwise"), "");
  EXPECT_EQ(later.Get("Tavorin", "Other", "Lastfile", "otherwise"), "otherwise");

  later.Save("Velmora2", "Startup", {{"FileType", "7"}});
  EXPECT_EQ(store.Get("Velmora2", "Startup", "FileType", ""), "7") << "a program that runs beside this one";
  store.Save("Velmora2", "Startup", {{"TextType", "3"}});
  EXPECT_EQ(later.Get("Velmora2", "Startup", "FileType", ""), "7");
}

TEST(Settings, LieWhereTheSystemKeepsThem) {
  const TemporaryDirectory directory;
  const EnvironmentVariable variable("XDG_CONFIG_HOME", directory.Path(""));
  EXPECT_TRUE(SettingsStore().Save("Velmora2", "Startup", {{"UserLevel", "1"}}));
  EXPECT_NE(ReadFile(directory.Path("velmora2/settings.json")).find("UserLevel"), std::string::npos);
}

TEST(Settings, HostileFilesCountAsNotSetAndAreKeptAside) {
  const TemporaryDirectory directory;
  std::filesystem::create_directory(directory.Path("velmora2"));
  const std::string path = directory.Path("velmora2/settings.json");
  SettingsStore store(directory.Path(""));
  const std::vector<std::string> files = {
      "",
      "{\"Startup\": {\"Viewer\": \"x",
      "[1, 2]",
      "{\"Startup\": 5}",
      "{\"Startup\": {\"Viewer\": [[[[\"x\"]]]]}}",
      std::string(500000, '['),
      "{\"Startup\": " + std::string(200000, '[') + std::string(200000, ']') + "}",
      std::string(3 << 20, ' '),
      std::string("\0\xFF", 2)};
  for (const std::string& bytes : files) {
    WriteFile(path, bytes);
    EXPECT_EQ(store.Get("Velmora2", "Startup", "Viewer", "usual"), "usual");
    EXPECT_EQ(store.BrokenFile("Velmora2"), bytes.empty() ? "" : path);
    EXPECT_TRUE(store.Save("Velmora2", "Startup", {{"Viewer", "less"}}));
    EXPECT_EQ(store.BrokenFile("Velmora2"), "");
    EXPECT_EQ(store.Get("Velmora2", "Startup", "Viewer", "usual"), "less");
    if (!bytes.empty()) {
      EXPECT_EQ(ReadFile(path + ".broken"), bytes);
    }
    std::filesystem::remove(path + ".broken");
    EXPECT_TRUE(store.Save("Velmora2", "Startup", {{"Viewer", "vi"}}));
    EXPECT_FALSE(std::filesystem::exists(path + ".broken")) << "nothing is lost of a file that can be read";
  }
  // A copy that cannot be made costs the save, not the file.
  WriteFile(path, "{slip");
  std::filesystem::create_directory(path + ".broken");
  EXPECT_FALSE(store.Save("Velmora2", "Startup", {{"Viewer", "less"}}));
  EXPECT_EQ(ReadFile(path), "{slip");
  std::filesystem::remove(path);
  mkfifo(path.c_str(), 0600);
  EXPECT_EQ(store.Get("Velmora2", "Startup", "Viewer", "usual"), "usual") << "and is not waited for";

  std::filesystem::remove(path);
  EXPECT_TRUE(store.Save("Velmora2", "Startup", {{"Brackets", "\\\"[[[[[[\""}, {"Viewer", "less"}}));
  EXPECT_EQ(store.Get("Velmora2", "Startup", "Viewer", ""), "less") << "brackets in a text are no depth";
}

struct Start : testing::Test {
  TemporaryDirectory directory;
  ScriptedQuestions questions;
  Workbench workbench{questions};
  SettingsStore store{directory.Path("config")};

  Start() { unsetenv("TAVORIN"); }
};

TEST_F(Start, TheFirstSessionBeginsWhereItIsStarted) {
  ReadStartSettings(workbench, store);
  EXPECT_EQ(workbench.DataDir, std::filesystem::current_path().string());
  EXPECT_EQ(workbench.preferences.TriggerType, -1) << "none";
  EXPECT_EQ(FirstAction(workbench), StartAction::ShowAbout);
}

TEST_F(Start, TheNextSessionGoesOnWhereTheLastOneEnded) {
  WriteFile(directory.Path("trial.vmb"), "x");
  workbench.trial.FileName = directory.Path("trial.vmb");
  workbench.DataDir = directory.Path("");
  workbench.UserLevel = UserLevelKind::Expert;
  workbench.preferences = {.ProgDir = "/opt/tavorin",
                           .Viewer = directory.Path("trial.vmb"),
                           .Spreadsheet = "gone.exe",
                           .FullScreen = true,
                           .FileType = 8,
                           .TriggerHigh = 0.1,
                           .TriggerChannel = 12};
  store.Save("Velmora2", "Startup", {{"Lastfile", "older"}});
  WriteExitSettings(workbench, store);
  EXPECT_TRUE(questions.boxes.empty());

  Workbench next(questions);
  ReadStartSettings(next, store);
  EXPECT_EQ(next.trial.FileName, workbench.trial.FileName);
  EXPECT_EQ(FirstAction(next), StartAction::LoadFile);
  EXPECT_EQ(next.DataDir, workbench.DataDir);
  EXPECT_EQ(next.UserLevel, UserLevelKind::Expert);
  EXPECT_EQ(ManualPath(next), "") << "which belongs to the family's settings";
  EXPECT_EQ(next.preferences.Viewer, workbench.preferences.Viewer);
  EXPECT_EQ(next.preferences.Spreadsheet, "Excel.exe") << "a program that is gone";
  EXPECT_TRUE(next.preferences.FullScreen);
  EXPECT_FALSE(next.preferences.Multiaxis);
  EXPECT_EQ(next.preferences.FileType, 8);
  EXPECT_EQ(next.preferences.TriggerHigh, 0.1);
  EXPECT_EQ(next.preferences.TriggerChannel, 12);

  next.trial.FileName = "/data/new.vmb";
  SaveLastFile(next, store);
  EXPECT_EQ(store.Get("Velmora2", "Startup", "LastFile", ""), "/data/new.vmb");

  store.Save("Velmora2", "Startup", {{"FileType", "99"}, {"TextType", "-1e300"}, {"Datadir", ""}});
  store.Save("Tavorin", "Startup", {{"Datadir", "/family"}});
  setenv("TAVORIN", "/opt/family", 1);
  ReadStartSettings(next, store);
  unsetenv("TAVORIN");
  EXPECT_EQ(next.preferences.FileType, 0);
  EXPECT_EQ(next.preferences.TextType, 0);
  EXPECT_EQ(next.DataDir, "/family");
  EXPECT_EQ(ManualPath(next), "/opt/family/manuals/velmora2.pdf");
}

TEST_F(Start, AStoreThatRefusesIsABoxAndNoMore) {
  WriteFile(directory.Path("file"), "no directory");
  SettingsStore refusing(directory.Path("file"));
  WriteExitSettings(workbench, refusing);
  SaveLastFile(workbench, refusing);
  ASSERT_EQ(questions.boxes.size(), 2U);
  EXPECT_EQ(questions.boxes[0].text, "Could not save settings on this computer's registry.");
  EXPECT_FALSE(SettingsStore("").Save("Velmora2", "Startup", {{"Viewer", "x"}}));
}

TEST_F(Start, TheCommandLine) {
  workbench.DataDir = "/before/";
  workbench.trial.FileName = "/before/last.vmb";
  TakeCommandLine(workbench, {});
  EXPECT_EQ(workbench.trial.FileName, "/before/last.vmb");
  EXPECT_EQ(FirstAction(workbench), StartAction::Nothing) << "a missing file loads nothing";
  TakeCommandLine(workbench, {"?"});
  EXPECT_EQ(FirstAction(workbench), StartAction::ShowAbout);
  TakeCommandLine(workbench, {";"});
  EXPECT_EQ(FirstAction(workbench), StartAction::Nothing);
  EXPECT_EQ(workbench.DataDir, "/before/");
  WriteFile(directory.Path("ä.vmb"), "x");
  TakeCommandLine(workbench, {directory.Path("ä.vmb"), "ignored"});
  EXPECT_EQ(workbench.DataDir, directory.Path(""));
  EXPECT_EQ(FirstAction(workbench), StartAction::LoadFile);
  mkfifo(directory.Path("pipe").c_str(), 0600);
  TakeCommandLine(workbench, {directory.Path("pipe")});
  EXPECT_EQ(FirstAction(workbench), StartAction::LoadFile) << "which will say that it cannot be read";
  TakeCommandLine(workbench, {directory.Path("")});
  EXPECT_EQ(FirstAction(workbench), StartAction::Nothing);

  EXPECT_EQ(CleanDirectory(""), std::filesystem::current_path().string() + "/");
  EXPECT_EQ(CleanDirectory("/data//"), "/data/");
  EXPECT_EQ(CleanDirectory("C:\\data\\\\"), "C:\\data\\");
  EXPECT_EQ(CleanDirectory("c"), "c:");
  EXPECT_EQ(CleanDirectory("/"), "/");
  EXPECT_EQ(AboutText().substr(0, 37), "Velmora2\nVersion: 1.00 (build 001)\n  ");
}

}  // namespace
}  // namespace velmora::test
