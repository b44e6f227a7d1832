#include "formats/fourier/fourier_file_reader.hpp"

#include <algorithm>
#include <limits>
#include <new>
#include <optional>
#include <vector>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/text/text_reader.hpp"
#include "core/trial/helpers.hpp"
#include "core/trial/refusals.hpp"
#include "formats/fourier/fourier_file_layout.hpp"
#include "formats/fourier/reconstruction.hpp"
#include "formats/read_error.hpp"
#include "formats/text_source.hpp"

namespace velmora {
namespace {

constexpr std::int16_t kFourierFileType = 8;

// Val of a field in fixed columns; blanks and tabs in front of the number are passed over, and what the line
// lacks is 0. An infinity among the data would go unnoticed.
double ColumnNumber(std::string_view line, const fourier_file::Columns& columns) {
  std::string_view field = line.substr(std::min(columns.first, line.size()), columns.count);
  field.remove_prefix(std::min(field.find_first_not_of(" \t"), field.size()));
  return FieldNumber(field);
}

bool NamesSomething(std::string_view line) {
  return std::any_of(fourier_file::kNamingLines.begin(), fourier_file::kNamingLines.end(),
                     [line](std::string_view start) { return line.starts_with(start); });
}

struct Header {
  float bias = 0.0F;
  std::vector<std::string> lines;
};

// Nothing when the header does not end. Throws FileError.
std::optional<Header> ReadHeader(TextReader& reader) {
  Header header;
  std::string line;
  while (header.lines.size() < fourier_file::kMostHeaderLines && ReadTextLine(reader, line)) {
    header.lines.push_back(DecodeLine(line));
    if (NamesSomething(line)) {
      continue;
    }
    if (const std::size_t at = line.find(fourier_file::kBias); at != std::string::npos) {
      constexpr std::size_t kBehind = 5;
      header.bias = static_cast<float>(ColumnNumber(line, {at + kBehind, 10}));
    }
    if (line.find(fourier_file::kEndOfHeader) != std::string::npos) {
      return header;
    }
  }
  return std::nullopt;
}

std::int32_t CountLines(Workbench& workbench, ProgressPanel& panel, TextReader& reader) {
  constexpr std::int32_t kLinesInATurn = 10'000;
  std::string line;
  std::int32_t lines = 0;
  while (ReadTextLine(reader, line)) {
    if (++lines % kLinesInATurn == 0 && panel.GiveTurn()) {
      break;
    }
  }
  return workbench.CancelRequested ? 0 : lines;
}

/// What a reconstruction is made of.
struct Wanted {
  std::int32_t samples = 0;
  double duration = 0.0;
  std::int32_t harmonics = 0;
  double bias = 0.0;
};

std::int32_t AskWhole(Workbench& workbench, const char* title, const std::string& prompt,
                      std::int32_t offered) {
  const std::string typed = workbench.questions.AskInput(
      {.title = title, .prompt = prompt, .defaultText = std::to_string(offered), .isNumber = true});
  return typed.empty() ? 0 : RoundHalfEven32(Val(typed));
}

// False when a question ended the read.
bool AskRest(Workbench& workbench, const Header& header, std::int32_t inFile, Wanted& wanted) {
  constexpr std::int32_t kSamples = 1001;
  if (wanted.samples <= 0) {
    wanted.duration = 0.0;
    wanted.samples = AskWhole(workbench, "Number of Data", "Enter number of data to generate.", kSamples);
    if (wanted.samples < 2 || !MayBeLarge(workbench, wanted.samples, 1)) {
      return false;
    }
  }
  wanted.harmonics = AskWhole(
      workbench, "Number of Harmonics",
      " Enter number of harmonics to include.  Maximum number is: " + std::to_string(inFile), inFile);
  wanted.harmonics = std::min(wanted.harmonics, inFile);
  if (wanted.harmonics < 1) {
    return false;
  }
  const std::string bias = workbench.questions.AskInput({.title = "Bias Level",
                                                         .prompt = " Enter bias level or 0.0. ",
                                                         .defaultText = PlainNumber(header.bias),
                                                         .isNumber = true});
  wanted.bias = Val(bias);
  if (wanted.duration == 0.0) {
    const std::string typed = workbench.questions.AskInput({.title = "Duration",
                                                            .prompt = "Enter duration of signal in seconds.",
                                                            .defaultText = "1",
                                                            .isNumber = true});
    wanted.duration = typed.empty() ? 1.0 : Val(typed);
  }
  return wanted.duration > 0;
}

void StartTrial(Trial& trial, const Wanted& wanted) {
  trial.AllocateData(1, wanted.samples);
  trial.TrialTitle = "Fourier series reconstruction";
  trial.Duration = wanted.duration;
  trial.Rate = (wanted.samples - 1) / wanted.duration;
  trial.SetChannelDefaults(0);
  trial.SetChannelDefaults(1);
  trial.ChanAutozero[1] = -1;
  trial.ChanLabel[1] = "From FTF";
  trial.ChanColour[1] = 1 % kColours + 1;
}

// Returns how many harmonics were added.
std::int32_t AddHarmonics(Workbench& workbench, ProgressPanel& panel, TextReader& reader,
                          const Wanted& wanted, std::vector<float>& samples) {
  const double step = 1.0 / workbench.trial.Rate;
  std::string line;
  std::int32_t done = 0;
  while (done < wanted.harmonics && ReadTextLine(reader, line) &&
         ColumnNumber(line, fourier_file::kHarmonic) == done + 1) {
    const Harmonic harmonic{.frequency = ColumnNumber(line, fourier_file::kFrequency),
                            .cosine = ColumnNumber(line, fourier_file::kCosine),
                            .sine = ColumnNumber(line, fourier_file::kSine)};
    AddHarmonic(harmonic, step, samples);
    panel.SetValue(++done);
    if (panel.GiveTurn()) {
      break;
    }
  }
  return done;
}

void Reconstruct(Workbench& workbench, ProgressPanel& panel, const Wanted& wanted) {
  Trial& trial = workbench.trial;
  StartTrial(trial, wanted);
  std::vector<float> samples(static_cast<std::size_t>(wanted.samples), static_cast<float>(wanted.bias));
  panel.SetLimits(0, wanted.harmonics);
  panel.SetStatus("Reconstructing signals");
  TextReader reader(trial.FileName);
  const std::int32_t done = ReadHeader(reader) ? AddHarmonics(workbench, panel, reader, wanted, samples) : 0;
  const double step = 1.0 / trial.Rate;
  for (std::int32_t i = 0; i < wanted.samples; ++i) {
    trial.matrix.Frame(i + 1)[0] = static_cast<float>(i * step);
    trial.matrix.Frame(i + 1)[1] = samples[static_cast<std::size_t>(i)];
  }
  panel.SetStatus(std::to_string(wanted.samples) + " samples/chan.");
  if (done < wanted.harmonics) {
    ShowRefusal(workbench, {.text = "End-of-file reached before all harmonics read.\nNumber of harmonics in "
                                    "reconstrucion was " +
                                    std::to_string(done) + ".",
                            .icon = Icon::Exclamation});
  }
}

void ReportNoFourierFile(Workbench& workbench) {
  workbench.trial.DiscardData();
  ShowFailure(
      workbench,
      {.title = "File Error",
       .text = "Error reading Fourier Transform File (.FTF).  File may be corrupt or in wrong format.",
       .icon = Icon::Exclamation});
}

void Read(Workbench& workbench, ProgressPanel& panel) {
  Trial& trial = workbench.trial;
  Wanted wanted{.samples = trial.NData, .duration = trial.Duration};
  TextReader reader(trial.FileName);
  const std::optional<Header> header = ReadHeader(reader);
  if (!header) {
    ReportNoFourierFile(workbench);
    return;
  }
  trial.HeaderLineCount = static_cast<std::int32_t>(header->lines.size());
  std::copy(header->lines.begin(), header->lines.end(), trial.HeaderLines.begin() + 1);
  const std::int32_t inFile = CountLines(workbench, panel, reader);
  if (!AskRest(workbench, *header, inFile, wanted)) {
    trial.DiscardData();
    return;
  }
  Reconstruct(workbench, panel, wanted);
}

}  // namespace

void ReadFourierFile(Workbench& workbench, ProgressPanel& panel) {
  workbench.trial.FileTypeCode = kFourierFileType;
  panel.SetFormat("Fourier Transform File (.FTF)");
  panel.SetStatus("Reading harmonics");
  try {
    Read(workbench, panel);
  } catch (const FileError&) {
    ReportNoFourierFile(workbench);
  } catch (const std::bad_alloc&) {
    ReportReadError(workbench, "there is not enough memory");
  }
}

}  // namespace velmora
