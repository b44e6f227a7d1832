#include "graph/multi/multi_onsets.hpp"

#include <algorithm>

#include "dsp/channel_list.hpp"
#include "events/onset_scan.hpp"
#include "events/thresholds.hpp"

namespace velmora {
namespace {

constexpr Colour kGreen = 0x00FF00;
constexpr Colour kCyan = 0xFFFF00;

GraphCursor OnsetMark(CursorKind kind, Colour colour, double x) {
  GraphCursor mark;
  mark.XPosition = x;
  mark.Color = colour;
  mark.Kind = kind;
  return mark;
}

const GraphCursor* FindOnsetMark(const Graph& graph, CursorKind kind) {
  const auto mark = std::find_if(graph.Cursors.begin(), graph.Cursors.end(),
                                 [kind](const GraphCursor& cursor) { return cursor.Kind == kind; });
  return mark == graph.Cursors.end() ? nullptr : &*mark;
}

// Cursor 1 is the earlier one from now on.
void OrderCursors(MultiView& view) {
  const std::vector<double> places = view.CommonCursors();
  if (places[0] <= places[1]) {
    return;
  }
  for (Graph& graph : view.Graphs()) {
    std::swap(graph.Cursors[0].XPosition, graph.Cursors[1].XPosition);
  }
}

std::vector<ScannedChannel> ChannelsToScan(const MultiView& view, const ThresholdMemory& thresholds) {
  std::vector<ScannedChannel> scanned;
  for (int g = 1; g <= view.NGraphs(); ++g) {
    if (const int channel = view.ChannelOf(g); channel > 0) {
      scanned.push_back({channel, static_cast<float>(thresholds.ChanThreshold[channel])});
    }
  }
  return scanned;
}

// Behind the cursors and the threshold's line, before values that stand on the graph.
void AddOnsetMarks(Graph& graph, const Trial& trial, const Burst& burst) {
  const auto place = std::find_if(graph.Cursors.begin(), graph.Cursors.end(),
                                  [](const GraphCursor& cursor) { return cursor.Kind == CursorKind::Value; });
  graph.Cursors.insert(place, {OnsetMark(CursorKind::Onset, kGreen, trial.Data(burst.onset, 0)),
                               OnsetMark(CursorKind::Offset, kCyan, trial.Data(burst.offset, 0))});
}

void RemoveOnsetMarks(MultiView& view) {
  view.RemoveCursors(CursorKind::Onset);
  view.RemoveCursors(CursorKind::Offset);
}

void TellOnsets(Workbench& workbench, const std::vector<ScannedChannel>& scanned,
                const std::vector<Burst>& bursts, SampleRange range) {
  ChannelList found;
  ChannelList silent;
  for (std::size_t k = 0; k < scanned.size(); ++k) {
    (bursts[k].onset > 0 ? found : silent).push_back(scanned[k].channel);
  }
  const std::string samples = " in samples " + std::to_string(range.lo) + " to " + std::to_string(range.hi);
  if (!found.empty()) {
    Did(workbench, "Onsets and offsets" + samples, found);
  }
  if (!silent.empty()) {
    Did(workbench, "No onset" + samples, silent);
  }
}

}  // namespace

void FindOnsets(Workbench& workbench, MultiView& view) {
  if (view.Cursors() < 2 || !workbench.thresholds.ThresholdsValid) {
    return;
  }
  if (const std::string notice = ThresholdsOfAnotherTrial(workbench); !notice.empty()) {
    AddNotice(workbench, notice);
  }
  RemoveOnsetMarks(view);
  OrderCursors(view);
  const SampleRange range = view.PairRange();
  workbench.graph.StatLo = range.lo;
  workbench.graph.StatHi = range.hi;
  const std::vector<ScannedChannel> scanned = ChannelsToScan(view, workbench.thresholds);
  const std::vector<Burst> bursts = FindBursts(workbench.trial, scanned, range);
  for (std::size_t k = 0; k < scanned.size(); ++k) {
    if (bursts[k].onset > 0) {
      AddOnsetMarks(view.GraphAt(view.GraphOf(scanned[k].channel)), workbench.trial, bursts[k]);
    }
  }
  TellOnsets(workbench, scanned, bursts, range);
}

void RemoveOnsets(Workbench& workbench, MultiView& view) {
  RemoveOnsetMarks(view);
  workbench.trial.CursorLo = 1;
  workbench.trial.CursorHi = workbench.trial.NData;
}

bool OnsetsShown(const MultiView& view) {
  const auto graphs = view.Graphs();
  return std::any_of(graphs.begin(), graphs.end(),
                     [](const Graph& graph) { return FindOnsetMark(graph, CursorKind::Onset) != nullptr; });
}

std::optional<OnsetMarks> OnsetMarksOf(const Graph& graph) {
  const GraphCursor* onset = FindOnsetMark(graph, CursorKind::Onset);
  const GraphCursor* offset = FindOnsetMark(graph, CursorKind::Offset);
  if (onset == nullptr || offset == nullptr) {
    return std::nullopt;
  }
  return OnsetMarks{onset->XPosition, offset->XPosition};
}

}  // namespace velmora
