#include "plot/trace_raster.hpp"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace velmora {
namespace {

/// One column of pixels, painted from front to back: a pixel that has its colour keeps it.
class FrontToBack {
 public:
  explicit FrontToBack(const PixelArea& area)
      : area_(area), fresh_(static_cast<std::size_t>(area.rows) + 1), next_(fresh_) {
    std::iota(fresh_.begin(), fresh_.end(), 0);
  }

  void Begin(int column) {
    column_ = column;
    std::copy(fresh_.begin(), fresh_.end(), next_.begin());
  }

  void Paint(int top, int bottom, std::uint32_t colour) {
    top = std::max(top, 0);
    bottom = std::min(bottom, area_.rows - 1);
    if (top > bottom) {
      return;
    }
    int row = Unpainted(top);
    for (; row <= bottom; row = Unpainted(row + 1)) {
      area_.first[row * area_.stride + column_] = colour;
      next_[static_cast<std::size_t>(row)] = row + 1;
    }
    next_[static_cast<std::size_t>(top)] = row;
  }

 private:
  // The first row from here on that has no colour; what was passed on the way points farther now.
  int Unpainted(int row) {
    int found = row;
    while (next_[static_cast<std::size_t>(found)] != found) {
      found = next_[static_cast<std::size_t>(found)];
    }
    while (row != found) {
      row = std::exchange(next_[static_cast<std::size_t>(row)], found);
    }
    return found;
  }

  PixelArea area_;
  std::vector<int> fresh_;
  std::vector<int> next_;
  int column_ = 0;
};

/// Whether a column falls into a gap of a dashed line.
class Dashes {
 public:
  Dashes(LineStyle style, int width) : lengths_(DashLengths(style)) {
    for (int& length : lengths_) {
      length *= width;
    }
    period_ = std::accumulate(lengths_.begin(), lengths_.end(), 0);
  }

  [[nodiscard]] bool IsGap(int column) const {
    if (period_ == 0) {
      return false;
    }
    int at = ((column % period_) + period_) % period_;
    bool gap = false;
    for (const int length : lengths_) {
      if (at < length) {
        break;
      }
      at -= length;
      gap = !gap;
    }
    return gap;
  }

 private:
  std::vector<int> lengths_;
  int period_ = 0;
};

}  // namespace

std::vector<int> DashLengths(LineStyle style) {
  switch (style) {
    case LineStyle::Dotted:
      return {2, 3};
    case LineStyle::Dashed:
      return {8, 4};
    case LineStyle::DashDot:
      return {8, 3, 2, 3};
    case LineStyle::DashDotDot:
      return {8, 3, 2, 3, 2, 3};
    default:
      return {};
  }
}

void PaintColumns(const TraceColumns& columns, const std::vector<TraceLook>& looks, int dashOrigin,
                  const PixelArea& area) {
  constexpr int kFlat = 3;  // rows
  std::vector<Dashes> dashes;
  dashes.reserve(looks.size());
  for (const TraceLook& look : looks) {
    dashes.emplace_back(look.line, look.width);
  }
  FrontToBack painter(area);
  for (int k = 0; k < columns.Columns(); ++k) {
    painter.Begin(k);
    for (int p = static_cast<int>(looks.size()) - 1; p >= 0; --p) {
      const TraceLook& look = looks[static_cast<std::size_t>(p)];
      if (look.line == LineStyle::None) {
        continue;
      }
      const bool gap = dashes[static_cast<std::size_t>(p)].IsGap(k - dashOrigin);
      const int before = (look.width - 1) / 2;
      const int behind = look.width / 2;
      for (int near = std::max(k - behind, 0); near <= std::min(k + before, columns.Columns() - 1); ++near) {
        const RowSpan& span = columns.At(near, p);
        if (!span.Empty() && !(gap && span.bottom - span.top < kFlat)) {
          painter.Paint(span.top - before, span.bottom + behind, look.colour);
        }
      }
    }
  }
}

namespace {

/// Paints upright pieces of a line as they come, those of one column joined as long as they touch.
class UprightRuns {
 public:
  UprightRuns(const TraceLook& look, const PixelArea& area) : look_(look), area_(area) {}
  UprightRuns(const UprightRuns&) = delete;
  UprightRuns& operator=(const UprightRuns&) = delete;
  ~UprightRuns() { Flush(); }

  void Add(int column, int top, int bottom) {
    if (column != column_ || top > span_.bottom + 1 || bottom < span_.top - 1) {
      Flush();
    }
    column_ = column;
    span_.Take(top);
    span_.Take(bottom);
  }

 private:
  void Flush() {
    const int before = (look_.width - 1) / 2;
    const int behind = look_.width / 2;
    const int bottom = std::min(span_.bottom + behind, area_.rows - 1);
    for (int row = std::max(span_.top - before, 0); !span_.Empty() && row <= bottom; ++row) {
      for (int k = std::max(column_ - before, 0); k <= std::min(column_ + behind, area_.columns - 1); ++k) {
        area_.first[row * area_.stride + k] = look_.colour;
      }
    }
    span_ = {};
  }

  const TraceLook& look_;
  const PixelArea& area_;
  int column_ = 0;
  RowSpan span_;
};

struct Place {
  double x;
  double y;
};

void AddSegment(const Place& from, const Place& to, const PixelScale& x, const PixelScale& y,
                UprightRuns& runs) {
  const Place& left = from.x <= to.x ? from : to;
  const Place& right = from.x <= to.x ? to : from;
  const int first = std::max(x.CellAt(left.x), 0);
  const int last = std::min(x.CellAt(right.x), x.Pixels() - 1);
  const double slope = right.x > left.x ? (right.y - left.y) / (right.x - left.x) : 0.0;
  for (int step = 0; step <= last - first; ++step) {
    const int column = from.x <= to.x ? first + step : last - step;
    double a = left.y + slope * (std::max<double>(column, left.x) - left.x);
    double b = left.y + slope * (std::min<double>(column + 1, right.x) - left.x);
    if (right.x == left.x) {
      a = left.y;
      b = right.y;
    }
    runs.Add(column, y.CellAt(std::min(a, b)), y.CellAt(std::max(a, b)));
  }
}

}  // namespace

void PaintCurve(const Graph& graph, int channel, const TraceLook& look, const PixelScale& x,
                const PixelScale& y, const PixelArea& area) {
  const SampleTimes& times = graph.Times();
  UprightRuns runs(look, area);
  Place last{NAN, NAN};
  for (std::int64_t i = 1; i <= times.Samples(); ++i) {
    const float value = graph.Plotted()->matrix.Frame(i)[channel];
    const Place here{x.Pixel(times.At(i)), y.Pixel(value)};
    if (!std::isnan(last.x + last.y + here.x + here.y)) {
      AddSegment(last, here, x, y, runs);
    }
    last = here;
  }
}

}  // namespace velmora
