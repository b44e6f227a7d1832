#include "browse/programs.hpp"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/temporary_directory.hpp"

namespace velmora::test {
namespace {

using Programs = std::vector<std::string>;

TEST(Programs, WorkbooksGoToASpreadsheetAndTablesNever) {
  const Preferences preferences{.Viewer = "/usr/bin/editor", .Spreadsheet = "/usr/bin/sheet"};
  for (const char* name : {"a.xls", "/d.wk1/B.XLT", "a.b.Xla", "a.XML"}) {
    EXPECT_EQ(OpeningOf(name, preferences).programs, (Programs{"Excel.exe", "/usr/bin/sheet"})) << name;
    EXPECT_EQ(OpeningOf(name, preferences).kind, ProgramKind::Spreadsheet);
  }
  for (const char* name : {"a.wb1", "a.WB2", "a.wb3", "a.qpw"}) {
    EXPECT_EQ(OpeningOf(name, preferences).programs, (Programs{"QPW.exe", "/usr/bin/sheet"})) << name;
  }
  for (const char* name : {"a.wk1", "a.WKS"}) {
    EXPECT_EQ(OpeningOf(name, preferences).programs, Programs{"/usr/bin/sheet"}) << name;
    EXPECT_EQ(OpeningOf(name, preferences).kind, ProgramKind::Spreadsheet);
  }
  for (const char* extension : {"TAB", "csv", "VMC", "VMU", "VMV", "APD", "FAT", "BSV", "FTF", "IEM", "EVT",
                                "TRG", "MAX", "txt", "xlsx", "wk", ""}) {
    const Opening opening = OpeningOf("/x.xls/a." + std::string(extension), preferences);
    EXPECT_EQ(opening.programs, Programs{"/usr/bin/editor"}) << extension;
    EXPECT_EQ(opening.kind, ProgramKind::Viewer) << extension;
  }
  EXPECT_EQ(OpeningOf("/data.xls/readme", preferences).kind, ProgramKind::Viewer);
}

TEST(Programs, TheStoredNameTellsWhichEntryIsMarked) {
  const auto row = [](const char* program) { return ProgramRow(ProgramKind::Viewer, program); };
  EXPECT_EQ(row("C:\\windows\\NOTEPAD.EXE"), 0);
  EXPECT_EQ(row("D:\\Vista\\Notepad.exe"), 2);
  EXPECT_EQ(row("C:\\Tools\\Notepad.exe"), 3);
  EXPECT_EQ(row("hexedit.exe"), 5);
  EXPECT_EQ(row("/usr/bin/MyNotepad.exe"), -1);
  EXPECT_EQ(row(""), -1);
  EXPECT_EQ(ProgramRow(ProgramKind::Spreadsheet, "C:\\Office\\EXCEL.EXE"), 0);
  EXPECT_EQ(ProgramRow(ProgramKind::Spreadsheet, "QPW.exe"), 1);
  EXPECT_EQ(ProgramRow(ProgramKind::Spreadsheet, "Notepad.exe"), -1);
}

TEST(Programs, TheFamilyIsWhatLiesInItsDirectory) {
  const TemporaryDirectory directory;
  std::filesystem::create_directories(directory.Path("manuals/more.pdf"));
  for (const char* name :
       {"zoom", "Angles", "notes.txt", "manuals/velmora2.pdf", "manuals/Angles.PDF", "manuals/cover.png"}) {
    WriteFile(directory.Path(name), "x");
  }
  using std::filesystem::perms;
  for (const char* name : {"zoom", "Angles"}) {
    std::filesystem::permissions(directory.Path(name), perms::owner_all);
  }
  EXPECT_EQ(FamilyPrograms(directory.Path("")), (Programs{directory.Path("Angles"), directory.Path("zoom")}));
  EXPECT_EQ(FamilyManuals(directory.Path("")),
            (Programs{directory.Path("manuals/Angles.PDF"), directory.Path("manuals/velmora2.pdf")}));
  EXPECT_TRUE(FamilyPrograms("").empty());
  EXPECT_TRUE(FamilyManuals("").empty());
  EXPECT_TRUE(FamilyManuals(directory.Path("nowhere")).empty());
}

}  // namespace
}  // namespace velmora::test
