// Posturography: closed forms, and what others have published of a recording.
#include <random>

#include "core/text/numbers.hpp"
#include "forceplate/sway/sway_measures.hpp"
#include "support/number_rows.hpp"
#include "support/recordings.hpp"
#include "support/signals.hpp"
#include "support/table_test.hpp"
#include "support/texts.hpp"

namespace velmora::test {
namespace {

using Values = std::vector<double>;

struct SwayTest : AnalysisTest {
  SwayTest() : AnalysisTest("plates.sway") {}

  double Of(std::string_view measure, std::string_view head) {
    return Cell(Table("frmSway"), RowOf(Table("frmSway"), measure), head);
  }
  void Expect(std::string_view head, const NamedNumbers& measures, double within = 0) {
    ExpectRows(Table("frmSway"), head, measures, within);
  }
  void SetPlane(const Samples& x, const Samples& y, double rate) {
    SetChannels(trial, {x, y}, rate);
    trial.ChanLabel[1] = "Ax#1";
    trial.ChanLabel[2] = "Ay#1";
    trial.ChanUnits[1] = "cm";
    trial.ChanUnits[2] = "cm";
  }
};

TEST_F(SwayTest, OfACircleIsWhatItsRadiusAndPeriodSay) {
  // Radius 2 cm about (10, -5), a turn in 2 s, five of them; 100 Hz.
  const double w = Pi;
  const Samples x = Sampled(1000, [&](int i) { return 10 + 2 * std::cos(w * i / 100); });
  const Samples y = Sampled(1000, [&](int i) { return -5 + 2 * std::sin(w * i / 100); });
  SetPlane(x, y, 100);
  Compute({});
  Expect("ML", {{"Mean position", 10}, {"Range", 4}}, 1e-6);
  Expect("AP", {{"Mean position", -5}, {"RMS distance", std::sqrt(2.0)}}, 1e-6);
  Expect("Both", {{"Mean distance", 2}}, 1e-6);
  Expect("ML", {{"Mean distance", 4 / Pi}}, 1e-3);
  const double chord = 2 * 2 * std::sin(w / 200);
  EXPECT_NEAR(Of("Path length", "Both"), 999 * chord, 1e-4);
  EXPECT_NEAR(Of("Mean velocity", "Both"), 999 * chord / 10, 1e-5);
  EXPECT_NEAR(Of("Mean frequency", "Both"), 0.5, 1e-3) << "turns a second";
  EXPECT_NEAR(Of("Sway area per s", "Both"), 999 * 2 * std::sin(w / 100) / 10, 1e-4);
  // Variances of 2, F(0.95; 2, 998) of the tables.
  const double k = 2 * 1001.0 * 999 / (1000.0 * 998) * 3.0047;
  EXPECT_NEAR(Of("95% ellipse area", "Both"), Pi * 2 * 1000 / 999 * k, 0.001);
  Expect("ML", {{"Spectral mean frequency", 0.5}}, 0.01);
  Expect("Both", {{"Spectral mean frequency", 0.5}, {"Range", NAN}}, 0.01);
  EXPECT_TRUE(trial.Notices.empty());
  trial.Data(999, 1) = trial.Data(999, 2) = trial.Data(1000, 2) = 0;  // a step off the plate, and a crossing
  Compute({});
  EXPECT_EQ(trial.Notices.size(), 1U);
  EXPECT_HAS(trial.Notices.back(), "0, 0 in 1 sample of the sway");
}

TEST_F(SwayTest, SlowWaysAndNoiseAreTakenOff) {
  std::mt19937 random(3);
  std::normal_distribution<double> noise(0, 0.05);
  Samples x;
  Samples y;
  for (int i = 0; i < 2000; ++i) {
    const double t = i / 100.0;
    x.push_back(static_cast<float>(std::cos(2 * Pi * 0.5 * t) + 0.5 * t + noise(random)));
    y.push_back(static_cast<float>(0.3 * t));
  }
  SetPlane(x, y, 100);
  Compute({});
  EXPECT_GT(Of("Range", "ML"), 10);
  EXPECT_NEAR(Of("Angle", "Both"), std::atan2(0.3, 0.5) * 180 / Pi, 3);
  const double rough = Of("Path length", "ML");
  Compute({{"chkDetrend", "yes"}, {"txtCutoff", "5"}});
  EXPECT_NEAR(Of("Range", "ML"), 2, 0.1);
  EXPECT_NEAR(Of("Range", "AP"), 0, 0.005) << "of a filter's start on a slope";
  EXPECT_LT(Of("Path length", "ML"), rough / 2);
  EXPECT_NEAR(Of("Path length", "ML"), 2 * 2 * 10, 4)
      << "ten periods of amplitude 1, and what is left of the noise";
  EXPECT_NEAR(Of("Mean position", "ML"), 0.5 * 9.995, 0.02) << "the line goes, the mean stays";
}

TEST_F(SwayTest, NobodyMoves) {
  SetPlane(Samples(100, 3.0F), Samples(100, 4.0F), 100);
  Compute({});
  Expect("Both", {{"Path length", 0},
                  {"Mean frequency", NAN},
                  {"Spectral mean frequency", NAN},
                  {"95% ellipse area", 0}});
  const Sway five = SwayOf(Values{1, 2, 3, 2, 1}, Values{0, 1, 0, -1, 0}, 10);
  EXPECT_TRUE(five.ellipse && std::isfinite(five.both.meanVelocity));
}

TEST_F(SwayTest, OfAPersonAgreesWithWhatWasPublished) {
  // Santos and Duarte 2016, file BDS00001, columns COPx and COPy in cm; the three numbers of its table.
  const auto path = Recording("reference/BDS00001.txt");
  if (!path) {
    GTEST_SKIP() << "the recording is not here";
  }
  SetFrom(
      trial, NumbersOf(*path),
      [](const auto& row) {
        return Samples{static_cast<float>(row[7]), static_cast<float>(row[8])};
      },
      100);
  trial.ChanLabel[1] = "COPx[cm]";
  trial.ChanLabel[2] = "COPy[cm]";
  Compute({});
  Expect("Both",
         {{"95% ellipse area", 0.9446915167229832},
          {"Mean velocity", 0.620189911656219},
          {"Spectral mean frequency", 0.2565758824783575}},
         1e-6);
}

TEST_F(SwayTest, RefusesWhatIsNoPlane) {
  SetPlane(Samples(50, 1.0F), Samples(50, 2.0F), 100);
  EXPECT_EQ(Refused({{"comML", "0"}}), "Too Few Channels Selected|You must choose at least 2 channels.");
  EXPECT_EQ(Refused({{"comML", "2"}}), "Channel Chosen Twice|The two directions must be different channels.");
  EXPECT_EQ(Refused({{"txtCutoff", "50"}}), "Invalid Entry|Low-pass must be from 0 to 50.");
  trial.ChanUnits[2] = "mm";
  EXPECT_EQ(Refused({}), "Different Units|Channels 00 and 01 must have the same units.");
  trial.ChanUnits[2] = "cm";
  trial.Data(3, 2) = kNan;
  EXPECT_EQ(Refused({}),
            "Missing Data|Channel 01 has 1 samples that are no numbers between samples 1 and 50.");
  SetPlane(Samples(4, 1.0F), Samples(4, 2.0F), 100);
  EXPECT_EQ(RefusedAtOnce(), "Too Few Data|Too few data points.");
}

}  // namespace
}  // namespace velmora::test
