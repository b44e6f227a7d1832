#include "import/load_questions.hpp"

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

#include "core/files/files.hpp"
#include "core/files/start.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "formats/delimited_text/text_parser.hpp"
#include "formats/native_binary/native_binary_layout.hpp"
#include "formats/read_error.hpp"
#include "formats/unpublished_format.hpp"
#include "import/detect_text_format.hpp"
#include "import/reader_table.hpp"

namespace velmora {
namespace {

constexpr const char* kNotRead = "Format Not Read";
constexpr const char* kTryParsing =
    "\n\nIf the file is a text or ASCII file do you want to try parsing the file?";

bool SaysYes(Workbench& workbench, const std::string& title, const std::string& text) {
  workbench.trial.DiscardData();
  return workbench.questions.AskBox({.title = title,
                                     .text = text + kTryParsing,
                                     .icon = Icon::Question,
                                     .buttons = {Button::Yes, Button::No}}) == Button::Yes;
}

Button Tell(Workbench& workbench, const Box& box) {
  workbench.trial.DiscardData();
  return ShowFailure(workbench, box);
}

std::string FirstBytes(const std::string& path, std::size_t count) {
  std::string bytes(count, '\0');
  bytes.resize(InputFile(path).ReadAt(0, bytes.data(), count));
  return bytes;
}

std::string FirstRecord(const std::string& path) {
  constexpr std::size_t kRecordBytes = 256;
  return FirstBytes(path, kRecordBytes);
}

// Text has no control characters but those that part columns and lines.
bool HoldsText(const std::string& path) {
  constexpr std::size_t kLooked = 4096;
  const std::string bytes = FirstBytes(path, kLooked);
  return !bytes.empty() && std::none_of(bytes.begin(), bytes.end(), [](char c) {
    return static_cast<unsigned char>(c) < ' ' &&
           std::string_view("\t\r\n\f\v\x1a").find(c) == std::string_view::npos;
  });
}

// Readable parts of a binary record; shorter ones are numbers that look like text.
std::vector<std::string> TextsIn(std::string_view record) {
  constexpr std::size_t kShortest = 4;
  std::vector<std::string> texts;
  std::string text;
  for (const char c : std::string(record) + '\0') {
    if (c >= ' ' && c <= '~') {
      text += c;
      continue;
    }
    if (Trim(text).size() >= kShortest) {
      texts.push_back(Trim(text));
    }
    text.clear();
  }
  return texts;
}

void TakeTexts(Workbench& workbench, std::string_view record) {
  const std::vector<std::string> texts = TextsIn(record);
  const auto lines = static_cast<std::int32_t>(std::min<std::size_t>(texts.size(), kMaxHeaderLines));
  std::copy_n(texts.begin(), lines, workbench.trial.HeaderLines.begin() + 1);
  workbench.trial.HeaderLineCount = lines;
  for (std::size_t k = 0; k < static_cast<std::size_t>(native::kExperimentLines); ++k) {
    std::string line = k < texts.size() ? texts[k] : "";
    line.resize(native::kExperimentLineBytes, ' ');
    workbench.records.EXPTINFO.replace(k * line.size(), line.size(), line);
  }
}

// Text or not, as far as the file's start tells; nothing when it cannot be read, which has been told.
std::optional<bool> LooksLikeText(Workbench& workbench) {
  try {
    return HoldsText(workbench.trial.FileName);
  } catch (const FileError& error) {
    ReportReadError(workbench, error.what());
    return std::nullopt;
  }
}

// The parser guesses nothing of the format: what it reads is plain text.
void OfferParser(Workbench& workbench, ProgressPanel& panel, const std::string& words) {
  const std::optional<bool> text = LooksLikeText(workbench);
  if (text == false) {
    Tell(workbench, {.title = kNotRead, .text = words, .icon = Icon::Exclamation});
  } else if (text == true && SaysYes(workbench, kNotRead, words)) {
    constexpr std::int16_t kDelimitedText = 15;
    workbench.trial.FileTypeCode = kDelimitedText;
    ParseTextFile(workbench, panel);
  }
}

}  // namespace

void AskParseBioBench(Workbench& workbench, ProgressPanel& panel) {
  workbench.trial.FileTypeCode = 17;
  if (SaysYes(workbench, "Unsupported File Format",
              "BioBench (.BB) file format is not implemented in Velmora2.\n\nUse BioBench to read and "
              "convert the file to text format (use extension .BBT).")) {
    ParseTextFile(workbench, panel);
  }
}

void AskParseUnpublished(Workbench& workbench, ProgressPanel& panel, const Format& format) {
  workbench.trial.FileTypeCode = static_cast<std::int16_t>(format.code);
  OfferParser(
      workbench, panel,
      UnpublishedFormatText(std::string(format.name) + " files", "read", format.whyNot, format.wayRound) +
          "\nFilename was: '" + workbench.trial.FileName + "'.");
}

void AskParseNotUnderstood(Workbench& workbench, ProgressPanel& panel, const Format& format,
                           const std::string& why) {
  workbench.trial.FileTypeCode = static_cast<std::int16_t>(format.code);
  OfferParser(workbench, panel,
              std::string(format.name) + " file not understood: " + why + ".\nFilename was: '" +
                  workbench.trial.FileName + "'.");
}

void AskParseUnknownContents(Workbench& workbench, ProgressPanel& panel) {
  const Trial& trial = workbench.trial;
  if (SaysYes(
          workbench, "Unknown File Format",
          "File contents not recognized.  Filename was: '" + trial.TrialName + "." + trial.FileExt + "'.")) {
    ParseTextFile(workbench, panel);
  } else {
    workbench.trial.FileTypeCode = kUnknownFileType;
  }
}

void AskParseUnknownExtension(Workbench& workbench, ProgressPanel& panel) {
  if (SaysYes(workbench, "Filetype Unrecognized",
              "File extension, '" + workbench.trial.FileExt + "', was unrecognized.")) {
    DetectTextFormat(workbench, panel);
  } else {
    workbench.trial.FileTypeCode = kUnknownFileType;
  }
}

// The program named here does not exist on this system, so both buttons end the load; where it would
// look for the file is stored all the same.
void TellDaff(Workbench& workbench, ProgressPanel& /*panel*/) {
  const Button answer =
      Tell(workbench, {.title = "Filetype Not Implemented",
                       .text = "DAFF file format is not implemented in Velmora2.\n"
                               "Use Velmora1 to read such files and then save them in either .VMA or .BIN "
                               "formats.\nPress OK to open file with Velmora1 or press Cancel.",
                       .icon = Icon::Exclamation,
                       .buttons = {Button::OK, Button::Cancel}});
  if (answer == Button::OK) {
    SettingsStore store;
    SaveLastFile(workbench, store, "Velmora");
  }
}

// What can be known of such a file, its texts, is kept as header lines and experiment lines.
void TellOptotrak(Workbench& workbench, ProgressPanel& /*panel*/) {
  try {
    TakeTexts(workbench, FirstRecord(workbench.trial.FileName));
  } catch (const FileError& error) {
    ReportReadError(workbench, error.what());
    return;
  }
  Tell(workbench, {.title = "File Format Not Supported",
                   .text = "Optotrak file formats are not supported.",
                   .icon = Icon::Exclamation});
}

void TellDelsysEmt(Workbench& workbench, ProgressPanel& /*panel*/) {
  Tell(workbench, {.title = "Cannot read this filetype",
                   .text = "Cannot read Delsys .EMT file format.",
                   .icon = Icon::Exclamation});
}

}  // namespace velmora
