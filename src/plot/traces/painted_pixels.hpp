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

/// A round part of a picture; none when an axis is 0.
struct PixelEllipse {
  double x = 0.0;  // the middle
  double y = 0.0;
  double across = 0.0;  // half axes
  double up = 0.0;
};

/// A picture that is painted from front to back: a pixel keeps the first colour that it gets. Which ones have
/// theirs is kept as bits, 64 rows in a word; and besides each column what all columns of a block of 8, and
/// all of a region of 64, have, so that what is hidden shows in a few words.
class PaintedPixels {
 public:
  static constexpr int kBlock = 8;

  /// The pixels of `area` are 0.
  explicit PaintedPixels(const PixelArea& area);

  [[nodiscard]] bool Full() const { return unpainted_ == 0; }
  /// A large box in which nothing can be painted any more, endless where it reaches an edge of the picture;
  /// and an ellipse like it. A line from one place in it to another is hidden. Both change from time to time.
  [[nodiscard]] const PixelBox& Core() const { return core_; }
  [[nodiscard]] const PixelEllipse& RoundCore() const { return roundCore_; }
  /// Whether nothing can be painted in `box`, which is not empty and lies in the picture. Looks at whole
  /// blocks: it may miss that something is hidden, never the reverse.
  [[nodiscard]] bool Hides(const PixelBox& box) const;
  /// Paints what has no colour yet of `rows`, which lie in the picture.
  void Paint(int column, const RowSpan& rows, std::uint32_t colour) {
    if (!Has(kColumns, static_cast<unsigned>(column), rows)) {
      PaintRest(column, rows, colour);
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
  [[nodiscard]] bool HasTile(int block, int tile) const;
  void PaintRest(int column, const RowSpan& rows, std::uint32_t colour);
  void Set(std::size_t column, std::size_t word, Word bits);
  void FindCores();
  [[nodiscard]] PixelBox LargestBox() const;
  [[nodiscard]] PixelEllipse LargestEllipse(const PixelBox& box) const;

  PixelArea area_;
  std::size_t words_;  // a column
  std::array<std::vector<Word>, kLevels> has_;
  std::int64_t unpainted_;
  std::int64_t nextCores_ = 0;  // they are looked for when fewer pixels are unpainted
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
  const std::size_t first = static_cast<unsigned>(box.left) / kSide;
  const std::size_t last = static_cast<unsigned>(box.right) / kSide;
  for (std::size_t block = first; block <= last; ++block) {
    if (!Has(kBlocks, block, box.rows)) {
      return false;
    }
  }
  return true;
}

}  // namespace velmora
