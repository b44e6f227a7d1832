#include "dsp/bias/bias_file.hpp"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "core/files/files.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/text/text_reader.hpp"
#include "core/trial/helpers.hpp"

namespace velmora {
namespace {

constexpr std::string_view kMark = "Velmora2 Bias";
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kNumberPattern = "0.0000000E+00";
// 66 short lines; what is longer is no bias file, and its end is not looked at.
constexpr std::size_t kMostBytes = std::size_t{1} << 20;

std::string BiasText(const Trial& trial, const PerChannel<float>& levels) {
  std::string text(kMark);
  text.append(" levels taken from file: ").append(OneLine(trial.FileName)).append(kLineEnd);
  text.append("Number of channels: \t").append(FormatNumber(trial.NChan, "00")).append(kLineEnd);
  for (int c = 1; c <= trial.NChan; ++c) {
    const auto at = static_cast<std::size_t>(c);
    text.append(PadRight(OneLine(trial.ChanLabel[at].Text()), Label::kLength));
    text.append("\tchannel").append(FormatNumber(c, "00"));
    text.append("\t").append(FormatNumber(levels[at], kNumberPattern)).append(kLineEnd);
  }
  return text;
}

// The text of a file taken apart from the front.
class Text {
 public:
  explicit Text(std::string_view bytes) : rest_(bytes) {}

  // Up to a line end (CR LF, CR or LF); nothing at the end of the file.
  std::optional<std::string_view> Line() { return TakeUpTo("\r\n"); }
  // Up to a comma or a line end, without leading blanks.
  std::optional<std::string_view> Item() {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(' '), rest_.size()));
    return TakeUpTo(",\r\n");
  }

 private:
  std::optional<std::string_view> TakeUpTo(std::string_view ends) {
    if (rest_.empty()) {
      return std::nullopt;
    }
    const std::string_view taken = rest_.substr(0, rest_.find_first_of(ends));
    rest_.remove_prefix(taken.size());
    rest_.remove_prefix(rest_.substr(0, 2) == kLineEnd ? 2 : std::min<std::size_t>(1, rest_.size()));
    return taken;
  }

  std::string_view rest_;
};

std::string ReadHead(const std::string& path) {
  const InputFile file(path);
  std::string bytes(std::min(static_cast<std::size_t>(file.Size()), kMostBytes), '\0');
  bytes.resize(file.ReadAt(0, bytes.data(), bytes.size()));
  return bytes;
}

[[noreturn]] void FailRead(const std::string& path, const std::string& why) {
  throw BiasFileError("", "Error opening file: " + path + "\n\n\"" + why + "\"");
}

constexpr const char* kTooShort = "Input past end of file";

std::string_view RequireLine(std::optional<std::string_view> line, const std::string& path) {
  if (!line) {
    FailRead(path, kTooShort);
  }
  return *line;
}

void CheckMark(std::string_view line) {
  if (line.substr(0, kMark.size()) != kMark) {
    throw BiasFileError("Invalid File Format",
                        "File does not appear to be in the correct format.  Operation is cancelled.");
  }
}

void CheckCount(std::string_view line, int channels, const std::string& path) {
  const std::size_t tab = line.find('\t');
  if (tab == std::string_view::npos) {
    FailRead(path, "There is no tab before the number of channels");
  }
  if (Val(line.substr(tab + 1)) != channels) {
    throw BiasFileError(
        "Invalid File Format",
        "Number of bias levels is different than the number of channels.  Operation is cancelled.");
  }
}

// The number behind the second tab.
std::optional<float> LevelOf(std::string_view item) {
  const std::size_t first = item.find('\t');
  const std::size_t second = first == std::string_view::npos ? first : item.find('\t', first + 1);
  return second == std::string_view::npos ? std::nullopt
                                          : std::optional(FieldNumber32(item.substr(second + 1)));
}

bool HasComma(const Trial& trial) {
  for (int c = 1; c <= trial.NChan; ++c) {
    if (trial.ChanLabel[c].Text().find(',') != std::string::npos) {
      return true;
    }
  }
  return false;
}

}  // namespace

void WriteBiasFile(Workbench& workbench) {
  if (!AskSaveName(workbench, {.title = "Save Bias levels in .BSV file",
                               .defaultName = workbench.trial.TrialName + ".bsv",
                               .extension = ".bsv",
                               .filter = "Velmora2 Bias Levels (.bsv)|*.bsv|All files (*.*)|*.*"})) {
    return;
  }
  OutputFile file(workbench.OutputFileName);
  file.Write(BiasText(workbench.trial, workbench.chooser.ChanConst));
  CommitSave(workbench, file);
  DidSave(workbench, "Saved bias levels as");
  if (HasComma(workbench.trial)) {
    AddNotice(workbench,
              "A comma in a label moves the levels behind it to other channels when the .BSV file is read.");
  }
}

bool ReadBiasFile(const std::string& path, int channels, PerChannel<float>& levels) {
  try {
    const std::string bytes = ReadHead(path);
    Text text(bytes);
    CheckMark(text.Line().value_or(""));
    CheckCount(RequireLine(text.Line(), path), channels, path);
    bool each = true;
    for (int c = 1; c <= channels; ++c) {
      const std::optional<float> level = LevelOf(RequireLine(text.Item(), path));
      levels[static_cast<std::size_t>(c)] = level.value_or(0.0F);
      each = each && level;
    }
    return each;
  } catch (const FileError& error) {
    FailRead(path, error.what());
  }
}

}  // namespace velmora
