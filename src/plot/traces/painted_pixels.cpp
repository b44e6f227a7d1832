#include "plot/traces/painted_pixels.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace velmora {
namespace {

constexpr std::int16_t kFarTiles = 1 << 13;

/// A side of a rectangle that is being found.
struct Step {
  int from;
  int height;
};

/// Half of an ellipse along one axis of the picture.
struct Half {
  double middle;
  double length;
};

/// Of pixels `first` to `end` - 1 of `count`: around their middle, but from the edge on where they reach one.
Half HalfOf(int first, int end, int count) {
  const double length = end - first;
  if ((first == 0) == (end == count)) {
    return {first + length / 2, length / 2};
  }
  return {first == 0 ? 0.0 : count, length};
}

/// How far a tile is from a place.
double Apart(double place, int first, int width) {
  return std::max({first - place, place - (first + width), 0.0});
}

}  // namespace

PaintedPixels::PaintedPixels(const PixelArea& area, const ColumnSpan& columns)
    : first_(columns.first),
      area_{area.first + columns.first, area.stride, columns.last - columns.first + 1, area.rows},
      blocks_((area_.columns + kBlock - 1) / kBlock),
      tiles_((area.rows + kBlock - 1) / kBlock),
      words_((static_cast<std::size_t>(area.rows) + kRowsAWord - 1) / kRowsAWord),
      full_(TileAt(blocks_ + 1, tiles_), kFarTiles),
      unpainted_(static_cast<std::int64_t>(area_.columns) * area.rows) {
  auto count = static_cast<std::size_t>(area_.columns);
  for (std::vector<Word>& level : has_) {
    const std::size_t blocks = (count + kSide - 1) / kSide;
    level.resize(blocks * words_ * kSide);
    for (std::size_t k = 0; k < blocks * kSide; ++k) {  // beyond the picture nothing is missing
      for (std::size_t word = 0; word < words_; ++word) {
        level[At(k, word)] = k < count ? ~Mask({0, area.rows - 1}, word) : ~Word{0};
      }
    }
    count = blocks;
  }
  FindFull();
}

void PaintedPixels::PaintRest(int column, const RowSpan& rows, std::uint32_t colour) {
  const auto k = static_cast<unsigned>(column);
  const std::size_t last = static_cast<unsigned>(rows.bottom) / kRowsAWord;
  for (std::size_t word = static_cast<unsigned>(rows.top) / kRowsAWord; word <= last; ++word) {
    Word fresh = Mask(rows, word) & ~has_[kColumns][At(k, word)];
    if (fresh == 0) {
      continue;
    }
    Set(k, word, fresh);
    std::uint32_t* const first =
        area_.first + static_cast<std::ptrdiff_t>(word * kRowsAWord) * area_.stride + column;
    for (; fresh != 0; fresh &= fresh - 1) {
      first[std::countr_zero(fresh) * area_.stride] = colour;
      --unpainted_;
    }
  }
  if (unpainted_ < nextLook_) {
    FindFull();
  }
}

void PaintedPixels::Set(std::size_t column, std::size_t word, Word bits) {
  has_[kColumns][At(column, word)] |= bits;
  const Word* const side = &has_[kColumns][At(column / kSide * kSide, word)];
  for (std::size_t n = 0; n < kSide; ++n) {
    bits &= side[n];
  }
  has_[kBlocks][At(column / kSide, word)] |= bits;
}

// Anew whenever a 32nd of the picture has been painted, and later at every quarter of what was left: around
// the last holes most lines are hidden.
void PaintedPixels::FindFull() {
  const std::int64_t all = static_cast<std::int64_t>(area_.columns) * area_.rows;
  nextLook_ = unpainted_ - std::min(all / 24, unpainted_ / 3);
  FindFullTiles();
  FindCores();
}

// A tile is one further away than the nearest of its eight neighbours: those before it, then those behind.
// A. Rosenfeld, J. L. Pfaltz, Distance functions on digital pictures, Pattern Recognition 1 (1968).
void PaintedPixels::FindFullTiles() {
  const auto side = static_cast<std::ptrdiff_t>(blocks_) + 2;
  const auto nearest = [side](const std::int16_t* at, std::ptrdiff_t before) {
    return std::min({at[before], at[before * side - 1], at[before * side], at[before * side + 1]});
  };
  for (int tile = 0; tile < tiles_; ++tile) {
    const std::size_t word = static_cast<std::size_t>(tile) * kSide / kRowsAWord;
    const auto shift = static_cast<std::size_t>(tile) * kSide % kRowsAWord;
    for (int block = 0; block < blocks_; ++block) {
      const Word rows = has_[kBlocks][At(static_cast<std::size_t>(block), word)] >> shift;
      std::int16_t& full = full_[TileAt(block, tile)];
      full = (rows & 0xFF) == 0xFF ? static_cast<std::int16_t>(nearest(&full, -1) + 1) : std::int16_t{0};
    }
  }
  for (int tile = tiles_; tile-- > 0;) {
    for (int block = blocks_; block-- > 0;) {
      std::int16_t& full = full_[TileAt(block, tile)];
      full = std::min(full, static_cast<std::int16_t>(nearest(&full, 1) + 1));
    }
  }
}

void PaintedPixels::FindCores() {
  const PixelBox box = LargestBox();
  if (box.Empty()) {
    return;
  }
  constexpr int kFar = 1 << 28;
  roundCore_ = LargestEllipse(box);
  roundCore_.x += first_;
  core_ = {
      box.left == 0 ? -kFar : first_ + box.left,
      box.right == area_.columns - 1 ? kFar : first_ + box.right,
      {box.rows.top == 0 ? -kFar : box.rows.top, box.rows.bottom == area_.rows - 1 ? kFar : box.rows.bottom}};
}

// Of whole tiles, a block wide and as high. Row by row of tiles each block is as high as the full tiles in it
// upward from there; a rectangle ends where the next block is lower.
PixelBox PaintedPixels::LargestBox() const {
  std::vector<int> heights(static_cast<std::size_t>(blocks_) + 1);  // the last stays 0
  std::vector<Step> steps;                                          // higher and higher
  PixelBox box;
  int largest = 0;
  for (int tile = 0; tile < tiles_; ++tile) {
    steps.clear();
    for (int block = 0; block <= blocks_; ++block) {
      int& height = heights[static_cast<std::size_t>(block)];
      height = block < blocks_ && HasTile(block, tile) ? height + 1 : 0;
      int from = block;
      while (!steps.empty() && steps.back().height >= height) {
        const Step step = steps.back();
        steps.pop_back();
        from = step.from;
        if (step.height * (block - from) > largest) {
          largest = step.height * (block - from);
          box = {from * kBlock,
                 std::min(block * kBlock, area_.columns) - 1,
                 {(tile + 1 - step.height) * kBlock, std::min((tile + 1) * kBlock, area_.rows) - 1}};
        }
      }
      steps.push_back({from, height});
    }
  }
  return box;
}

// Of the proportions of `box`, as far around its middle as to the nearest tile that is not full.
PixelEllipse PaintedPixels::LargestEllipse(const PixelBox& box) const {
  const Half x = HalfOf(box.left, box.right + 1, area_.columns);
  const Half y = HalfOf(box.rows.top, box.rows.bottom + 1, area_.rows);
  double nearest = std::numeric_limits<double>::max();  // squared, in half axes
  for (int top = 0; top < area_.rows; top += kBlock) {
    const double up = Apart(y.middle, top, kBlock) / y.length;
    for (int left = 0; left < area_.columns; left += kBlock) {
      const double across = Apart(x.middle, left, kBlock) / x.length;
      const double distance = across * across + up * up;
      if (distance < nearest && !HasTile(left / kBlock, top / kBlock)) {
        nearest = distance;
      }
    }
  }
  const double factor = std::sqrt(nearest);
  return {x.middle, y.middle, x.length * factor, y.length * factor};
}

}  // namespace velmora
