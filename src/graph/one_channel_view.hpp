#pragma once

#include <string>

#include "core/open_view.hpp"
#include "core/workbench.hpp"
#include "graph/graph.hpp"

namespace velmora {

/// One channel in a graph of its own, to look at: the trial stays as it is, and there are no cursors.
/// It keeps a copy of the channel, so that it can be drawn while a command works on the samples. What is
/// done in it is no step of the history.
class OneChannelView : public OpenView {
 public:
  /// Throws std::out_of_range when the trial has no such channel, std::bad_alloc.
  OneChannelView(Workbench& workbench, int channel);

  [[nodiscard]] int Channel() const { return channel_; }
  [[nodiscard]] const Graph& Drawing() const { return graph_; }
  /// "Channel Force (N)"
  [[nodiscard]] std::string Title() const;

  /// Takes the channel anew. The stretch that is shown stays when as many samples are there at the same
  /// rate as before.
  bool TrialChanged() override;
  void Leave() override {}

  /// All samples, and the mouse does nothing but point.
  void ResetScaling();
  void SetTrack(TrackMode mode) { graph_.Track = mode; }
  void SetBackground(Colour colour) { graph_.SetBackground(colour); }
  /// As Graph::ShowRange.
  void ShowRange(double left, double right, double bottom, double top);

 private:
  [[nodiscard]] ActionListener* Listener() const override { return nullptr; }
  bool DoKey(const KeyPress& key) override;
  void DoMove(const CursorMove& move) override;
  void DoClick(const GraphClick& click) override;
  void Take();

  Workbench& workbench_;
  int channel_;
  Trial shown_;  // channel 1 is the one shown
  Graph graph_;
};

/// The box with the keys of this view.
void ShowOneChannelKeys(Workbench& workbench);

}  // namespace velmora
