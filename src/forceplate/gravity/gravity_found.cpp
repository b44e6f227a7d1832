#include "forceplate/gravity/gravity_found.hpp"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "core/results/trial_lines.hpp"
#include "core/text/numbers.hpp"
#include "dsp/math/mean_deviation.hpp"
#include "results/signal_picture.hpp"

namespace velmora {
namespace {

constexpr int kJumpForceColour = 1;
constexpr int kJumpWeightColour = 0;

std::string TitleOf(const GravityFound& found) {
  constexpr std::array kDrift = {"starts at rest", "starts and ends at rest", "steady on the whole"};
  constexpr std::array kHorizontal = {"as the vertical", "by zero points (Zatsiorsky and King 1998)",
                                      "as a pendulum (Breniere 1996)"};
  std::string title = "Centre of gravity, double integral that " +
                      std::string(kDrift.at(static_cast<std::size_t>(found.drift)));
  if (found.drift == DriftRule::Steady) {
    title = "Centre of gravity, double integral, " + std::string(kDrift[2]);
  }
  if (found.x || found.y) {
    title += "; horizontally " + std::string(kHorizontal.at(static_cast<std::size_t>(found.horizontal)));
  }
  return title + (found.turned ? "\nThe forces point down and were turned" : "");
}

/// Rows as they come.
class QuantityTable {
 public:
  QuantityTable(std::string title, const std::string& pattern)
      : table_{.name = "frmGravity",
               .title = std::move(title),
               .columns = {"Quantity", "Value", "Units"},
               .rows = {},
               .formats = {nullptr, ThroughPattern(pattern), nullptr}} {}

  void Add(const char* quantity, const std::optional<double>& value, const char* units) {
    table_.rows.push_back({std::string(quantity), CellOf(value), std::string(units)});
  }
  [[nodiscard]] ResultTable Take() { return std::move(table_); }

 private:
  ResultTable table_;
};

std::optional<double> RangeOf(const AxisMotion& motion) {
  const auto [low, high] = std::minmax_element(motion.position.begin(), motion.position.end());
  return *high - *low;
}

void AddJump(QuantityTable& table, const Trial& trial, const GravityFound& found) {
  const Jump& jump = *found.jump;
  const auto time = [&](std::int64_t at) { return static_cast<double>(trial.Data(found.range.lo + at, 0)); };
  table.Add("Start of movement", time(jump.start), "s");
  table.Add("Lowest point", jump.lowest ? std::optional(time(*jump.lowest)) : std::nullopt, "s");
  table.Add("Take-off", time(jump.takeOff), "s");
  table.Add("Landing", time(jump.landing), "s");
  table.Add("Flight time", jump.flightTime, "s");
  table.Add("Take-off velocity", jump.takeOffVelocity, "m/s");
  table.Add("Height (impulse)", jump.impulseHeight, "m");
  table.Add("Height (flight time)", jump.flightHeight, "m");
  table.Add("Depth", jump.depth, "m");
  table.Add("Peak force", jump.peakForce, "N");
  table.Add("Peak power", jump.peakPower, "W");
  table.Add("Net impulse", jump.netImpulse, "N.s");
  table.Add("Peak force / weight", jump.peakForce / found.weight, "");
}

ResultTable TableOf(const Workbench& workbench, const GravityFound& found) {
  const Trial& trial = workbench.trial;
  QuantityTable table(TitleOf(found), workbench.patterns.ValuePattern);
  table.Add("Mass", found.mass, "kg");
  table.Add("Weight", found.weight, "N");
  table.Add("Std.Dev. of the quiet force", found.quietDeviation, "N");
  table.Add("Duration", static_cast<double>(found.vertical.size() - 1) / trial.Rate, "s");
  if (found.jump) {
    AddJump(table, trial, found);
    return table.Take();
  }
  if (found.x) {
    table.Add("Range of x", RangeOf(found.x->motion), "m");
  }
  if (found.y) {
    table.Add("Range of y", RangeOf(found.y->motion), "m");
  }
  table.Add("Range of z", RangeOf(found.z), "m");
  return table.Take();
}

void DrawJump(FormGraph& graph, const Trial& trial, const GravityFound& found) {
  const std::vector<double> times = SamplesOf(trial, 0, found.range);
  graph.y.caption = "Vertical force (N)";
  graph.plots = {{.name = "force", .colour = kJumpForceColour, .x = times, .y = found.vertical, .width = 2.0},
                 LevelLine("weight", kJumpWeightColour, times, found.weight)};
  const Jump& jump = *found.jump;
  graph.title += graph.title.empty() ? "" : ", ";
  if (jump.impulseHeight) {
    graph.title += FormatNumber(*jump.impulseHeight, "0.000") + " m by impulse, ";
  }
  graph.title += FormatNumber(jump.flightHeight, "0.000") + " m by flight";
  const auto mark = [&](std::int64_t at, const char* text, int colour) {
    graph.marks.push_back({.x = times[static_cast<std::size_t>(at)], .text = text, .colour = colour});
  };
  mark(jump.start, "start", 2);
  if (jump.lowest) {
    mark(*jump.lowest, "lowest point", 0);
  }
  mark(jump.takeOff, "take-off", 3);
  mark(jump.landing, "landing", 6);
}

void AddWay(FormGraph& graph, const std::vector<double>& times, std::vector<double> way, double middle,
            const char* name, int colour) {
  for (double& value : way) {
    value -= middle;
  }
  graph.plots.push_back({.name = name, .colour = colour, .x = times, .y = std::move(way), .width = 2.0});
}

// Directions lie far apart on a plate: each is drawn about its own mean.
void DrawWays(FormGraph& graph, const Trial& trial, const GravityFound& found) {
  const std::vector<double> times = SamplesOf(trial, 0, found.range);
  graph.y.caption = "About the mean (m)";
  const auto add = [&](const HorizontalMotion& of, const char* gravity, const char* pressure, int colour) {
    const double middle = MeanOf(of.pressure.empty() ? of.motion.position : of.pressure);
    if (!of.pressure.empty()) {
      AddWay(graph, times, of.pressure, middle, pressure, colour + 6);
    }
    AddWay(graph, times, of.motion.position, middle, gravity, colour);
  };
  if (found.x) {
    add(*found.x, "COG x", "COP x", 1);
  }
  if (found.y) {
    add(*found.y, "COG y", "COP y", 3);
  }
  if (found.horizontal == HorizontalMethod::AsVertical || (!found.x && !found.y)) {
    AddWay(graph, times, found.z.position, MeanOf(found.z.position), "COG z", 2);
  }
}

}  // namespace

Results GravityResults(const Workbench& workbench, const GravityFound& found, ResultHead head) {
  FormGraph graph{.title = TitleOnOneLine(workbench.trial),
                  .x = {.caption = "Time (s)"},
                  .background = FormGraph::Background::White};
  if (found.jump) {
    DrawJump(graph, workbench.trial, found);
  } else {
    DrawWays(graph, workbench.trial, found);
  }
  FitAxes(graph);
  if (found.jump) {  // room for the names of the moments
    AddRoomAbove(graph);
  }
  return {.name = "frmGravity",
          .title = found.jump ? "Centre of gravity, jump" : "Centre of gravity",
          .file = {.what = "Centre of Gravity", .extension = ".cog"},
          .head = std::move(head),
          .tables = {TableOf(workbench, found)},
          .graph = std::move(graph)};
}

}  // namespace velmora
