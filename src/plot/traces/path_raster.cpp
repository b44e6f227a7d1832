#include "plot/traces/path_raster.hpp"

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
    const bool upright = right_.x == left_.x;
    const double a = upright ? left_.y : Enters(from);
    const double b = upright ? right_.y : Leaves(to);
    return {y.CellAt(std::min(a, b)), y.CellAt(std::max(a, b))};
  }

  // Of a line that is not upright: where it comes into a column, and where it goes on.
  [[nodiscard]] double Enters(int column) const {
    return left_.y + slope_ * (std::max<double>(column, left_.x) - left_.x);
  }
  [[nodiscard]] double Leaves(int column) const {
    return left_.y + slope_ * (std::min<double>(column + 1, right_.x) - left_.x);
  }
  /// Whether it comes into the next column where it leaves this one.
  [[nodiscard]] bool GoesOn(int column) const { return column + 1 <= right_.x; }

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

/// Part of a picture, columns and rows included.
struct Cells {
  int left = 0;
  int right = -1;
  RowSpan rows;

  [[nodiscard]] bool Holds(const Cells& other) const {
    return other.left >= left && other.right <= right && other.rows.top >= rows.top &&
           other.rows.bottom <= rows.bottom;
  }
};

/// A picture that is painted from front to back, column by column. Of each column it knows one run of rows
/// that have their colours; of each block of columns the rows that all of them have; and of the whole a
/// rectangle.
class CoveredColumns {
 public:
  explicit CoveredColumns(const PixelArea& area)
      : area_(area),
        columns_(static_cast<std::size_t>(area.columns)),
        blocks_((columns_.size() + kBlock - 1) / kBlock),
        unpainted_(static_cast<std::int64_t>(area.columns) * area.rows) {}

  static constexpr int kBlock = 32;

  /// What is painted from now on has lines of this width. Under a wider line there is more than under those
  /// painted so far.
  void SetWidth(int width) {
    if (width > width_) {
      std::fill(columns_.begin(), columns_.end(), RowSpan{});
      std::fill(blocks_.begin(), blocks_.end(), Block{});
      core_ = {};
    }
    width_ = width;
    reach_ = Reach(width);
  }

  /// Nothing is left to be seen.
  [[nodiscard]] bool Full() const { return unpainted_ == 0; }

  /// The rows of which a line can show something.
  [[nodiscard]] RowSpan Seen(RowSpan rows) const {
    return {std::max(rows.top, -reach_.behind), std::min(rows.bottom, area_.rows - 1 + reach_.before)};
  }

  /// The rectangle; it grows from time to time.
  [[nodiscard]] const Cells& Core() const { return core_; }

  /// Of all columns of the block in which `column` is.
  [[nodiscard]] bool BlockCovers(int column, const RowSpan& rows) {
    Block& block = blocks_[static_cast<std::size_t>(column / kBlock)];
    if (block.stale) {
      Sum(column / kBlock, block);
    }
    return rows.top >= block.rows.top && rows.bottom <= block.rows.bottom;
  }

  /// `rows` as of Seen.
  void Paint(int column, const RowSpan& rows, std::uint32_t colour) {
    constexpr int kShort = 8;  // what is quicker looked at than looked up
    const RowSpan& own = columns_[static_cast<std::size_t>(column)];
    if (rows.bottom - rows.top > kShort && rows.top >= own.top && rows.bottom <= own.bottom) {
      return;
    }
    const std::int64_t painted = width_ == 1 ? FillColumn(column, rows, colour) : Fill(column, rows, colour);
    if (painted > 0 || width_ > 1) {
      unpainted_ -= painted;
      Take(column, rows);
    }
  }

  /// Looks for a larger rectangle: from the longest run on to either side, wherever more of it goes on.
  void FindCore() {
    const auto longest = std::max_element(
        columns_.begin(), columns_.end(),
        [](const RowSpan& a, const RowSpan& b) { return a.bottom - a.top < b.bottom - b.top; });
    if (longest == columns_.end() || longest->Empty()) {
      return;
    }
    const int start = static_cast<int>(longest - columns_.begin());
    Cells now{start, start, *longest};
    std::int64_t largest = 0;
    while (!now.rows.Empty()) {
      const std::int64_t size = (now.right - now.left + 1L) * (now.rows.bottom - now.rows.top + 1L);
      if (size > largest) {
        largest = size;
        core_ = now;
      }
      const RowSpan left = Common(now.left - 1, now.rows);
      const RowSpan right = Common(now.right + 1, now.rows);
      if (left.bottom - left.top > right.bottom - right.top) {
        --now.left;
        now.rows = left;
      } else {
        ++now.right;
        now.rows = right;
      }
    }
  }

 private:
  struct Block {
    RowSpan rows{};  // that all of its columns have
    bool stale = false;
  };

  [[nodiscard]] RowSpan Common(int column, const RowSpan& rows) const {
    if (column < 0 || column >= area_.columns) {
      return {};
    }
    const RowSpan& own = columns_[static_cast<std::size_t>(column)];
    return {std::max(rows.top, own.top), std::min(rows.bottom, own.bottom)};
  }

  // How many pixels were still to be painted.
  std::int64_t FillColumn(int column, const RowSpan& rows, std::uint32_t colour) const {
    std::int64_t painted = 0;
    std::uint32_t* pixel = area_.first + rows.top * area_.stride + column;
    for (int row = rows.top; row <= rows.bottom; ++row, pixel += area_.stride) {
      if (*pixel == 0) {
        *pixel = colour;
        ++painted;
      }
    }
    return painted;
  }

  std::int64_t Fill(int column, const RowSpan& rows, std::uint32_t colour) const {
    const RowSpan wide{std::max(rows.top - reach_.before, 0),
                       std::min(rows.bottom + reach_.behind, area_.rows - 1)};
    std::int64_t painted = 0;
    for (int k = std::max(column - reach_.before, 0);
         k <= std::min(column + reach_.behind, area_.columns - 1); ++k) {
      painted += FillColumn(k, wide, colour);
    }
    return painted;
  }

  // One run a column is kept: with what touches it, or the longer of two.
  void Take(int column, const RowSpan& rows) {
    RowSpan& own = columns_[static_cast<std::size_t>(column)];
    RowSpan run = rows;
    if (!own.Empty() && rows.top <= own.bottom + 1 && rows.bottom >= own.top - 1) {
      run.Take(own.top);
      run.Take(own.bottom);
    }
    Extend(column, run);
    if (own.Empty() || run.bottom - run.top > own.bottom - own.top) {
      own = run;
      blocks_[static_cast<std::size_t>(column / kBlock)].stale = true;
    }
  }

  // Over what was painted beside the run before it came there. What a wide line has painted is wider than its
  // run.
  void Extend(int column, RowSpan& run) const {
    if (width_ > 1) {
      return;
    }
    const auto painted = [&](int row) {
      return row >= 0 && row < area_.rows && area_.first[row * area_.stride + column] != 0;
    };
    while (painted(run.top - 1)) {
      --run.top;
    }
    while (painted(run.bottom + 1)) {
      ++run.bottom;
    }
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
  Cells core_;
  std::int64_t unpainted_;
  int width_ = 0;
  Reach reach_{1};
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
    for (std::size_t k = pieces.size(); k-- > 0 && !covered_.Full();) {
      const auto box = static_cast<int>(k);
      if (CanBeSeen(boxes.At(box, 0), boxes.At(box, stretch.channel))) {
        PaintPiece(stretch, pieces[k]);
      }
    }
  }

 private:
  [[nodiscard]] bool CanBeSeen(const Extremes& across, const Extremes& up) const {
    if (across.Empty() || up.Empty()) {
      return false;
    }
    const Cells box{std::max(x_.Cell(across.min), 0), std::min(x_.Cell(across.max), area_.columns - 1),
                    covered_.Seen({y_.Cell(up.max), y_.Cell(up.min)})};
    return box.left <= box.right && !box.rows.Empty() && !covered_.Core().Holds(box);
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
    constexpr int kBetweenCores = 2048;
    const auto [left, right] = std::minmax(from.x, to.x);
    const auto [top, bottom] = std::minmax(from.y, to.y);
    if (right < -1 || left > area_.columns || bottom < -reach_ - 1 || top > area_.rows + reach_) {
      return;
    }
    const Cells box{std::max(x_.CellAt(left), 0), std::min(x_.CellAt(right), area_.columns - 1),
                    covered_.Seen({y_.CellAt(top), y_.CellAt(bottom)})};
    if (box.left > box.right || box.rows.Empty() || covered_.Core().Holds(box)) {
      return;
    }
    if (box.left == box.right) {
      covered_.Paint(box.left, SeenRows(Segment(from, to, x_), box.left, box.left), colour);
    } else {
      PaintColumns(Segment(from, to, x_), colour);
    }
    if (++sinceCore_ == kBetweenCores) {
      sinceCore_ = 0;
      covered_.FindCore();
    }
  }

  [[nodiscard]] RowSpan SeenRows(const Segment& segment, int from, int to) const {
    return covered_.Seen(segment.Rows(from, to, y_));
  }

  void PaintColumns(const Segment& segment, std::uint32_t colour) {
    constexpr int kFew = 4;
    int column = segment.First();
    while (column <= segment.Last()) {
      const int last = std::min(column | (CoveredColumns::kBlock - 1), segment.Last());
      if (last - column >= kFew) {
        const RowSpan all = SeenRows(segment, column, last);
        if (all.Empty() || covered_.BlockCovers(column, all)) {
          column = last + 1;
          continue;
        }
      }
      int enters = y_.CellAt(segment.Enters(column));
      for (; column <= last; ++column) {
        const int leaves = y_.CellAt(segment.Leaves(column));
        const RowSpan rows = covered_.Seen({std::min(enters, leaves), std::max(enters, leaves)});
        if (!rows.Empty()) {
          covered_.Paint(column, rows, colour);
        }
        enters = segment.GoesOn(column) ? leaves : y_.CellAt(segment.Enters(column + 1));
      }
    }
  }

  const Graph& graph_;
  const PixelScale& x_;
  const PixelScale& y_;
  PixelArea area_;
  CoveredColumns covered_;
  int reach_ = 1;
  int sinceCore_ = 0;
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
