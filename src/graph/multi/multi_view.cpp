#include "graph/multi/multi_view.hpp"

#include <algorithm>
#include <stdexcept>

#include "core/questions/progress.hpp"
#include "core/results/trial_lines.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "graph/multi/deviations.hpp"
#include "graph/multi/graph_layout.hpp"
#include "graph/view_window.hpp"

namespace velmora {
namespace {

/// One channel names its ordinate; of several the units do, if they have them in common.
std::string OrdinateCaption(const Trial& trial, const std::vector<int>& channels) {
  if (channels.empty()) {
    return {};
  }
  const std::string units = Trim(trial.ChanUnits[channels.front()].Text());
  if (channels.size() == 1) {
    return LabelWithUnits(trial.ChanLabel[channels.front()].Text(), units);
  }
  const bool common = std::all_of(channels.begin(), channels.end(), [&](int channel) {
    return Trim(trial.ChanUnits[channel].Text()) == units;
  });
  return common ? units : "";
}

}  // namespace

MultiView::MultiView(Workbench& workbench) : TimeView(workbench) {
  graphOf_ = workbench.graph.GraphOfChannel;
  Load();
}

std::vector<int> MultiView::ChannelsOf(int graph) const {
  std::vector<int> channels;
  for (int c = 1; c <= workbench_.trial.NChan; ++c) {
    if (graphOf_[c] == graph) {
      channels.push_back(c);
    }
  }
  return channels;
}

int MultiView::ChannelOf(int graph) const {
  const std::vector<int> channels = ChannelsOf(graph);
  return channels.empty() ? 0 : channels.front();
}

int MultiView::GraphOf(int channel) const {
  return channel >= 1 && channel <= workbench_.trial.NChan ? graphOf_[channel] : 0;
}

std::vector<int> MultiView::ShownGraphs() const {
  std::vector<int> shown;
  for (int graph = 1; graph <= NGraphs(); ++graph) {
    if (ChannelOf(graph) > 0) {
      shown.push_back(graph);
    }
  }
  return shown;
}

void MultiView::Select(int graph) {
  if (graph < 1 || ChannelOf(graph) == 0) {
    throw std::out_of_range("there is no graph " + std::to_string(graph));
  }
  selected_ = graph;
}

std::string MultiView::TitleText() const {
  return "Multiaxis Graph of " + TitleOnOneLine(workbench_.trial);
}

std::string MultiView::StyleName(int graph) const {
  return "Graph2-" + FormatNumber(graph, "00") + ".cwx";
}

// Channels keep their graphs through changes of the trial; one that came anew has none.
void MultiView::TakeGraphs() {
  const Trial& trial = workbench_.trial;
  std::fill(graphOf_.begin() + trial.NChan + 1, graphOf_.end(), std::int16_t{0});
  graphs_.resize(static_cast<std::size_t>(std::max(LargestGraph(graphOf_), 1)));
  workbench_.graph.GraphOfChannel = graphOf_;
  workbench_.graph.NGraphs = static_cast<std::int16_t>(NGraphs());
  const std::vector<int> shown = ShownGraphs();
  lead_ = shown.empty() ? 0 : static_cast<std::size_t>(shown.front() - 1);
  if (shown.size() == 1) {
    selected_ = shown.front();
  } else if (ChannelOf(selected_) == 0) {
    selected_ = 0;
  }
}

void MultiView::PlotGraphs() {
  constexpr std::int32_t kQuickSamples = 50000;
  std::optional<ProgressPanel> panel;
  if (workbench_.trial.NData > kQuickSamples) {
    panel.emplace(workbench_);
    panel->SetStatus("Plotting data");
  }
  Graph& first = graphs_.front();
  first.PlotXY(workbench_.trial);
  for (int graph = 1; graph <= NGraphs(); ++graph) {
    Graph& plotted = GraphAt(graph);
    plotted.PlotAs(first);
    ChannelFlags channels{};
    for (const int channel : ChannelsOf(graph)) {
      channels[channel] = true;
    }
    ShowChannels(plotted, channels);
    plotted.Deviations.clear();
  }
  if (workbench_.graph.ShowDeviations) {
    const std::int32_t choice = workbench_.graph.MultiScaleChoice;
    ShowDeviations(graphs_, choice >= 1 && choice <= 4 ? choice : 1);
  }
}

void MultiView::CaptionGraphs() {
  const Trial& trial = workbench_.trial;
  for (int graph = 1; graph <= NGraphs(); ++graph) {
    std::string names;
    for (const int channel : ChannelsOf(graph)) {
      names += (names.empty() ? "" : ", ") + Trim(trial.ChanLabel[channel].Text());
    }
    GraphAt(graph).Title = names;
    GraphAt(graph).Ordinate.Caption = OrdinateCaption(trial, ChannelsOf(graph));
  }
  CaptionAbscissa();
}

void MultiView::Load() {
  TakeGraphs();
  PlotGraphs();
  CaptionGraphs();
  SetDefaultLooks();
  windowMode_ = false;
  NoCursors();
  SetTrack(TrackMode::None);
  ShowWindow();
  ThresholdsChanged();
  ShowEvents();
  scale_ = MultiScale::Auto;
  ScaleAnew();
  constexpr std::int32_t kNoChange = 5;
  const auto& before = workbench_.graph.GraphLimits;
  for (std::size_t k = 0; workbench_.graph.MultiScaleChoice == kNoChange && k < graphs_.size(); ++k) {
    if (k < before.size()) {
      graphs_[k].Ordinate.SetMinMax(before[k].first, before[k].second);
    }
  }
}

void MultiView::Replot() {
  TakeGraphs();
  PlotGraphs();
  CaptionGraphs();
  ThresholdsChanged();
  ShowEvents();
  windowMode_ = false;
  SettleViewWindow(workbench_, LongPan::Window);
  ShowWindow();
  ScaleAnew();
}

// Another file has numbers of its own, or none: then it is shown as the one before.
bool MultiView::TrialChanged() {
  const Trial& trial = workbench_.trial;
  const auto end = trial.ChanGraphSlot.begin() + trial.NChan + 1;
  if (std::any_of(trial.ChanGraphSlot.begin() + 1, end, [](std::int16_t slot) { return slot > 0; })) {
    for (int c = 1; c <= trial.NChan; ++c) {
      graphOf_[c] = std::clamp<std::int16_t>(trial.ChanGraphSlot[c], 0, kMaxChannels);
    }
  }
  std::fill(graphOf_.begin() + trial.NChan + 1, graphOf_.end(), std::int16_t{0});
  if (trial.NData == 0 || LargestGraph(graphOf_) == 0) {
    return false;
  }
  FollowAbscissa();
  if (trial.FileChanged && !workbench_.report.deeds.empty()) {
    RemoveCursors(CursorKind::Value);  // the samples may have others now
  }
  const std::vector<GraphCursor> cursors = Lead().Cursors;
  const bool more = LargestGraph(graphOf_) != NGraphs();
  Replot();
  if (more) {
    std::vector<double> places;
    for (const GraphCursor& cursor : cursors) {
      if (cursor.Kind == CursorKind::Cursor) {
        places.push_back(cursor.XPosition);
      }
    }
    SetCursors(places);
    SetBackground(Lead().Background);
  }
  MoveCursorsToEnds(false, false);
  return true;
}

void MultiView::Leave() {
  GraphView::Leave();
  workbench_.graph.GraphLimits.clear();
  for (const Graph& graph : graphs_) {
    workbench_.graph.GraphLimits.emplace_back(graph.Ordinate.Minimum, graph.Ordinate.Maximum);
  }
}

void MultiView::SetDefaultLooks() {
  for (Graph& graph : graphs_) {
    ClearLooks(graph);
  }
  CaptionAbscissa();
  SetBackground(kBlack);
}

void MultiView::Reset() {
  workbench_.graph.ViewDuration = workbench_.trial.Duration;
  workbench_.graph.MultiScaleChoice = std::min(workbench_.graph.MultiScaleChoice, 4);
  Load();
}

void MultiView::ResetZoom() {
  if (selected_ > 0) {
    AutoScale(GraphAt(selected_));
  }
  zoomed_ = false;
  windowMode_ = false;
  ShowWholeAbscissa();
}

std::vector<Lane> LanesOf(const MultiView& view) {
  std::vector<Lane> lanes;
  for (const int graph : view.ShownGraphs()) {
    lanes.push_back({graph, &view.GraphAt(graph)});
  }
  return lanes;
}

const MultiView* FindMultiView(const Workbench& workbench) {
  return dynamic_cast<const MultiView*>(workbench.view.get());
}

MultiView& OpenMultiView(Workbench& workbench) {
  return OpenAs<MultiView>(workbench, "multi-axis graph");
}

}  // namespace velmora
