#include "core/questions/picker.hpp"

#include "support/command_test.hpp"

namespace velmora::test {
namespace {

struct Picker : CommandTest {
  ChooserState& chooser = workbench.chooser;

  void Load(int channels) {
    SetChannels(workbench.trial, std::vector<std::vector<float>>(static_cast<std::size_t>(channels), {1, 2}));
    ShowFirstChannelPage(workbench);
    workbench.trial.FileChanged = false;
  }
};

TEST_F(Picker, PagesGoRoundAndTheWholeTrialIsInverted) {
  Load(64);
  chooser.ChooserSelectMode = true;
  ChannelPicker picker(workbench);
  std::vector<std::pair<int, int>> pages;
  for (int k = 0; k < 5; ++k) {
    pages.emplace_back(picker.FirstShown(), picker.LastShown());
    picker.NextChannels();
  }
  EXPECT_EQ(pages, (std::vector<std::pair<int, int>>{{1, 16}, {17, 32}, {33, 48}, {49, 64}, {1, 16}}));
  picker.Select(3, true);
  picker.Invert();
  EXPECT_EQ(SelectedChannels(chooser).size(), 63U);
  EXPECT_FALSE(picker.IsSelected(3));
  picker.None();
  picker.SecondEight();  // of the page in view, 17 to 32
  EXPECT_EQ(SelectedChannels(chooser), (std::vector<int>{25, 26, 27, 28, 29, 30, 31, 32}));

  Load(20);
  ChannelPicker shorter(workbench);
  EXPECT_TRUE(shorter.OffersNextPage());
  shorter.NextChannels();
  EXPECT_EQ(shorter.LastShown(), 20);
  Load(8);
  EXPECT_FALSE(ChannelPicker(workbench).OffersEights());
}

TEST_F(Picker, WhatAColumnShowsFollowsTheMode) {
  Load(2);
  chooser.ChanConst[2] = 2.5F;
  chooser.ChooserNames[2] = "vastus";
  const auto shown = [this](auto set) {
    chooser.ClearModes();
    set();
    const ChannelPicker picker(workbench);
    return Texts{picker.ClosingCaption(), picker.ValueText(2)};
  };
  EXPECT_EQ(shown([&] { chooser.ChooserSelectMode = true; }), (Texts{"&Process", ""}));
  EXPECT_EQ(shown([&] { chooser.ChooserValuesMode = true; }), (Texts{"&Process", "2.50000"}));
  EXPECT_EQ(shown([&] { chooser.ChooserValuesMode = chooser.ChooserIntegerValues = true; })[1], "2");
  EXPECT_EQ(shown([&] { chooser.ChooserNamesMode = true; }), (Texts{"&Save", "vastus"}));
  EXPECT_EQ(shown([&] { chooser.ChooserExitMode = true; })[0], "&Exit");
}

TEST_F(Picker, ClosingCountsAndMarksTheChange) {
  Load(3);
  chooser.ChooserSelectMode = true;
  questions.PickChannels({3, 1});
  EXPECT_TRUE(ChannelPicker(workbench).Show());
  EXPECT_EQ(chooser.ChooserCount, 2);
  EXPECT_TRUE(workbench.trial.FileChanged);
  EXPECT_FALSE(chooser.ChooserSelectMode);

  Load(3);
  chooser.ChanSelected.fill(false);
  chooser.ChooserSelectMode = true;
  questions.PickChannels({});
  EXPECT_TRUE(ChannelPicker(workbench).Show());
  EXPECT_EQ(chooser.ChooserCount, 0);
  EXPECT_FALSE(workbench.trial.FileChanged);

  chooser.ChooserValuesMode = true;
  questions.PickValues({{2, "7.5"}});
  EXPECT_TRUE(ChannelPicker(workbench).Show());
  EXPECT_EQ(chooser.ChanConst[2], 7.5F);
  EXPECT_FALSE(workbench.trial.FileChanged) << "values alone mark nothing";

  chooser.ChooserValuesMode = chooser.ChooserSelectMode = true;
  questions.PickValues({{2, "8"}});
  EXPECT_TRUE(ChannelPicker(workbench).Show());
  EXPECT_EQ(SelectedChannels(chooser), (std::vector<int>{2})) << "an entry selects its channel";
  EXPECT_TRUE(workbench.trial.FileChanged);
}

TEST_F(Picker, SingleModeInsistsOnAChoice) {
  Load(20);
  chooser.ChooserSingleMode = true;
  questions.PickChannels({});
  questions.PickChannels({18});
  EXPECT_TRUE(ChannelPicker(workbench).Show());
  ASSERT_EQ(questions.boxes.size(), 1U);
  EXPECT_EQ(questions.boxes[0].title, "None Selected");
  EXPECT_EQ(chooser.ChooserChannel, 18);
  EXPECT_EQ(SelectedChannels(chooser), (std::vector<int>{18}));
  EXPECT_EQ(chooser.ChooserCount, 1);

  Load(1);
  chooser.ChooserSingleMode = true;
  questions.PickChannels({});
  EXPECT_TRUE(ChannelPicker(workbench).Show());
  EXPECT_EQ(chooser.ChooserChannel, 1) << "the only channel starts chosen";
}

TEST_F(Picker, CancelAndResetBringBackWhatWasThere) {
  Load(4);
  chooser.ChanSelected[2] = true;
  chooser.ChanConst[2] = 1.5F;
  chooser.ChooserNames[2] = "before";
  chooser.ChooserSelectMode = chooser.ChooserValuesMode = true;
  questions.inputAnswers = {"9", ""};
  questions.pickAnswers.emplace_back([](ChannelPicker& picker) {
    picker.ClickValue(4);
    picker.ClickValue(2);  // answered with nothing
    EXPECT_EQ(picker.ValueText(4), "9.00000");
    picker.Reset();
    EXPECT_EQ(picker.ValueText(4), "0.00000");
    EXPECT_FALSE(picker.IsSelected(4));
    picker.ZeroAll();
    picker.None();
    picker.SetName(2, "after");
    return "cancel";
  });
  EXPECT_FALSE(ChannelPicker(workbench).Show());
  EXPECT_TRUE(chooser.ChooserCancelled);
  EXPECT_EQ(chooser.ChooserCount, 0);
  EXPECT_EQ(SelectedChannels(chooser), (std::vector<int>{2}));
  EXPECT_EQ(chooser.ChanConst[2], 1.5F);
  EXPECT_EQ(chooser.ChooserNames[2], "before");
  EXPECT_FALSE(workbench.trial.FileChanged);
  EXPECT_EQ(questions.inputs[0].title, "Change Value");
  EXPECT_EQ(questions.inputs[1].defaultText, "1.50000");
}

TEST_F(Picker, AllCopiesTheLastValueAfterAskingForIt) {
  Load(10);
  chooser.ChooserSelectMode = chooser.ChooserValuesMode = true;
  ChannelPicker picker(workbench);
  picker.SetValue(3, "2.5");
  questions.inputAnswers = {"4", ""};
  picker.All();
  EXPECT_EQ(questions.inputs[0].defaultText, "2.5");
  EXPECT_EQ(chooser.ChanConst[1], 4.0F);
  EXPECT_EQ(chooser.ChanConst[10], 4.0F);
  EXPECT_EQ(SelectedChannels(chooser).size(), 10U);
  picker.SetValue(1, "6");
  picker.SecondEight();
  EXPECT_EQ(chooser.ChanConst[8], 4.0F);
  EXPECT_EQ(chooser.ChanConst[9], 6.0F);
  picker.All();  // answered with nothing
  EXPECT_EQ(chooser.ChanConst[2], 4.0F);
  EXPECT_THROW(picker.Select(11, true), std::out_of_range);
  EXPECT_THROW(picker.Press("Filter"), std::invalid_argument);
}

}  // namespace
}  // namespace velmora::test
