#include "report/report.hpp"

#include <array>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <stdexcept>

#include "core/files/file_digest.hpp"
#include "core/files/paths.hpp"
#include "core/questions/long_work.hpp"
#include "core/results/trial_lines.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "core/version.hpp"
#include "data/header_view.hpp"
#include "edit/experiment_texts.hpp"
#include "graph/save_picture.hpp"
#include "import/format_name.hpp"

namespace velmora {
namespace {

void Add(std::vector<Fact>& facts, const char* name, std::string text) {
  if (!text.empty()) {
    facts.emplace_back(name, std::move(text));
  }
}

// The name alone: a report goes to others, and the digest tells which file it was wherever it lies.
void AddFile(std::vector<Fact>& facts, const std::string& path, const GoesOn& goesOn) {
  if (path.empty()) {
    return;
  }
  Add(facts, "File", FileNamePart(path));
  try {
    const FileDigest digest = DigestOf(path, goesOn);
    Add(facts, "Size", FormatCount(digest.size) + " bytes");
    Add(facts, "SHA-256", digest.sha256);
  } catch (const FileError& error) {
    Add(facts, "SHA-256", std::string("the file cannot be read any more: ") + error.what());
  }
}

std::string RangeText(const Workbench& workbench) {
  const Trial& trial = workbench.trial;
  const auto timeOf = [&workbench, &trial](std::int32_t sample) {
    return AbscissaText(workbench, trial.Data(sample, 0), workbench.patterns.TimePattern);
  };
  const bool whole = trial.CursorLo <= 1 && trial.CursorHi >= trial.NData;
  const std::int32_t lo = whole ? 1 : std::max(1, trial.CursorLo);
  const std::int32_t hi = whole ? trial.NData : std::min(trial.NData, trial.CursorHi);
  return "samples " + FormatCount(lo) + " to " + FormatCount(hi) +
         (whole ? " (all)" : " (between the cursors)") + ", " + timeOf(lo) + " to " + timeOf(hi) + " " +
         Trim(AbscissaUnits(workbench));
}

std::vector<Fact> TrialFacts(const Workbench& workbench, const GoesOn& goesOn) {
  const Trial& trial = workbench.trial;
  const NumberPatterns& patterns = workbench.patterns;
  std::vector<Fact> facts;
  AddFile(facts, workbench.LoadedFile, goesOn);
  Add(facts, "Format", FormatNameOf(trial));
  Add(facts, "Trial title", TitleOnOneLine(trial));
  Add(facts, "Channels", std::to_string(trial.NChan));
  Add(facts, "Samples", FormatCount(trial.NData));
  Add(facts, "Sampling rate", FormatNumber(trial.Rate, patterns.RatePattern) + " Hz");
  Add(facts, "Duration", FormatNumber(trial.Duration, patterns.TimePattern) + " s");
  Add(facts, "Range", RangeText(workbench));
  Add(facts, "Changed since it was read", trial.FileChanged ? "yes" : "no");
  return facts;
}

std::vector<Fact> ExperimentFacts(const NativeRecords& records) {
  std::vector<Fact> facts;
  for (const ExperimentText& text : kExperiment) {
    Add(facts, WithoutMnemonic(text.caption).c_str(), ExperimentTextOf(records, text));
  }
  for (const auto& [name, value] :
       {Fact("Mass", PlainNumber(static_cast<float>(SubjectMass(records)))),
        Fact("Height", PlainNumber(static_cast<float>(SubjectHeight(records))))}) {
    Add(facts, name.c_str(), value == "0" ? "" : value);
  }
  return facts;
}

// On white, whatever it has on the screen: a report is for paper.
void AddPicture(Workbench& workbench, Report& report) {
  constexpr std::size_t kFewLanes = 4;
  PictureOrder& order = report.picture.emplace(PictureOfView(workbench));
  order.format = PictureFormat::Svg;
  order.width = 1000;
  order.height = order.lanes.size() > kFewLanes ? 1300 : 600;
  order.paper = kWhite;
  report.pictureTitle = std::exchange(order.title, "");
  // A trial without a title of its own is titled by the whole path of its file.
  const std::string& title = workbench.trial.TrialTitle;
  if (const std::size_t at = report.pictureTitle.find(title); at != std::string::npos) {
    report.pictureTitle.replace(at, title.size(), TitleOnOneLine(workbench.trial));
  }
}

// Files of a third of a second, about, where the processor has no instructions for the digest.
bool IsLong(const std::string& path) {
  constexpr std::uintmax_t kLong = 64U << 20U;
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  return !error && size > kLong;
}

std::string Moment(std::int64_t time) {
  const auto seconds = static_cast<std::time_t>(time);
  std::tm parts{};
  std::array<char, 32> text{};
  if (gmtime_r(&seconds, &parts) == nullptr ||
      std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S UTC", &parts) == 0) {
    return std::to_string(time);
  }
  return text.data();
}

}  // namespace

std::int64_t ReportTime() {
  if (const char* text = std::getenv("SOURCE_DATE_EPOCH")) {
    std::int64_t time = 0;
    const char* end = text + std::strlen(text);
    if (const auto [stop, error] = std::from_chars(text, end, time); error == std::errc() && stop == end) {
      return time;
    }
  }
  return std::time(nullptr);
}

std::optional<Report> MakeReport(Workbench& workbench, const std::string& title, const ReportParts& parts) {
  Report report{.title = title, .notices = workbench.trial.Notices, .time = ReportTime()};
  report.made = "Velmora2, version " + std::string(VersionText) + ", " + Moment(report.time);
  LongWork work(workbench, "Report", IsLong(workbench.LoadedFile));
  report.trial = TrialFacts(workbench, work.Turns());
  if (work.Cancelled()) {
    return std::nullopt;
  }
  if (parts.experiment) {
    report.experiment = ExperimentFacts(workbench.records);
  }
  if (parts.channels) {
    report.channels = {ChannelFacts(workbench)};
    report.channels.front().title.clear();  // the heading says it
  }
  if (parts.tables) {
    report.tables = workbench.results.ResultTables;
  }
  if (parts.graph && workbench.view != nullptr) {
    AddPicture(workbench, report);
  }
  if (parts.steps && workbench.stepsDone) {
    report.steps = workbench.stepsDone();
  }
  return report;
}

}  // namespace velmora
