// Examples whose results have known answers.
#include <cstdlib>
#include <map>
#include <sstream>

#include "support/program_fixture.hpp"

namespace velmora::test {
namespace {

class Examples : public Program {
 protected:
  void SetUp() override {
    std::string make = VELMORA2_MAKE_EXAMPLES;
    make.append(" '").append(Path("data")).append("' > /dev/null");
    ASSERT_EQ(std::system(make.c_str()), 0);
  }
  /// The one row of the table that an example collects.
  std::map<std::string, double> Collected(const std::string& example, const std::string& trial,
                                          const std::string& table) {
    std::string recipe = EXAMPLES;
    recipe.append("/").append(example);
    const Ended run = Run({recipe, Path("data").append("/").append(trial), "--out", Path("out")});
    EXPECT_EQ(run.status, 0) << run.err;
    std::istringstream lines(ReadFile(Path("out").append("/").append(table)));
    std::string heads;
    std::string cells;
    std::getline(lines, heads);
    std::getline(lines, cells);
    std::map<std::string, double> row;
    std::istringstream head(heads);
    std::istringstream cell(cells);
    for (std::string name, value; std::getline(head, name, ',') && std::getline(cell, value, ',');) {
      row[name] = std::strtod(value.c_str(), nullptr);
    }
    return row;
  }
};

TEST_F(Examples, TellHowHighAJumpWasAndHowMuchAPersonSways) {
  // The made jumper has 72 kg and flies for 2 v/g.
  auto jump = Collected("jump-height.yaml", "jump.vmb", "jumps.csv");
  const double v = jump.at("take-off velocity");
  EXPECT_NEAR(jump.at("mass"), 72, 0.01);
  EXPECT_NEAR(jump.at("height by impulse"), v * v / 2 / 9.80665, 1e-9);
  EXPECT_NEAR(jump.at("height by flight"), jump.at("height by impulse"), 0.003);
  EXPECT_TRUE(std::filesystem::exists(Path("out/jump-force.png")));
  // The made person's slow sines: standard deviations of 2.3 and 3.9 mm within a tenth or two.
  auto sway = Collected("standing-sway.yaml", "quiet-stance.vmb", "sway.csv");
  EXPECT_NEAR(sway.at("area"), 3.14159 * 0.23 * 0.39 * 5.99, 0.3);
  EXPECT_GT(sway.at("frequency"), 0.07);
  EXPECT_LT(sway.at("frequency"), 0.83);
  EXPECT_HAS(ReadFile(Path("out/quiet-stance-gravity.csv")), "COG x");
}

}  // namespace
}  // namespace velmora::test
