#include "plot/path_raster.hpp"

#include <algorithm>
#include <cmath>

namespace velmora {
namespace {

struct Place {
  double x;
  double y;

  [[nodiscard]] bool IsNumber() const { return !std::isnan(x + y); }
};

/// A line between two places, column by column.
class Segment {
 public:
  Segment(const Place& from, const Place& to, const PixelScale& x)
      : left_(from.x <= to.x ? from : to),
        right_(from.x <= to.x ? to : from),
        slope_(right_.x > left_.x ? (right_.y - left_.y) / (right_.x - left_.x) : 0.0),
        first_(std::max(x.CellAt(left_.x), 0)),
        last_(std::min(x.CellAt(right_.x), x.Pixels() - 1)) {}

  // Of the picture; none when the first is behind the last.
  [[nodiscard]] int First() const { return first_; }
  [[nodiscard]] int Last() const { return last_; }

  /// The rows that it touches in columns `from` to `to`, never fewer than in any of them.
  [[nodiscard]] RowSpan Rows(int from, int to, const PixelScale& y) const {
    double a = left_.y;
    double b = right_.y;
    if (right_.x > left_.x) {
      a = left_.y + slope_ * (std::max<double>(from, left_.x) - left_.x);
      b = left_.y + slope_ * (std::min<double>(to + 1, right_.x) - left_.x);
    }
    return {y.CellAt(std::min(a, b)), y.CellAt(std::max(a, b))};
  }

 private:
  Place left_;
  Place right_;
  double slope_;
  int first_;
  int last_;
};

Place PlaceOf(const Graph& graph, int channel, std::int64_t i, const PixelScale& x, const PixelScale& y) {
  return {x.Pixel(graph.Times().At(i)), y.Pixel(graph.Plotted()->matrix.Frame(i)[channel])};
}

/// How far a line of some pixels reaches to either side of its middle.
struct Reach {
  explicit Reach(int width) : before((width - 1) / 2), behind(width / 2) {}
  int before;
  int behind;
};

/// Columns of a picture that is painted from front to back. Of each it knows one run of rows that have their
/// colours, and of each block of columns the rows that all of them have.
class CoveredColumns {
 public:
  explicit CoveredColumns(const PixelArea& area)
      : area_(area),
        columns_(static_cast<std::size_t>(area.columns)),
        blocks_((columns_.size() + kBlock - 1) / kBlock) {}

  static constexpr int kBlock = 32;

  /// What is painted from now on has lines of this width. Under a wider line there is more than under those
  /// painted so far.
  void SetWidth(int width) {
    if (width > width_) {
      std::fill(columns_.begin(), columns_.end(), RowSpan{});
      std::fill(blocks_.begin(), blocks_.end(), Block{});
    }
    width_ = width;
  }

  [[nodiscard]] bool Covers(int column, const RowSpan& rows) const {
    const RowSpan& own = columns_[static_cast<std::size_t>(column)];
    return rows.top >= own.top && rows.bottom <= own.bottom;
  }
  /// Of all columns of the block in which `column` is.
  [[nodiscard]] bool BlockCovers(int column, const RowSpan& rows) {
    Block& block = blocks_[static_cast<std::size_t>(column / kBlock)];
    if (block.stale) {
      Sum(column / kBlock, block);
    }
    return rows.top >= block.rows.top && rows.bottom <= block.rows.bottom;
  }

  void Paint(int column, RowSpan rows, std::uint32_t colour) {
    const Reach reach(width_);
    rows.top = std::max(rows.top, -reach.behind);
    rows.bottom = std::min(rows.bottom, area_.rows - 1 + reach.before);
    if (rows.Empty() || Covers(column, rows)) {
      return;
    }
    const int top = std::max(rows.top - reach.before, 0);
    const int bottom = std::min(rows.bottom + reach.behind, area_.rows - 1);
    const int left = std::max(column - reach.before, 0);
    const int right = std::min(column + reach.behind, area_.columns - 1);
    for (int row = top; row <= bottom; ++row) {
      std::uint32_t* pixels = area_.first + row * area_.stride;
      for (int k = left; k <= right; ++k) {
        pixels[k] = pixels[k] == 0 ? colour : pixels[k];
      }
    }
    Take(column, rows);
  }

 private:
  struct Block {
    RowSpan rows{};  // that all of its columns have
    bool stale = false;
  };

  // One run a column is kept: with what touches it, or the longer of two.
  void Take(int column, const RowSpan& rows) {
    RowSpan& own = columns_[static_cast<std::size_t>(column)];
    if (own.Empty() || (rows.top <= own.bottom + 1 && rows.bottom >= own.top - 1)) {
      own.Take(rows.top);
      own.Take(rows.bottom);
    } else if (rows.bottom - rows.top > own.bottom - own.top) {
      own = rows;
    } else {
      return;
    }
    blocks_[static_cast<std::size_t>(column / kBlock)].stale = true;
  }

  void Sum(int number, Block& block) const {
    const auto begin = static_cast<std::size_t>(number) * kBlock;
    const std::size_t end = std::min(begin + kBlock, columns_.size());
    RowSpan all{-RowSpan::kNone, RowSpan::kNone};
    for (std::size_t k = begin; k < end; ++k) {
      all.top = std::max(all.top, columns_[k].top);
      all.bottom = std::min(all.bottom, columns_[k].bottom);
    }
    block = {all, false};
  }

  PixelArea area_;
  std::vector<RowSpan> columns_;
  std::vector<Block> blocks_;
  int width_ = 0;
};

/// A stretch is passed over in pieces of so many samples where none of them can be seen.
constexpr std::int64_t kPiece = 256;

class PathPainter {
 public:
  PathPainter(const Graph& graph, const PixelScale& x, const PixelScale& y, const PixelArea& area)
      : graph_(graph), x_(x), y_(y), area_(area), covered_(area) {}

  void Paint(const PathStretch& stretch) {
    if (stretch.look.line == LineStyle::None) {
      return;
    }
    reach_ = std::max(stretch.look.width, 1);
    covered_.SetWidth(reach_);
    std::vector<SampleSpan> pieces;
    for (std::int64_t begin = stretch.samples.begin; begin + 1 < stretch.samples.end; begin += kPiece) {
      pieces.push_back({begin, std::min(begin + kPiece + 1, stretch.samples.end)});
    }
    const ColumnExtremes boxes = graph_.Envelope().Columns(std::span(pieces));
    for (std::size_t k = pieces.size(); k-- > 0;) {
      const auto box = static_cast<int>(k);
      if (CanBeSeen(boxes.At(box, 0), boxes.At(box, stretch.channel))) {
        PaintPiece(stretch, pieces[k]);
      }
    }
  }

 private:
  [[nodiscard]] bool CanBeSeen(const Extremes& across, const Extremes& up) {
    if (across.Empty() || up.Empty()) {
      return false;
    }
    const int left = x_.Cell(across.min);
    const int right = x_.Cell(across.max);
    const RowSpan rows{y_.Cell(up.max), y_.Cell(up.min)};
    if (right < 0 || left >= area_.columns || rows.bottom < -reach_ || rows.top > area_.rows + reach_) {
      return false;
    }
    return !IsCovered(std::max(left, 0), std::min(right, area_.columns - 1), rows);
  }

  [[nodiscard]] bool IsCovered(int left, int right, RowSpan rows) {
    rows.top = std::max(rows.top, -reach_);
    rows.bottom = std::min(rows.bottom, area_.rows - 1 + reach_);
    for (int column = left; column <= right; column += CoveredColumns::kBlock) {
      if (!covered_.BlockCovers(column, rows)) {
        return false;
      }
    }
    return covered_.BlockCovers(right, rows);
  }

  void PaintPiece(const PathStretch& stretch, const SampleSpan& samples) {
    Place behind = PlaceOf(graph_, stretch.channel, samples.end - 1, x_, y_);
    for (std::int64_t i = samples.end - 2; i >= samples.begin; --i) {
      const Place here = PlaceOf(graph_, stretch.channel, i, x_, y_);
      if (here.IsNumber() && behind.IsNumber()) {
        PaintSegment(here, behind, stretch.look.colour);
      }
      behind = here;
    }
  }

  void PaintSegment(const Place& from, const Place& to, std::uint32_t colour) {
    if (std::max(from.y, to.y) < -reach_ - 1 || std::min(from.y, to.y) > area_.rows + reach_ + 1) {
      return;
    }
    const Segment segment(from, to, x_);
    int column = segment.First();
    while (column <= segment.Last()) {
      const int last = std::min(column | (CoveredColumns::kBlock - 1), segment.Last());
      if (last > column && covered_.BlockCovers(column, segment.Rows(column, last, y_))) {
        column = last + 1;
        continue;
      }
      for (; column <= last; ++column) {
        covered_.Paint(column, segment.Rows(column, column, y_), colour);
      }
    }
  }

  const Graph& graph_;
  const PixelScale& x_;
  const PixelScale& y_;
  PixelArea area_;
  CoveredColumns covered_;
  int reach_ = 1;
};

}  // namespace

void PaintPaths(const Graph& graph, std::span<const PathStretch> stretches, const PixelScale& x,
                const PixelScale& y, const PixelArea& area) {
  PathPainter painter(graph, x, y, area);
  for (std::size_t k = stretches.size(); k-- > 0;) {
    painter.Paint(stretches[k]);
  }
}

void PaintPathsPlainly(const Graph& graph, std::span<const PathStretch> stretches, const PixelScale& x,
                       const PixelScale& y, const PixelArea& area) {
  for (const PathStretch& stretch : stretches) {
    const Reach reach(std::max(stretch.look.width, 1));
    for (std::int64_t i = stretch.samples.begin; i + 1 < stretch.samples.end; ++i) {
      const Place from = PlaceOf(graph, stretch.channel, i, x, y);
      const Place to = PlaceOf(graph, stretch.channel, i + 1, x, y);
      if (stretch.look.line == LineStyle::None || !from.IsNumber() || !to.IsNumber()) {
        continue;
      }
      const Segment segment(from, to, x);
      for (int column = segment.First(); column <= segment.Last(); ++column) {
        const RowSpan rows = segment.Rows(column, column, y);
        const int bottom = std::min(rows.bottom + reach.behind, area.rows - 1);
        for (int row = std::max(rows.top - reach.before, 0); row <= bottom; ++row) {
          for (int k = std::max(column - reach.before, 0);
               k <= std::min(column + reach.behind, area.columns - 1); ++k) {
            area.first[row * area.stride + k] = stretch.look.colour;
          }
        }
      }
    }
  }
}

}  // namespace velmora
