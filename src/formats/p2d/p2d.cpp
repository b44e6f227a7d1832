#include "formats/p2d/p2d.hpp"

#include <algorithm>
#include <cmath>

#include "core/files/files.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "formats/delimited_text/layout/name_line.hpp"
#include "formats/text_table/text_table.hpp"

namespace velmora {
namespace {

std::vector<std::string> P2dWords(const std::string& line) {
  std::vector<std::string> words = SplitFields(line, " \t,");
  std::erase(words, "");
  return words;
}

bool IsP2dCount(const std::string& word) {
  return !word.empty() && word.size() < 10 && word.find_first_not_of("0123456789") == std::string::npos;
}

// Whether a first line is rows, columns and a zero, and the next is a row.
bool IsP2dHead(const std::vector<std::string>& lines) {
  if (lines.size() < 2 || !MayBeRecord(lines[1])) {
    return false;
  }
  const std::vector<std::string> counts = P2dWords(lines[0]);
  return counts.size() == 3 && std::all_of(counts.begin(), counts.end(), IsP2dCount);
}

}  // namespace

std::unique_ptr<RecordingFile> OpenP2d(const std::string& path) {
  const std::vector<std::string> lines = FirstLines(path, 2);
  if (!IsP2dHead(lines)) {
    throw FileError("its first line does not hold the numbers of rows and columns");
  }
  TextTable table;
  table.layout.firstLine = 2;
  const std::size_t columns = P2dWords(lines[1]).size();
  for (std::size_t k = 1; k <= columns; ++k) {
    table.layout.columns.push_back(static_cast<int>(k));
    table.recording.channels.push_back({.label = "Comp. " + std::to_string(k), .rate = 1.0});
  }
  table.recording.promised = static_cast<std::int64_t>(Val(P2dWords(lines[0])[0]));
  return OpenTextTable(path, std::move(table));
}

}  // namespace velmora
