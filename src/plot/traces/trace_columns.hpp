#pragma once

#include <cstdint>
#include <vector>

#include "graph/graph.hpp"
#include "plot/traces/pixel_scale.hpp"

namespace velmora {

/// Rows of pixels that a trace covers in one column, both included; rows count from the top.
struct RowSpan {
  static constexpr int kNone = 1 << 30;
  int top = kNone;
  int bottom = -kNone;

  [[nodiscard]] bool Empty() const { return top > bottom; }
  void Take(int row) {
    top = std::min(top, row);
    bottom = std::max(bottom, row);
  }
};

/// What each visible plot covers in each column of pixels: from the least to the greatest of its samples
/// in the column and of the one before them, so that no extreme is lost and the trace hangs together.
/// Where a column has no sample it is the piece of the line between the neighbours. Rows may lie
/// outside the picture. Only of sorted times.
class TraceColumns {
 public:
  TraceColumns(const Graph& graph, const PixelScale& x, const PixelScale& y);

  [[nodiscard]] int Columns() const { return columns_; }
  /// The plots that are drawn, in their order; `plot` below is an index into them.
  [[nodiscard]] const std::vector<const Plot*>& Plots() const { return plots_; }
  [[nodiscard]] const RowSpan& At(int column, int plot) const {
    return spans_[static_cast<std::size_t>(column) * plots_.size() + static_cast<std::size_t>(plot)];
  }

 private:
  void FindStarts(const SampleTimes& times, const PixelScale& x);
  void FoldSamples(const Graph& graph, const PixelScale& y);
  void JoinColumns(const Graph& graph, const PixelScale& x, const PixelScale& y);
  [[nodiscard]] bool HasSamples(int column) const {
    const auto k = static_cast<std::size_t>(column);
    return column >= 0 && starts_[k + 1] > starts_[k];
  }
  RowSpan& SpanAt(int column, std::size_t plot) {
    return spans_[static_cast<std::size_t>(column) * plots_.size() + plot];
  }

  int columns_;
  std::vector<const Plot*> plots_;
  std::vector<std::int64_t> starts_;  // the first sample of each column, and of the one behind the last
  std::vector<RowSpan> spans_;
};

}  // namespace velmora
