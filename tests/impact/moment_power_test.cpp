// The power of a joint's moment.
#include <numbers>

#include "support/table_test.hpp"

namespace velmora::test {
namespace {

struct MomentPowerTest : AnalysisTest {
  MomentPowerTest() : AnalysisTest("integrate.moment-power") {}
};

TEST_F(MomentPowerTest, ByVelocityOrAngle) {
  // 2 N.m at 180 degrees a second, as a velocity and as the angle that rises so.
  SetChannels(trial, {Samples(6, 2.0F), Samples(6, 180.0F), {0, 90, 180, 270, 360, 450}}, 2);
  trial.ChanUnits[1] = "N.m";
  trial.ChanUnits[2] = "deg/s";
  trial.ChanUnits[3] = "\u00B0";
  const auto twoPi = static_cast<float>(2 * std::numbers::pi);
  Compute({});
  EXPECT_EQ(Channel(trial, 4), Samples(6, twoPi)) << "moment, velocity and degrees are known by their units";
  EXPECT_EQ(Labels()[3], "Power");
  EXPECT_EQ(UnitsOfChannels()[3], "W");
  EXPECT_DOUBLE_EQ(Cell(Table("frmWorkTotals"), 0, "Positive"), 2.5 * twoPi);
  EXPECT_EQ(Table("frmWork").title, "Positive is generation, negative is absorption.\nPhases");
  Compute({{"comMotion", "3"}, {"txtLabel", "Hip power"}});
  EXPECT_EQ(Channel(trial, 5), Samples(6, twoPi));
  EXPECT_EQ(Labels()[4], "Hip power");
  // What somebody chose stays when the channel is chosen after it.
  Compute({{"optMotion", "0"}, {"optAngle", "Radians"}, {"comMotion", "3"}});
  EXPECT_EQ(Channel(trial, 6), (Samples{0, 180, 360, 540, 720, 900}));

  // 359 degrees are followed by 1.
  SetChannels(trial, {Samples(6, 2.0F), {355, 357, 359, 1, 3, 5}}, 2);
  trial.ChanUnits[1] = "N.m";
  trial.ChanUnits[2] = "deg";
  Compute({});
  EXPECT_EQ(LastBox(),
            "Angle Jumps|The angle goes by more than half a turn between neighbouring samples, 1 time.  Its "
            "derivative is no velocity there.");

  EXPECT_EQ(Refused({{"comMotion", "1"}}), "Too Few Channels Selected|You must choose at least 2 channels.");
  SetChannels(trial, {Samples(6, 1e30F), Samples(6, 1e30F)}, 2);
  Refused({{"comMoment", "1"}, {"comMotion", "2"}});
  EXPECT_EQ(questions.boxes.back().text, "The power at sample 1 is not a number that data can hold.");
  EXPECT_EQ(trial.NChan, 2);
  SetChannels(trial, {{1, 2, 3, 4}}, 2);
  EXPECT_EQ(RefusedAtOnce(), "Too Few Data|Too few data points to integrate.");
}

}  // namespace
}  // namespace velmora::test
