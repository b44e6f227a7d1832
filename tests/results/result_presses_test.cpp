#include "results/result_presses.hpp"

#include <filesystem>
#include <stdexcept>

#include "graph/picture.hpp"
#include "support/command_test.hpp"
#include "support/sample_results.hpp"

namespace velmora::test {
namespace {

struct ResultPresses : FileTest {
  void SetUp() override { SetChannels(trial, {{1, 2, 3}}); }

  void Press(Texts captions) {
    SampleResults form(workbench, 2);
    for (const std::string& caption : captions) {
      questions.formAnswers.emplace_back([caption](Form&) { return caption; });
    }
    questions.formAnswers.emplace_back([](Form&) { return std::string("Exit"); });
    form.Show(workbench);
  }
};

const char* const kTable = "Name\tPower\nrow 0\t0.333\nrow 1\t0.250\n";

TEST_F(ResultPresses, TheTableGoesToTheClipboardAsItIsShown) {
  Press({"Clipboard"});  // without a desktop
  EXPECT_EQ(workbench.results.Clipboard, kTable);
  EXPECT_EQ(LastBox(), "Sent to Clipboard|Results have been sent to the clipboard.");
  std::string copied;
  workbench.desktop.copy = [&](const std::string& text) { copied = text; };
  Press({"Clipboard"});
  EXPECT_EQ(copied, kTable);
}

TEST_F(ResultPresses, ProgramsOpenWhatWasSavedAndNothingAfterCancel) {
  questions.fileAnswers = {{directory.Path("a")}};
  Press({"Excel"});  // without a desktop it is saved all the same
  EXPECT_EQ(ReadFile(directory.Path("a.txt")), std::string("Bias=0.5\n") + kTable);
  Texts opened;
  workbench.desktop.open = [&](const std::string& program, const std::string& path) {
    opened.push_back(program + " " + path);
    return std::string(program == "QPW.exe" ? "No program." : "");
  };
  questions.fileAnswers = {
      {directory.Path("b.txt")}, {}, {directory.Path("c.txt")}, {directory.Path("no/d.txt")}};
  Press({"Notepad", "Excel", "Quattro Pro", "Excel"});
  EXPECT_EQ(opened, (Texts{"Notepad.exe " + directory.Path("b.txt"), "QPW.exe " + directory.Path("c.txt")}));
  EXPECT_EQ(workbench.report.failures.size(), 1U);  // no such directory
  EXPECT_EQ(workbench.report.warnings, Texts{"QPW.exe: No program."});
}

TEST_F(ResultPresses, APictureIsOfTheGraphAndPrintingNeedsAWindow) {
  std::string drawn;
  workbench.desktop.draw = [&](const PictureOrder& order) {
    if (order.format == PictureFormat::Pdf) {
      throw std::runtime_error("no ink");
    }
    drawn = order.title + ", " + std::to_string(order.graph.VisiblePlots()) + " plots";
    return std::string("bytes");
  };
  questions.fileAnswers = {{directory.Path("p.svg")}, {directory.Path("p.bmp")}, {directory.Path("p.pdf")}};
  Press({"Picture", "Picture", "Picture", "Print"});
  EXPECT_EQ(drawn, "A sine and its bars, 2 plots");
  EXPECT_EQ(ReadFile(directory.Path("p.svg")), "bytes");
  EXPECT_FALSE(std::filesystem::exists(directory.Path("p.pdf")));
  EXPECT_EQ(workbench.report.failures, Texts{"Save picture: no ink"});
  EXPECT_EQ(workbench.report.warnings, (Texts{"Save picture: A picture is a .png, .svg or .pdf file.",
                                              "Nothing was printed: that needs the window."}));
}

}  // namespace
}  // namespace velmora::test
