// Pictures of velmora2-run, in a process of its own, without a display.
#include <QImage>
#include <QXmlStreamReader>
#include <cstdlib>
#include <filesystem>

#include "support/command_test.hpp"

namespace velmora::test {
namespace {

struct PictureTest : testing::Test {
  TemporaryDirectory directory;

  // A step from -1 to 1 in the middle of one second.
  void SetUp() override {
    std::vector<float> samples(5001, -1.0F);
    std::fill(samples.begin() + 2500, samples.end(), 1.0F);
    WriteTrialFile(directory.Path("in.vmb"), [&samples](Trial& trial) {
      SetChannels(trial, {samples, std::vector<float>(5001, 0.5F)}, 5000.0);
      trial.ChanLabel[1] = "Step";
      trial.ChanUnits[1] = "mV";
      trial.ChanLabel[2] = "<L> & R";
    });
    ASSERT_TRUE(std::filesystem::exists(directory.Path("in.vmb")));
  }

  // The exit status; what was said is in "said".
  int Run(const std::string& program, const std::string& steps) {
    WriteFile(directory.Path("r.yaml"),
              "velmora2: 1\nsteps:\n  - do: file.load\n    file: \"${input}\"\n  - do: graph.all\n" + steps);
    const std::string command = "cd " + directory.Path("") +
                                " && unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM && " + program +
                                " r.yaml in.vmb > said 2>&1";
    return WEXITSTATUS(std::system(command.c_str()));
  }
  [[nodiscard]] std::string Said() const { return ReadFile(directory.Path("said")); }
};

TEST_F(PictureTest, AnImageShowsTheTrace) {
  ASSERT_EQ(Run(VELMORA2_RUN,
                "  - do: scale.10-v\n"
                "  - view: {image: black.png, size: [800, 500]}\n"
                "  - view: {image: white.png, size: [800, 500], white: true}\n"
                "  - view: {image: full.PNG}\n"),
            0)
      << Said();
  const QImage black(QString::fromStdString(directory.Path("black.png")));
  const QImage white(QString::fromStdString(directory.Path("white.png")));
  ASSERT_EQ(black.size(), QSize(800, 500));
  EXPECT_EQ(QImage(QString::fromStdString(directory.Path("full.PNG"))).size(), QSize(1600, 900));
  EXPECT_EQ(black.pixelColor(2, 2), QColor(Qt::black));
  EXPECT_EQ(white.pixelColor(2, 2), QColor(Qt::white));
  // The first channel steps up by a tenth of the height of the axes, right in their middle: below it to
  // the left, above it to the right.
  const QColor trace(0x56, 0xB4, 0xE9);
  std::vector<int> rows(800, -1);
  for (int k = 0; k < 800; ++k) {
    for (int row = 100; row < 400; ++row) {
      if (black.pixelColor(k, row) == trace) {
        rows[static_cast<std::size_t>(k)] = row;
      }
    }
  }
  EXPECT_NEAR(rows[150] - rows[550], 0.1 * (500 - 70), 6);
  EXPECT_GE(rows[150], 0);
  const auto step = std::find(rows.begin(), rows.end(), rows[550]) - rows.begin();
  EXPECT_GT(step, 300);
  EXPECT_LT(step, 420);
}

TEST_F(PictureTest, TextStaysTextInSvgAndPdf) {
  ASSERT_EQ(Run(VELMORA2_RUN, "  - view: {image: p.svg, white: true}\n  - view: {image: p.pdf}\n"), 0)
      << Said();
  const std::string svg = ReadFile(directory.Path("p.svg"));
  for (const char* text : {">Single-axis Graph of ", ">Step (mV)</text>", ">&lt;L&gt; &amp; R (V)</text>",
                           ">Time (s)</text>", ">0.5</text>", "<polyline"}) {
    EXPECT_NE(svg.find(text), std::string::npos) << text;
  }
  EXPECT_EQ(svg.find("<image"), std::string::npos);
  const std::string pdf = ReadFile(directory.Path("p.pdf"));
  EXPECT_EQ(pdf.substr(0, 5), "%PDF-");
  EXPECT_NE(pdf.find("/Type /Font"), std::string::npos);
  EXPECT_NE(pdf.find("/MediaBox [0 0 1200"), std::string::npos);  // 1600 pixels of 96 an inch, in points
}

// The page is well-formed, whatever labels and titles hold.
TEST_F(PictureTest, AReportIsMadeAgainByteForByte) {
  const auto make = [this](const std::string& name) {
    return Run("SOURCE_DATE_EPOCH=1700000000 " VELMORA2_RUN,
               "  - do: data.table\n    answers:\n      - form: {txtSample: 2, txtValue: 7, press: Set}\n"
               "      - form: {press: Exit}\n"
               "  - do: report.save\n    answers:\n      - form: {txtTitle: \"<T> & 'co'\"}\n"
               "      - file: " +
                   name +
                   ".html\n"
                   "  - do: report.save\n    answers:\n      - form: {optFormat: PDF}\n      - file: " +
                   name + ".pdf\n");
  };
  ASSERT_EQ(make("a"), 0) << Said();
  ASSERT_EQ(make("b"), 0) << Said();
  const std::string html = ReadFile(directory.Path("a.html"));
  EXPECT_TRUE(html == ReadFile(directory.Path("b.html")));
  QXmlStreamReader reader(QByteArray::fromStdString(html));
  QStringList headings;
  while (!reader.atEnd()) {
    if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == QStringLiteral("h2")) {
      headings << reader.readElementText();
    }
  }
  EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString() << " in line " << reader.lineNumber();
  EXPECT_EQ(headings.join(' ').toStdString(), "Trial Channels Results Graph Steps");
  EXPECT_NE(html.find("&lt;L&gt; &amp; R"), std::string::npos);
  EXPECT_NE(html.find("txtSample: 2"), std::string::npos);
  const std::string pdf = ReadFile(directory.Path("a.pdf"));
  EXPECT_TRUE(pdf == ReadFile(directory.Path("b.pdf")));
  EXPECT_EQ(pdf.substr(0, 5), "%PDF-");
  EXPECT_NE(pdf.find("/CreationDate (D:20231114221320"), std::string::npos);
  EXPECT_EQ(pdf.find("/Subtype /Image"), std::string::npos) << "the picture is drawn with lines";
}

TEST_F(PictureTest, WhatCannotBeDrawnFailsTheStepAndLeavesTheFile) {
  WriteFile(directory.Path("old.png"), "old");
  EXPECT_EQ(Run(VELMORA2_RUN, "  - view: {image: missing/p.png}\n"), 1);
  EXPECT_NE(Said().find("cannot write missing/p.png"), std::string::npos) << Said();
  EXPECT_EQ(Run(VELMORA2_RUN, "  - view: {close: true}\n  - view: {image: old.png}\n"), 1);
  EXPECT_NE(Said().find("no graph is open"), std::string::npos) << Said();
  // A program without the drawing module beside it.
  const std::string alone = directory.Path("velmora2-run");
  std::filesystem::copy_file(VELMORA2_RUN, alone);
  EXPECT_EQ(Run(alone, "  - view: {image: old.png}\n"), 1);
  EXPECT_NE(Said().find("pictures need the drawing module"), std::string::npos) << Said();
  EXPECT_EQ(ReadFile(directory.Path("old.png")), "old");
  EXPECT_EQ(Run(alone, "  - do: report.save\n    answers:\n      - form: {}\n      - file: old.png\n"), 1);
  EXPECT_NE(Said().find("Drawing Not Available: pictures need the drawing module"), std::string::npos)
      << Said();
  EXPECT_EQ(ReadFile(directory.Path("old.png")), "old");
}

}  // namespace
}  // namespace velmora::test
