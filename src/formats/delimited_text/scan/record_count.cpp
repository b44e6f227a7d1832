#include "formats/delimited_text/scan/record_count.hpp"

#include <algorithm>

#include "core/text/numbers.hpp"
#include "formats/delimited_text/scan/full_lines.hpp"
#include "formats/delimited_text/scan/number_scan.hpp"
#include "formats/line_blocks.hpp"

namespace velmora {
namespace {

constexpr std::int64_t kLinesPerTurn = 10000;

class Counter {
 public:
  Counter(std::int64_t linesToSkip, RecordCount& count) : skip_(linesToSkip), count_(count) {}

  /// Takes lines off `text` until it is empty or a turn is due.
  void Count(std::string_view& text) {
    do {
      if (!TakeFullLines(text)) {
        TakeSome(text);
      }
    } while (!text.empty() && lines_ % kLinesPerTurn != 0);
  }
  [[nodiscard]] bool TurnIsDue() const { return lines_ % kLinesPerTurn == 0; }

 private:
  // The usual case: many lines at once, all of them records.
  bool TakeFullLines(std::string_view& text) {
    if (lines_ < skip_ || pending_ > 0) {
      return false;
    }
    const FullLines full = FullLinesAhead(text);
    if (full.lines == 0 || full.lines > kLinesPerTurn - lines_ % kLinesPerTurn) {
      return false;
    }
    lines_ += full.lines;
    count_.records += full.lines;
    text.remove_prefix(full.bytes);
    return true;
  }

  void TakeSome(std::string_view& text) {
    constexpr int kAtOnce = 64;
    int taken = 0;
    do {
      TakeOne(TakeLine(text));
      ++taken;
    } while (!text.empty() && taken < kAtOnce && lines_ % kLinesPerTurn != 0);
  }

  void TakeOne(std::string_view line) {
    ++lines_;
    if (lines_ <= skip_) {
      return;
    }
    if (IsBlankLine(line)) {
      firstPending_ = pending_++ == 0 ? lines_ : firstPending_;
      return;
    }
    if (pending_ > 0) {
      NotePendingBlanks();
    }
    ++count_.records;
  }

  // Blank lines count once a record follows them: those at the end of a file part nothing.
  void NotePendingBlanks() {
    if (count_.blankLines == 0) {
      count_.firstBlankLine = firstPending_;
      count_.recordsBeforeBlank = count_.records;
    }
    count_.blankLines += count_.records > 0 ? pending_ : 0;
    pending_ = 0;
  }

  std::int64_t skip_;
  RecordCount& count_;
  std::int64_t lines_ = 0;
  std::int64_t pending_ = 0;
  std::int64_t firstPending_ = 0;
};

// Cancel pressed while counting.
bool KeepsCounted(Workbench& workbench, std::int64_t records) {
  const Button answer = workbench.questions.AskBox(
      {.title = "Keep Data or Cancel Reading",
       .text =
           "Press OK to read " + FormatNumber(static_cast<double>(records), "0") + " records or press Cancel",
       .icon = Icon::Question,
       .buttons = {Button::OK, Button::Cancel}});
  workbench.CancelRequested = answer != Button::OK && workbench.CancelRequested;
  return answer == Button::OK;
}

}  // namespace

bool CountRecords(Workbench& workbench, ProgressPanel& panel, TextSource& source, std::int64_t linesToSkip,
                  RecordCount& count) {
  panel.SetStatus("Counting records");
  LineBlocks blocks(source);
  Counter counter(linesToSkip, count);
  std::size_t sinceTurn = 0;
  for (std::string_view lines = blocks.Lines(); !lines.empty(); lines = blocks.Lines()) {
    const std::size_t before = lines.size();
    counter.Count(lines);
    blocks.Consume(before - lines.size());
    sinceTurn += before - lines.size();
    if (!counter.TurnIsDue() && sinceTurn < LineBlocks::kBytesPerTurn) {
      continue;
    }
    sinceTurn = 0;
    panel.SetStatus("Counting " + FormatNumber(static_cast<double>(count.records), "0") + " records");
    if (panel.GiveTurn()) {
      return KeepsCounted(workbench, count.records);
    }
  }
  return true;
}

}  // namespace velmora
