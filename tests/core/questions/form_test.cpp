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

}  // namespace
}  // namespace velmora::test
