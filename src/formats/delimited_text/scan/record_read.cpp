#include "formats/delimited_text/scan/record_read.hpp"

#include <algorithm>

#include "formats/delimited_text/scan/core_scan.hpp"
#include "formats/delimited_text/scan/fast_scan.hpp"
#include "formats/line_blocks.hpp"

namespace velmora {
namespace {

constexpr std::int64_t kRecordsPerTurn = 1000;
// Enough for every core, and little enough that Cancel is heard soon.
constexpr std::size_t kBytesAtOnce = std::size_t{8} << 20;

}  // namespace

ScanPlan PlanScan(const ParseSettings& settings) {
  ScanPlan plan;
  plan.columns = settings.columns;
  plan.stride = settings.Channels() + 1;
  plan.layout = settings.layout;
  plan.dropRest = settings.ParseSkipToEndOfLine;
  plan.slot.fill(ScanPlan::kNoSlot);
  if (settings.HasTime()) {
    plan.slot[static_cast<std::size_t>(settings.ParseTimeColumn) - 1] = 0;
  }
  std::uint8_t next = 1;
  for (const int column : settings.ChannelColumns()) {
    plan.slot[static_cast<std::size_t>(column) - 1] = next++;
  }
  return plan;
}

namespace {

// Moves the progress at every 1000th of the rows from `before` to `now`. Returns the row at which Cancel
// was pressed, or -1.
std::int64_t GiveTurns(ProgressPanel& panel, std::int64_t before, std::int64_t now) {
  for (std::int64_t row = (before / kRecordsPerTurn + 1) * kRecordsPerTurn; row <= now;
       row += kRecordsPerTurn) {
    panel.SetValue(static_cast<double>(row));
    if (panel.GiveTurn()) {
      return row;
    }
  }
  return -1;
}

}  // namespace

std::int64_t ReadRecords(Trial& trial, ProgressPanel& panel, TextSource& source,
                         const ParseSettings& settings, ScanFaults& faults) {
  const ScanPlan plan = PlanScan(settings);
  const std::int64_t wanted = trial.NData;
  LineBlocks blocks(source, kBytesAtOnce);
  std::int64_t line = blocks.SkipLines(settings.ParseSkip) + 1;
  std::int64_t rows = 0;
  std::size_t sinceTurn = 0;
  while (rows < wanted) {
    const std::string_view lines = blocks.Lines();
    if (lines.empty()) {
      break;
    }
    const FrameRoom room = {trial.matrix.Frame(rows + 1), wanted - rows};
    ScanFaults inBlock;
    const ScanProgress scanned = ScanOnCores(lines, plan, room, line, inBlock);
    if (const std::int64_t last = GiveTurns(panel, rows, rows + scanned.rows); last >= 0) {
      FastScanRows(lines, plan, {room.first, last - rows}, line, faults);  // the faults up to there
      return last;
    }
    faults.Add(inBlock);
    sinceTurn = scanned.rows >= kRecordsPerTurn ? 0 : sinceTurn + scanned.bytes;
    rows += scanned.rows;
    line += scanned.lines;
    blocks.Consume(scanned.bytes);
    if (sinceTurn > LineBlocks::kBytesPerTurn) {
      sinceTurn = 0;
      panel.SetValue(static_cast<double>(rows));
      if (panel.GiveTurn()) {
        break;
      }
    }
  }
  return rows;
}

}  // namespace velmora
