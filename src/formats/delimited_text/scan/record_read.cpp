#include "formats/delimited_text/scan/record_read.hpp"

#include <algorithm>

#include "formats/delimited_text/scan/fast_scan.hpp"
#include "formats/line_blocks.hpp"

namespace velmora {
namespace {

constexpr std::int64_t kRecordsPerTurn = 1000;

}  // namespace

ScanPlan PlanScan(const ParseSettings& settings) {
  ScanPlan plan;
  plan.columns = settings.columns;
  plan.stride = settings.Channels() + 1;
  plan.layout = settings.layout;
  plan.dropRest = settings.ParseSkipToEndOfLine;
  std::uint8_t next = 1;
  for (int k = 0; k < plan.columns; ++k) {
    const bool time = settings.HasTime() && k + 1 == settings.ParseTimeColumn;
    plan.slot[static_cast<std::size_t>(k)] = time ? std::uint8_t{0} : next++;
  }
  return plan;
}

std::int64_t ReadRecords(Trial& trial, ProgressPanel& panel, TextSource& source,
                         const ParseSettings& settings, ScanFaults& faults) {
  const ScanPlan plan = PlanScan(settings);
  const std::int64_t wanted = trial.NData;
  LineBlocks blocks(source);
  std::int64_t line = blocks.SkipLines(settings.ParseSkip) + 1;
  std::int64_t rows = 0;
  std::size_t sinceTurn = 0;
  while (rows < wanted) {
    const std::string_view lines = blocks.Lines();
    if (lines.empty()) {
      break;
    }
    const std::int64_t toTurn = kRecordsPerTurn - rows % kRecordsPerTurn;
    const ScanProgress scanned = FastScanRows(
        lines, plan, {trial.matrix.Frame(rows + 1), std::min(toTurn, wanted - rows)}, line, faults);
    blocks.Consume(scanned.bytes);
    rows += scanned.rows;
    line += scanned.lines;
    sinceTurn += scanned.bytes;
    if (scanned.rows == toTurn || sinceTurn > LineBlocks::kBytesPerTurn) {
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
