#include <unistd.h>

#include <stdexcept>

#include "support/text_load.hpp"

namespace velmora::test {
namespace {

using TextParserTest = TextLoadTest;

TEST_F(TextParserTest, TabCommaAndBlankSeparatedFilesReadAlikeWithNothingChanged) {
  const Frames expected = {{1, -2.5F, 30}, {4, 0.5F, -6e-3F}, {7, 8, 9}};
  for (const char* text : {"one\ttwo\tthree\n1\t-2.5\t3e1\n4\t.5\t-6E-03\n7\t8.\t+9\n",
                           "one,two,three\r\n1,-2.5,3e1\r\n4,.5,-6E-03\r\n7,8.,+9\r\n",
                           "one two three\r  1  -2.5 3e1\r4 .5   -6E-03  \r7 8. +9"}) {
    LoadWithDefaults("a.txt", text);
    EXPECT_EQ(Rows(), expected) << text;
    EXPECT_EQ(trial.FileTypeCode, 15);
    EXPECT_EQ(trial.Rate, 100.0);
  }
  EXPECT_EQ(questions.panels.back().format, "ASCII data");
  EXPECT_EQ(questions.panels.back().status, "3 samples/chan.");
  LoadWithDefaults("a.txt", "one, two, three\n 1 , -2.5,\t3e1\n4,.5 ,-6E-03\n7,8.,+9");
  EXPECT_EQ(trial.NChan, 4) << "a comma and a tab: each separates";
}

TEST_F(TextParserTest, WhatATrialOfPlainColumnsHolds) {
  trial.Rate = 250.0;  // of the trial before
  AnswerForm({{"TrialTitle", "7 hops"}});
  questions.inputAnswers = {"50"};
  Load("hop.csv", "x,y\n1,2\n3,4\n5,6\n");
  ASSERT_EQ(questions.inputs.size(), 1U);
  EXPECT_EQ(questions.inputs[0].title, "Enter Sampling Rate");
  EXPECT_EQ(questions.inputs[0].defaultText, "250");
  EXPECT_EQ(Offered("TrialTitle"), "Parsed ASCII data file: hop.CSV");
  EXPECT_EQ(Offered("ParseSkip"), "1");
  EXPECT_EQ(Offered("NChan"), "2");
  EXPECT_EQ(trial.TrialTitle, "7 hops");
  EXPECT_EQ(trial.HeaderLines[5], "End-of-file");
  EXPECT_EQ(trial.HeaderLines[4], "5,6");
  EXPECT_EQ(trial.ChanLabel[0], "Time");
  EXPECT_EQ(Labels(), (Texts{"Chan. 01", "Chan. 02"}));
  EXPECT_EQ(UnitsOfChannels(), (Texts{"", ""}));
  EXPECT_FLOAT_EQ(trial.Data(3, 0), 0.04F);
}

TEST_F(TextParserTest, HeaderIsSkippedAndTwoLinesAreTooFew) {
  // Lines that only look like numbers: too short, a lone sign, a point without digits behind it.
  LoadWithDefaults("a.txt", "5\n- 3\n1. 2\nE+\n....\n,,,,\n12 13\n14 15\n16 17\n");
  EXPECT_EQ(Offered("ParseSkip"), "6");
  EXPECT_EQ(Rows(), (Frames{{12, 13}, {14, 15}, {16, 17}}));
  // In one column they may well be records.
  const std::string digits = "h\n0\n5\n7\n12\n13\n";
  const std::string told =
      "3 single digits stand right above the data and are not read: if they are data, skip 1 records.";
  LoadWithDefaults("c.txt", digits);
  EXPECT_EQ(Rows(), (Frames{{12}, {13}}));
  EXPECT_EQ(Offered("lblMessage"), told);
  EXPECT_EQ(LastBox(), "Check the Data|" + told);
  LoadWithDefaults("c.txt", digits, {{"ParseSkip", "1"}});
  EXPECT_EQ(Rows(), (Frames{{0}, {5}, {7}, {12}, {13}}));
  EXPECT_TRUE(questions.boxes.empty());
  Load("b.txt", "1 2\n3 4\n");
  EXPECT_EQ(LastBox(), "Unreadable File|Try editing or deleting the first line, then reread the file.");
  EXPECT_EQ(trial.NData, 0);
  EXPECT_EQ(questions.panels.back().status, "Reading cancelled.");
}

TEST_F(TextParserTest, ANumberAboveTheHeadingIsNoData) {
  LoadWithDefaults("a.csv", "Devices,,\n2000,,\n,one,two\n1,2,3\n4,5,6\n7,8,9\n");
  EXPECT_EQ(Offered("ParseSkip"), "3");
  EXPECT_TRUE(Offered("lblMessage")
                  .starts_with("Line 2 looks like data, but text follows it: data start at line 4."));
  EXPECT_EQ(Rows(), (Frames{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}));
  // Several lines of several columns are data, whatever follows them.
  LoadWithDefaults("c.csv", "a,b\n1,2\n3,4\nbreak\n5,6,7\n8,9,1\n2,3,4\n");
  EXPECT_EQ(Rows(), (Frames{{1, 2}, {3, 4}, {0, 0}, {5, 6}, {8, 9}, {2, 3}}));
  EXPECT_TRUE(Offered("lblMessage")
                  .starts_with("Line 4 is text, and the lines behind it have 3 columns: to read those, skip "
                               "4 records."));
  // Lines of one shape on both sides of a text are one table: nothing is lost, and the text is told.
  LoadWithDefaults("b.csv", "1,2\n3,4\nbreak\n5,6\n7,8\n");
  EXPECT_EQ(Rows(), (Frames{{1, 2}, {3, 4}, {0, 0}, {5, 6}, {7, 8}}));
  EXPECT_NE(LastBox().find("1 fields are no numbers and were read as 0, the first in line 3"),
            std::string::npos);
}

TEST_F(TextParserTest, FieldsOfTheDialogue) {
  const char* text = "a b c\n1 2 3\n4 5 6\n7 8 9\n10 11 12\n";
  LoadWithDefaults("a.txt", text, {{"ParseMaxRecords", "2"}, {"ParseSkip", "2"}, {"Rate", "20"}});
  EXPECT_EQ(Rows(), (Frames{{4, 5, 6}, {7, 8, 9}}));
  EXPECT_EQ(trial.Rate, 20.0);
  EXPECT_EQ(questions.inputAnswers.size(), 1U) << "a rate typed in the dialogue is not asked for again";

  LoadWithDefaults("a.txt", text, {{"NChan", "2"}, {"ParseSkipToEndOfLine", "true"}});
  ASSERT_EQ(questions.boxes.size(), 1U);
  EXPECT_EQ(LastBox(),
            "Some Data Will Be Unread|You have selected to read fewer than the actual number of columns in "
            "the data file.\nThe last columns will not be read.");
  EXPECT_EQ(Rows(), (Frames{{1, 2}, {4, 5}, {7, 8}, {10, 11}}));

  LoadWithDefaults("a.txt", text, {{"NChan", "4"}});
  EXPECT_EQ(questions.boxes.at(0).title, "Too Many Channels Selected");
  EXPECT_EQ(Rows()[0], (std::vector<float>{1, 2, 3, 0}));
  EXPECT_NE(LastBox().find("4 lines have fewer columns than were read, the first is line 2"),
            std::string::npos);

  questions.inputAnswers = {"100"};
  questions.formAnswers.emplace_back([](Form& form) {
    EXPECT_THROW(form.Edit(*form.FindField("ParseSkip"), "2147483647"), std::invalid_argument)
        << "the line behind has no number";
    Type(form, {{"NChan", "2147483647"}});
    return std::string("Labels");
  });
  questions.PickNames({{64, "the last there can be"}});
  AnswerForm({{"NChan", "65"}});
  AnswerForm({{"NChan", "3"}});
  Load("a.txt", text);
  EXPECT_EQ(questions.boxes.back().title, "Maximum Channels Exceeded");
  EXPECT_EQ(Rows().size(), 4U);

  AnswerForm({}, "Cancel");
  Load("a.txt", text);
  EXPECT_EQ(trial.NData, 0);
  questions.inputAnswers = {""};
  AnswerForm();
  Load("a.txt", text);
  EXPECT_EQ(trial.NData, 0) << "an empty rate gives the read up";
}

TEST_F(TextParserTest, LabelsUnitsTitleAndHeaderFromTheDialogue) {
  const char* text = "# title\nFx,Fy,\"Moment, z\"\n(N),(N),(N.m)\n1,2,3\n4,5,6\n";
  LoadWithDefaults("a.csv", text, {{"ParseLabelsLine", "2"}, {"ParseUnitsLine", "3"}});
  EXPECT_EQ(Labels(), (Texts{"Fx", "Fy", "Moment, z"}));
  EXPECT_EQ(UnitsOfChannels(), (Texts{"N", "N", "N.m"}));

  AnswerForm({}, "Labels");
  questions.PickNames({{2, "vertical"}});
  AnswerForm({}, "Units");
  questions.PickNames({{3, "lb.ft"}});
  AnswerForm({}, "Title");
  questions.inputAnswers = {"3 plates", "100"};
  AnswerForm({}, "View Header");
  AnswerForm({{"lstHeader4", "yes"}});  // the first line of numbers is skipped as well
  AnswerForm({}, "Help");
  AnswerForm();
  Load("a.csv", text);
  EXPECT_EQ(Labels(), (Texts{"Chan. 01", "vertical", "Chan. 03"}));
  EXPECT_EQ(UnitsOfChannels(), (Texts{"", "", "lb.ft"}));
  EXPECT_EQ(trial.TrialTitle, "3 plates");
  EXPECT_EQ(Rows(), (Frames{{4, 5, 6}}));

  // What is entered stands against the file's own names, also behind channels that a dialect removes.
  AnswerForm({{"ParseHasTime", "false"}}, "Labels");
  questions.PickNames({{3, "mine"}});
  AnswerForm({}, "Units");
  questions.PickNames({{4, "kg"}});
  questions.inputAnswers = {"100"};
  AnswerForm();
  Load("a.txt", "one\ntwo\nFile Frame\tA\tB\tC [V]\tD [V]\n1\t2\t3\t4\n4\t5\t6\t7\n");
  EXPECT_EQ(Labels(), (Texts{"mine", "D"}));
  EXPECT_EQ(UnitsOfChannels(), (Texts{"V", "kg"}));
}

TEST_F(TextParserTest, TimeColumnGivesTheRate) {
  // 32-bit times: 2.5 s, 0.5 s apart from 0.5 s.
  const char* text = "t v\n0.5 10\n1.0 20\n1.5 30\n2.0 40\n";
  LoadWithDefaults("a.txt", text, {{"ParseHasTime", "true"}});
  EXPECT_EQ(Rows(), (Frames{{10}, {20}, {30}, {40}}));
  EXPECT_EQ(trial.Rate, 2.0);
  EXPECT_EQ(trial.Data(4, 0), 2.0F);
  EXPECT_EQ(trial.Duration, 1.5);
  EXPECT_EQ(questions.inputAnswers.size(), 1U) << "no question about the rate";

  // The column may be any; the rate is cut to three decimals: 3/(3*0.3) = 3.3333.
  LoadWithDefaults("b.txt", "a\n10 0 1\n20 0.25 2\n30 0.5 3\n40 0.9 4\n",
                   {{"ParseHasTime", "true"}, {"ParseTimeColumn", "2"}});
  EXPECT_EQ(Rows()[3], (std::vector<float>{40, 4}));
  EXPECT_EQ(trial.Rate, 3.333);
}

TEST_F(TextParserTest, GivenRateIsHeldAgainstTheTimes) {
  const std::string numbers = "0 1\n0.5 2\n1 3\n1.5 4\n";
  LoadWithDefaults("near.txt", "FREQUENCY 2.001\n" + numbers, {{"ParseHasTime", "1"}});
  EXPECT_EQ(trial.Rate, 2.001) << "within a thousandth the given rate holds";

  questions.inputAnswers = {""};
  AnswerForm({{"ParseHasTime", "-1"}});
  Load("far.txt", "FREQUENCY 4\n" + numbers);
  EXPECT_EQ(questions.inputs.back().prompt,
            "Given sampling rate was different from rate computed from data file.\nGiven rate was 4.00 Hz\n"
            "Calculated rate was 2.00 Hz\nEnter correct sampling rate per channel (Hz)");
  EXPECT_EQ(questions.inputs.back().defaultText, "2");
  EXPECT_EQ(trial.Rate, 2.0);
}

TEST_F(TextParserTest, TimesThatDoNotRunForwardAreAskedAbout) {
  const char* text = "t v\n3 10\n2 20\n1 30\n";
  AnswerForm({{"ParseHasTime", "true"}});
  questions.boxAnswers = {Button::Retry, Button::Cancel};
  AnswerForm();                  // again, with the time box still checked
  AnswerForm({{"Rate", "10"}});  // and now without
  Load("a.txt", text);
  ASSERT_EQ(questions.boxes.size(), 2U);
  EXPECT_EQ(questions.boxes[0].title, "Invalid Format of Data or Time Channel");
  EXPECT_EQ(Offered("ParseHasTime"), "false");
  EXPECT_EQ(offered[1][4].second, "true");
  EXPECT_EQ(Rows(), (Frames{{3, 10}, {2, 20}, {1, 30}}));
  EXPECT_EQ(trial.Rate, 10.0);
}

TEST_F(TextParserTest, BlankLinesAmongTheRecords) {
  const char* text = "head\n\n1 2\n3 4\n\n  \n5 6\n\n7 8\n\n\n";
  for (const Button answer : {Button::Yes, Button::No, Button::Cancel}) {
    questions.boxAnswers = {answer};
    LoadWithDefaults("a.txt", text);
    ASSERT_EQ(questions.boxes.at(0).title, "Blank Lines in Data Stream");
    EXPECT_TRUE(questions.boxes[0].text.starts_with(
        "One or more blanks lines were found in the data stream.  Number of blank lines found: 3.\nThe blank "
        "lines were found starting at line 5.\nGenerally"));
    const Frames all = {{1, 2}, {3, 4}, {5, 6}, {7, 8}};
    EXPECT_EQ(Rows(), answer == Button::Yes  ? all
                      : answer == Button::No ? Frames(all.begin(), all.begin() + 2)
                                             : Frames());
  }
}

TEST_F(TextParserTest, NothingWrongGoesUnsaid) {
  LoadWithDefaults("a.csv", "a,b,c\n1,2,3\n4,x,6\n7,,9\n10,11,12,13\n14,1.2.3\n15,1e99,-0\n");
  EXPECT_EQ(Rows(), (Frames{{1, 2, 3}, {4, 0, 6}, {7, 0, 9}, {10, 11, 12}, {14, 0, 0}, {15, 0, 0}}));
  EXPECT_EQ(LastBox(),
            "Check the Data|3 fields are no numbers and were read as 0, the first in line 3, column 2: check "
            "the records to skip and the channels to be read.\n"
            "1 lines have fewer columns than were read, the first is line 6; the missing values were read as "
            "0.\n1 lines have more columns than were read, the first is line 5: check the channels to be "
            "read.\n1 empty fields were read as 0, the first in line 4, column 2.");
  EXPECT_EQ(workbench.report.warnings.size(), 1U);
  EXPECT_TRUE(std::signbit(trial.Data(6, 3)));

  // More text than numbers means wrong parameters: no trial.
  LoadWithDefaults("b.csv", "a,b,c\n1,2,3\n4,x,6\nx,y,7\nz,z,z\nz,z,z\n");
  EXPECT_EQ(trial.NData, 0);
  EXPECT_TRUE(LastBox().starts_with("Start of Data Not Found|Most of what was read is no number"));
}

TEST_F(TextParserTest, TheDialogueSaysWhatToTry) {
  const auto remarkOn = [this](const std::string& text) {
    AnswerForm({}, "Cancel");
    Load("a.csv", text);
    return Offered("lblMessage");
  };
  // Time columns, names and units are pointed at, never taken unasked.
  EXPECT_EQ(
      remarkOn("t,x\n(s),(m)\n0.01,5\n0.02,5\n0.03,5\n"),
      "Column 1 rises evenly: if these are sample times, check the box and enter the time column. Lines 1 "
      "and 2 fit the columns: enter them as labels line and units line.");
  EXPECT_EQ(remarkOn("x\n1,2,3\n1,2.5,3\n1,3.1,3\n"),
            "Column 2 rises evenly: if these are sample times, check the box and enter the time column.");
  EXPECT_EQ(remarkOn("x\n1,2,3\n2,2,3\n9,2,3\n"), "");
  EXPECT_EQ(remarkOn("# Sampling Rate (Hz):= 1000.0\nx y\n55\n66\n 7\n"), "The header states 1000 Hz.");
  // Where no line holds numbers alone.
  EXPECT_EQ(remarkOn("h\n\n0,1,20,13-May,NaN\n1,1,40,13-May,0\n2,1,60,13-May,1\n"),
            "Line 3 starts with 3 numbers: skip 2 records and read 3 channels, not the full line.");
  EXPECT_EQ(
      remarkOn("when,x,y,z\n12:00,0,1,2\n12:01,1,2,3\n12:02,2,3,4\n"),
      "Line 2 has 3 numbers in 4 columns: skip 1 records and read 4 channels; what is no number is read "
      "as 0.");
  EXPECT_EQ(remarkOn("one\ntwo\nthree\n"),
            "No line of numbers among the first 3: enter the records to skip and the channels to be read.");
}

TEST_F(TextParserTest, ATimeColumnBehindTheLastThatCanBeReadIsNone) {
  AnswerForm({{"NChan", "100"}, {"ParseHasTime", "true"}, {"ParseTimeColumn", "70"}}, "Read");
  AnswerForm({}, "Cancel");
  Load("a.csv", "1,2\n2,3\n3,4\n");
  EXPECT_EQ(trial.NData, 0);
  EXPECT_TRUE(LastBox().starts_with("Maximum Channels Exceeded|")) << LastBox();
  EXPECT_EQ(Offered("ParseTimeColumn"), "70");
}

TEST_F(TextParserTest, ARateStatedInPassingIsHeldAgainstTheOneEntered) {
  const char* text = "# {\"column\": [\"nSeq\"], \"sampling rate\": 1000, \"bits\": 16}\n# End\n5\t6\n7\t8\n";
  questions.inputAnswers = {"1000"};
  AnswerForm();
  Load("a.txt", text);
  EXPECT_TRUE(questions.boxes.empty());
  LoadWithDefaults("a.txt", text);
  EXPECT_EQ(LastBox(), "Check the Data|The header states 1000 Hz, the trial has 100 Hz.");
}

TEST_F(TextParserTest, ANumberOfTheHeaderBehindWhateverPartsIt) {
  const auto load = [this](const std::string& head, const Edits& edits = {}) {
    LoadWithDefaults("a.txt", head + "\nx y\n5 6\n6 8\n7 9\n", edits);
  };
  const std::vector<std::pair<std::string, double>> rates = {
      {"FREQUENCY,1000", 1000}, {"FREQUENCY: 1000", 1000}, {"FREQUENCY = ,250,8,x", 250},
      {"RATE\t62,5 Hz", 62.5},  {"RATE\t2000,", 2000},     {"RATE\t0,125", 0.125},
      {"RATE\t1,0005", 1.0005},
  };
  for (const auto& [head, rate] : rates) {
    load(head);
    EXPECT_EQ(trial.Rate, rate) << head;
    EXPECT_TRUE(questions.boxes.empty()) << head;
  }
  load("SAMPLE RATE\t1,000");
  EXPECT_EQ(LastBox(), "Check the Data|The header states 1000 Hz, the trial has 1 Hz.");
  load("SAMPLE RATE\t1,000", {{"ParseHasTime", "true"}});
  EXPECT_TRUE(questions.boxes.empty()) << "the times say which of both it is";
}

TEST_F(TextParserTest, StartAndColumnsThatCannotBeFound) {
  std::string longHeader;
  for (int i = 0; i < 60; ++i) {
    longHeader += "line of a long header\n";
  }
  AnswerForm();  // refused: how many columns?
  AnswerForm({{"ParseSkip", "60"}});
  questions.inputAnswers = {"100"};
  Load("a.txt", longHeader + "1\t2\n3\t4\n");
  EXPECT_EQ(questions.boxes.at(0).title, "Start of Data Not Found");
  EXPECT_EQ(questions.boxes.at(1).title, "Number of Channels Unknown");
  EXPECT_EQ(Rows(), (Frames{{1, 2}, {3, 4}})) << "the line pointed at tells the columns";
  // So it does after a file of another number of columns, which no warning compares with.
  LoadWithDefaults("a.txt", longHeader + "1\t2\t3\n3\t4\t5\n", {{"NChan", "4"}, {"ParseSkip", "60"}});
  ASSERT_EQ(questions.boxes.size(), 1U);
  EXPECT_EQ(Rows(), (Frames{{1, 2, 3}, {3, 4, 5}}));
  LoadWithDefaults("a.txt", longHeader + "1\t2\n3\t4\n", {{"ParseSkip", "60"}, {"NChan", "1"}});
  EXPECT_EQ(questions.boxes.at(1).title, "Some Data Will Be Unread");

  std::string wide = "head\n";
  for (int row = 0; row < 3; ++row) {
    for (int c = 1; c <= 70; ++c) {
      wide += std::to_string(c + row) + (c < 70 ? "," : "\n");
    }
  }
  LoadWithDefaults("b.csv", wide, {{"NChan", "64"}});
  EXPECT_EQ(questions.boxes.at(0).title, "Number of Channels Unknown");
  EXPECT_EQ(trial.NChan, 64);
  EXPECT_EQ(trial.Data(3, 64), 66.0F);
  EXPECT_NE(LastBox().find("3 lines have more columns than were read"), std::string::npos);
}

TEST_F(TextParserTest, CharactersThatAreNotAscii) {
  // Inside a line that is no data anyway they do not matter; at the decisive place they are asked about.
  LoadWithDefaults("a.txt", "Schritt \xC3\xA4\n1 2\n3 4\n");
  EXPECT_TRUE(questions.boxes.empty());
  EXPECT_EQ(trial.HeaderLines[1], "Schritt \xC3\xA4");
  LoadWithDefaults("b.txt", "Temp\xE9rature\n1 2\n3 4\n");
  EXPECT_EQ(trial.HeaderLines[1], "Temp\xC3\xA9rature") << "Windows-1252 where it is not UTF-8";
  const char* text = "\xC3\x84hnlich\n\xC3\x96l\n1 2\n3 4\n";
  questions.boxAnswers = {Button::Yes};
  LoadWithDefaults("c.txt", text);
  EXPECT_EQ(questions.boxes.at(0).title, "NonASCII file?");
  EXPECT_EQ(Rows(), (Frames{{1, 2}, {3, 4}}));
  questions.boxAnswers = {Button::No};
  Load("c.txt", text);
  EXPECT_EQ(trial.NData, 0);
  EXPECT_EQ(questions.boxes.size(), 1U);
}

TEST_F(TextParserTest, Encodings) {
  const std::string text =
      "Kr\xC3\xA4"
      "fte [N]\r\n1,2\r\n3,4\r\n-5.5,6\r\n";
  const auto wide = [&text](bool little, bool mark) {
    std::u16string units = mark ? u"\uFEFF" : u"";
    units += u"Kr\u00E4fte [N]\r\n1,2\r\n3,4\r\n-5.5,6\r\n";
    std::string bytes;
    for (const char16_t unit : units) {
      const char low = static_cast<char>(unit & 0xFF);
      const char high = static_cast<char>(unit >> 8);
      bytes += little ? std::string{low, high} : std::string{high, low};
    }
    return bytes;
  };
  for (const std::string& bytes : {text, "\xEF\xBB\xBF" + text, wide(true, true), wide(false, true),
                                   wide(true, false), wide(false, false)}) {
    LoadWithDefaults("a.csv", bytes);
    EXPECT_EQ(Rows(), (Frames{{1, 2}, {3, 4}, {-5.5F, 6}}));
    EXPECT_EQ(trial.HeaderLines[1],
              "Kr\xC3\xA4"
              "fte [N]");
  }
}

TEST_F(TextParserTest, SemicolonsAndDecimalCommas) {
  LoadWithDefaults("points.csv", "a;b\n1.5;2\n-3;.25\n");
  EXPECT_EQ(Rows(), (Frames{{1.5F, 2}, {-3, 0.25F}}));
  LoadWithDefaults("commas.csv", "a;b\n1,5;2\n-3;0,25\n");
  EXPECT_EQ(Rows(), (Frames{{1.5F, 2}, {-3, 0.25F}}));
  EXPECT_EQ(Offered("ParseDecimalComma"), "true");
  EXPECT_TRUE(Offered("lblMessage").starts_with("Commas are read as decimal commas."));
  LoadWithDefaults("tabs.txt", "a\tb\n0,914\t12,5\n-3\t1,04E-2\n");
  EXPECT_EQ(Rows(), (Frames{{0.914F, 12.5F}, {-3, 0.0104F}}));
  // What may as well be separate columns stays separate unless the user says otherwise.
  const char* both = "a\tb\n1,2\t3,4\n5,6\t7,8\n";
  LoadWithDefaults("both.txt", both);
  EXPECT_EQ(Rows(), (Frames{{1, 2, 3, 4}, {5, 6, 7, 8}}));
  EXPECT_TRUE(Offered("lblMessage").starts_with("Commas are read as separators"));
  LoadWithDefaults("both.txt", both, {{"ParseDecimalComma", "true"}, {"NChan", "2"}});
  EXPECT_EQ(Rows(), (Frames{{1.2F, 3.4F}, {5.6F, 7.8F}}));
  LoadWithDefaults("pairs.txt", "a\tb\n1,2,0003\t4\n5,6,0007\t8\n");
  EXPECT_EQ(trial.NChan, 4) << "two commas in a field are no decimal commas";
}

TEST_F(TextParserTest, CancelWhileCountingAndWhileReading) {
  std::string text = "head\n";
  for (int i = 0; i < 25000; ++i) {
    text += std::to_string(i) + " 1\n";
  }
  questions.CancelAt("Counting 9999 records");
  questions.boxAnswers = {Button::OK};
  LoadWithDefaults("a.txt", text);
  EXPECT_EQ(LastBox(), "Keep Data or Cancel Reading|Press OK to read 9999 records or press Cancel");
  EXPECT_EQ(trial.NData, 9999);
  questions.boxAnswers = {Button::Cancel};
  LoadWithDefaults("a.txt", text);
  EXPECT_EQ(trial.NData, 0);
  questions.onProgress = [](ProgressPanel& panel) {
    if (panel.Status() == "Reading 25000 records" && panel.Value() >= 5000) {
      panel.PressCancel();
    }
  };
  LoadWithDefaults("a.txt", text);
  EXPECT_EQ(trial.NData, 5000);
  EXPECT_EQ(trial.Data(5000, 1), 4999.0F);
}

}  // namespace
}  // namespace velmora::test
