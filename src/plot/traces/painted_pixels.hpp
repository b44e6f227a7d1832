#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "plot/traces/trace_raster.hpp"

namespace velmora {

/// Part of a picture, columns and rows included.
struct PixelBox {
  int left = 0;
  int right = -1;
  RowSpan rows;

  [[nodiscard]] bool Empty() const { return left > right || rows.Empty(); }
};

/// Columns of a picture that follow each other, both included.
struct ColumnSpan {
  int first = 0;
  int last = -1;
};

/// A round part of a picture; none when an axis is 0.
struct PixelEllipse {
  double x = 0.0;  // the middle
  double y = 0.0;
  double across = 0.0;  // half axes
  double up = 0.0;
};

/// Columns of a picture that are painted from front to back: a pixel keeps the first colour that it gets.
/// Which ones have theirs is kept as bits, 64 rows in a word; and besides each column what all columns of a
/// block of 8 have, so that what is hidden shows in a few words. Tiles are as high as a block is wide.
class PaintedPixels {
 public:
  static constexpr int kBlock = 8;

  /// The pixels of `columns` in `area` are 0. All other columns count as painted.
  PaintedPixels(const PixelArea& area, const ColumnSpan& columns);

  [[nodiscard]] bool Full() const { return unpainted_ == 0; }
  /// A large box in which nothing can be painted any more, endless where it reaches an edge of the picture;
  /// and an ellipse like it. A line from one place in it to another is hidden. They change from time to time,
  /// and so does what is known to be full around a tile.
  [[nodiscard]] const PixelBox& Core() const { return core_; }
  [[nodiscard]] const PixelEllipse& RoundCore() const { return roundCore_; }
  /// A box around a pixel of these columns in which nothing can be painted any more: empty, or the tile of
  /// the pixel and as many to every side as are known to be full.
  [[nodiscard]] PixelBox FullAround(int column, int row) const {
    const int block = (column - first_) / kBlock;
    const int tile = row / kBlock;
    const int full = kBlock * full_[TileAt(block, tile)];
    return {first_ + (block + 1) * kBlock - full,
            first_ + block * kBlock + full - 1,
            {(tile + 1) * kBlock - full, tile * kBlock + full - 1}};
  }
  /// Whether nothing can be painted in `box`, which is not empty and lies in these columns. Looks at whole
  /// blocks: it may miss that something is hidden, never the reverse.
  [[nodiscard]] bool Hides(const PixelBox& box) const;
  /// Paints what has no colour yet of `rows`, which lie in the picture, in one of these columns.
  void Paint(int column, const RowSpan& rows, std::uint32_t colour) {
    if (!Has(kColumns, static_cast<unsigned>(column - first_), rows)) {
      PaintRest(column - first_, rows, colour);
    }
  }

 private:
  enum Level : std::uint8_t { kColumns, kBlocks, kLevels };
  using Word = std::uint64_t;
  static constexpr std::size_t kRowsAWord = 64;
  static constexpr std::size_t kSide = kBlock;

  // Eight neighbours' words for the same rows lie side by side.
  [[nodiscard]] std::size_t At(std::size_t k, std::size_t word) const {
    return (k / kSide * words_ + word) * kSide + k % kSide;
  }
  /// The bits of `rows` in a word that has some of them.
  static Word Mask(const RowSpan& rows, std::size_t word) {
    const int first = rows.top - static_cast<int>(word * kRowsAWord);
    const int last = rows.bottom - static_cast<int>(word * kRowsAWord);
    return (~Word{0} << std::max(first, 0)) & (~Word{0} >> std::max(63 - last, 0));
  }
  [[nodiscard]] bool Has(Level level, std::size_t k, const RowSpan& rows) const;
  [[nodiscard]] std::size_t TileAt(int block, int tile) const {
    const std::size_t side = static_cast<std::size_t>(blocks_) + 2;
    return (static_cast<std::size_t>(tile) + 1) * side + static_cast<std::size_t>(block) + 1;
  }
  [[nodiscard]] bool HasTile(int block, int tile) const { return full_[TileAt(block, tile)] != 0; }
  void PaintRest(int column, const RowSpan& rows, std::uint32_t colour);
  void Set(std::size_t column, std::size_t word, Word bits);
  void FindFull();
  void FindFullTiles();
  void FindCores();
  [[nodiscard]] PixelBox LargestBox() const;
  [[nodiscard]] PixelEllipse LargestEllipse(const PixelBox& box) const;

  int first_;       // of these columns in the picture
  PixelArea area_;  // these columns
  int blocks_;
  int tiles_;          // a block
  std::size_t words_;  // a column
  std::array<std::vector<Word>, kLevels> has_;
  // How far the nearest tile is that is not full, in tiles to any side; there is a border around the picture.
  std::vector<std::int16_t> full_;
  std::int64_t unpainted_;
  std::int64_t nextLook_ = 0;  // what is full is looked for when fewer pixels are unpainted
  PixelBox core_;
  PixelEllipse roundCore_;
};

inline bool PaintedPixels::Has(Level level, std::size_t k, const RowSpan& rows) const {
  const std::size_t last = static_cast<unsigned>(rows.bottom) / kRowsAWord;
  for (std::size_t word = static_cast<unsigned>(rows.top) / kRowsAWord; word <= last; ++word) {
    if ((Mask(rows, word) & ~has_[level][At(k, word)]) != 0) {
      return false;
    }
  }
  return true;
}

inline bool PaintedPixels::Hides(const PixelBox& box) const {
  const std::size_t first = static_cast<unsigned>(box.left - first_) / kSide;
  const std::size_t last = static_cast<unsigned>(box.right - first_) / kSide;
  for (std::size_t block = first; block <= last; ++block) {
    if (!Has(kBlocks, block, box.rows)) {
      return false;
    }
  }
  return true;
}

}  // namespace velmora
