#include "core/questions/form.hpp"

#include "support/command_test.hpp"
#include "support/sample_form.hpp"

namespace velmora::test {
namespace {

struct FormFields : CommandTest {
  SampleForm form{workbench};
};

TEST_F(FormFields, TypedTextReachesTheMembers) {
  for (const char* yes : {"true", "-1", "1", "Yes"}) {
    form.rectify = false;
    Type(form, {{"chkrectify", yes}});
    EXPECT_TRUE(form.rectify) << yes;
  }
  Type(form, {{"chkRectify", "0"}, {"cwnPadding", "2.5"}, {"optPad", "mirror"}, {"Cutoffs 64", "6.5"}});
  EXPECT_FALSE(form.rectify);
  EXPECT_EQ(form.padding, 2) << "a half goes to the even neighbour";
  EXPECT_EQ(form.edits, 1);
  EXPECT_EQ(form.pad, 1);
  EXPECT_EQ(form.cutoffs[64], 6.5);
  Type(form, {{"optPad", "0"}, {"Width", "abc"}, {"Name", "new"}, {"channels 2", "false"}});
  EXPECT_EQ(form.pad, 0);
  EXPECT_EQ(form.width, 0.0);
  EXPECT_EQ(form.name, "new");
  EXPECT_FALSE(form.channels[2]);
}

TEST_F(FormFields, WhatDoesNotFitIsRefusedAndNamed) {
  for (const auto& [field, text] : Edits{{"chkRectify", "maybe"},
                                         {"cwnPadding", "101"},
                                         {"optPad", "2"},
                                         {"optPad", "Bessel"},
                                         {"Cutoffs", "6"},
                                         {"Cutoffs 65", "6"},
                                         {"Cutoffs 1", "-6"},
                                         {"Width 1", "6"}}) {
    try {
      Type(form, {{field, text}});
      ADD_FAILURE() << field << " takes " << text;
    } catch (const std::invalid_argument& error) {
      EXPECT_NE(std::string(error.what()).find(field.substr(0, field.find(' '))), std::string::npos);
    }
  }
  EXPECT_EQ(form.padding, 0);
  EXPECT_EQ(form.edits, 0);
}

TEST_F(FormFields, TheFormStaysUntilAButtonClosesIt) {
  questions.inputAnswers = {"twice"};
  AnswerForm({}, "apply");
  AnswerForm({}, "OK");
  form.Show(workbench);
  EXPECT_EQ(form.typed, "twice");
  EXPECT_EQ(questions.formNames.size(), 2U);
  AnswerForm({}, "Print");
  EXPECT_THROW(form.Show(workbench), std::invalid_argument);
}

}  // namespace
}  // namespace velmora::test
