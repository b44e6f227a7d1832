#include "run/recipe/recipe_questions.hpp"

#include <gtest/gtest.h>

#include <cstdlib>

#include "run/recipe/recipe_reader.hpp"
#include "support/sample_form.hpp"
#include "support/trials.hpp"

namespace velmora::test {
namespace {

class RecipeQuestionsTest : public testing::Test {
 protected:
  RecipeQuestionsTest() { SetChannels(workbench_.trial, {{1, 2}, {3, 4}, {5, 6}}); }

  /// `answers`: the items of a YAML list, flow style.
  void Answer(const std::string& answers) {
    recipe_ = ReadRecipe("velmora2: 1\nsteps: [{do: x, answers: [" + answers + "]}]", "r", {});
    questions_.BeginStep(std::get<CommandStep>(recipe_.steps[0].what).answers, workbench_.trial);
  }

  template <typename Ask>
  std::string WhyAbandoned(Ask ask) {
    try {
      ask();
    } catch (const CommandAbandoned& error) {
      return error.what();
    }
    return "answered";
  }

  std::string PickWith(const std::string& answer, bool ChooserState::*mode,
                       bool ChooserState::*second = nullptr) {
    Answer(answer);
    workbench_.chooser.ClearModes();
    workbench_.chooser.ChooserPrompt = "Which?";
    workbench_.chooser.*mode = true;
    if (second != nullptr) {
      workbench_.chooser.*second = true;
    }
    return WhyAbandoned([this] { ChannelPicker(workbench_).Show(); });
  }

  std::string FormWith(const std::string& answers) {
    Answer(answers);
    return WhyAbandoned([this] { form_.Show(workbench_); });
  }

  void ExpectSelected(const std::vector<int>& channels) const {
    EXPECT_EQ(SelectedChannels(workbench_.chooser), channels);
  }

  Recipe recipe_;
  RecipeQuestions questions_;
  Workbench workbench_{questions_};
  SampleForm form_{workbench_};
};

const Box kYesNo{.title = "Include Lables?", .text = "Do you\nwant?", .buttons = {Button::Yes, Button::No}};

void ExpectFound(const std::string& text, std::initializer_list<const char*> parts) {
  for (const char* part : parts) {
    EXPECT_NE(text.find(part), std::string::npos) << "no <" << part << "> in: " << text;
  }
}

TEST_F(RecipeQuestionsTest, AnswersInOrderAndSkipsOnlyOptionalOnes) {
  Answer(
      "{box: Cancel, title: Other, optional: true}, {input: x, optional: true}, {box: 'no', title: 'Include "
      "Lables?'},"
      "{input: ' 12 '}, {file: a.vmb}, {file: out/b}, {file: ''}, {file: [c, d.txt]}, {box: Yes, optional: "
      "true}");
  EXPECT_EQ(questions_.AskBox({.text = "just so you know"}), Button::OK);  // takes no answer
  EXPECT_EQ(questions_.AskBox(kYesNo), Button::No);
  EXPECT_EQ(questions_.AskInput({.title = "t", .prompt = "p"}), " 12 ");
  const FileQuestion save{.mode = FileQuestion::Mode::Save, .title = "Save"};
  EXPECT_EQ(questions_.AskFile(save), std::vector<std::string>{"a.vmb"});
  EXPECT_EQ(questions_.AskFile(save), std::vector<std::string>{"out/b"});
  EXPECT_TRUE(questions_.AskFile(save).empty());
  const FileQuestion open{.title = "Open", .several = true};
  EXPECT_EQ(questions_.AskFile(open), (std::vector<std::string>{"c", "d.txt"}));
  EXPECT_EQ(questions_.UnusedAnswers(), "");  // an optional one may stay
}

TEST_F(RecipeQuestionsTest, TellsWhatHasNoAnswerAndWhatWasNotAskedFor) {
  Answer("{input: x}, {box: Yes}");
  ExpectFound(WhyAbandoned([&] { questions_.AskBox(kYesNo); }),
              {"box \"Include Lables?\"", "\"Do you want?\"", "line 2", "kind input"});
  ExpectFound(questions_.UnusedAnswers(), {"input answer of line 2", "box answer of line 2"});
  Answer("{box: Yes, title: Other}");
  ExpectFound(WhyAbandoned([&] { questions_.AskBox(kYesNo); }), {"title \"Other\""});
  Answer("{box: Retry}");
  ExpectFound(WhyAbandoned([&] { questions_.AskBox(kYesNo); }), {"no button \"Retry\"", "Yes, No"});
  Answer("");
  ExpectFound(WhyAbandoned([&] { questions_.AskInput({.title = "T", .prompt = "P"}); }),
              {"input \"T\" \"P\"", "no answer"});
  Answer("{file: [a, b]}");
  ExpectFound(WhyAbandoned([&] { questions_.AskFile({.title = "T"}); }), {"file \"T\"", "one file"});
}

TEST_F(RecipeQuestionsTest, PickSetsExactlyTheSelection) {
  workbench_.chooser.ChanSelected[1] = true;
  EXPECT_EQ(PickWith("{pick: {channels: [3, 2], press: process}}", &ChooserState::ChooserSelectMode),
            "answered");
  ExpectSelected({2, 3});
  EXPECT_EQ(workbench_.chooser.ChooserCount, 2);
  EXPECT_EQ(PickWith("{pick: {channels: all}}", &ChooserState::ChooserSelectMode), "answered");
  ExpectSelected({1, 2, 3});
  EXPECT_EQ(PickWith("{pick: {channels: []}}", &ChooserState::ChooserSelectMode), "answered");
  ExpectSelected({});
  // A value typed selects its channel in the window; a recipe that lists channels means the list.
  EXPECT_EQ(PickWith("{pick: {channels: [1], values: {2: 7}}}", &ChooserState::ChooserSelectMode,
                     &ChooserState::ChooserValuesMode),
            "answered");
  ExpectSelected({1});
  EXPECT_EQ(workbench_.chooser.ChanConst[2], 7.0F);
  EXPECT_EQ(PickWith("{pick: {values: {3: 0.1}}}", &ChooserState::ChooserSelectMode,
                     &ChooserState::ChooserValuesMode),
            "answered");
  ExpectSelected({1, 3});
  EXPECT_EQ(workbench_.chooser.ChanConst[3], 0.1F);
  EXPECT_EQ(PickWith("{pick: {channels: [2], press: Cancel}}", &ChooserState::ChooserSelectMode), "answered");
  EXPECT_TRUE(workbench_.chooser.ChooserCancelled);
  ExpectSelected({1, 3});  // as before the picker came up
  EXPECT_EQ(
      PickWith("{title: 'Which?', pick: {names: {2: Knee}, press: Save}}", &ChooserState::ChooserNamesMode),
      "answered");
  EXPECT_EQ(workbench_.chooser.ChooserNames[2], "Knee");
}

TEST_F(RecipeQuestionsTest, PickRefusesWhatThePickerDoesNotOffer) {
  const auto select = &ChooserState::ChooserSelectMode;
  ExpectFound(PickWith("{pick: {channels: [4]}}", select), {"pick \"Which?\"", "channel 4"});
  ExpectFound(PickWith("{pick: {values: {1: 2}}}", select), {"no column of values"});
  ExpectFound(PickWith("{pick: {names: {1: x}}}", select), {"no column of names"});
  ExpectFound(PickWith("{pick: {press: Exit}}", select), {"no button \"Exit\"", "Process"});
  ExpectFound(PickWith("{pick: {channels: [1]}}", &ChooserState::ChooserValuesMode), {"cannot be selected"});
  ExpectFound(PickWith("{pick: {channels: [1, 2]}}", &ChooserState::ChooserSingleMode),
              {"exactly one channel"});
  ExpectFound(PickWith("{pick: {channels: all}}", &ChooserState::ChooserSingleMode), {"exactly one channel"});
}

TEST_F(RecipeQuestionsTest, WhatIsNoNumberIsNotTakenForOne) {
  for (const std::string text :
       {"2,5", "abc", "0x10", "1_000", "", " ", "-", "1 2", "5N", "nan", "inf", "+-1"}) {
    const std::string quoted = "\"" + text + "\" is no number";
    ExpectFound(PickWith("{pick: {values: {2: '" + text + "'}}}", &ChooserState::ChooserValuesMode),
                {"pick \"Which?\"", "channel 2", quoted.c_str()});
    ExpectFound(FormWith("{form: {Width: '" + text + "'}}"), {"form \"A Sample\"", "Width", quoted.c_str()});
    ExpectFound(FormWith("{form: {cwnPadding: '" + text + "'}}"), {"cwnPadding", quoted.c_str()});
    ExpectFound(FormWith("{form: {Cutoffs: {3: '" + text + "'}}}"), {"Cutoffs", quoted.c_str()});
  }
  const InputQuestion rate{.title = "Rate", .prompt = "Hz", .isNumber = true};
  Answer("{input: '2,5'}");
  ExpectFound(WhyAbandoned([&] { questions_.AskInput(rate); }), {"input \"Rate\"", "\"2,5\" is no number"});
  Answer("{input: ''}, {input: ' 5e1 '}, {input: '2,5'}");
  EXPECT_EQ(questions_.AskInput(rate), "") << "cancels";
  EXPECT_EQ(questions_.AskInput(rate), " 5e1 ");
  EXPECT_EQ(questions_.AskInput({.title = "Title", .prompt = "?"}), "2,5") << "a text";
  for (const std::string text : {"-.5", " +5. ", "1E-3", "0", "1e999", "007"}) {
    EXPECT_EQ(PickWith("{pick: {values: {2: '" + text + "'}}}", &ChooserState::ChooserValuesMode),
              "answered");
    EXPECT_EQ(workbench_.chooser.ChanConst[2], std::strtof(text.c_str(), nullptr)) << text;
  }
}

TEST_F(RecipeQuestionsTest, FormTakesFieldsByNameAndStaysOpenForTheNextAnswer) {
  EXPECT_EQ(
      FormWith("{form: {chkRectify: yes, cwnPadding: 12, optPad: mirror, Width: 0.25, press: apply}},"
               "{input: twice},"
               "{form: {chkRectify: -1, optPad: 0, Name: 'a: b', Cutoffs: {1: 6, 3: 2.5}, channels: [2]}}"),
      "answered");
  EXPECT_TRUE(form_.rectify);
  EXPECT_EQ(form_.padding, 12);
  EXPECT_EQ(form_.pad, 0);
  EXPECT_EQ(form_.width, 0.25);
  EXPECT_EQ(form_.typed, "twice");
  EXPECT_EQ(form_.name, "a: b");
  EXPECT_EQ(form_.cutoffs[1], 6.0);
  EXPECT_EQ(form_.cutoffs[3], 2.5);
  EXPECT_FALSE(form_.channels[1]);
  EXPECT_TRUE(form_.channels[2]);
  EXPECT_FALSE(form_.channels[3]);
  EXPECT_EQ(FormWith("{form: {found: true, cwnPadding: 3}}"), "answered");
  EXPECT_EQ(form_.width, 0.75);
  form_.width = 0.5;
  EXPECT_EQ(FormWith("{form: {found: true, Width: 2}}"), "answered");
  EXPECT_EQ(form_.width, 2.0) << "what is said stands against what is found";
  EXPECT_EQ(FormWith("{form: {channels: all, press: OK}}"), "answered");  // OK: the accepting button
  EXPECT_TRUE(form_.channels[1] && form_.channels[3]);
  EXPECT_EQ(FormWith("{form: {channels: {1: false}}}"), "answered");
  EXPECT_FALSE(form_.channels[1]);
  EXPECT_TRUE(form_.channels[3]);
}

// Channels stand in the order in which an instrument wrote them, and are called what its makers liked.
TEST_F(RecipeQuestionsTest, ChannelsAreNamedByLabelAndByPattern) {
  SetChannels(workbench_.trial, std::vector<std::vector<float>>(8, {1, 2}));
  const char* const labels[] = {"",     "EMG Vastus ", "emg BICEPS", "Fz",         "fx",
                                "FZ 2", "3",           "a*b \"c\"",  "M\u00fcller"};
  for (int c = 1; c <= 8; ++c) {
    workbench_.trial.ChanLabel[c] = labels[c];
  }
  const auto chosen = [this](const std::string& channels) -> std::vector<int> {
    const std::string came =
        PickWith("{pick: {channels: " + channels + "}}", &ChooserState::ChooserSelectMode);
    EXPECT_EQ(came, "answered") << channels;
    return SelectedChannels(workbench_.chooser);
  };
  EXPECT_EQ(chosen("['EMG*']"), (std::vector{1, 2}));
  EXPECT_EQ(chosen("' fz '"), std::vector{3});
  EXPECT_EQ(chosen("['F?', emg vastus]"), (std::vector{1, 3, 4}));
  EXPECT_EQ(chosen("['label:3', 5]"), (std::vector{5, 6}));
  EXPECT_EQ(chosen("[3]"), std::vector{3}) << "a number is a number";
  EXPECT_EQ(chosen("['label:A*B \"c\"']"), std::vector{7});
  EXPECT_EQ(chosen("['M?ller', 'm*R']"), std::vector{8}) << "a character, of however many bytes";
  EXPECT_EQ(chosen("['*']"), (std::vector{1, 2, 3, 4, 5, 6, 7, 8}));
  EXPECT_EQ(chosen("'*i*s*'"), std::vector{2});
  EXPECT_EQ(PickWith("{pick: {values: {'F*': 2, FX: 3}}}", &ChooserState::ChooserValuesMode), "answered");
  EXPECT_EQ(workbench_.chooser.ChanConst[3], 2.0F);
  EXPECT_EQ(workbench_.chooser.ChanConst[4], 3.0F) << "what comes later counts";
  EXPECT_EQ(workbench_.chooser.ChanConst[5], 2.0F);
  EXPECT_EQ(PickWith("{pick: {names: {fx: Shear}}}", &ChooserState::ChooserNamesMode), "answered");
  EXPECT_EQ(workbench_.chooser.ChooserNames[4], "Shear");
  EXPECT_EQ(PickWith("{pick: {channels: 'FX*'}}", &ChooserState::ChooserSingleMode), "answered");
  EXPECT_EQ(workbench_.chooser.ChooserChannel, 4);
  EXPECT_EQ(FormWith("{form: {channels: 'EMG*', Cutoffs: {'EMG*': 20, Fz: 6}}}"), "answered");
  EXPECT_TRUE(form_.channels[1] && form_.channels[2] && !form_.channels[3]);
  EXPECT_EQ(form_.cutoffs[2], 20.0);
  EXPECT_EQ(form_.cutoffs[3], 6.0);
  for (const auto& [text, index] :
       {std::pair("' fz '", 3), {"'M*r'", 8}, {"'label:fx'", 4}, {"'02: Fz'", 3}, {"fx", 0}, {"2", 2}}) {
    EXPECT_EQ(FormWith("{form: {comX: " + std::string(text) + "}}"), "answered");
    EXPECT_EQ(form_.x, index) << text;
  }
}

TEST_F(RecipeQuestionsTest, AChannelThatIsNotThereIsToldWithThoseThatAre) {
  const auto select = &ChooserState::ChooserSelectMode;
  for (int c = 1; c <= 3; ++c) {
    workbench_.trial.ChanLabel[c] = c == 3 ? "Fz" : "EMG";
  }
  ExpectFound(PickWith("{pick: {channels: [Fy]}}", select),
              {"pick \"Which?\"", "no channel labelled \"Fy\"; did you mean \"Fz\"?",
               "there are 1 \"EMG\", 2 \"EMG\", 3 \"Fz\""});
  ExpectFound(PickWith("{pick: {channels: ['G*']}}", select), {"label fits \"G*\"", "3 \"Fz\""});
  ExpectFound(PickWith("{pick: {channels: [emg]}}", select), {"\"emg\" is the label of channels 1, 2"});
  ExpectFound(PickWith("{pick: {channels: ['E*']}}", &ChooserState::ChooserSingleMode),
              {"fits channels 1, 2"});
  ExpectFound(FormWith("{form: {Cutoffs: {Fx: 6}}}"), {"field Cutoffs", "\"Fx\""});
  ExpectFound(FormWith("{form: {channels: Fx}}"), {"field channels", "\"Fx\""});
  ExpectFound(FormWith("{form: {comX: Fy}}"),
              {"field comX", "no channel labelled \"Fy\"; did you mean \"Fz\"?"});
  ExpectFound(FormWith("{form: {comX: emg}}"), {"\"emg\" is the label of channels 1, 2"});
}

TEST_F(RecipeQuestionsTest, FormRefusesWhatItDoesNotHave) {
  ExpectFound(FormWith("{form: {chkRectfy: yes}}"),
              {"form \"A Sample\"", "no field \"chkRectfy\"", "chkRectify"});
  ExpectFound(FormWith("{form: {press: Smooth}}"), {"no button \"Smooth\"", "Filter, Apply, Cancel"});
  ExpectFound(FormWith("{form: {cwnPadding: 101}}"), {"cwnPadding", "101"});
  ExpectFound(FormWith("{form: {optPad: Wrap}}"), {"optPad", "Wrap"});
  ExpectFound(FormWith("{form: {optPad: 2}}"), {"optPad", "2"});
  ExpectFound(FormWith("{form: {Cutoffs: {1: -6}}}"), {"Cutoffs", "-6"});
  ExpectFound(FormWith("{form: {chkRectify: perhaps}}"), {"chkRectify", "perhaps"});
  ExpectFound(FormWith("{form: {Cutoffs: 6}}"), {"Cutoffs"});
  ExpectFound(FormWith("{form: {Cutoffs: [6]}}"), {"Cutoffs"});
  ExpectFound(FormWith("{form: {Cutoffs: {4: 6}}}"), {"Cutoffs", "channel 4"});
  ExpectFound(FormWith("{form: {channels: [4]}}"), {"channels", "3 channels"});
  ExpectFound(FormWith("{form: {press: Fliter}}"), {"did you mean \"Filter\"?"});
  ExpectFound(FormWith("{form: {press: Apply}}, {input: x}"), {"form \"A Sample\"", "no answer"});
}

}  // namespace
}  // namespace velmora::test
