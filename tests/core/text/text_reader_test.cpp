#include "core/text/text_reader.hpp"

#include "support/temporary_directory.hpp"

namespace velmora::test {
namespace {

using Lines = std::vector<std::string>;

Lines LinesOf(const std::string& bytes) {
  const TemporaryDirectory directory;
  const std::string path = directory.Path("lines.txt");
  WriteFile(path, bytes);
  TextReader reader(path);
  Lines lines;
  for (std::string line; ReadTextLine(reader, line);) {
    lines.push_back(line);
  }
  EXPECT_EQ(reader.Position(), reader.Size());
  return lines;
}

TEST(ReadTextLine, EveryKindOfLineEnd) {
  EXPECT_EQ(LinesOf("one\r\ntwo\r\n\r\nthree"), (Lines{"one", "two", "", "three"}));
  EXPECT_EQ(LinesOf("one\ntwo\n\nthree\n"), (Lines{"one", "two", "", "three"}));
  EXPECT_EQ(LinesOf("one\rtwo\r\rthree\r"), (Lines{"one", "two", "", "three"}));
  EXPECT_EQ(LinesOf("one\n\rtwo\n\rthree\n\r"), (Lines{"one", "two", "three"}));
  EXPECT_EQ(LinesOf("one\n\r\ntwo\r\n\rthree"), (Lines{"one", "", "two", "", "three"})) << "CR LF before all";
  EXPECT_EQ(LinesOf(""), Lines{});
  EXPECT_EQ(LinesOf("\n"), Lines{""});
  EXPECT_EQ(LinesOf(std::string("a\0b\n", 4)), Lines{std::string("a\0b", 3)});
}

TEST(ReadTextLine, LinesAndLineEndsAcrossThePiecesOfAFile) {
  // Every alignment of a CR LF against the reader's pieces, whatever their size up to 1 MiB.
  for (const std::size_t size : {65535U, 65536U, 131071U, 131072U, 262143U, 262144U, 1048575U}) {
    const std::string longLine(size, 'x');
    EXPECT_EQ(LinesOf(longLine + "\r\nnext\r\n"), (Lines{longLine, "next"})) << size;
    EXPECT_EQ(LinesOf(longLine + "\n\rnext\n\r"), (Lines{longLine, "next"})) << size;
    EXPECT_EQ(LinesOf(longLine + "\n\r\nnext"), (Lines{longLine, "", "next"})) << size;
  }
}

TEST(ReadTextLine, AFileWithoutLineEndsIsCut) {
  const TemporaryDirectory directory;
  const std::string path = directory.Path("endless.txt");
  WriteFile(path, "");
  std::filesystem::resize_file(path, TextReader::kLongestLine + 1000);
  TextReader reader(path);
  std::string line;
  EXPECT_TRUE(ReadTextLine(reader, line));
  EXPECT_EQ(line.size(), TextReader::kLongestLine);
  EXPECT_FALSE(ReadTextLine(reader, line));
}

}  // namespace
}  // namespace velmora::test
