#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/open_view.hpp"
#include "core/workbench.hpp"
#include "graph/graph.hpp"

namespace velmora {

/// Vertical scales that all graphs have, in the order of the menus.
enum class Scale : std::int32_t {
  Auto,
  TenVolts,
  Percent,
  PlusMinusPercent,
  IncludeZero,
  PlusMinusMaximum,
  NoChange
};

/// What every open graph has, whatever its abscissa: graphs with their looks, scales, the mouse over them, a
/// window and all of it again. Graphs count from 1.
class GraphView : public OpenView {
 public:
  explicit GraphView(Workbench& workbench);

  [[nodiscard]] int NGraphs() const { return static_cast<int>(graphs_.size()); }
  [[nodiscard]] std::span<Graph> Graphs() { return graphs_; }
  [[nodiscard]] std::span<const Graph> Graphs() const { return graphs_; }
  /// Throw std::out_of_range when there is no such graph.
  [[nodiscard]] Graph& GraphAt(int graph);
  [[nodiscard]] const Graph& GraphAt(int graph) const;
  /// The one whose abscissa and cursors all others have, too.
  [[nodiscard]] Graph& Lead() { return graphs_[lead_]; }
  [[nodiscard]] const Graph& Lead() const { return graphs_[lead_]; }

  [[nodiscard]] bool WindowMode() const { return windowMode_; }
  [[nodiscard]] const char* WindowCaption() const { return windowMode_ ? "&Full" : "&Window"; }
  /// The window tells what became of it.
  void SetMaximised(bool maximised) { maximised_ = maximised; }
  [[nodiscard]] bool Maximised() const { return maximised_; }
  /// The title with what the view adds to it.
  [[nodiscard]] virtual std::string TitleText() const = 0;
  /// The name of the file that keeps the looks of a graph.
  [[nodiscard]] virtual std::string StyleName(int graph) const = 0;

  void Leave() override;

  /// Plots the samples anew; looks stay.
  virtual void Replot() = 0;
  virtual void Reset() = 0;
  /// What "&Reset" of the mouse's zoom does.
  virtual void ResetZoom() = 0;
  virtual void SetScale(Scale scale) = 0;
  /// The number of the scale that is in force, in the order of the view's menu.
  [[nodiscard]] virtual std::int32_t ShownScale() const = 0;
  virtual void SetDefaultLooks() = 0;
  virtual void SetBackground(Colour colour);
  void SetTrack(TrackMode mode);
  /// The mouse does again what it did before a mode was chosen.
  virtual void LeaveMode() = 0;
  /// Styles were read into the graphs: what must be the same in all is that of the first.
  void TakeStyles();

  /// What lies between the cursors, or everything again.
  virtual void ToggleWindow() = 0;
  /// As Graph::ShowRange of one graph.
  virtual void ShowRange(int graph, double left, double right, double bottom, double top);

  /// Asks the dialogue of the view again. A view may be replaced by another.
  virtual void ChangeChannels() = 0;
  /// The box with the keys of the view.
  virtual void ShowKeyList() = 0;

 protected:
  [[nodiscard]] ActionListener* Listener() const override { return workbench_.listener; }
  /// A key that all graphs have, its name in upper case. Returns whether it is one.
  bool PressGraphKey(const std::string& name);
  /// Gives an ordinate the limits of a scale; `autoScale` is how the view finds those of the samples.
  static void ScaleOrdinate(Axis& ordinate, Scale scale, const std::function<void()>& autoScale);
  /// The default looks of one graph; ranges, captions and titles stay.
  static void ClearLooks(Graph& graph);

  Workbench& workbench_;
  std::vector<Graph> graphs_;
  std::size_t lead_ = 0;
  bool windowMode_ = false;
  bool maximised_ = false;

 private:
  bool PressWindowKey(const std::string& name);
  bool PressLookKey(const std::string& name);
};

/// The view that is open, which is to be of this kind. Throws std::runtime_error, which names the kind, when
/// none of it is.
template <typename View>
View& OpenAs(Workbench& workbench, const char* kind) {
  auto* view = dynamic_cast<View*>(workbench.view.get());
  if (view == nullptr) {
    throw std::runtime_error(std::string("no ").append(kind) + " is open");
  }
  return *view;
}

/// The view that is open. Throws std::runtime_error when none is.
GraphView& OpenGraphView(Workbench& workbench);

}  // namespace velmora
