#include "run/report/json_text.hpp"
#include "support/full_disk.hpp"
#include "support/native_file.hpp"
#include "support/table_test.hpp"
#include "support/texts.hpp"

namespace velmora::test {
namespace {

struct HeaderView : TableTest {};

TEST_F(HeaderView, TellsTheLinesOfTheFileAndWhatIsKnownOfEachChannel) {
  std::string bytes = FileByHand(2, 4);
  const std::string lines = "1st <b> & \"second\"";
  bytes.replace(kSamplesAt - 248, 61, lines + std::string(61 - lines.size(), ' '));
  WriteFile(directory.Path("trial.vmb"), bytes);
  LoadPath(directory.Path("trial.vmb"));
  std::string info;
  std::string list;
  questions.formAnswers.emplace_back([&](Form& form) {
    EXPECT_EQ(form.Name(), "frmHeaderLines");
    info = Form::TextOf(*form.FindField("txtInfo"));
    list = Form::TextOf(*form.FindField("lstHeader"));
    return std::string("Save");
  });
  AnswerForm({}, "Exit");
  questions.fileAnswers = {{directory.Path("header")}};
  Run("data.header");

  EXPECT_HAS(info, "Format:  Velmora2");
  EXPECT_HAS(info, "Channels:  2\nSamples:  4");
  EXPECT_HAS(info, "50.00 Hz");
  EXPECT_EQ(list.substr(0, 22), "01  " + lines);
  const Json header = JsonTable(Table("frmHeaderLines"));
  EXPECT_EQ(header["columns"], Json({"Line", "Text"}));
  EXPECT_EQ(header["rows"][0], Json({"01", lines}));
  EXPECT_EQ(header["rows"].size(), 5U);
  // Rate 50 + c, gain 2c, offset -c/2, number c + 3, autozero of the odd ones 0: as the file was laid out.
  EXPECT_EQ(JsonTable(Table("frmHeaderChannels"))["rows"],
            Json({{"00", "label 1", "°/s", 51.0, 2.0, -0.5, 4.0, "no"},
                  {"01", "label 2", "°/s", 52.0, 4.0, -1.0, 5.0, "yes"}}));
  const std::string file = ReadFile(directory.Path("header.txt"));
  EXPECT_HAS(file, "01\t" + lines + "\r\n");
  EXPECT_HAS(file, "00\tlabel 1\t°/s\t51\t2\t-0.5\t4\tno\r\n");
  EXPECT_FALSE(trial.FileChanged);
}

TEST_F(HeaderView, LeavesTheOldFileWhenTheDiskIsFullAndIsSilentWithoutATrial) {
  Run("data.header");
  EXPECT_TRUE(questions.formNames.empty());

  SetChannels(trial, {{1}});
  trial.HeaderLineCount = 0;
  WriteFile(directory.Path("h.txt"), "old");
  questions.fileAnswers = {{directory.Path("h.txt")}};
  AnswerForm({}, "Save");
  AnswerForm({}, "Exit");
  {
    const FullDisk full(1);
    Run("data.header");
  }
  EXPECT_EQ(workbench.report.failures.size(), 1U);
  EXPECT_EQ(ReadFile(directory.Path("h.txt")), "old");
  EXPECT_TRUE(Table("frmHeaderLines").rows.empty());
}

}  // namespace
}  // namespace velmora::test
