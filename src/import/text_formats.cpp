#include "import/text_formats.hpp"

#include <string>
#include <vector>

#include "core/files/files.hpp"
#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "formats/delimited_text/text_parser.hpp"
#include "formats/delsys_text/delsys_text.hpp"
#include "formats/fscan/fscan_text.hpp"
#include "formats/p2d/p2d.hpp"
#include "formats/read_error.hpp"
#include "formats/text_table/text_table.hpp"
#include "import/load_questions.hpp"
#include "import/read_recording.hpp"
#include "import/reader_table.hpp"

namespace velmora {
namespace {

// Seconds mean nothing on a percentage; the rate is samples per percent, so that a cursor's time is its
// percentage.
void UsePercentage(Workbench& workbench) {
  Trial& trial = workbench.trial;
  trial.Rate = trial.NData > 1 ? (trial.NData - 1) / 100.0 : 1.0;
  trial.Duration = trial.NData > 1 ? 100.0 : 0.0;
  trial.RebuildTimeColumn();
  trial.ChanLabel[0] = "Percentage";
  trial.ChanUnits[0] = "%";
  for (int c = 0; c <= trial.NChan; ++c) {
    trial.ChanRate[c] = trial.Rate;
  }
  workbench.time.Base = TimeBase::Percentage;
}

double RateInFirstLine(const std::string& path) {
  const std::vector<std::string> lines = FirstLines(path, 1);
  const std::size_t digit = lines.empty() ? std::string::npos : lines[0].find_first_of("0123456789");
  return digit == std::string::npos ? 0.0 : Val(lines[0].substr(digit));
}

}  // namespace

void ReadTextRecording(Workbench& workbench, ProgressPanel& panel, OpenRecording open) {
  const Format& format = FormatOfCode(workbench.trial.FileTypeCode);
  workbench.trial.DiscardData();
  panel.SetFormat(format.name);
  std::unique_ptr<RecordingFile> file;
  try {
    if (RefuseEmptyFile(workbench)) {
      return;
    }
    file = open(workbench.trial.FileName);
  } catch (const FileError& error) {
    AskParseNotUnderstood(workbench, panel, format, error.what());
    return;
  }
  ReadRecording(workbench, panel, format.name, *file);
}

void ReadFScan(Workbench& workbench, ProgressPanel& panel) {
  constexpr std::int16_t kFScan = 18;
  workbench.trial.FileTypeCode = kFScan;
  ReadTextRecording(workbench, panel, workbench.trial.FileExt == "ASG" ? OpenFScanGraph : OpenFScanText);
}

void ReadP2d(Workbench& workbench, ProgressPanel& panel) {
  constexpr std::int16_t kP2d = 90;
  workbench.trial.FileTypeCode = kP2d;
  ReadTextRecording(workbench, panel, OpenP2d);
  if (workbench.trial.NData > 0 && workbench.trial.FileTypeCode == kP2d) {
    UsePercentage(workbench);
  }
}

void ReadDelsysText(Workbench& workbench, ProgressPanel& panel) {
  bool timeColumns = false;
  try {
    timeColumns = HasTimeColumns(workbench.trial.FileName);
  } catch (const FileError& error) {
    ReportReadError(workbench, error.what());
    return;
  }
  if (timeColumns) {
    ReadTextRecording(workbench, panel, OpenDelsysText);
  } else {
    ParseTextFile(workbench, panel);
  }
}

void ReadPdt(Workbench& workbench, ProgressPanel& panel) {
  constexpr std::int16_t kPdt = 23;
  workbench.trial.FileTypeCode = kPdt;
  double rate = 0.0;
  try {
    rate = RateInFirstLine(workbench.trial.FileName);
  } catch (const FileError& error) {
    ReportReadError(workbench, error.what());
    return;
  }
  if (rate > 0) {
    panel.SetFormat(FormatOfCode(kPdt).name);
    ParseTextFile(workbench, panel);
  } else {
    AskParseUnpublished(workbench, panel, FormatOfCode(kPdt));
  }
}

}  // namespace velmora
