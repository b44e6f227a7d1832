// Where the centre of gravity goes, as the command finds it, and what a jump came to.
#include "core/text/numbers.hpp"
#include "formats/native_binary/native_binary_layout.hpp"
#include "support/signals.hpp"
#include "support/table_test.hpp"
#include "support/texts.hpp"

namespace velmora::test {
namespace {

struct Gravity : AnalysisTest {
  Gravity() : AnalysisTest("plates.gravity") {}

  void Find(const Edits& edits) {
    workbench.results.ResultTables.clear();
    Compute(edits);
  }
  bool Has(std::string_view quantity) {
    return RowOf(Table("frmGravity"), quantity) < Table("frmGravity").rows.size();
  }
  /// A quantity of the table; NaN where it is empty.
  double Of(std::string_view quantity) {
    return Cell(Table("frmGravity"), RowOf(Table("frmGravity"), quantity), "Value");
  }
  void Expect(const NamedNumbers& quantities, double within = 0) {
    ExpectRows(Table("frmGravity"), "Value", quantities, within);
  }
  /// A second of 700 N, 0.2 s of twice as much, 0.4 s of flight, and the landing; at 100 Hz.
  static Samples PushAndFlight() {
    Samples force(100, 700.0F);
    force.insert(force.end(), 20, 1400.0F);
    force.insert(force.end(), 40, 0.0F);
    force.insert(force.end(), 50, 1400.0F);
    return force;
  }
  void SetVertical(const Samples& force, double rate = 100) {
    SetChannels(trial, {force}, rate);
    trial.ChanLabel[1] = "Fz";
    trial.ChanUnits[1] = "N";
    questions.boxes.clear();
    workbench.report = {};
  }
};

TEST_F(Gravity, OfAJumpByItsImpulseAndByItsFlight) {
  Samples spiked = PushAndFlight();
  spiked[135] = spiked[136] = 30;
  Samples down = spiked;
  for (float& value : down) {
    value = -value;
  }
  for (const Samples& force : {PushAndFlight(), spiked, down}) {
    SetVertical(force);
    Find({{"txtGravity", "10"}});
    Expect({{"Mass", 70}, {"Weight", 700}, {"Depth", 0}, {"Peak force", 1400}, {"Peak force / weight", 2}});
    // Nothing sinks: the lowest point is the first sample behind the start.
    Expect({{"Start of movement", 1.0}, {"Lowest point", 1.01}, {"Take-off", 1.2}, {"Landing", 1.6}}, 1e-6);
    Expect({{"Take-off velocity", 1.9}, {"Flight time", 0.4}, {"Height (flight time)", 0.2}}, 1e-12);
    Expect({{"Height (impulse)", 1.9 * 1.9 / 20}}, 1e-12);
    Expect({{"Peak power", 1400 * 1.9}, {"Net impulse", 133}}, 1e-9);
    EXPECT_TRUE(workbench.report.warnings.empty());
  }
  EXPECT_HAS(Table("frmGravity").title, "were turned");
}

TEST_F(Gravity, OfACountermovement) {
  // From rest down at 3 m/s^2 for 0.2 s, up at 6 m/s^2 for 0.3 s: deepest 0.09 m after 0.3 s, 1.2 m/s at
  // take-off. 80 kg, at 1000 Hz; the plate reads 12 N too much.
  const Samples force = Sampled(2500, [](int i) {
    const double t = i / 1000.0;
    const double a = t < 1 ? 0 : t < 1.2 ? -3 : t < 1.5 ? 6 : t < 1.74 ? -9.80665 : 4;
    return 80 * (9.80665 + a) + 12;
  });
  SetVertical(force, 1000);
  Find({{"chkUnloaded", "yes"}, {"chkAcceleration", "yes"}});
  Expect({{"Mass", 80}}, 1e-4);
  Expect({{"Depth", 0.09}, {"Lowest point", 1.3}, {"Height (impulse)", 1.2 * 1.2 / 2 / 9.80665}}, 0.002);
  Expect({{"Take-off velocity", 1.2}}, 0.01);
  Expect({{"Height (flight time)", 9.80665 * 0.24 * 0.24 / 8}}, 1e-6);
  EXPECT_EQ(Labels(), (Texts{"Fz", "COG az", "COG vz", "COG dz"}));
  EXPECT_EQ(UnitsOfChannels(), (Texts{"N", "m/s^2", "m/s", "m"}));
  EXPECT_NEAR(trial.Data(1100, 2), -3, 1e-3);
  EXPECT_NEAR(trial.Data(1500, 3), 1.2, 0.01);
  EXPECT_TRUE(workbench.trial.FileChanged);

  // Pressed flat against the plate by a wrong mass nobody rises: no height, and it is told.
  SetVertical(force, 1000);
  Find({{"optMass", "1"}, {"txtMass", "150"}});
  EXPECT_LT(Of("Take-off velocity"), 0);
  EXPECT_TRUE(std::isnan(Of("Height (impulse)")));
  ASSERT_EQ(workbench.report.warnings.size(), 1U);
  EXPECT_EQ(workbench.report.warnings[0],
            "The mass entered weighs 1471.0 N, the force in the quiet interval is 796.5 N.");

  // Who does not stand still has no weight to take.
  SetVertical(force, 1000);
  Find({{"txtQuiet", "1.5"}});
  ASSERT_EQ(workbench.report.warnings.size(), 2U);
  EXPECT_HAS(workbench.report.warnings[0], "nobody stands still there");
  EXPECT_HAS(workbench.report.warnings[1], "begins within the quiet interval");
}

TEST_F(Gravity, WithoutAFlightTellsWhereTheBodyWent) {
  // Up and down by 4 cm, left and right by 1 cm, at 0.5 Hz; 60 kg.
  const double w = Pi;
  const auto swing = [w](double mean, double size) {
    return Sampled(401, [=](int i) { return mean + size * std::cos(w * i / 100); });
  };
  Samples fx = swing(0, -60 * w * w * 0.01);
  const Samples fz = swing(60 * 9.81, -60 * w * w * 0.04);
  const Samples ax = swing(2, 1.8);  // cm
  const auto set = [&] {
    SetChannels(trial, {fx, fz, ax, ax}, 100);
    const char* const labels[] = {"Fx comb.", "FZ comb.", "COPx[cm]", "Fx#1"};
    const char* const units[] = {"N", "N", "cm", ""};
    for (std::size_t c = 1; c <= 4; ++c) {
      trial.ChanLabel[c] = labels[c - 1];
      trial.ChanUnits[c] = units[c - 1];
    }
    workbench.report = {};
  };
  const Edits body = {{"optMass", "1"}, {"txtMass", "60"}, {"txtGravity", "9.81"}};
  const auto with = [&body](Edits more) {
    more.insert(more.begin(), body.begin(), body.end());
    return more;
  };
  set();
  Find(with({{"optDrift", "2"}}));
  EXPECT_FALSE(Has("Take-off"));
  EXPECT_NEAR(Of("Range of z"), 0.08, 1e-4);
  EXPECT_NEAR(Of("Range of x"), 0.02, 1e-4);
  EXPECT_EQ(Labels(),
            (Texts{"Fx comb.", "FZ comb.", "COPx[cm]", "Fx#1", "COG vx", "COG dx", "COG vz", "COG dz"}));
  EXPECT_NEAR(trial.Data(1, 6), 0.01, 1e-4);
  EXPECT_TRUE(workbench.report.warnings.empty());

  // The pressure goes 1.8 times as far: by the zeros of the force the body stands where both meet.
  set();
  Find(with({{"optHorizontal", "Zero points"}, {"chkVelocity", "no"}}));
  EXPECT_EQ(Labels().at(4), "COG x");
  EXPECT_NEAR(Of("Range of x"), 0.02, 1e-5);
  EXPECT_NEAR(trial.Data(1, 5), 0.03, 1e-5);
  EXPECT_NEAR(trial.Data(101, 5), 0.01, 1e-5);
  for (float& value : fx) {
    value = -value;
  }
  set();
  Find(with({{"optHorizontal", "1"}}));
  ASSERT_EQ(workbench.report.warnings.size(), 1U);
  EXPECT_HAS(workbench.report.warnings.back(), "runs with the centre of pressure");

  set();
  native::Put(workbench.records.FILMINFO, native::kHeight, 170.0F);
  Find(with({{"optHorizontal", "2"}}));
  const double h = 0.521 * 1.7;
  const double own = 9.81 * h / (0.0533 * 1.7 * 1.7 + h * h);
  EXPECT_NEAR(Of("Range of x"), 2 * 0.018 * own / (own + w * w), 1e-5);
}

TEST_F(Gravity, RefusesWhatItCannotTell) {
  SetVertical(PushAndFlight());
  EXPECT_EQ(Refused({{"comFz", "0"}}), "Too Few Channels Selected|You must choose at least 1 channel.");
  EXPECT_EQ(Refused({{"optHorizontal", "1"}}),
            "Too Few Channels Selected|You must choose at least 3 channels.");
  EXPECT_EQ(Refused({{"optHorizontal", "2"}, {"txtHeight", "1.7"}}),
            "Too Few Channels Selected|You must choose at least 2 channels.");
  EXPECT_EQ(Refused({{"txtQuiet", "9"}}), "Invalid Entry|Quiet interval (s) must be from 0 to 2.1.");
  SetVertical(Samples(100, 3.0F));
  EXPECT_EQ(Refused({}),
            "No Weight|The force is 3.0 N in the quiet interval.  Somebody must stand still there.");
  const Samples push = PushAndFlight();
  SetChannels(trial, {push, push, push}, 100);
  trial.ChanUnits[3] = "V";
  const Edits zeros = {{"comFz", "1"}, {"comFx", "2"}, {"comAx", "3"}, {"optHorizontal", "1"}};
  EXPECT_EQ(Refused(zeros), "Unknown Units|The units of channel 02 must be m, cm or mm.");
  trial.ChanUnits[3] = " CM";
  EXPECT_EQ(Refused(zeros),
            "No Centre of Pressure|The force is below 20 N at sample 121: there is no centre of "
            "pressure without a load.  Use another range or method.");
  SetChannels(trial, {Samples(50, 700.0F), Samples(50, 1.0F), Samples(50, 1.0F)}, 100);
  trial.ChanUnits[3] = "mm";
  EXPECT_EQ(Refused(zeros), "No Zero Points|The horizontal force never crosses zero; use another method.");
  trial.Data(9, 2) = kNan;
  EXPECT_EQ(Refused(zeros),
            "Missing Data|Channel 01 has 1 samples that are no numbers between samples 1 and 50.");
  std::vector<Samples> full(63, Samples(50, 700.0F));
  SetChannels(trial, full, 100);
  EXPECT_EQ(
      Refused({{"comFz", "1"}}),
      "No Free Channels|There are no more free channels.  This needs 2 and there are 1.  Erase channels "
      "with the Channel menu.");
  EXPECT_EQ(trial.NChan, 63);
  SetVertical(Samples(4, 700.0F));
  EXPECT_EQ(RefusedAtOnce(), "Too Few Data|Too few data points.");
}

}  // namespace
}  // namespace velmora::test
