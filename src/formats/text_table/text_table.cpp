#include "formats/text_table/text_table.hpp"

#include <algorithm>
#include <cmath>

#include "core/files/files.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "formats/delimited_text/scan/core_scan.hpp"
#include "formats/line_blocks.hpp"
#include "formats/recording/interleaved.hpp"
#include "formats/recording/usable_rate.hpp"

namespace velmora {
namespace {

constexpr std::size_t kTableBlock = std::size_t{8} << 20;
constexpr double kSameRate = 1e-3;  // part of it, as in the text parser

double NumberInColumn(std::string_view line, const NumberLayout& layout, int column) {
  std::string cell(CellOf(line, layout, column));
  if (layout.decimalComma) {
    std::replace(cell.begin(), cell.end(), ',', '.');
  }
  return Val(cell);
}

// A unit of the last digit that a number is written with: 0.0001 for "0.7017", 1e-11 for "1.953125E-5".
double UnitOfLastDigit(std::string_view cell) {
  const std::size_t exponent = std::min(cell.find_first_of("eE"), cell.size());
  const std::size_t sign = std::min(cell.find_first_of(".,"), exponent);
  const auto decimals = static_cast<double>(sign == exponent ? 0 : exponent - sign - 1);
  return std::pow(10.0, (exponent < cell.size() ? Val(cell.substr(exponent + 1)) : 0.0) - decimals);
}

/// Lines of records without another line in between.
struct TableStretch {
  std::int64_t firstLine = 1;
  std::int64_t rows = 0;
};

/// What a pass over the lines finds before anything is allocated.
struct TableExtent {
  std::vector<TableStretch> stretches;
  std::int64_t rows = 0;
  double firstTime = 0.0;
  double lastTime = 0.0;
  double timeUnit = 1.0;                 // s, of the last digit that the times are written with
  std::vector<std::int64_t> lastFilled;  // row (from 1) of each slow channel's last value
  bool more = false;                     // something stands behind the records
};

class TableMeasurer {
 public:
  TableMeasurer(const TableLayout& layout, std::vector<int> slowColumns, TextContinuation* behind)
      : layout_(layout), slow_(std::move(slowColumns)), behind_(behind) {
    extent_.stretches.push_back({.firstLine = layout.firstLine});
    extent_.lastFilled.resize(slow_.size());
  }

  TableExtent Measure(TextSource& source) {
    LineBlocks blocks(source, kTableBlock);
    blocks.SkipLines(layout_.firstLine - 1);
    std::int64_t number = layout_.firstLine;
    for (std::string_view lines = blocks.Lines(); !lines.empty() && !extent_.more; lines = blocks.Lines()) {
      const std::size_t bytes = lines.size();
      while (!lines.empty() && !extent_.more) {
        const std::string_view line = TakeLine(lines);
        if (amongRecords_ && MayBeRecord(line)) {
          Take(line);
        } else {
          PassOver(line, number);
        }
        ++number;
      }
      NoteLastTime();
      blocks.Consume(bytes - lines.size());
    }
    return std::move(extent_);
  }

 private:
  void PassOver(std::string_view line, std::int64_t number) {
    amongRecords_ = behind_ != nullptr && behind_->GoesOnBehind(line, extent_.rows);
    if (amongRecords_) {
      extent_.stretches.push_back({.firstLine = number + 1});
    }
    extent_.more = behind_ == nullptr && line.find_first_not_of(" \t,;") != std::string_view::npos;
  }

  void Take(std::string_view line) {
    ++extent_.stretches.back().rows;
    if (++extent_.rows == 1 && layout_.timeColumn > 0) {
      extent_.firstTime = NumberInColumn(line, layout_.numbers, layout_.timeColumn);
    }
    constexpr std::int64_t kLooked = 100;
    if (layout_.timeColumn > 0 && extent_.rows <= kLooked) {
      const std::string_view time = CellOf(line, layout_.numbers, layout_.timeColumn);
      extent_.timeUnit = std::min(extent_.timeUnit, UnitOfLastDigit(time));
    }
    last_ = line;
    for (std::size_t k = 0; k < slow_.size(); ++k) {
      if (!CellOf(line, layout_.numbers, slow_[k]).empty()) {
        extent_.lastFilled[k] = extent_.rows;
      }
    }
  }

  // While the line's block is there.
  void NoteLastTime() {
    if (layout_.timeColumn > 0 && !last_.empty()) {
      extent_.lastTime = NumberInColumn(last_, layout_.numbers, layout_.timeColumn);
    }
    last_ = {};
  }

  const TableLayout& layout_;
  std::vector<int> slow_;
  TextContinuation* behind_;
  bool amongRecords_ = true;
  std::string_view last_;
  TableExtent extent_;
};

// The first `count` of whole lines.
std::string_view LinesOf(std::string_view lines, std::int64_t count) {
  std::string_view rest = lines;
  for (; count > 0 && !rest.empty(); --count) {
    TakeLine(rest);
  }
  return lines.substr(0, lines.size() - rest.size());
}

class TextTableFile : public RecordingFile {
 public:
  TextTableFile(const std::string& path, TextTable table) : source_(path), layout_(std::move(table.layout)) {
    found_ = std::move(table.recording);
    for (RecordedChannel& channel : found_.channels) {
      channel.rate = UsableRate(channel.rate);
    }
    CheckColumns();
    const std::vector<std::size_t> slow = SlowChannels();
    std::vector<int> slowColumns;
    slowColumns.reserve(slow.size());
    for (const std::size_t c : slow) {
      slowColumns.push_back(layout_.columns[c]);
    }
    const TableExtent extent = TableMeasurer(layout_, slowColumns, table.behind.get()).Measure(source_);
    stretches_ = extent.stretches;
    if (extent.rows == 0) {
      throw FileError("there are no rows of numbers behind its header");
    }
    CountSamples(extent, slow);
    timeUnit_ = extent.timeUnit;
    SettleRate(extent);
    if (table.behind != nullptr) {
      table.behind->Finish(found_);
    } else if (extent.more) {
      found_.remarks.push_back("What follows line " + FormatCount(layout_.firstLine + extent.rows - 1) +
                               " was not read.");
    }
  }

  std::int64_t ReadSamples(const SampleTarget& target) override {
    const ScanPlan plan = Plan(target);
    ScanFaults faults;
    source_.Rewind();
    LineBlocks blocks(source_, kTableBlock);
    Progress at;
    bool goOn = true;
    for (std::size_t k = 0; k < stretches_.size() && goOn; ++k) {
      at.line += blocks.SkipLines(stretches_[k].firstLine - at.line);
      const std::int64_t end = std::min(at.rows + stretches_[k].rows, target.matrix.Samples());
      goOn = ReadStretch(blocks, plan, target, end, at, faults);
    }
    if (layout_.timeColumn == 0) {
      StoreTimes(1, at.rows, target);
    } else {
      NoteUnevenTimes(target.matrix, at.rows);
    }
    NoteFaults(faults, target, at.rows);
    return at.rows;
  }

 private:
  struct Progress {
    std::int64_t line = 1;  // that is read next, from 1
    std::int64_t rows = 0;  // that were read
  };

  // Reads on until there are `end` rows. False when it is to end.
  bool ReadStretch(LineBlocks& blocks, const ScanPlan& plan, const SampleTarget& target, std::int64_t end,
                   Progress& at, ScanFaults& faults) const {
    while (at.rows < end) {
      std::string_view lines = blocks.Lines();
      if (stretches_.size() > 1) {  // or the scan looks at the stretches behind this one, too
        lines = LinesOf(lines, end - at.rows);
      }
      if (lines.empty()) {
        return false;
      }
      const ScanProgress scanned =
          ScanOnCores(lines, plan, {target.matrix.Frame(at.rows + 1), end - at.rows}, at.line, faults);
      at.rows += scanned.rows;
      at.line += scanned.lines;
      blocks.Consume(scanned.bytes);
      if (target.turn(static_cast<double>(at.rows) / static_cast<double>(target.matrix.Samples()))) {
        return false;
      }
    }
    return true;
  }

  void CheckColumns() const {
    const auto valid = [](int column) { return column >= 1 && column <= kMostColumns; };
    if (layout_.columns.empty() || layout_.columns.size() != found_.channels.size() ||
        !std::all_of(layout_.columns.begin(), layout_.columns.end(), valid) ||
        (layout_.timeColumn != 0 && !valid(layout_.timeColumn))) {
      throw FileError("it has no columns of samples, or more than " + std::to_string(kMostColumns));
    }
  }

  [[nodiscard]] std::vector<std::size_t> SlowChannels() const {
    double fastest = 0.0;
    for (const RecordedChannel& channel : found_.channels) {
      fastest = std::max(fastest, channel.rate);
    }
    std::vector<std::size_t> slow;
    for (std::size_t c = 0; c < found_.channels.size(); ++c) {
      if (found_.channels[c].rate < fastest) {
        slow.push_back(c);
      }
    }
    return slow;
  }

  void CountSamples(const TableExtent& extent, const std::vector<std::size_t>& slow) {
    for (RecordedChannel& channel : found_.channels) {
      channel.samples = extent.rows;
    }
    for (std::size_t k = 0; k < slow.size(); ++k) {
      found_.channels[slow[k]].samples = extent.lastFilled[k];
    }
  }

  void SettleRate(const TableExtent& extent) {
    const double elapsed = extent.lastTime - extent.firstTime;
    const double measured = elapsed > 0 ? RateFromTimes(static_cast<double>(extent.rows - 1) / elapsed) : 0.0;
    if (layout_.timeColumn == 0 || measured == 0) {
      if (layout_.timeColumn > 0 && extent.rows > 1) {
        found_.remarks.emplace_back("The times of the file do not rise: they were made from the rate.");
      }
      layout_.timeColumn = 0;
      return;
    }
    double stated = 0.0;
    for (const RecordedChannel& channel : found_.channels) {
      stated = std::max(stated, channel.rate);
    }
    if (stated > 0 && std::abs(stated - measured) <= kSameRate * measured) {
      return;
    }
    if (stated > 0) {
      found_.remarks.push_back("The header states " + PlainNumber(stated) +
                               " Hz; the times of the samples give " + PlainNumber(measured) + " Hz.");
    }
    for (RecordedChannel& channel : found_.channels) {
      channel.rate = channel.rate == stated ? measured : channel.rate;
    }
  }

  [[nodiscard]] ScanPlan Plan(const SampleTarget& target) const {
    ScanPlan plan;
    plan.stride = target.matrix.Stride();
    plan.layout = layout_.numbers;
    plan.dropRest = true;
    plan.slot.fill(ScanPlan::kNoSlot);
    plan.columns = layout_.timeColumn;
    if (layout_.timeColumn > 0) {
      plan.slot[static_cast<std::size_t>(layout_.timeColumn) - 1] = 0;
    }
    std::uint8_t next = 1;
    for (const int c : target.channels) {
      const int column = layout_.columns[static_cast<std::size_t>(c)];
      plan.slot[static_cast<std::size_t>(column) - 1] = next++;
      plan.columns = std::max(plan.columns, column);
    }
    return plan;
  }

  void NoteUnevenTimes(const SampleMatrix& matrix, std::int64_t rows) {
    constexpr float kRounding = 2.4e-7F;  // two roundings to 32 bits
    if (rows < 3) {
      return;
    }
    const double first = static_cast<double>(matrix.At(1, 0));
    const double last = static_cast<double>(matrix.At(rows, 0));
    const double mean = (last - first) / static_cast<double>(rows - 1);
    for (std::int64_t i = 2; i <= rows; ++i) {
      const double step = static_cast<double>(matrix.At(i, 0)) - static_cast<double>(matrix.At(i - 1, 0));
      // What is written with few digits may be off by half a unit of the last one, at both ends of a step.
      const double rounding = static_cast<double>(kRounding * std::abs(matrix.At(i, 0))) + timeUnit_;
      if (std::abs(step - mean) > kSameRate * mean + rounding) {
        found_.remarks.push_back("The times of the file are not evenly spaced, from sample " +
                                 FormatCount(i) + " on: they were kept, and the rate is their mean.");
        return;
      }
    }
  }

  void NoteFaults(const ScanFaults& faults, const SampleTarget& target, std::int64_t rows) {
    const auto tell = [this](std::int64_t count, const char* what, const ScanFault& first) {
      if (count > 0) {
        found_.remarks.push_back(std::string(what) + ", read as 0: " + FormatCount(count) +
                                 ", the first in line " + FormatCount(first.line) + ".");
      }
    };
    tell(faults.notNumbers.count, "Fields that are no numbers", faults.notNumbers);
    std::int64_t missing = faults.emptyFields.count;
    bool slow = false;
    for (const int c : target.channels) {
      const auto channel = static_cast<std::size_t>(c);
      const std::int64_t behind = std::max<std::int64_t>(0, rows - found_.channels[channel].samples);
      slow = slow || behind > 0;
      missing -= std::min(behind, faults.emptyIn[static_cast<std::size_t>(layout_.columns[channel]) - 1]);
    }
    tell(missing, "Empty fields", faults.emptyFields);
    if (!slow) {
      tell(faults.shortLines.count, "Lines with too few columns", faults.shortLines);
    }
  }

  TextSource source_;
  TableLayout layout_;
  std::vector<TableStretch> stretches_;
  double timeUnit_ = 1.0;
};

}  // namespace

std::unique_ptr<RecordingFile> OpenTextTable(const std::string& path, TextTable table) {
  return std::make_unique<TextTableFile>(path, std::move(table));
}

std::vector<std::string> FirstLines(const std::string& path, std::size_t most) {
  TextSource source(path);
  LineBlocks blocks(source);
  std::vector<std::string> lines;
  for (std::string line; lines.size() < most && blocks.ReadTextLine(line);) {
    lines.push_back(DecodeLine(line));
  }
  return lines;
}

std::string BareText(std::string_view line) {
  constexpr std::string_view kBlanks = " \t";
  const std::size_t first = std::min(line.find_first_not_of(kBlanks), line.size());
  return std::string(line.substr(first, line.find_last_not_of(kBlanks) + 1 - first));
}

bool MayBeRecord(std::string_view line) {
  const std::size_t first = line.find_first_not_of(" \t,;");
  return first != std::string_view::npos &&
         std::string_view("0123456789+-.").find(line[first]) != std::string_view::npos &&
         line.find_first_of("0123456789", first) != std::string_view::npos;
}

double RateFromTimes(double rate) {
  constexpr double kWhole = 1e-5;
  rate = UsableRate(rate);
  if (std::abs(rate - std::round(rate)) <= kWhole * rate) {
    return std::round(rate);
  }
  constexpr int kSignificantDigits = 12;
  const double unit = std::pow(10.0, std::floor(std::log10(rate)) + 1 - kSignificantDigits);
  return std::round(rate / unit) * unit;
}

}  // namespace velmora
