// Three axes of an accelerometer over one impact.
#include "impact/accelerometry/accelerometry.hpp"

#include <cmath>
#include <map>
#include <numbers>

#include "support/table_test.hpp"

namespace velmora::test {
namespace {

constexpr double kGravity = 9.80665;

Samples Scaled(const Samples& x, double factor) {
  Samples scaled;
  for (const float value : x) {
    scaled.push_back(static_cast<float>(value * factor));
  }
  return scaled;
}

// Half a sine of height 1 from sample `first` on, over so many samples.
Samples HalfSine(std::size_t samples, std::size_t first, int width) {
  Samples x(samples, 0.0F);
  for (int i = 0; i <= width; ++i) {
    x[first + static_cast<std::size_t>(i)] = static_cast<float>(std::sin(std::numbers::pi * i / width));
  }
  return x;
}

struct AccelerometryTest : AnalysisTest {
  AccelerometryTest() : AnalysisTest("impact.accelerometry") {}

  double Of(std::string_view measure, std::string_view head = "Value") {
    return Cell(Table("frmAccelerometry"), RowOf(Table("frmAccelerometry"), measure), head);
  }
  void Expect(const NamedNumbers& measures, double within = 0) {
    ExpectRows(Table("frmAccelerometry"), "Value", measures, within);
  }
  std::map<std::string, double> Values() {
    std::map<std::string, double> values;
    for (const auto& row : Table("frmAccelerometry").rows) {
      const auto& name = std::get<std::string>(row[0]);
      values[name] = Of(name);
    }
    return values;
  }
  void NameAxes(const char* units, int from = 1) {
    for (int c = from; c < from + 3; ++c) {
      trial.ChanUnits[c] = units;
    }
  }
};

TEST_F(AccelerometryTest, AHalfSineAlongOneDirection) {
  // 90 g over 20 ms along (2, 1, -2) / 3, at 20 kHz; a channel of something else in front.
  const Samples pulse = HalfSine(4000, 1000, 400);
  SetChannels(trial, {Samples(4000, 1.0F), Scaled(pulse, 60), Scaled(pulse, 30), Scaled(pulse, -60)}, 20000);
  NameAxes("g", 2);
  Compute({{"txtHIC2", "100"}});
  const double a = 90;
  const double duration = 0.02;
  const double degrees = 180 / std::numbers::pi;
  Expect({{"Peak X", 60}, {"Peak Z", -60}, {"Peak resultant", a}}, 1e-4);
  Expect({{"RMS resultant", a * std::sqrt(0.5 * 400 / 4000)}}, 1e-4);
  Expect({{"Azimuth", std::atan2(1, 2) * degrees}, {"Elevation", -std::atan2(2, std::sqrt(5)) * degrees}},
         1e-4);
  EXPECT_NEAR(Of("Peak resultant", "Time"), 0.06, 1e-6);
  const double index = std::pow(a, 2.5) * duration;
  Expect({{"GSI", 0.45766 * index}, {"HIC100", 0.41465 * index}}, 0.02);
  EXPECT_NEAR((Of("HIC100", "Time") + Of("HIC100", "To")) / 2, 0.06, 1e-6);
  EXPECT_LE(Of("HIC15", "To") - Of("HIC15", "Time"), 0.015 + 1e-6);
  EXPECT_LE(Of("HIC15"), Of("HIC100"));
  const double change = a * kGravity * 2 * duration / std::numbers::pi;
  Expect({{"Velocity change X", change * 2 / 3}, {"Velocity change Z", -change * 2 / 3}}, 1e-3);
  Expect({{"Velocity change resultant", change}}, 1e-3);
  EXPECT_EQ(trial.NChan, 5);
  EXPECT_EQ(Labels()[4], "Resultant");
  EXPECT_EQ(UnitsOfChannels()[4], "g");
  EXPECT_NEAR(trial.Data(1201, 5), a, 1e-4);

  // The same in m/s^2, which the units say; the channel added is in them.
  const auto before = Values();
  SetChannels(trial,
              {Scaled(pulse, 60 * kGravity), Scaled(pulse, 30 * kGravity), Scaled(pulse, -60 * kGravity)},
              20000);
  NameAxes("m/s\u00B2");
  Compute({{"txtHIC2", "100"}});
  for (const auto& [name, value] : before) {
    EXPECT_NEAR(Of(name), value, 1e-5 * std::abs(value) + 1e-6) << name;
  }
  EXPECT_EQ(UnitsOfChannels()[3], "m/s^2");
  EXPECT_NEAR(trial.Data(1201, 4), a * kGravity, 1e-3);
}

TEST_F(AccelerometryTest, ThreeMillisecondsInTwoMeanings) {
  // At 1000 Hz four samples without a break last 3 ms, and three samples are 3 ms in all.
  const Samples r = {0, 9, 8, 7, 2, 8, 6, 5, 6, 0};
  SetChannels(trial, {r, Samples(10, 0.0F), Samples(10, 0.0F)}, 1000);
  NameAxes("g");
  Compute({{"chkResultant", "no"}});
  EXPECT_EQ(Of("3 ms (contiguous)"), 5);
  EXPECT_FLOAT_EQ(static_cast<float>(Of("3 ms (contiguous)", "Time")), 0.005F);
  EXPECT_FLOAT_EQ(static_cast<float>(Of("3 ms (contiguous)", "To")), 0.008F);
  EXPECT_EQ(Of("3 ms (cumulative)"), 8);
  EXPECT_DOUBLE_EQ(Of("Mean above 1 g"), (8 + 7 + 6 + 1 + 7 + 5 + 4 + 5) / 10.0);
  EXPECT_EQ(trial.NChan, 3);
  EXPECT_FALSE(trial.FileChanged);
  // Too few samples for a window of 3 ms, and too far apart for a pair within 15 ms.
  SetChannels(trial, {{1, 2, 3}, {0, 0, 0}, {0, 0, 0}}, 1000);
  NameAxes("g");
  Compute({});
  EXPECT_TRUE(std::isnan(Of("3 ms (contiguous)")));
  EXPECT_EQ(Of("3 ms (cumulative)"), 1);
  trial.Rate = 50;
  Compute({});
  EXPECT_TRUE(std::isnan(Of("HIC15")));
  EXPECT_GT(Of("HIC36"), 0);

  EXPECT_EQ(SamplesOfThreeMilliseconds(1000), 3);
  EXPECT_EQ(SamplesOfThreeMilliseconds(1001), 4);
  EXPECT_EQ(SamplesOfThreeMilliseconds(1e-9), 1) << "a sample lasts longer";
  for (int rate = 1000; rate <= 100'000; rate += 1000) {  // products that are whole but for their rounding
    EXPECT_EQ(SamplesOfThreeMilliseconds(rate), 3 * (rate / 1000));
    EXPECT_EQ(IntervalsWithin(36, rate), 36 * (rate / 1000));
  }
}

TEST_F(AccelerometryTest, BiasIsOfTheRangeAndTiltKeepsGravity) {
  // At rest, tilted by 30 degrees of roll and 20 of pitch, then a blow along X behind the cursors' start.
  const double roll = std::numbers::pi / 6;
  const double pitch = std::numbers::pi / 9;
  Samples x(1000, static_cast<float>(-std::sin(pitch)));
  x[700] += 5;
  x[0] = 50;  // outside the range
  SetChannels(trial,
              {x, Samples(1000, static_cast<float>(std::cos(pitch) * std::sin(roll))),
               Samples(1000, static_cast<float>(std::cos(pitch) * std::cos(roll)))},
              1000);
  NameAxes("g");
  SetCursors(101, 1000);
  questions.boxAnswers = {Button::Yes};
  Compute({{"txtBias", "0.2"}, {"chkTilt", "yes"}});
  EXPECT_NEAR(Of("Peak resultant"), 5, 1e-6) << "gravity is gone";
  EXPECT_NEAR(Of("Peak Y"), 0, 1e-6);
  EXPECT_EQ(Labels(), (Texts{"", "", "", "Resultant", "Roll", "Pitch"}));
  EXPECT_NEAR(trial.Data(200, 5), 30, 1e-4);
  EXPECT_NEAR(trial.Data(200, 6), 20, 1e-4);
}

TEST_F(AccelerometryTest, TheClassIsTheFilterOfTheMenu) {
  auto noise = NoiseChannels(3, 4000, 5);
  SetChannels(trial, noise, 10000);
  NameAxes("g");
  Compute({{"comClass", "180"}});
  const auto filtered = Values();
  questions.FillForm({{"optFamily", "6"},
                      {"comClass", "180"},
                      {"channels 1", "yes"},
                      {"channels 2", "yes"},
                      {"channels 3", "yes"}},
                     "Filter");
  Run("filter.design");
  Compute({});
  for (const char* name : {"Peak X", "RMS resultant", "GSI", "HIC36", "Velocity change Y"}) {
    EXPECT_NEAR(filtered.at(name), Of(name), 1e-5 * std::abs(Of(name)) + 1e-7) << name;
  }
  EXPECT_EQ(LastBox(), "") << "10 kHz carry class 180";
  Compute({{"comClass", "1000"}});
  EXPECT_EQ(LastBox(), "");
  trial.Rate = 9999;
  Compute({{"comClass", "1000"}});
  EXPECT_EQ(LastBox(),
            "Sampling Rate Low|The sampling rate is below ten times the class; the standard asks for more.");
  trial.Rate = 4000;
  EXPECT_EQ(Refused({{"comClass", "1000"}}), "Invalid Filter|The sampling rate is too low for class 1000.");
}

TEST_F(AccelerometryTest, RefusesWhatItCannotMeasure) {
  const std::string three = "Too Few Channels Selected|You must choose at least 3 channels.";
  SetChannels(trial, NoiseChannels(4, 100), 1000);
  EXPECT_EQ(Refused({}), three);
  EXPECT_EQ(Refused({{"comX", "1"}, {"comY", "2"}, {"comZ", "2"}}), three);
  const Edits axes = {{"comX", "1"}, {"comY", "2"}, {"comZ", "3"}};
  trial.Data(50, 2) = kNan;
  EXPECT_EQ(Refused(axes),
            "Missing Data|Channel 01 has 1 samples that are no numbers between samples 1 and 100.");
  SetCursors(60, 100);
  questions.boxAnswers = {Button::Yes, Button::Yes};
  EXPECT_EQ(Refused({{"comX", "1"}, {"comY", "2"}, {"comZ", "3"}, {"comClass", "60"}}),
            "Missing Data|Channel 01 has 1 samples that are no numbers between samples 1 and 100.")
      << "the filter stands on all samples";
  Compute(axes);
  trial.ChanUnits[1] = "g";
  trial.ChanUnits[2] = "m/s^2";
  questions.boxAnswers = {Button::Yes};
  Compute(axes);
  EXPECT_EQ(LastBox(),
            "Units Differ|The channels are in \"g\", \"m/s^2\" and \"V\".  All are taken to be in g.");
  SetChannels(trial, {Samples(100, 0.3F), Samples(100, -0.9F), Samples(100, 0.2F)}, 100);
  NameAxes("m/s^2");
  Compute({});
  EXPECT_EQ(LastBox(),
            "Check the Units|The mean of the resultant is 0.97 m/s\u00B2.  Are the channels in g?");
  Compute({{"optUnits", "g"}});
  EXPECT_NEAR(Of("Mean resultant"), 0.9695, 1e-4);
  SetChannels(trial, NoiseChannels(63, 20), 1000);
  NameAxes("g");
  Refused({{"chkTilt", "yes"}});
  EXPECT_EQ(questions.boxes.back().title, "No Free Channels");
  EXPECT_EQ(trial.NChan, 63);
  SetChannels(trial, NoiseChannels(3, 2), 1000);
  EXPECT_EQ(RefusedAtOnce(), "Too Few Data|Too few data points.");
}

}  // namespace
}  // namespace velmora::test
