#include "dsp/bias/bias.hpp"

#include <limits>

#include "dsp/bias/bias_file.hpp"
#include "support/command_test.hpp"

namespace velmora::test {
namespace {

using BiasCommand = FileTest;

TEST_F(BiasCommand, AutozeroFromEitherEndKeepsTheRecord) {
  SetChannels(trial, {{1, 3, 10, 20}, {5, 5, 5, 5}});
  trial.ChanOffset[1] = 100.0;
  questions.inputAnswers = {"2"};
  RunPicking("bias.autozero-left", {1});
  EXPECT_EQ(Channel(trial, 1), (Samples{-1, 1, 8, 18}));
  EXPECT_EQ(Channel(trial, 2), (Samples{5, 5, 5, 5}));
  EXPECT_EQ(trial.ChanOffset[1], 98.0);
  EXPECT_EQ(workbench.bias.BiasMemory[2], 5.0F) << "levels of channels not picked are remembered too";
  EXPECT_TRUE(trial.FileChanged);

  questions.inputAnswers = {"2"};
  RunPicking("bias.autozero-right", {1, 2});
  EXPECT_EQ(Channel(trial, 1), (Samples{-14, -12, -5, 5}));
  EXPECT_EQ(Channel(trial, 2), (Samples{0, 0, 0, 0}));
  EXPECT_EQ(trial.ChanOffset[1], 85.0);
  EXPECT_EQ(trial.ChanOffset[2], -5.0);
}

TEST_F(BiasCommand, CountsAreHeldToTheTrial) {
  const auto levelFor = [&](const char* id, const char* count) {
    SetChannels(trial, {{1, 2, 6}});
    questions.inputAnswers = {count};
    questions.PickCancel();
    Run(id);
    EXPECT_EQ(Channel(trial, 1), (Samples{1, 2, 6})) << "cancelled";
    return workbench.chooser.ChanConst[1];
  };
  EXPECT_EQ(levelFor("bias.autozero-left", "-3"), 1.0F);
  EXPECT_EQ(levelFor("bias.autozero-left", "no number"), 1.0F);
  EXPECT_EQ(levelFor("bias.autozero-left", "1e30"), 3.0F);
  EXPECT_EQ(levelFor("bias.autozero-left", "2.5"), 1.5F) << "half to even";
  EXPECT_EQ(levelFor("bias.autozero-right", "2"), 4.0F);
  EXPECT_TRUE(workbench.bias.BiasLevelsKnown);
  EXPECT_EQ(workbench.bias.BiasMemory[1], 0.0F) << "a cancelled command remembers nothing";
  questions.inputAnswers = {"", ""};
  Run("bias.autozero-left");
  Run("bias.both");
}

// 2^24 + 1 + 1 kept in 32 bits stays 2^24; added from the other end it is 2^24 + 2.
TEST_F(BiasCommand, TotalsAreKeptIn32BitsInTheOrderOfTheSamples) {
  const Samples x = {16777216.0F, 1.0F, 1.0F};
  SetChannels(trial, {x});
  PerChannel<float> levels{};
  MeasureFirst(trial, 3, levels);
  EXPECT_EQ(levels[1], 16777216.0F / 3.0F);
  MeasureLast(trial, 3, levels);
  EXPECT_EQ(levels[1], 16777218.0F / 3.0F);
  MeasureBetween(trial, 2, 3, levels);
  EXPECT_EQ(levels[1], 1.0F);
}

TEST_F(BiasCommand, MeanBetweenTheCursorsOffTheWholeChannel) {
  SetChannels(trial, {{10, 1, 2, 3, 50}});
  SetCursors(2, 4);
  RunPicking("bias.mean", {1});
  EXPECT_EQ(Channel(trial, 1), (Samples{8, -1, 0, 1, 48}));
  SetCursors(0, 99);
  RunPicking("bias.mean", {1});
  EXPECT_EQ(trial.ChanOffset[1], -13.2F * 1.0) << "2, then the 11.2 that was left of the whole";
}

TEST_F(BiasCommand, DriftIsALine) {
  SetChannels(trial, {{2, 7, 4, 8}, {1, 5, 5, 1}});
  RunPicking("bias.drift", {1, 2});
  EXPECT_EQ(Channel(trial, 1), (Samples{2, 5, 0, 2}));
  EXPECT_EQ(Channel(trial, 2), (Samples{1, 5, 5, 1}));
  EXPECT_EQ(trial.ChanOffset[1], 0.0);
  EXPECT_FALSE(workbench.bias.BiasLevelsKnown);
  EXPECT_EQ(OfferedBy("bias.manual"), (Texts{"2.00000", "0.00000"})) << "slopes";

  SetChannels(trial, {{3}});
  Run("bias.drift");
  Run("bias.both");
  EXPECT_EQ(trial.Data(1, 1), 3.0F);
  EXPECT_EQ(workbench.report.warnings.size(), 2U);
}

TEST_F(BiasCommand, WhatIsNoNumberOrTooFarIsToldAndLeavesTheSamples) {
  constexpr float kMissing = std::numeric_limits<float>::quiet_NaN();
  const std::vector<std::pair<std::string, std::string>> cases = {{"bias.autozero-left", "bias level"},
                                                                  {"bias.autozero-right", "bias level"},
                                                                  {"bias.mean", "bias level"},
                                                                  {"bias.drift", "drift"},
                                                                  {"bias.both", "drift"}};
  for (const auto& [command, what] : cases) {
    SetChannels(trial, {{1, 2, 3, 4}, {2, 7, 4, kMissing}, {1, 2, 3, 4}});
    trial.ChanOffset[1] = 100.0;
    questions.inputAnswers = {command == "bias.autozero-left" ? "4" : "1"};
    RunPicking(command.c_str(), {1, 2, 3});
    EXPECT_EQ(Channel(trial, 1), (Samples{1, 2, 3, 4})) << command;
    EXPECT_EQ(Channel(trial, 3), (Samples{1, 2, 3, 4})) << command;
    EXPECT_EQ(trial.Data(2, 2), 7.0F) << command;
    EXPECT_EQ(trial.ChanOffset[1], 100.0) << command;
    EXPECT_EQ(questions.boxes.back().text,
              "The " + what + " of channel 01 is not a number that data can hold.  No channel was changed.");
  }

  // A difference that leaves the range is met on the way: what is recorded stays what was done.
  SetChannels(trial, {{1, 2, 3}, {-3e38F, 3e38F, 3e38F}, {1, 2, 3}});
  questions.inputAnswers = {"1"};
  RunPicking("bias.autozero-left", {1, 2, 3});
  EXPECT_EQ(Channel(trial, 1), (Samples{0, 1, 2}));
  EXPECT_EQ(Channel(trial, 3), (Samples{1, 2, 3}));
  EXPECT_EQ(trial.ChanOffset[1], -1.0);
  EXPECT_EQ(trial.ChanOffset[2], 3e38F * 1.0) << "whose first sample has been changed";
  EXPECT_EQ(trial.ChanOffset[3], 0.0);
  EXPECT_EQ(questions.boxes.back().text,
            "The result for channel 01, sample 2, is not a number that data can hold.  Samples before it "
            "have been changed.");

  SetChannels(trial, {{3e38F, 3e38F, -3e38F}});
  RunPicking("bias.drift", {1});
  EXPECT_EQ(Channel(trial, 1), (Samples{3e38F, 3e38F, -3e38F})) << "3e38 higher would be 6e38";
}

TEST_F(BiasCommand, BothAssignTheOffset) {
  SetChannels(trial, {{1, 3, 8, 10}, {0, 0, 0, 3}});
  trial.ChanOffset[1] = 100.0;
  questions.inputAnswers = {"2"};
  RunPicking("bias.both", {1});
  EXPECT_EQ(Channel(trial, 1), (Samples{-1, -2, 0, -1}));  // less 2, less 3 a sample
  EXPECT_EQ(Channel(trial, 2), (Samples{0, 0, 0, 3}));
  EXPECT_EQ(trial.ChanOffset[1], 2.0);
  EXPECT_EQ(workbench.bias.BiasMemory[1], 3.0F);
}

TEST_F(BiasCommand, TermsApplyToEveryChannelWithoutMarking) {
  SetChannels(trial, {{1, 2}, {3, 4}});
  workbench.bias.BiasMemory[2] = 1.5F;
  RunTyping("bias.manual", {{1, "0.5"}});
  EXPECT_EQ(Channel(trial, 1), (Samples{0.5F, 1.5F}));
  EXPECT_EQ(Channel(trial, 2), (Samples{1.5F, 2.5F}));
  EXPECT_EQ(trial.ChanOffset[2], -1.5);
  EXPECT_FALSE(trial.FileChanged);
  EXPECT_EQ(workbench.bias.BiasMemory[1], 0.5F);
}

TEST_F(BiasCommand, FileThereAndBack) {
  SetChannels(trial, {{1, 2}, {-0.1F, 0.3F}});
  trial.FileName = "/data/a.vmb";
  trial.TrialName = "a";
  trial.ChanLabel[1] = "Größe";
  trial.ChanLabel[2] = "a\tb\n";
  questions.inputAnswers = {"1"};
  questions.PickCancel();
  Run("bias.autozero-left");
  const std::string path = directory.Path("levels.bsv");
  SaveAs("levels.bsv", "bias.save");
  EXPECT_EQ(questions.files.back().defaultName, "a.bsv");
  EXPECT_EQ(ReadFile(path),
            "Velmora2 Bias levels taken from file: /data/a.vmb\r\nNumber of channels: \t02\r\n"
            "Größe" +
                std::string(25, ' ') + "\tchannel01\t1.0000000E+00\r\na b" + std::string(27, ' ') +
                "\tchannel02\t-1.0000000E-01\r\n");

  trial.ChanLabel[1] = "Other";
  workbench.chooser.ChanConst.fill(7.0F);
  questions.fileAnswers = {{path}};
  RunTyping("bias.file", {});
  EXPECT_EQ(Channel(trial, 1), (Samples{0, 1}));
  EXPECT_EQ(Channel(trial, 2), (Samples{0.0F, 0.3F + 0.1F}));
  EXPECT_TRUE(workbench.report.failures.empty());

  questions.fileAnswers = {{directory.Path("none/levels.bsv")}, {}};
  Run("bias.save");
  EXPECT_EQ(workbench.report.failures.size(), 1U);
  EXPECT_EQ(questions.boxes.back().text.substr(0, 22), "Error saving to file: ");
  Run("bias.save");
  EXPECT_EQ(workbench.report.failures.size(), 1U) << "no name, no failure";
}

TEST_F(BiasCommand, FilesThatAreRefused) {
  const std::string path = directory.Path("bad.bsv");
  const std::string head = "Velmora2 Bias levels\nNumber of channels: \t";
  const auto boxFor = [&](const std::string& bytes) {
    SetChannels(trial, {{1, 2}, {3, 4}});
    workbench.chooser.ChanConst.fill(7.0F);
    WriteFile(path, bytes);
    questions.fileAnswers = {{path}};
    Run("bias.file");
    EXPECT_EQ(Channel(trial, 1), (Samples{1, 2}));
    return questions.boxes.back();
  };
  EXPECT_EQ(boxFor("").title, "Invalid File Format");
  EXPECT_EQ(boxFor("Velmora2 bias levels\n").text,
            "File does not appear to be in the correct format.  Operation is cancelled.");
  EXPECT_EQ(boxFor(head + "3\nx\ty\t1\nx\ty\t1\nx\ty\t1\n").text,
            "Number of bias levels is different than the number of channels.  Operation is cancelled.");
  EXPECT_EQ(boxFor("Velmora2 Bias\nno count\n").text.substr(0, 20), "Error opening file: ");
  EXPECT_EQ(workbench.chooser.ChanConst[1], 7.0F);
  EXPECT_EQ(boxFor(head + "2\nx\ty\t1.25\n").text.substr(0, 20), "Error opening file: ");
  EXPECT_EQ(workbench.chooser.ChanConst[1], 1.25F) << "levels read before the end stay";
  EXPECT_EQ(workbench.chooser.ChanConst[2], 7.0F);
  EXPECT_TRUE(boxFor(head + "2\nx\ty\t1e39\nx\ty\t2\n").text.ends_with("\"the number 1e39 is too large\""));
  EXPECT_EQ(workbench.report.failures.size(), 6U);
  questions.fileAnswers = {{directory.Path("")}};
  Run("bias.file");
  EXPECT_EQ(workbench.report.failures.size(), 7U);
}

// A comma ends an item: the level behind it counts for the next channel, which nobody would see.
TEST_F(BiasCommand, ACommaInALabelMovesTheLevelsAndIsTold) {
  const std::string path = directory.Path("comma.bsv");
  WriteFile(path, "Velmora2 Bias, of\rcount\t2\rEMG, left\tchannel01\t1.5\rEMG\tchannel02\t2.5\r");
  SetChannels(trial, {{1, 2}, {3, 4}});
  questions.fileAnswers = {{path}};
  RunTyping("bias.file", {});
  EXPECT_EQ(Channel(trial, 1), (Samples{1, 2}));
  EXPECT_EQ(Channel(trial, 2), (Samples{1.5F, 2.5F}));
  ASSERT_EQ(trial.Notices.size(), 1U);
  EXPECT_TRUE(trial.Notices[0].starts_with("comma.bsv has no level for some channels"));
  trial.ChanLabel[2] = "EMG, left";
  SaveAs("levels.bsv", "bias.save");
  ASSERT_EQ(trial.Notices.size(), 2U);
  EXPECT_TRUE(trial.Notices[1].starts_with("A comma in a label moves the levels"));
}

}  // namespace
}  // namespace velmora::test
