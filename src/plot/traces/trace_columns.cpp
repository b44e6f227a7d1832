#include "plot/traces/trace_columns.hpp"

#include <cmath>
#include <limits>

namespace velmora {

TraceColumns::TraceColumns(const Graph& graph, const PixelScale& x, const PixelScale& y)
    : columns_(x.Pixels()) {
  for (const Plot& plot : graph.Plots) {
    if (plot.Visible) {
      plots_.push_back(&plot);
    }
  }
  spans_.resize(static_cast<std::size_t>(columns_) * plots_.size());
  FindStarts(graph.Times(), x);
  FoldSamples(graph, y);
  JoinColumns(graph, x, y);
}

void TraceColumns::FindStarts(const SampleTimes& times, const PixelScale& x) {
  for (int k = 0; k < columns_; ++k) {
    starts_.push_back(times.FirstFrom(x.Value(k)));
  }
  // The end of the axis belongs to the last column.
  const double behind = std::nextafter(x.Value(columns_), std::numeric_limits<double>::infinity());
  starts_.push_back(times.FirstFrom(behind));
}

void TraceColumns::FoldSamples(const Graph& graph, const PixelScale& y) {
  std::vector<SampleSpan> samples(static_cast<std::size_t>(columns_));
  for (int k = 0; k < columns_; ++k) {
    const auto column = static_cast<std::size_t>(k);
    const bool joins = HasSamples(k) && HasSamples(k - 1);
    samples[column] = {starts_[column] - (joins ? 1 : 0), starts_[column + 1]};
  }
  const ColumnExtremes& extremes = graph.Columns(samples);
  for (int k = 0; k < columns_; ++k) {
    for (std::size_t p = 0; p < plots_.size(); ++p) {
      const Extremes own = extremes.At(k, plots_[p]->Channel);
      if (!own.Empty()) {
        SpanAt(k, p) = {y.Cell(own.max), y.Cell(own.min)};
      }
    }
  }
}

// A line from the sample before to the one behind crosses columns that have no sample of their own.
void TraceColumns::JoinColumns(const Graph& graph, const PixelScale& x, const PixelScale& y) {
  const SampleTimes& times = graph.Times();
  for (int k = 0; k < columns_; ++k) {
    const std::int64_t next = starts_[static_cast<std::size_t>(k)];
    const bool empty = !HasSamples(k);
    if ((!empty && HasSamples(k - 1)) || next < 2 || next > times.Samples()) {
      continue;
    }
    const float* before = graph.Plotted()->matrix.Frame(next - 1);
    const float* behind = graph.Plotted()->matrix.Frame(next);
    const double left = x.Pixel(times.At(next - 1));
    const double width = x.Pixel(times.At(next)) - left;
    const auto part = [&](double pixel) { return width > 0 ? (pixel - left) / width : 0.0; };
    const double enters = HasSamples(k - 1) ? 0.0 : part(k);
    for (std::size_t p = 0; p < plots_.size(); ++p) {
      const int c = plots_[p]->Channel;
      const double from = y.Pixel(before[c]);
      const double rise = y.Pixel(behind[c]) - from;
      if (std::isnan(rise)) {
        continue;
      }
      const auto row = [&](double at) { return y.CellAt(from + at * rise); };
      SpanAt(k, p).Take(row(enters));
      if (empty) {
        SpanAt(k, p).Take(row(part(k + 1)));
      }
    }
  }
}

}  // namespace velmora
