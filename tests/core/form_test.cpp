#include "core/form.hpp"

#include "core/workbench.hpp"
#include "support/scripted_questions.hpp"

namespace velmora {
namespace {

using test::ScriptedQuestions;

class Sample : public Form {
 public:
  bool rectify = false;
  std::int32_t padding = 10;
  std::int32_t design = 0;
  double rate = 100.0;
  std::string title = "old";
  ChannelNumbers cutoffs{};
  ChannelFlags zeroLag{};
  int edits = 0;

  Sample() : Form("frmSample", "Sample") {
    fields_ = {
        {.name = "chkRectify", .caption = "&Rectify", .target = &rectify},
        {.name = "cwnPadding",
         .caption = "&Padding",
         .target = &padding,
         .lowest = 0,
         .highest = 50,
         .edited = [this] { ++edits; }},
        {.name = "optDesign",
         .caption = "Design",
         .target = &design,
         .choices = {"&Butterworth", "Critically &damped"}},
        {.name = "Rate", .caption = "Rate", .target = &rate, .units = "Hz"},
        {.name = "TrialTitle", .caption = "Title", .target = &title},
        {.name = "FilterCutoffs", .caption = "Cut-offs", .target = &cutoffs, .units = "Hz", .lowest = 0},
        {.name = "ZeroLag", .caption = "Zero lag", .target = &zeroLag}};
    buttons_ = {{.caption = "&Filter", .role = FormButton::Role::Accept, .press = [] { return true; }},
                {.caption = "&All", .press = [this] {
                   zeroLag.fill(true);
                   return false;
                 }}};
  }
  void Set(const char* name, const char* text) { Edit(*FindField(name), text); }
  void Set(const char* name, int channel, const char* text) { Edit(*FindField(name), channel, text); }
};

TEST(FormFields, TypedTextReachesTheMembers) {
  Sample form;
  for (const char* yes : {"true", "-1", "1", "Yes"}) {
    form.rectify = false;
    form.Set("chkrectify", yes);
    EXPECT_TRUE(form.rectify) << yes;
  }
  form.Set("chkRectify", "0");
  EXPECT_FALSE(form.rectify);
  form.Set("cwnPadding", "2.5");
  EXPECT_EQ(form.padding, 2) << "a half goes to the even neighbour";
  EXPECT_EQ(form.edits, 1);
  form.Set("optDesign", "critically damped");
  EXPECT_EQ(form.design, 1);
  form.Set("optDesign", "0");
  EXPECT_EQ(form.design, 0);
  form.Set("Rate", "abc");
  EXPECT_EQ(form.rate, 0.0);
  form.Set("TrialTitle", "new");
  EXPECT_EQ(form.title, "new");
  form.Set("FilterCutoffs", 64, "6.5");
  EXPECT_EQ(form.cutoffs[64], 6.5);
  form.Set("ZeroLag", 2, "true");
  EXPECT_TRUE(form.zeroLag[2]);
}

TEST(FormFields, WhatDoesNotFitIsRefusedAndNamed) {
  Sample form;
  EXPECT_THROW(form.Set("chkRectify", "maybe"), std::invalid_argument);
  EXPECT_THROW(form.Set("cwnPadding", "51"), std::invalid_argument);
  EXPECT_THROW(form.Set("optDesign", "2"), std::invalid_argument);
  EXPECT_THROW(form.Set("FilterCutoffs", "6"), std::invalid_argument);
  EXPECT_THROW(form.Set("FilterCutoffs", 65, "6"), std::invalid_argument);
  EXPECT_THROW(form.Set("FilterCutoffs", 1, "-6"), std::invalid_argument);
  EXPECT_THROW(form.Set("Rate", 1, "6"), std::invalid_argument);
  EXPECT_EQ(form.padding, 10);
  EXPECT_EQ(form.edits, 0);
  try {
    form.Set("optDesign", "Bessel");
    FAIL();
  } catch (const std::invalid_argument& error) {
    EXPECT_NE(std::string(error.what()).find("optDesign"), std::string::npos);
  }
}

TEST(FormButtons, TheFormStaysUntilAButtonClosesIt) {
  ScriptedQuestions questions;
  Workbench workbench{questions};
  Sample form;
  questions.formAnswers = {[](Form&) { return "all"; }, [](Form&) { return "OK"; }};
  form.Show(workbench);
  EXPECT_TRUE(form.zeroLag[1]);
  EXPECT_EQ(questions.formNames.size(), 2U);
  questions.formAnswers = {[](Form&) { return "Print"; }};
  EXPECT_THROW(form.Show(workbench), std::invalid_argument);
}

}  // namespace
}  // namespace velmora
