#include "forceplate/pressure_path_form.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

#include "core/questions/form.hpp"
#include "core/results/trial_lines.hpp"
#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "forceplate/plate_geometry.hpp"
#include "forceplate/plate_types.hpp"
#include "results/result_presses.hpp"
#include "results/signal_picture.hpp"

namespace velmora {
namespace {

/// The reduced channels of a plate, from its base channel.
enum ReducedChannel { kFx = 1, kFy, kFz, kAx, kAy };

/// The path is cut into stretches of time, of a colour each, early to late.
constexpr std::array kStretchColours = {2, 4, 8, 1, 6, 3};
constexpr double kGap = std::numeric_limits<double>::quiet_NaN();

/// A sample of a plate that is loaded, on the floor.
struct PathPoint {
  std::int64_t sample;
  PlatePoint at;
};

class PressurePathForm : public Form {
 public:
  explicit PressurePathForm(Workbench& workbench)
      : Form("frmPressurePath", "Centre of Pressure"),
        workbench_(workbench),
        plates_(std::min<int>(workbench.trial.NPlates, workbench.trial.PlatesCombined ? 1 : 2)) {
    while (BaseOf(plates_ - 1) + kAy > workbench.trial.NChan) {
      --plates_;  // more plates were entered than were reduced; the first is there
    }
    fields_ = {{.name = "BetweenCursors",
                .caption = "Between the &cursors",
                .target = &betweenCursors_,
                .edited = [this] { Draw(); }},
               {.name = "AllPlates", .caption = "&Whole plates", .target = &wholePlates_, .edited = [this] {
                  Draw();
                }}};
    buttons_ = {{"E&xit", FormButton::Role::Accept, [] { return true; }}};
    for (FormButton& more : PictureButtons(workbench_, *this)) {
      buttons_.push_back(std::move(more));
    }
    graph_.emplace();
    Draw();
  }

 private:
  void Draw() {
    FormGraph& graph = *graph_;
    graph = {.title = TitleOnOneLine(workbench_.trial),
             .background = FormGraph::Background::White,
             .equalScales = true,
             .resets = graph.resets + 1};
    graph.x.caption = "Ax (cm)";
    graph.y.caption = "Ay (cm)";
    std::vector<PathPoint> path;
    for (int plate = 0; plate < plates_; ++plate) {
      AddPath(plate, path);
    }
    AddStretches(path);
    for (int plate = 0; plate < plates_; ++plate) {
      AddOutline(plate);
      AddForces(plate);
    }
    FitAxes(graph);
  }

  [[nodiscard]] SampleRange Range() const {
    const Trial& trial = workbench_.trial;
    const bool between = betweenCursors_ && trial.CursorLo >= 1 && trial.CursorHi <= trial.NData;
    return between ? SampleRange{trial.CursorLo, trial.CursorHi} : SampleRange{1, trial.NData};
  }

  [[nodiscard]] int BaseOf(int plate) const {
    return static_cast<int>(BaseChannelOf(workbench_.trial, workbench_.plates, plate));
  }

  [[nodiscard]] bool IsLoaded(std::int64_t i, int plate) const {
    const Trial& trial = workbench_.trial;
    const int base = BaseOf(plate);
    return trial.Data(i, base + kFz) != 0 && std::isfinite(trial.Data(i, base + kAx)) &&
           std::isfinite(trial.Data(i, base + kAy));
  }

  [[nodiscard]] PlatePoint At(std::int64_t i, int plate) const {
    const Trial& trial = workbench_.trial;
    const int base = BaseOf(plate);
    // A plate that holds both is where the combination has put it.
    return OnTheFloor(workbench_.plates, plate, {trial.Data(i, base + kAx), trial.Data(i, base + kAy)});
  }

  void AddPath(int plate, std::vector<PathPoint>& path) const {
    const auto [lo, hi] = Range();
    for (std::int64_t i = lo; i <= hi; ++i) {
      if (IsLoaded(i, plate)) {
        path.push_back({i, At(i, plate)});
      }
    }
    path.push_back({hi, {kGap, kGap}});
  }

  // Points that no picture can tell from the one before are left out: a million lie on a few thousand.
  void AddStretches(const std::vector<PathPoint>& path) {
    const auto [lo, hi] = Range();
    constexpr auto count = static_cast<std::int64_t>(kStretchColours.size());
    const double cell = Extent(path) / 4000;
    std::vector<FormGraph::Plot>& plots = graph_->plots;
    for (std::int64_t k = 0; k < count; ++k) {
      plots.push_back({.name = TimesOf(lo + (hi - lo) * k / count, lo + (hi - lo) * (k + 1) / count),
                       .colour = kStretchColours.at(static_cast<std::size_t>(k)),
                       .width = 2.0});
    }
    std::int64_t stretchBefore = 0;
    PlatePoint drawn{kGap, kGap};
    PathPoint last{-1, {kGap, kGap}};
    for (const PathPoint& point : path) {
      const std::int64_t stretch = hi > lo ? std::min((point.sample - lo) * count / (hi - lo), count - 1) : 0;
      FormGraph::Plot& plot = plots[static_cast<std::size_t>(stretch)];
      const bool follows = point.sample == last.sample + 1;
      if (!follows) {
        Append(plot, {kGap, kGap});
      } else if (stretch != stretchBefore) {
        Append(plot, {kGap, kGap});  // the plate before may have been here at this time, too
        Append(plot, last.at);       // the colours meet
      }
      if (!follows || !(std::abs(point.at.x - drawn.x) < cell && std::abs(point.at.y - drawn.y) < cell)) {
        Append(plot, point.at);
        drawn = point.at;
      }
      stretchBefore = stretch;
      last = point;
    }
  }

  [[nodiscard]] std::string TimesOf(std::int64_t from, std::int64_t to) const {
    const Trial& trial = workbench_.trial;
    const std::string& pattern = workbench_.patterns.TimePattern;
    return FormatNumber(trial.Data(from, 0), pattern) + " to " + FormatNumber(trial.Data(to, 0), pattern) +
           " " + AbscissaUnits(workbench_);
  }

  static void Append(FormGraph::Plot& plot, PlatePoint at) {
    plot.x.push_back(at.x);
    plot.y.push_back(at.y);
  }

  static double Extent(const std::vector<PathPoint>& path) {
    double least = std::numeric_limits<double>::infinity();
    double most = -least;
    for (const PathPoint& point : path) {
      for (const double x : {point.at.x, point.at.y}) {
        least = x < least ? x : least;
        most = x > most ? x : most;
      }
    }
    return most > least ? most - least : 0.0;
  }

  void AddOutline(int plate) {
    const auto corners = wholePlates_ ? OutlineOf(workbench_.plates, plate) : std::nullopt;
    if (!corners) {
      return;
    }
    FormGraph::Plot plot{.name = "Plate " + std::to_string(plate + 1), .colour = 0};
    for (std::size_t k = 0; k <= corners->size(); ++k) {
      Append(plot, (*corners)[k % corners->size()]);
    }
    graph_->plots.push_back(std::move(plot));
  }

  // The force at each cursor as an arrow from above: a tenth of its newtons, in centimetres.
  void AddForces(int plate) {
    constexpr double centimetresPerNewton = 0.1;
    const Trial& trial = workbench_.trial;
    const int base = BaseOf(plate);
    if (trial.CursorLo < 2 && trial.CursorHi >= trial.NData) {
      return;  // no cursor was set
    }
    for (const std::int32_t i : {trial.CursorLo, trial.CursorHi}) {
      if (i < 1 || i > trial.NData || !IsLoaded(i, plate)) {
        continue;
      }
      const PlatePoint foot = At(i, plate);
      const PlatePoint tip =
          OnTheFloor(workbench_.plates, plate,
                     {trial.Data(i, base + kAx) + trial.Data(i, base + kFx) * centimetresPerNewton,
                      trial.Data(i, base + kAy) + trial.Data(i, base + kFy) * centimetresPerNewton});
      AddArrow(foot, tip);
      graph_->points.push_back({foot.x, foot.y,
                                FormatNumber(trial.Data(i, 0), workbench_.patterns.TimePattern) + " s: Fz " +
                                    FormatNumber(trial.Data(i, base + kFz), "0") + " N",
                                0});
    }
  }

  void AddArrow(PlatePoint foot, PlatePoint tip) {
    const double length = std::hypot(tip.x - foot.x, tip.y - foot.y);
    if (!(length > 0)) {
      return;
    }
    const double along = (tip.x - foot.x) / length;
    const double across = (tip.y - foot.y) / length;
    const double head = std::min(length / 3, 1.0);
    FormGraph::Plot arrow{.name = "Force, 0.1 cm/N", .colour = 3, .width = 2.0};
    Append(arrow, foot);
    Append(arrow, tip);
    Append(arrow, {tip.x - head * (along + across / 2), tip.y - head * (across - along / 2)});
    Append(arrow, tip);
    Append(arrow, {tip.x - head * (along - across / 2), tip.y - head * (across + along / 2)});
    graph_->plots.push_back(std::move(arrow));
  }

  Workbench& workbench_;
  int plates_;
  bool betweenCursors_ = true;
  bool wholePlates_ = true;
};

}  // namespace

void ShowPressurePath(Workbench& workbench) {
  const Trial& trial = workbench.trial;
  const bool hasPlates = trial.ForcesReduced && trial.NPlates > 0 &&
                         BaseChannelOf(trial, workbench.plates, 0) + kAy <= trial.NChan;
  if (!hasPlates) {
    ShowRefusal(workbench, {.title = "Center of Pressure",
                            .text = "Forces must be reduced before their centre of pressure can be shown.",
                            .icon = Icon::Exclamation});
    return;
  }
  PressurePathForm(workbench).Show(workbench);
}

}  // namespace velmora
