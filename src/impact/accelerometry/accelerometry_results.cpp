// What the dialogue of three axes found, as a table and drawn.
#include <algorithm>

#include "core/files/paths.hpp"
#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "impact/accelerometry/accelerometry_form.hpp"
#include "results/signal_picture.hpp"

namespace velmora {
namespace {

constexpr std::array<const char*, 3> kAxisNames = {"X", "Y", "Z"};
constexpr std::array<int, 3> kAxisColours = {6, 2, 5};
constexpr int kResultantColour = 3;
constexpr std::array<int, 2> kIntervalColours = {12, 10};

}  // namespace

double AccelerometryForm::TimeAt(std::int64_t sampleOfRange) const {
  return velmora::TimeAt(workbench_.trial, range_, static_cast<double>(sampleOfRange));
}

ResultTable AccelerometryForm::Table() const {
  using Cell = ResultTable::Cell;
  const ResultTable::Format time = ThroughPattern(workbench_.patterns.TimePattern);
  ResultTable table{
      .name = "frmAccelerometry",
      .title = "Acceleration of the three axes and their resultant",
      .columns = {"Quantity", "Value", "Units", "Time", "To"},
      .formats = {nullptr, ThroughPattern(workbench_.patterns.ValuePattern), nullptr, time, time}};
  const auto add = [&table](std::string name, Cell value, const char* units, Cell from = std::monostate(),
                            Cell to = std::monostate()) {
    table.rows.push_back({std::move(name), std::move(value), units, std::move(from), std::move(to)});
  };
  for (std::size_t k = 0; k < 3; ++k) {
    add(std::string("Peak ") + kAxisNames[k], found_.peaks[k].value, "g", TimeAt(found_.peaks[k].first));
  }
  const double peak = TimeAt(found_.peakResultant.first);
  add("Peak resultant", found_.peakResultant.value, "g", peak);
  add("Azimuth", found_.azimuth, "deg", peak);
  add("Elevation", found_.elevation, "deg", peak);
  add("RMS resultant", found_.rms, "g");
  add("Mean resultant", found_.mean, "g");
  if (const auto& held = found_.contiguous) {
    add("3 ms (contiguous)", held->value, "g", TimeAt(held->first), TimeAt(held->last));
  } else {
    add("3 ms (contiguous)", std::monostate(), "g");
  }
  add("3 ms (cumulative)", CellOf(found_.cumulative), "g");
  add("GSI", found_.gsi, "");
  for (std::size_t k = 0; k < 2; ++k) {
    if (const auto& hic = found_.hic[k]; hic && hic->value > 0) {
      add(HicName(k), hic->value, "", TimeAt(hic->first), TimeAt(hic->last));
    } else {
      add(HicName(k), hic ? Cell(0.0) : Cell(std::monostate()), "");
    }
  }
  for (std::size_t k = 0; k < 3; ++k) {
    add(std::string("Velocity change ") + kAxisNames[k], found_.velocityChange[k], "m/s");
  }
  add("Velocity change resultant", found_.resultantChange, "m/s");
  add("Mean above 1 g", found_.aboveGravity, "g");
  return table;
}

// The axes, their resultant over them, and the interval of each HIC.
FormGraph AccelerometryForm::Graph() const {
  FormGraph graph{.title = "Acceleration, " + FileNamePart(workbench_.trial.FileName),
                  .x = {.caption = "Time (s)"},
                  .y = {.caption = "Acceleration (g)"},
                  .background = FormGraph::Background::White};
  const std::vector<double> time = SamplesOf(workbench_.trial, 0, range_);
  const auto plot = [&](std::string name, int colour, const std::vector<double>& all, double width) {
    graph.plots.push_back({.name = std::move(name),
                           .colour = colour,
                           .x = time,
                           .y = {all.begin() + range_.lo - 1, all.begin() + range_.hi},
                           .width = width});
  };
  for (std::size_t k = 0; k < 3; ++k) {
    plot(kAxisNames[k], kAxisColours[k], accelerations_.axes[k], 1.0);
  }
  plot("resultant", kResultantColour, accelerations_.resultant, 2.0);
  for (std::size_t k = 0; k < 2; ++k) {
    if (const auto& hic = found_.hic[k]; hic && hic->value > 0) {
      graph.bands.push_back(
          {.from = TimeAt(hic->first), .to = TimeAt(hic->last), .colour = kIntervalColours[k]});
      graph.marks.push_back({.x = TimeAt(hic->first),
                             .text = HicName(k) + " " + FormatNumber(hic->value, "0.0"),
                             .colour = kIntervalColours[k]});
    }
  }
  FitAxes(graph);
  AddRoomAbove(graph, 0.25);  // the texts stand above the peak
  graph.points.push_back({TimeAt(found_.peakResultant.first), found_.peakResultant.value,
                          "peak " + FormatNumber(found_.peakResultant.value, "0.0 ") + "g"});
  return graph;
}

void AccelerometryForm::ShowFound() {
  ShowResults(workbench_,
              {.name = "frmAccelerometry",
               .title = "3-D accelerometry, " + filter_.Words() + "; HIC over all pairs of samples",
               .file = {.what = "Accelerometry", .extension = ".tab"},
               .head = {.range = range_, .parameters = ParametersOf(workbench_.trial, *this)},
               .tables = {Table()},
               .graph = Graph()});
}

}  // namespace velmora
