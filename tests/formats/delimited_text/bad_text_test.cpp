#include <sys/resource.h>
#include <unistd.h>

#include "formats/line_blocks.hpp"
#include "support/text_load.hpp"

namespace velmora::test {
namespace {

/// Texts that no instrument writes but that a disk, a download or a bad day makes.
struct BadTextTest : TextLoadTest {
  // Every box is answered with its first button, every dialogue once with its accepting button.
  void LoadAnyhow(const std::string& name, std::string_view bytes) {
    questions.formAnswers.clear();
    questions.boxAnswers.assign(6, Button::Yes);
    questions.inputAnswers = {"100", "100"};
    AnswerForm();
    AnswerForm({}, "Cancel");
    AnswerForm({}, "Cancel");
    Load(name, bytes);
  }
};

TEST_F(BadTextTest, LinesOfTenMegabytes) {
  std::string line;
  while (line.size() < 10'000'000) {
    line += "12345.678,";
  }
  // As data: the columns that are wanted lie at the front; the rest is told.
  LoadAnyhow("a.csv", "h\n1,2\n3,4\n" + line + "\n5,6\n");
  EXPECT_EQ(trial.NChan, 2);
  EXPECT_EQ(Rows(), (Frames{{1, 2}, {3, 4}, {12345.678F, 12345.678F}, {5, 6}}));
  EXPECT_NE(LastBox().find("1 lines have more columns than were read, the first is line 4"),
            std::string::npos);
  // As header: read past.
  LoadAnyhow("b.csv", std::string(10'000'000, 'x') + "\nh\n1,2\n3,4\n");
  EXPECT_EQ(trial.NData, 2);
  EXPECT_EQ(trial.HeaderLines[1].size(), LineBlocks::kLongestLine);
  // Alone, with and without an end.
  for (const char* end : {"", "\n", "\n\n"}) {
    LoadAnyhow("c.csv", line + end);
    EXPECT_EQ(trial.NData, 0);
  }
}

TEST_F(BadTextTest, AFileWithoutLineEndsIsGivenUpSoon) {
  // Four gigabytes that take no room on the disk.
  const std::string path = directory.Path("a.txt");
  WriteFile(path, "1 2 3 4");
  ASSERT_EQ(truncate(path.c_str(), off_t{4} << 30), 0);
  LoadPath(path);
  EXPECT_TRUE(
      LastBox().starts_with("|Error reading file.\nFile may have incorrect format or incomplete line "
                            "termination (CR/LF).\n"))
      << LastBox();
  // Behind lines of numbers it ends the read.
  WriteFile(path, "h\n" + std::string(60, '\n') + "1 2\n3 4\n5 6\n");
  ASSERT_EQ(truncate(path.c_str(), off_t{4} << 30), 0);
  AnswerForm({{"ParseSkip", "61"}, {"NChan", "2"}});
  AnswerForm({}, "Cancel");
  LoadPath(path);
  EXPECT_EQ(LastBox(), "|Error reading file: " + path + "\n\"a line is longer than 64 MiB\"");
  EXPECT_EQ(trial.NData, 0);
  // An edit that looks into a file which has gone meanwhile must not throw through the window's events.
  questions.formAnswers = {[&path](Form& form) {
    std::filesystem::remove(path);
    EXPECT_NO_THROW(form.Edit(*form.FindField("ParseSkip"), "61"));
    return "Cancel";
  }};
  LoadPath(path);
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(BadTextTest, CancelIsHeardAmongLongLines) {
  std::string line(1'000'000, ' ');
  line.replace(0, 3, "1 2");
  std::string text = "h\n1 2\n3 4\n";
  for (int i = 0; i < 70; ++i) {
    text += line + "\n";
  }
  for (const char* stage : {"Counting", "Reading"}) {
    questions.onProgress = [stage](ProgressPanel& panel) {
      if (panel.Status().starts_with(stage) && panel.Status() != "Counting records") {
        panel.PressCancel();
      }
    };
    questions.boxAnswers = {Button::OK};
    LoadWithDefaults("a.txt", text);
    EXPECT_GT(trial.NData, 2);
    EXPECT_LT(trial.NData, 72) << stage;
  }
}

TEST_F(BadTextTest, NulBytesManyColumnsLongNumbersNoLineEnd) {
  using namespace std::string_literals;
  LoadAnyhow("nul.txt", "h\n1\t2\n3\0\t4\n5\t6\n"s);
  EXPECT_EQ(Rows(), (Frames{{1, 2}, {0, 4}, {5, 6}}));
  EXPECT_TRUE(LastBox().starts_with("Check the Data|1 fields are no numbers"));
  LoadAnyhow("zeros.txt", std::string(100'000, '\0'));
  EXPECT_EQ(trial.NData, 0);

  std::string wide = "h\n";
  for (int row = 0; row < 3; ++row) {
    for (int c = 0; c < 10'000; ++c) {
      wide += std::to_string(c) + "\t";
    }
    wide += "\n";
  }
  LoadAnyhow("wide.txt", wide);  // the number of columns of the trial before stays on offer
  EXPECT_EQ(questions.boxes.at(questions.boxes.size() - 2).title, "Number of Channels Unknown");
  EXPECT_TRUE(LastBox().starts_with("Check the Data|3 lines have more columns than were read"));
  trial.NChan = 0;
  LoadAnyhow("wide.txt", "DEMG Channels: 1e30\n\n\nTime [s]\n" + wide.substr(2));
  EXPECT_EQ(Offered("NChan"), "0") << "no number of columns that there can be";
  LoadAnyhow("wide.txt", wide);
  EXPECT_EQ(questions.boxes.back().title, "Number of Channels Unknown");
  EXPECT_EQ(trial.NData, 0);

  const std::string digits = std::string("3.").append(4000, '3');
  LoadAnyhow("digits.txt", "h\n" + digits + " 1\n" + digits + "e-3 2\n-" + digits + " 3\n");
  EXPECT_EQ(Rows(), (Frames{{10.0F / 3, 1}, {1.0F / 300, 2}, {-10.0F / 3, 3}}));

  LoadAnyhow("one.txt", "1 2 3");
  EXPECT_EQ(questions.boxes.back().title, "Unreadable File");
}

TEST_F(BadTextTest, AFileThatShrinksWhileItIsReadEndsEarly) {
  std::string text = "h\n";
  for (int i = 0; i < 2'000'000; ++i) {  // more than is read at a time
    text += "1.5 2.5\n";
  }
  const std::string path = directory.Path("a.txt");
  questions.onProgress = [&path](ProgressPanel& panel) {
    if (panel.Status() == "Reading 2000000 records" && panel.Value() == 1000) {
      ASSERT_EQ(truncate(path.c_str(), 300'000), 0);
    }
  };
  LoadAnyhow("a.txt", text);
  EXPECT_GT(trial.NData, 1000);
  EXPECT_LT(trial.NData, 2'000'000);
  EXPECT_EQ(trial.Data(1000, 2), 2.5F);
}

TEST_F(BadTextTest, NotEnoughMemoryIsAMessage) {
  std::string text = "h\n";
  for (int i = 0; i < 100'000; ++i) {
    text += "1 1 1 1 1 1 1 1\n";
  }
  AnswerForm({{"NChan", "64"}});
  questions.onProgress = [](ProgressPanel& panel) {
    if (panel.Status().starts_with("Counting 9999 ")) {
      rlimit limit{};
      getrlimit(RLIMIT_AS, &limit);
      limit.rlim_cur = 1;  // nothing more than the program has
      setrlimit(RLIMIT_AS, &limit);
    }
  };
  rlimit before{};
  getrlimit(RLIMIT_AS, &before);
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the sanitizer needs the address space itself";
#endif
  Load("a.txt", text);
  setrlimit(RLIMIT_AS, &before);
  EXPECT_TRUE(LastBox().ends_with("\"there is not enough memory\"")) << LastBox();
  EXPECT_EQ(trial.NData, 0);
}

TEST_F(BadTextTest, LineBlocksEndOnLinesWhateverTheirSize) {
  // Blocks of 8 bytes: every pair of bytes is cut somewhere.
  const std::string text = "a\r\nbb\n\r\rccc dddd eeee\r\n\n\nf\rg";
  WriteFile(directory.Path("a.txt"), text);
  for (std::size_t size = 8; size < 20; ++size) {
    TextSource source(directory.Path("a.txt"));
    LineBlocks blocks(source, size);
    std::vector<std::string> lines;
    for (std::string line; blocks.ReadTextLine(line);) {
      lines.push_back(line);
    }
    EXPECT_EQ(lines, (std::vector<std::string>{"a", "bb", "", "", "ccc dddd eeee", "", "", "f", "g"}))
        << size;
    source.Rewind();
    LineBlocks again(source, size);
    EXPECT_EQ(again.SkipLines(5), 5);
    std::string line;
    again.ReadTextLine(line);
    again.ReadTextLine(line);
    again.ReadTextLine(line);
    EXPECT_EQ(line, "f");
    EXPECT_EQ(again.SkipLines(5), 1);
  }
}

}  // namespace
}  // namespace velmora::test
