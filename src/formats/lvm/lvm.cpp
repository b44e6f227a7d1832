#include "formats/lvm/lvm.hpp"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "core/files/files.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "formats/delimited_text/layout/name_line.hpp"
#include "formats/text_table/text_table.hpp"

namespace velmora {
namespace {

constexpr std::size_t kLvmHeadLines = 1000;
constexpr std::string_view kEndOfHeader = "***End_of_Header***";

using LvmKeys = std::map<std::string, std::vector<std::string>>;

/// The keys of the file and of its first segment, with the cells of their lines, and the line behind them.
struct LvmHead {
  LvmKeys file;
  LvmKeys segment;
  std::vector<std::string> names;   // of the columns
  std::vector<std::string> record;  // the first one
  std::int64_t firstRecord = 0;     // line, from 1
  std::string separators = "\t";
};

std::string LvmValue(const LvmKeys& keys, const std::string& key) {
  const auto it = keys.find(key);
  return it == keys.end() || it->second.size() < 2 ? std::string() : it->second[1];
}

std::string LvmCell(const LvmKeys& keys, const std::string& key, std::size_t cell) {
  const auto it = keys.find(key);
  return it == keys.end() || cell >= it->second.size() ? std::string() : it->second[cell];
}

double LvmNumber(const LvmKeys& keys, const std::string& key, std::size_t cell) {
  std::string text = LvmCell(keys, key, cell);
  std::replace(text.begin(), text.end(), ',', '.');
  return Val(text);
}

// Reads keys up to the end mark; returns the line behind it, from 0.
std::size_t ReadLvmKeys(const std::vector<std::string>& lines, std::size_t from,
                        const std::string& separators, LvmKeys& keys) {
  for (std::size_t k = from; k < lines.size(); ++k) {
    if (lines[k].starts_with(kEndOfHeader)) {
      return k + 1;
    }
    std::vector<std::string> cells = SplitFields(lines[k], separators);
    keys.emplace(cells[0], cells);
  }
  throw FileError("its header has no end");
}

LvmHead ReadLvmHead(const std::vector<std::string>& lines) {
  LvmHead head;
  const bool comma = std::any_of(lines.begin(), lines.end(),
                                 [](const std::string& line) { return line.starts_with("Separator,"); });
  head.separators = comma ? "," : "\t";
  const std::size_t segment = ReadLvmKeys(lines, 0, head.separators, head.file);
  const std::size_t names = ReadLvmKeys(lines, segment, head.separators, head.segment);
  if (names + 1 >= lines.size()) {
    throw FileError("there are no rows of numbers behind its header");
  }
  head.names = SplitFields(lines[names], head.separators);
  head.record = SplitFields(lines[names + 1], head.separators);
  head.firstRecord = static_cast<std::int64_t>(names) + 2;
  return head;
}

/// The segments behind the first: those that go on where the one before ends are records of the same table,
/// the first that does not ends it.
class LvmSegments : public TextContinuation {
 public:
  /// `cells` of the keys' lines belong to the channels; of different rates, they are not joined.
  LvmSegments(const LvmHead& head, std::vector<std::size_t> cells, bool oneRate)
      : first_(head.segment), separators_(head.separators), cells_(std::move(cells)), oneRate_(oneRate) {}

  bool GoesOnBehind(std::string_view line, std::int64_t rows) override {
    constexpr std::size_t kMostKeys = 1000;
    if (namesAreNext_) {
      namesAreNext_ = false;
      return leftOut_ == 0;
    }
    if (line.starts_with(kEndOfHeader)) {
      NoteSegment(rows);
      namesAreNext_ = true;
      keys_.clear();
    } else if (!MayBeRecord(line) && keys_.size() < kMostKeys) {
      std::vector<std::string> cells = SplitFields(std::string(line), separators_);
      keys_.emplace(cells[0], cells);
    }
    return false;
  }

  void Finish(Recording& recording) override {
    recording.promised += promised_;
    if (leftOut_ > 0) {
      recording.remarks.push_back(CountOf(leftOut_, "further segment") + " of the file " +
                                  (leftOut_ == 1 ? "was" : "were") + " not read: " + why_);
    }
  }

 private:
  void NoteSegment(std::int64_t rows) {
    if (leftOut_ == 0 && WhyApart(rows).empty()) {
      promised_ += static_cast<std::int64_t>(LvmNumber(keys_, "Samples", cells_.front()));
      return;
    }
    why_ = leftOut_ == 0 ? WhyApart(rows) : why_;
    ++leftOut_;
  }

  /// Why the segment of these keys is no continuation of the `rows` before it.
  [[nodiscard]] std::string WhyApart(std::int64_t rows) const {
    if (!oneRate_) {
      return "segments of channels with different rates are not joined.";
    }
    if (LvmValue(keys_, "Channels") != LvmValue(first_, "Channels")) {
      return "the next one has other channels.";
    }
    for (const std::size_t cell : cells_) {
      const double step = LvmNumber(first_, "Delta_X", cell);
      if (LvmNumber(keys_, "Delta_X", cell) != step) {
        return "the next one has another rate.";
      }
      constexpr double kRounding = 0.5e-6;  // s, of the six decimals that LabVIEW writes
      constexpr double kOff = 0.01;         // part of a step
      const double due = LvmNumber(first_, "X0", cell) + static_cast<double>(rows) * step;
      const double start = LvmNumber(keys_, "X0", cell);
      if (!(std::abs(start - due) <= kOff * step + kRounding)) {
        return "the next one starts at " + PlainNumber(start) + " s, not where the one before ends.";
      }
    }
    return {};
  }

  LvmKeys first_;
  std::string separators_;
  std::vector<std::size_t> cells_;
  bool oneRate_;
  LvmKeys keys_;
  bool namesAreNext_ = false;
  std::int64_t promised_ = 0;
  std::int64_t leftOut_ = 0;
  std::string why_;
};

class LvmColumns {
 public:
  explicit LvmColumns(const LvmHead& head) : head_(head) {
    const std::string x = LvmValue(head.file, "X_Columns");
    times_ = EqualNoCase(x, "Multi") ? Times::Multi : EqualNoCase(x, "No") ? Times::None : Times::One;
    decimalComma_ = LvmValue(head.file, "Decimal_Separator") == ",";
  }

  TextTable Table() {
    TextTable table;
    std::vector<std::size_t> cells;
    bool oneRate = true;
    table.layout.firstLine = head_.firstRecord;
    table.layout.numbers.decimalComma = decimalComma_;
    const double count = Val(LvmValue(head_.segment, "Channels"));
    std::string empty;
    double fastest = -1.0;
    for (std::size_t k = 1; k <= static_cast<std::size_t>(std::clamp(count, 0.0, 1024.0)); ++k) {
      const std::size_t cell = times_ == Times::Multi ? 2 * k - 1 : k;
      if (Number("Samples", cell) == 0.0 && (cell >= head_.record.size() || head_.record[cell].empty())) {
        empty += (empty.empty() ? "" : ", ") + Cell(head_.names, cell);
        continue;
      }
      const double step = Number("Delta_X", cell);
      const double rate = step > 0 ? RateFromTimes(1 / step) : 0.0;
      oneRate = oneRate && (cells.empty() || rate == fastest);
      cells.push_back(cell);
      if (rate > fastest) {
        fastest = rate;
        table.recording.promised = Promised(cell);
        table.layout.timeColumn = times_ == Times::None  ? 0
                                  : times_ == Times::One ? 1
                                                         : static_cast<int>(cell);
      }
      table.layout.columns.push_back(static_cast<int>(cell) + 1);
      table.recording.channels.push_back(
          {.label = Cell(head_.names, cell), .units = UnitAt(cell), .rate = rate});
    }
    if (!empty.empty()) {
      table.recording.remarks.push_back("Channels without samples were left out: " + empty + ".");
    }
    AddLines(table.recording);
    if (HasMoreHeadings() && !cells.empty()) {
      table.behind = std::make_unique<LvmSegments>(head_, std::move(cells), oneRate);
    }
    return table;
  }

 private:
  enum class Times { None, One, Multi };

  static std::string Cell(const std::vector<std::string>& cells, std::size_t k) {
    return k < cells.size() ? cells[k] : std::string();
  }
  [[nodiscard]] double Number(const std::string& key, std::size_t cell) const {
    return LvmNumber(head_.segment, key, cell);
  }
  [[nodiscard]] std::string UnitAt(std::size_t cell) const {
    return UnitOf(LvmCell(head_.segment, "Y_Unit_Label", cell));
  }

  [[nodiscard]] bool HasMoreHeadings() const {
    return EqualNoCase(LvmValue(head_.file, "Multi_Headings"), "Yes");
  }

  // Without headings between the segments all rows stand behind the first, whatever it counts.
  [[nodiscard]] std::int64_t Promised(std::size_t cell) const {
    constexpr double kMost = 1e12;
    const double samples = Number("Samples", cell);
    return HasMoreHeadings() && samples > 0 && samples < kMost ? static_cast<std::int64_t>(samples) : 0;
  }

  void AddLines(Recording& recording) const {
    for (const char* key : {"Operator", "Description", "Project", "Date", "Time"}) {
      if (const std::string value = LvmValue(head_.file, key); !value.empty()) {
        recording.lines.push_back(std::string(key) + " " + value);
      }
    }
    if (times_ == Times::None && !recording.channels.empty() && Number("X0", 1) != 0.0) {
      recording.lines.push_back("First sample at " + PlainNumber(Number("X0", 1)) + " s");
    }
  }

  const LvmHead& head_;
  Times times_;
  bool decimalComma_;
};

}  // namespace

std::unique_ptr<RecordingFile> OpenLvm(const std::string& path) {
  const LvmHead head = ReadLvmHead(FirstLines(path, kLvmHeadLines));
  return OpenTextTable(path, LvmColumns(head).Table());
}

}  // namespace velmora
