// What the pages for users say is read, held against the table of readers.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <set>
#include <sstream>

#include "core/text/text.hpp"
#include "import/reader_table.hpp"
#include "support/command_test.hpp"

namespace velmora::test {
namespace {

using Extensions = std::set<std::string>;

void AddWords(Extensions& to, std::string_view text) {
  std::istringstream words{std::string(text)};
  for (std::string word; words >> word;) {
    to.insert(word);
  }
}

// An extension that leads to a reader for some files and to a refusal for others is read.
Extensions ReadByTheProgram() {
  Extensions extensions;
  for (const Format& format : Formats()) {
    if (Reads(format)) {
      AddWords(extensions, format.extensions);
    }
  }
  return extensions;
}

// `C3D`, in the paragraph that starts so.
Extensions InReadme() {
  const std::string page = ReadFile(README_PAGE);
  const std::size_t start = page.find("Files are read by their extension:");
  std::istringstream pieces(page.substr(start, page.find("\n\n", start) - start));
  Extensions extensions;
  std::string piece;
  for (bool quoted = false; std::getline(pieces, piece, '`'); quoted = !quoted) {
    if (quoted) {
      extensions.insert(piece);
    }
  }
  return extensions;
}

// The words in capitals of the second column, where the third says that the format is read.
Extensions InTheTableOfFormats() {
  std::istringstream page(ReadFile(FORMATS_PAGE));
  Extensions extensions;
  for (std::string line; std::getline(page, line) && !line.starts_with("What instruments' files");) {
    std::vector<std::string> cells;
    std::istringstream row(line);
    for (std::string cell; std::getline(row, cell, '|');) {
      cells.push_back(Trim(cell));
    }
    if (cells.size() < 5 || (!cells[3].starts_with("yes") && cells[3] != "in part")) {
      continue;
    }
    std::string words;
    bool quoted = false;  // what a file starts with
    for (const char c : cells[2]) {
      quoted = quoted != (c == '"');
      words += quoted || c == '"' || c == ',' || c == ';' ? ' ' : c;
    }
    Extensions all;
    AddWords(all, words);
    std::copy_if(all.begin(), all.end(), std::inserter(extensions, extensions.end()),
                 [](const std::string& word) { return word.size() > 1 && ToUpper(word) == word; });
  }
  return extensions;
}

TEST(FormatLists, PagesNameTheExtensionsThatAreRead) {
  EXPECT_EQ(InReadme(), ReadByTheProgram());
  Extensions onThePage = InTheTableOfFormats();
  // Files of the program that are no trials.
  for (const char* other : {"VMU", "BSV"}) {
    EXPECT_EQ(onThePage.erase(other), 1U) << other;
  }
  EXPECT_EQ(onThePage, ReadByTheProgram());
}

}  // namespace
}  // namespace velmora::test
