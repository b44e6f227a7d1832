#include "forceplate/combine_plates.hpp"

#include <gtest/gtest.h>

#include "support/trials.hpp"

namespace velmora::test {
namespace {

void SetRow(Trial& trial, const Samples& row) {
  std::vector<Samples> channels;
  for (const float x : row) {
    channels.push_back({x});
  }
  SetChannels(trial, channels);
}

void ExpectRow(const Trial& trial, const Samples& expected) {
  for (std::size_t k = 0; k < expected.size(); ++k) {
    EXPECT_NEAR(trial.Data(1, static_cast<int>(k + 1)), expected[k], 1e-4) << k + 1;
  }
}

// Plate 1 moves back by half the 60 cm, plate 2 forward by all of them, and only plate 1's Fy is turned:
// Fy = -4 + 6, Ay = (300 (2 - 30) + 100 (5 + 60)) / 400 = -4.75, Ax = (300 1 + 100 3) / 400 = 1.5,
// Tz = 0.5 + 0.25 + (-4) (1 - 1.5) - 3 (-28 + 4.75) + 6 (3 - 1.5) - 5 (65 + 4.75).
TEST(CombinePlatesTest, TheShiftsAndTheSignOfEachPlateAreItsOwn) {
  Trial trial;
  SetRow(trial, {3, 4, 300, 1, 2, 0.5F, 7, 8, 5, 6, 100, 3, 5, 0.25F, 9, 10});
  CombineTwoPlates(trial, 0, CombineKind::EightChannels, {.Y = 60});
  ExpectRow(trial, {8, -2, 400, 1.5F, -4.75F, -267.25F, 8.246211F, 0.02061553F, 5, 6, 100});
}

TEST(CombinePlatesTest, PlateTwoTurnsAndProgressionUsesWhatItHasWritten) {
  Trial trial;
  // A quarter turn takes (5, 6) to (6, -5), the point (3, 5) to (5, -3).
  SetRow(trial, {3, 4, 300, 1, 2, 0.5F, 5, 6, 100, 3, 5, 0.25F});
  CombineTwoPlates(trial, 0, CombineKind::SixChannels, {.X = 10, .angle = 90});
  // Fx 9, Fy -9, Ax (300 (1 - 5) + 100 (5 + 10)) / 400, Ay (300 2 + 100 (-3)) / 400.
  ExpectRow(trial, {9, 9, 400, 0.75F, 0.75F});
  // A progression of 90 degrees puts Fy into Fx, and then that into Fy.
  SetRow(trial, {3, 4, 300, 1, 2, 0.5F, 5, 6, 100, 3, 5, 0.25F});
  CombineTwoPlates(trial, 0, CombineKind::SixChannels, {.progression = 90});
  ExpectRow(trial, {2, -2, 400, 2.75F, 2.75F});
  // 30 degrees: Fx' = 0.8660254 8 + 0.5 2, Fy' = 0.8660254 2 + 0.5 Fx'.
  SetRow(trial, {3, 4, 300, 1, 2, 0.5F, 5, 6, 100, 3, 5, 0.25F});
  CombineTwoPlates(trial, 0, CombineKind::SixChannels, {.progression = 30});
  ExpectRow(trial, {7.928203F, -5.696152F});
}

TEST(CombinePlatesTest, NoVerticalForceHasNoPoint) {
  Trial trial;
  SetRow(trial, {3, 4, 0, 1, 2, 0.5F, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0});
  CombineTwoPlates(trial, 0, CombineKind::EightChannels, {.Y = 60});
  ExpectRow(trial, {3, 4, 0, 0, 0, 0, 5, 0});
  SetRow(trial, {1, 2, 3, 4, 5, 6, 7, 8, 9});
  EXPECT_THROW(CombineTwoPlates(trial, 0, CombineKind::EightChannels, {}), std::out_of_range);
}

}  // namespace
}  // namespace velmora::test
