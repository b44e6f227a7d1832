#include "plot/traces/trace_raster.hpp"

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

}  // namespace velmora
