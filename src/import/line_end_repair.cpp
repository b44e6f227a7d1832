#include "import/line_end_repair.hpp"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <vector>

#include "core/files/paths.hpp"
#include "core/trial/helpers.hpp"
#include "formats/line_blocks.hpp"

namespace velmora {
namespace {

constexpr std::size_t kPiece = std::size_t{256} << 10;

// What ends a line when no CR and no LF does: vertical tab, form feed, record separator.
constexpr std::string_view kOddEnds = "\v\f\x1E";

// Longest first.
constexpr std::array<std::string_view, 5> kLineEnds = {"\r\r\n", "\r\n", "\n\r", "\r", "\n"};

std::size_t LineEndAt(std::string_view text, std::size_t at, bool oddEnds) {
  for (const std::string_view end : kLineEnds) {
    if (text.substr(at, end.size()) == end) {
      return end.size();
    }
  }
  return oddEnds && kOddEnds.find(text[at]) != std::string_view::npos ? 1 : 0;
}

// A file with no line end among its first bytes has none that matters.
constexpr std::int64_t kLookedAt = LineBlocks::kLongestLine;

// Reads on, keeping the last `kept` bytes at the front; false at the end of the file.
bool ReadOn(TextSource& source, std::string& text, std::size_t kept) {
  text.erase(0, text.size() - kept);
  const std::size_t before = text.size();
  text.resize(before + kPiece);
  const std::size_t got = source.Read(text.data() + before, kPiece);
  text.resize(before + got);
  return got > 0;
}

enum class LineEnds { Regular, Doubled, Odd };

LineEnds FindLineEnds(TextSource& source) {
  bool odd = false;
  std::string text;
  while (source.Position() < kLookedAt && ReadOn(source, text, 0)) {
    const std::size_t at = text.find_first_of("\r\n");
    odd = odd || text.find_first_of(kOddEnds) != std::string::npos;
    if (at == std::string::npos) {
      continue;
    }
    ReadOn(source, text, text.size() - at);
    const std::string_view end = std::string_view(text).substr(0, 3);
    const bool doubled = end == "\r\r\n" || (end.starts_with("\n\r") && end != "\n\r\n");
    return doubled ? LineEnds::Doubled : LineEnds::Regular;
  }
  return odd ? LineEnds::Odd : LineEnds::Regular;
}

void WriteWithCrLf(TextSource& source, OutputFile& out, bool oddEnds) {
  constexpr std::size_t kLongestEnd = 3;
  std::string text;
  std::string fixed;
  std::size_t kept = 0;
  for (bool more = true; more;) {
    more = ReadOn(source, text, kept);
    const std::size_t last = more ? text.size() - std::min(text.size(), kLongestEnd - 1) : text.size();
    fixed.clear();
    std::size_t at = 0;
    while (at < last) {
      const std::size_t end = LineEndAt(text, at, oddEnds);
      fixed += end > 0 ? std::string_view("\r\n") : std::string_view(text).substr(at, 1);
      at += std::max<std::size_t>(end, 1);
    }
    kept = text.size() - at;
    out.Write(fixed);
  }
}

std::string FreeName(const std::string& path, const std::string& ending) {
  const std::string stem = path.substr(0, path.size() - FileNamePart(path).size()) + BaseName(path);
  std::string name = stem + ending;
  for (int n = 2; std::filesystem::exists(name); ++n) {
    name = stem;
    name.append(".").append(std::to_string(n)).append(ending);
  }
  return name;
}

void Rename(const std::string& from, const std::string& to) {
  std::error_code error;
  std::filesystem::rename(from, to, error);
  if (error) {
    throw FileError(error.message());
  }
}

bool AskRepair(Workbench& workbench) {
  return workbench.questions.AskBox({.title = "Fix File?",
                                     .text = "File has incomplete line termination (CR/LF).  Press OK to add "
                                             "correct line termination.",
                                     .icon = Icon::Question,
                                     .buttons = {Button::OK, Button::Cancel}}) == Button::OK;
}

Button AskKeepOriginal(Workbench& workbench) {
  return workbench.questions.AskBox({.title = "Keep Original?",
                                     .text = "Do you want to keep the original file?  Usually select No to "
                                             "erase original file or press Cancel.",
                                     .icon = Icon::Question,
                                     .buttons = {Button::Yes, Button::No, Button::Cancel}});
}

void Replace(Workbench& workbench, const std::string& fixedName, bool keepOriginal) {
  const std::string& path = workbench.trial.FileName;
  if (keepOriginal) {
    const std::string kept = FreeName(path, ".nocrlf.txt");
    Rename(path, kept);
    workbench.questions.AskBox({.title = "Original Filename Changed",
                                .text = "Original file is now called, " + kept,
                                .icon = Icon::Information});
  }
  Rename(fixedName, path);
}

}  // namespace

bool HasIncompleteLineEnds(const std::string& path) {
  TextSource source(path);
  return FindLineEnds(source) != LineEnds::Regular;
}

bool OfferRepair(Workbench& workbench) {
  if (!AskRepair(workbench)) {
    return false;
  }
  const std::string& path = workbench.trial.FileName;
  const std::string fixedName = FreeName(path, ".fixed.txt");
  TextSource source(path);
  const bool oddEnds = FindLineEnds(source) == LineEnds::Odd;
  source.Rewind();
  OutputFile out(fixedName);
  WriteWithCrLf(source, out, oddEnds);
  out.Commit();
  const Button answer = AskKeepOriginal(workbench);
  if (answer == Button::Cancel) {
    std::error_code error;
    std::filesystem::remove(fixedName, error);
    return false;
  }
  Replace(workbench, fixedName, answer == Button::Yes);
  return true;
}

}  // namespace velmora
