#include "plot/traces/path_raster.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/cores.hpp"
#include "plot/traces/painted_pixels.hpp"

namespace velmora {
namespace {

/// Where a sample lies, and the pixel it is in.
struct Corner {
  double x;
  double y;
  int column;
  int row;
  bool isNumber;
};

inline Corner CornerOf(const Graph& graph, int channel, std::int64_t i, const PixelScale& x,
                       const PixelScale& y) {
  const double across = x.Pixel(graph.Times().At(i));
  const double up = y.Pixel(graph.Plotted()->matrix.Frame(i)[channel]);
  const bool isNumber = !std::isnan(across + up);
  return {across, up, isNumber ? x.CellAt(across) : 0, isNumber ? y.CellAt(up) : 0, isNumber};
}

/// A line between two corners, column by column. What it touches lies between their columns and their rows.
class Segment {
 public:
  Segment(const Corner& from, const Corner& to, const PixelScale& y)
      : y_(y),
        left_(from.x <= to.x ? from : to),
        right_(from.x <= to.x ? to : from),
        top_(std::min(from.y, to.y)),
        bottom_(std::max(from.y, to.y)),
        slope_(right_.column > left_.column ? (right_.y - left_.y) / (right_.x - left_.x) : 0.0) {}

  [[nodiscard]] const Corner& Left() const { return left_; }
  [[nodiscard]] const Corner& Right() const { return right_; }
  /// The row in which it comes into a column, at its left end that of the corner.
  [[nodiscard]] int Enters(int column) const { return column <= left_.column ? left_.row : RowAt(column); }
  /// The row in which it leaves a column: but for its right end where it comes into the next.
  [[nodiscard]] int Leaves(int column) const {
    return column >= right_.column ? right_.row : RowAt(column + 1);
  }
  [[nodiscard]] bool Descends() const { return slope_ > 0; }
  /// About where it crosses the upper edge of a row that lies between its corners.
  [[nodiscard]] int ColumnNear(int row) const {
    constexpr double kFar = 1 << 28;  // a corner may be further away than columns are counted
    const double column = std::clamp(left_.x + (row - left_.y) / slope_, left_.x, right_.x);
    return static_cast<int>(std::clamp(column, -kFar, kFar));
  }

 private:
  // Rounding takes it no further than its corners.
  [[nodiscard]] int RowAt(int x) const {
    return y_.CellAt(std::clamp(left_.y + slope_ * (x - left_.x), top_, bottom_));
  }

  const PixelScale& y_;
  const Corner& left_;
  const Corner& right_;
  double top_;
  double bottom_;
  double slope_;
};

RowSpan Between(int row, int other) {
  return {std::min(row, other), std::max(row, other)};
}

/// How far a line of some pixels reaches to either side of its middle.
struct Reach {
  explicit Reach(int width) : before((width - 1) / 2), behind(width / 2) {}
  int before;
  int behind;
};

/// Parts of a picture in which no line of some width shows: whatever goes from one place in such a part to
/// another is hidden.
class Cores {
 public:
  Cores(const PaintedPixels& painted, const Reach& reach) {
    const PixelBox& box = painted.Core();
    box_ = {box.left + reach.before,
            box.right - reach.behind,
            {box.rows.top + reach.before, box.rows.bottom - reach.behind}};
    constexpr double kRounding = 0.01;
    const PixelEllipse& round = painted.RoundCore();
    x_ = round.x;
    y_ = round.y;
    acrossAPixel_ = 1 / round.across;
    upAPixel_ = 1 / round.up;
    const double beyond = reach.behind + kRounding;
    const double radius = 1 - std::hypot(beyond * acrossAPixel_, beyond * upAPixel_);
    within_ = radius > 0 ? radius * radius : 0.0;
  }

  [[nodiscard]] bool BoxHolds(const Corner& corner) const {
    return (corner.column >= box_.left) & (corner.column <= box_.right) & (corner.row >= box_.rows.top) &
           (corner.row <= box_.rows.bottom);
  }
  [[nodiscard]] bool EllipseHolds(const Corner& corner) const {
    const double across = (corner.x - x_) * acrossAPixel_;
    const double up = (corner.y - y_) * upAPixel_;
    return across * across + up * up < within_;
  }

 private:
  PixelBox box_;
  double x_;  // the middle of the ellipse
  double y_;
  double acrossAPixel_;  // in half axes
  double upAPixel_;
  double within_;  // squared
};

/// A stretch is passed over in pieces of so many samples where none of them can be seen.
constexpr int kPiece = 128;

class PathPainter {
 public:
  /// Paints `columns` of `area` and no others.
  PathPainter(const Graph& graph, const PixelScale& x, const PixelScale& y, const PixelArea& area,
              const ColumnSpan& columns)
      : graph_(graph), x_(x), y_(y), area_(area), own_(columns), painted_(area, columns) {}

  void Paint(const PathStretch& stretch) {
    if (stretch.look.line == LineStyle::None) {
      return;
    }
    reach_ = Reach(std::max(stretch.look.width, 1));
    near_ = {std::max(own_.first - reach_.behind, 0), std::min(own_.last + reach_.before, area_.columns - 1)};
    std::vector<SampleSpan> pieces;
    for (std::int64_t begin = stretch.samples.begin; begin + 1 < stretch.samples.end; begin += kPiece) {
      pieces.push_back({begin, std::min(begin + kPiece + 1, stretch.samples.end)});
    }
    const ColumnExtremes boxes = graph_.Envelope().Columns(std::span(pieces));
    for (std::size_t k = pieces.size(); k-- > 0 && !painted_.Full();) {
      const auto box = static_cast<int>(k);
      if (CanBeSeen(boxes.At(box, 0), boxes.At(box, stretch.channel))) {
        PaintPiece(stretch, pieces[k]);
      }
    }
  }

 private:
  /// Where a corner lies: a line with both ends in one of these shows nothing.
  enum Part : unsigned { kLeft = 1, kRight = 2, kAbove = 4, kBelow = 8, kInBox = 16, kInEllipse = 32 };

  [[nodiscard]] bool CanBeSeen(const Extremes& across, const Extremes& up) const {
    if (across.Empty() || up.Empty()) {
      return false;
    }
    return !IsHidden({x_.Cell(across.min), x_.Cell(across.max), {y_.Cell(up.max), y_.Cell(up.min)}});
  }

  void PaintPiece(const PathStretch& stretch, const SampleSpan& samples) {
    std::array<Corner, kPiece + 1> corners;
    std::array<unsigned, kPiece + 1> parts;
    const Cores cores(painted_, reach_);
    const auto count = static_cast<std::size_t>(samples.end - samples.begin);
    for (std::size_t k = 0; k < count; ++k) {
      corners[k] = CornerOf(graph_, stretch.channel, samples.begin + static_cast<std::int64_t>(k), x_, y_);
    }
    for (std::size_t k = 0; k < count; ++k) {
      parts[k] = PartsOf(corners[k], cores);
    }
    for (std::size_t k = count - 1; k-- > 0;) {
      if ((parts[k] & parts[k + 1]) == 0 && corners[k].isNumber && corners[k + 1].isNumber) {
        PaintSegment(corners[k], corners[k + 1], stretch.look.colour);
      }
    }
  }

  [[nodiscard]] unsigned PartsOf(const Corner& corner, const Cores& cores) const {
    const auto part = [](bool is, Part own) { return is ? static_cast<unsigned>(own) : 0U; };
    return part(corner.column < near_.first, kLeft) | part(corner.column > near_.last, kRight) |
           part(corner.row + reach_.behind < 0, kAbove) |
           part(corner.row - reach_.before >= area_.rows, kBelow) | part(cores.BoxHolds(corner), kInBox) |
           part(cores.EllipseHolds(corner), kInEllipse);
  }

  void PaintSegment(const Corner& from, const Corner& to, std::uint32_t colour) {
    const auto [left, right] = std::minmax(from.column, to.column);
    constexpr int kShort = 64;
    if (right - left < kShort && IsHidden({left, right, Between(from.row, to.row)})) {
      return;
    }
    if (left == right) {
      PaintColumn(left, Between(from.row, to.row), colour);
      return;
    }
    const Segment line(from, to, y_);
    const ColumnSpan seen = InRows(line, {std::max(left, near_.first), std::min(right, near_.last)});
    if (seen.first <= seen.last) {
      PaintColumns(line, seen, colour);
    }
  }

  // Without the columns in which a line passes above or below the picture: it goes one way, so where it is
  // outside at a column, it is at all on that side.
  [[nodiscard]] ColumnSpan InRows(const Segment& line, ColumnSpan columns) const {
    constexpr int kRounding = 2;
    const auto side = [this](int row) {
      return row + reach_.behind < 0 ? -1 : row - reach_.before >= area_.rows ? 1 : 0;
    };
    const auto columnAtEdge = [this, &line](int outside) {
      return line.ColumnNear(outside < 0 ? -reach_.behind : area_.rows + reach_.before);
    };
    const int enters = side(line.Enters(columns.first));
    const int leaves = side(line.Leaves(columns.last));
    if (enters != 0 && enters == leaves) {
      return {0, -1};
    }
    if (enters != 0) {
      const int first = columnAtEdge(enters) - kRounding;
      if (first > columns.first && first <= columns.last && side(line.Enters(first)) == enters) {
        columns.first = first;
      }
    }
    if (leaves != 0) {
      const int last = columnAtEdge(leaves) + kRounding;
      if (last < columns.last && last >= columns.first && side(line.Leaves(last)) == leaves) {
        columns.last = last;
      }
    }
    return columns;
  }

  /// What a line that lies in `box` can show of itself.
  [[nodiscard]] PixelBox Shown(const PixelBox& box) const {
    return {std::max(box.left - reach_.before, own_.first),
            std::min(box.right + reach_.behind, own_.last),
            {std::max(box.rows.top - reach_.before, 0),
             std::min(box.rows.bottom + reach_.behind, area_.rows - 1)}};
  }

  // Where it is hidden or outside it is passed over: as far as all is full around it, or a block of columns.
  void PaintColumns(const Segment& line, const ColumnSpan& columns, std::uint32_t colour) {
    int enters = line.Enters(columns.first);
    int column = columns.first;
    while (column <= columns.last) {
      const int block = std::min(column | (PaintedPixels::kBlock - 1), columns.last);
      int hidden = std::min(LastInFull(line, column, enters), columns.last);
      if (hidden < column && IsHidden({column, block, Between(enters, line.Leaves(block))})) {
        hidden = block;
      }
      if (hidden >= column) {
        column = hidden + 1;
        enters = line.Enters(column);
        continue;
      }
      for (; column <= block; ++column) {
        const int leaves = line.Leaves(column);
        PaintColumn(column, Between(enters, leaves), colour);
        enters = leaves;
      }
    }
  }

  /// Whether nothing shows of a line that lies in `box`.
  [[nodiscard]] bool IsHidden(const PixelBox& box) const {
    const PixelBox shown = Shown(box);
    return shown.Empty() || painted_.Hides(shown);
  }

  // The last column up to which all is full around a line that comes into a column in row `enters`; one
  // before it when that is not known.
  [[nodiscard]] int LastInFull(const Segment& line, int column, int enters) const {
    const PixelBox full =
        painted_.FullAround(std::clamp(column, own_.first, own_.last), std::clamp(enters, 0, area_.rows - 1));
    const PixelBox held{full.left + reach_.before,
                        full.right - reach_.behind,
                        {full.rows.top + reach_.before, full.rows.bottom - reach_.behind}};
    const auto hasRow = [&held](int row) { return row >= held.rows.top && row <= held.rows.bottom; };
    if (column < held.left || column > held.right || !hasRow(enters)) {
      return column - 1;
    }
    if (hasRow(line.Leaves(held.right))) {
      return held.right;
    }
    constexpr int kRounding = 2;
    const int crosses = line.ColumnNear(line.Descends() ? held.rows.bottom : held.rows.top + 1) - kRounding;
    return crosses > column && hasRow(line.Leaves(crosses)) ? crosses : column - 1;
  }

  void PaintColumn(int column, const RowSpan& rows, std::uint32_t colour) {
    const PixelBox box = Shown({column, column, rows});
    for (int k = box.left; !box.rows.Empty() && k <= box.right; ++k) {
      painted_.Paint(k, box.rows, colour);
    }
  }

  const Graph& graph_;
  const PixelScale& x_;
  const PixelScale& y_;
  PixelArea area_;
  ColumnSpan own_;
  ColumnSpan near_;  // lines in these reach into the own ones
  PaintedPixels painted_;
  Reach reach_{1};
};

/// Each strip looks at all samples, and should be worth its thread.
std::size_t StripsForCores(std::span<const PathStretch> stretches, const PixelArea& area) {
  constexpr std::size_t kMost = 4;
  constexpr std::int64_t kManySamples = 50'000;
  constexpr int kManyColumns = 256;
  std::int64_t samples = 0;
  for (const PathStretch& stretch : stretches) {
    samples += stretch.samples.end - stretch.samples.begin;
  }
  return samples < kManySamples || area.columns < kManyColumns ? 1 : std::min(PartsForCores(), kMost);
}

// Whole blocks, but for the last.
ColumnSpan ColumnsOf(std::size_t strip, std::size_t strips, const PixelArea& area) {
  constexpr int kBlock = PaintedPixels::kBlock;
  const auto blocks = static_cast<std::size_t>((area.columns + kBlock - 1) / kBlock);
  const Share own = ShareOf(blocks, strip, strips);
  return {static_cast<int>(own.first) * kBlock,
          std::min(static_cast<int>(own.end) * kBlock, area.columns) - 1};
}

}  // namespace

void PaintPaths(const Graph& graph, std::span<const PathStretch> stretches, const PixelScale& x,
                const PixelScale& y, const PixelArea& area, std::size_t strips) {
  strips = strips > 0 ? strips : StripsForCores(stretches, area);
  OnCores(strips, [&](std::size_t strip) {
    PathPainter painter(graph, x, y, area, ColumnsOf(strip, strips, area));
    for (std::size_t k = stretches.size(); k-- > 0;) {
      painter.Paint(stretches[k]);
    }
  });
}

void PaintPathsPlainly(const Graph& graph, std::span<const PathStretch> stretches, const PixelScale& x,
                       const PixelScale& y, const PixelArea& area) {
  for (const PathStretch& stretch : stretches) {
    const Reach reach(std::max(stretch.look.width, 1));
    for (std::int64_t i = stretch.samples.begin; i + 1 < stretch.samples.end; ++i) {
      const Corner from = CornerOf(graph, stretch.channel, i, x, y);
      const Corner to = CornerOf(graph, stretch.channel, i + 1, x, y);
      if (stretch.look.line == LineStyle::None || !from.isNumber || !to.isNumber) {
        continue;
      }
      const Segment segment(from, to, y);
      const auto [left, right] = std::minmax(from.column, to.column);
      for (int column = std::max(left, 0); column <= std::min(right, area.columns - 1); ++column) {
        const RowSpan rows = Between(segment.Enters(column), segment.Leaves(column));
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
