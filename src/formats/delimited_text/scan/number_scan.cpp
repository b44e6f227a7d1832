#include "formats/delimited_text/scan/number_scan.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

#include "core/text/numbers.hpp"
#include "formats/line_blocks.hpp"

namespace velmora {
namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

bool Separates(char c, const NumberLayout& layout) {
  return c == '\t' || (c == ',' && !layout.decimalComma) || (c == ';' && layout.semicolons);
}

// Tokens that from_chars would take but that are no decimal numbers: "inf", "nan", a second sign.
bool StartsLikeNumber(std::string_view token) {
  token.remove_prefix(!token.empty() && token[0] == '-' ? 1 : 0);
  return !token.empty() && (IsDigit(token[0]) || token[0] == '.');
}

// Too small for 32 bits is 0 with its sign; too large is no number.
bool OutsideRange(std::string_view token, float& value) {
  const double wide = Val(token);
  value = std::copysign(0.0F, token[0] == '-' ? -1.0F : 1.0F);
  return std::abs(wide) < 1.0;
}

bool ReadWithPoint(std::string_view token, float& value) {
  token.remove_prefix(token.size() > 1 && token[0] == '+' && token[1] != '-' ? 1 : 0);
  if (!StartsLikeNumber(token)) {
    return false;
  }
  const char* end = token.data() + token.size();
  const auto result = std::from_chars(token.data(), end, value);
  if (result.ptr != end) {
    return false;
  }
  return result.ec == std::errc() || OutsideRange(token, value);
}

void Put(float value, const ScanPlan& plan, std::size_t column, float* frame) {
  if (plan.slot[column] != ScanPlan::kNoSlot) {
    frame[plan.slot[column]] = value;
  }
}

// The columns of one line, taken one after the other.
class Columns {
 public:
  Columns(std::string_view line, const NumberLayout& layout) : rest_(line), layout_(layout) { SkipBlanks(); }

  /// A separator at the line's end opens no further column.
  [[nodiscard]] bool More() const { return !rest_.empty(); }

  /// The text of the next column, empty for an empty one.
  std::string_view Next() {
    std::size_t end = 0;
    while (end < rest_.size() && rest_[end] != ' ' && !Separates(rest_[end], layout_)) {
      ++end;
    }
    const std::string_view token = rest_.substr(0, end);
    rest_.remove_prefix(end);
    SkipBlanks();
    if (!rest_.empty() && Separates(rest_[0], layout_)) {
      rest_.remove_prefix(1);
      SkipBlanks();
    }
    return token;
  }

 private:
  void SkipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(' '), rest_.size())); }

  std::string_view rest_;
  const NumberLayout& layout_;
};

}  // namespace

void ScanFaults::Add(const ScanFaults& further) {
  notNumbers.Add(further.notNumbers);
  emptyFields.Add(further.emptyFields);
  shortLines.Add(further.shortLines);
  longLines.Add(further.longLines);
  std::transform(emptyIn.begin(), emptyIn.end(), further.emptyIn.begin(), emptyIn.begin(), std::plus<>());
}

bool ReadNumber(std::string_view token, bool decimalComma, float& value) {
  if (!decimalComma || token.find(',') == std::string_view::npos) {
    return ReadWithPoint(token, value);
  }
  if (token.find('.') != std::string_view::npos) {
    return false;
  }
  std::string pointed(token);
  std::replace(pointed.begin(), pointed.end(), ',', '.');
  return ReadWithPoint(pointed, value);
}

std::string_view CellOf(std::string_view line, const NumberLayout& layout, int column) {
  Columns columns(line, layout);
  for (int k = 1; k < column && columns.More(); ++k) {
    columns.Next();
  }
  return columns.More() ? columns.Next() : std::string_view();
}

bool IsBlankLine(std::string_view line) {
  return line.find_first_not_of(" \t") == std::string_view::npos;
}

void ScanLine(std::string_view line, const ScanPlan& plan, float* frame, std::int64_t lineNumber,
              ScanFaults& faults) {
  Columns columns(line, plan.layout);
  int k = 0;
  for (; k < plan.columns && columns.More(); ++k) {
    const auto column = static_cast<std::size_t>(k);
    const std::string_view token = columns.Next();
    float value = 0.0F;
    if (plan.slot[column] == ScanPlan::kNoSlot) {
      continue;  // what stands there does not matter
    }
    if (token.empty()) {
      faults.emptyFields.Note(lineNumber, k + 1);
      ++faults.emptyIn[column];
    } else if (!ReadNumber(token, plan.layout.decimalComma, value)) {
      faults.notNumbers.Note(lineNumber, k + 1);
      value = 0.0F;
    }
    Put(value, plan, column, frame);
  }
  if (k < plan.columns) {
    faults.shortLines.Note(lineNumber, k + 1);
    for (; k < plan.columns; ++k) {
      Put(0.0F, plan, static_cast<std::size_t>(k), frame);
    }
    return;
  }
  bool more = false;
  while (!plan.dropRest && !more && columns.More()) {
    more = !columns.Next().empty();
  }
  if (more) {
    faults.longLines.Note(lineNumber, plan.columns + 1);
  }
}

ScanProgress ScanRows(std::string_view text, const ScanPlan& plan, FrameRoom room, std::int64_t firstLine,
                      ScanFaults& faults) {
  ScanProgress progress;
  std::string_view rest = text;
  while (progress.rows < room.rows && !rest.empty()) {
    const std::string_view line = TakeLine(rest);
    if (!IsBlankLine(line)) {
      ScanLine(line, plan, room.first + progress.rows * plan.stride, firstLine + progress.lines, faults);
      ++progress.rows;
    }
    ++progress.lines;
  }
  progress.bytes = text.size() - rest.size();
  return progress;
}

}  // namespace velmora
