#include "formats/delimited_text/scan/fast_scan.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "formats/delimited_text/scan/fast_scan_stages.hpp"
#include "formats/line_blocks.hpp"

namespace velmora {
namespace {

ScanCharacters CharactersOf(const NumberLayout& layout) {
  const char comma = layout.decimalComma ? '\t' : ',';
  const char semicolon = layout.semicolons ? ';' : '\t';
  return {layout.decimalComma ? ',' : '.', {'\t', comma, semicolon}};
}

// Whether the columns go to neighbouring places: none is left out, and no time column is among them but
// the first one.
bool InOrder(const ScanPlan& plan) {
  const auto* end = plan.slot.begin() + plan.columns;
  return plan.slot[0] != ScanPlan::kNoSlot &&
         std::adjacent_find(plan.slot.begin(), end, [](int a, int b) { return b != a + 1; }) == end;
}

// The rows of one text, piece after piece.
class Scanner {
 public:
  Scanner(std::string_view text, const ScanPlan& plan, FrameRoom room, std::int64_t firstLine,
          ScanFaults& faults, SimdLevel level)
      : rest_(text),
        plan_(plan),
        characters_(CharactersOf(plan.layout)),
        stages_(ScanStagesOf(level)),
        room_(room),
        firstLine_(firstLine),
        faults_(faults),
        inOrder_(InOrder(plan)) {}

  ScanProgress Run() {
    const std::size_t bytes = rest_.size();
    while (!Full() && !rest_.empty()) {
      ScanPiece();
    }
    progress_.bytes = bytes - rest_.size();
    return progress_;
  }

 private:
  [[nodiscard]] bool Full() const { return progress_.rows == room_.rows; }
  [[nodiscard]] float* Frame() const { return room_.first + progress_.rows * plan_.stride; }

  void ScanPiece() {
    const auto bytes = static_cast<std::uint32_t>(std::min<std::size_t>(rest_.size(), kScanPiece));
    stages_.indexPiece(rest_.data(), bytes, characters_, index_);
    if (index_.lineCount == 0) {
      ScanPlainly(TakeLine(rest_));  // longer than a piece, or the end of the text
      return;
    }
    std::uint32_t start = 0;
    std::uint32_t first = 0;  // of the row's ends
    for (std::uint32_t i = 0; i < index_.lineCount && !Full(); ++i) {
      const std::uint32_t end = index_.lines[i];
      if (!ScanRegular(start, first, end)) {
        ScanPlainly(rest_.substr(start, end - start));
        first = Behind(end, first);
      }
      const bool pair = rest_[end] == '\r' && end + 1 < rest_.size() && rest_[end + 1] == '\n';
      start = end + (pair ? 2 : 1);
    }
    rest_.remove_prefix(start);
  }

  // Exactly the wanted columns, perhaps with a separator behind the last.
  bool ScanRegular(std::uint32_t start, std::uint32_t& first, std::uint32_t lineEnd) {
    const std::uint32_t last = first + static_cast<std::uint32_t>(plan_.columns) - 1;
    const bool exact = last < index_.endCount && index_.ends[last] == lineEnd;
    const bool trailing = !exact && last + 1 < index_.endCount && index_.ends[last + 1] == lineEnd &&
                          index_.ends[last] + 1 == lineEnd;
    if (!exact && !trailing) {
      return false;
    }
    if (!stages_.readRow(rest_.data(), start, index_.ends + first, plan_.columns, characters_.point,
                         row_.data()) &&
        !ReadCells(start, index_.ends + first)) {
      return false;
    }
    PutRow(Frame());
    first = last + (exact ? 1 : 2);
    ++progress_.rows;
    ++progress_.lines;
    return true;
  }

  // Exponents, seventeen digits, a number half-way between two: one after the other, but between the ends
  // that are known. False when one is no number, which is the plain way's to tell.
  bool ReadCells(std::uint32_t start, const std::uint32_t* ends) {
    for (int k = 0; k < plan_.columns; ++k) {
      const std::string_view cell = rest_.substr(start, ends[k] - start);
      if (!ReadNumber(cell, plan_.layout.decimalComma, row_[static_cast<std::size_t>(k)])) {
        return false;
      }
      start = ends[k] + 1;
    }
    return true;
  }

  void PutRow(float* frame) const {
    if (inOrder_) {
      std::copy_n(row_.begin(), plan_.columns, frame + plan_.slot[0]);
      return;
    }
    for (std::size_t k = 0; k < static_cast<std::size_t>(plan_.columns); ++k) {
      if (plan_.slot[k] != ScanPlan::kNoSlot) {
        frame[plan_.slot[k]] = row_[k];
      }
    }
  }

  void ScanPlainly(std::string_view line) {
    if (!IsBlankLine(line)) {
      ScanLine(line, plan_, Frame(), firstLine_ + progress_.lines, faults_);
      ++progress_.rows;
    }
    ++progress_.lines;
  }

  [[nodiscard]] std::uint32_t Behind(std::uint32_t end, std::uint32_t from) const {
    while (index_.ends[from] != end) {
      ++from;
    }
    return from + 1;
  }

  std::string_view rest_;
  const ScanPlan& plan_;
  ScanCharacters characters_;
  const ScanStages& stages_;
  FrameRoom room_;
  std::int64_t firstLine_;
  ScanFaults& faults_;
  bool inOrder_;
  ScanProgress progress_;
  std::array<float, kMostCells + 4> row_{};
  PieceIndex index_;
};

}  // namespace

const ScanStages& ScanStagesOf(SimdLevel level) {
  switch (level) {
    case SimdLevel::Sse2:
      return kSse2ScanStages;
    case SimdLevel::Avx2:
      return kAvx2ScanStages;
    case SimdLevel::Avx512:
      break;
  }
  return kAvx512ScanStages;
}

ScanProgress FastScanRows(std::string_view text, const ScanPlan& plan, FrameRoom room, std::int64_t firstLine,
                          ScanFaults& faults, SimdLevel level) {
  if (plan.columns > static_cast<int>(kMostCells)) {
    return ScanRows(text, plan, room, firstLine, faults);
  }
  return Scanner(text, plan, room, firstLine, faults, level).Run();
}

}  // namespace velmora
