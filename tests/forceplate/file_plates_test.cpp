#include <cmath>

#include "formats/bytes/byte_builder.hpp"
#include "support/command_test.hpp"
#include "support/number_rows.hpp"
#include "support/recordings.hpp"

namespace velmora::test {
namespace {

struct FilePlatesTest : FileTest {
  void SetUp() override {
    if (!Recording("c3d")) {
      GTEST_SKIP() << "needs VELMORA_RECORDINGS";
    }
  }
  // The definition as the file gives it, and every sample that is loaded at all.
  void Reduce() {
    AnswerForm({});
    questions.inputAnswers = {"0.1"};
    Run("plates.reduce");
    ASSERT_TRUE(trial.ForcesReduced) << LastBox();
  }
};

// The distributor of the sample files prints what a plate's matrix makes of 22 rows of counts, forces in N,
// moments in N.mm, at half the gain that the file has, and by a matrix of more digits: half a unit of
// the third decimal makes 0.13 N of 2048 counts. The rows take the
// place of the file's first samples.
TEST_F(FilePlatesTest, ACalibrationMatrixGivesThePrintedLoads) {
  const auto rows = NumbersOf(*Recording("reference/TYPE-4_table_DERIVED.csv"));
  ASSERT_EQ(rows.size(), 22U);
  ByteBuilder file;
  file.AddBytes(ReadFile(*Recording("c3d/TYPE-4.C3D")));
  for (std::size_t i = 0; i < rows.size(); ++i) {
    for (std::size_t c = 0; c < 6; ++c) {
      const std::size_t frame = 8 * 512 + i / 20 * (13 * 8 + 120 * 2);
      file.Put(frame + 13 * 8 + (i % 20 * 6 + c) * 2, static_cast<std::int16_t>(rows[i][c + 1]));
    }
  }
  Load("a.c3d", file.Bytes());
  ASSERT_EQ(trial.NPlates, 1);
  Reduce();
  int loaded = 0;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const double* printed = rows[i].data() + 7;
    const double Fz = printed[2];
    if (std::abs(Fz) < 1) {
      continue;
    }
    ++loaded;
    const auto row = static_cast<std::int32_t>(i) + 1;
    for (int c = 0; c < 3; ++c) {
      EXPECT_NEAR(2 * trial.Data(row, c + 1), printed[c], 0.13 + 1e-3 * std::abs(printed[c])) << row;
    }
    if (std::abs(Fz) > 100) {
      // From the origin to the surface: the file's vector turned, (1.6, -0.7, -37.5) mm.
      const double x = -(printed[4] + 37.5 * printed[0] + 1.6 * Fz) / Fz;
      const double y = (printed[3] - 37.5 * printed[1] + 0.7 * Fz) / Fz;
      EXPECT_NEAR(trial.Data(row, 4), x / 10, 0.02 + 2e-3 * std::abs(x) / 10) << row;
      EXPECT_NEAR(trial.Data(row, 5), y / 10, 0.02 + 2e-3 * std::abs(y) / 10) << row;
    }
  }
  EXPECT_GE(loaded, 10);
}

// Forces and points of application of both plates of a walk in the room's axes, as another program published
// them (OpenSim). Corners of the file tell how the plates lie: X and Y of plate 1 are -Y and -X of the room,
// of plate 2 -X, Y.
TEST_F(FilePlatesTest, AWalkOverTwoPlatesGivesThePublishedPoints) {
  const auto rows = NumbersOf(*Recording("reference/std_cop_walking2_grfs.sto"));
  ASSERT_EQ(rows.size(), 101U);
  LoadPath(*Recording("c3d/walking2.c3d"));
  ASSERT_EQ(trial.NPlates, 2);
  Reduce();
  struct Axes {
    double centre[2];
    double x[2];  // of the plate in the room
    double y[2];
  };
  constexpr Axes axes[] = {{{918.59997559, 611.0949707}, {0, -1}, {-1, 0}},
                           {{304.79998779, 609.59997559}, {-1, 0}, {0, 1}}};
  int compared = 0;
  for (std::size_t k = 0; k < rows.size(); ++k) {
    const auto i = static_cast<std::int32_t>(100 * k) + 1;
    if (i > trial.NData) {
      break;
    }
    for (int plate = 0; plate < 2; ++plate) {
      const double* published = rows[k].data() + 1 + 9 * plate;
      const float* d = trial.matrix.Frame(i) + 1 + 6 * plate;
      const Axes& a = axes[plate];
      for (int axis = 0; axis < 2; ++axis) {
        EXPECT_NEAR(d[0] * a.x[axis] + d[1] * a.y[axis], published[axis], 1e-3)
            << i << " plate " << plate + 1;
        const double onPlate = 10 * (d[3] * a.x[axis] + d[4] * a.y[axis]);  // mm
        // The moment and the point are rounded to 32 bits each.
        EXPECT_NEAR(a.centre[axis] + onPlate, published[3 + axis], 1e-5 + std::abs(onPlate) * 0x1p-23)
            << i << " plate " << plate + 1;
      }
      EXPECT_NEAR(-d[2], published[2], 1e-3);
      ++compared;
    }
  }
  EXPECT_GE(compared, 198);
}

}  // namespace
}  // namespace velmora::test
