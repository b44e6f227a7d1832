// The analyses of body and impacts as a person does them: menu, dialogue, results, a file of them, Exit.
#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>

#include "support/trials.hpp"
#include "ui/shot.hpp"
#include "ui/story.hpp"
#include "ui/trial/channel_table_view.hpp"

namespace velmora::test {
namespace {

// A point that goes round a circle of 2 cm five times in 10 s.
void MakeCircle(Trial& trial) {
  Samples x;
  Samples y;
  for (int i = 0; i < 1000; ++i) {
    x.push_back(static_cast<float>(2 * std::cos(2 * std::numbers::pi * i / 200)));
    y.push_back(static_cast<float>(2 * std::sin(2 * std::numbers::pi * i / 200)));
  }
  SetChannels(trial, {x, y});
  trial.ChanLabel[1] = "COPx";
  trial.ChanLabel[2] = "COPy";
  trial.ChanUnits[1] = trial.ChanUnits[2] = "cm";
}

double Largest(Trial& trial, int channel) {
  const std::vector<float> samples = Channel(trial, channel);
  return double{*std::max_element(samples.begin(), samples.end())};
}

double AreaUnder(Trial& trial, int channel) {
  const std::vector<float> samples = Channel(trial, channel);
  double area = 0;
  for (std::size_t i = 0; i + 1 < samples.size(); ++i) {
    area += (double{samples[i]} + double{samples[i + 1]}) / 2 / trial.Rate;
  }
  return area;
}

struct Analysis {
  const char* caption;
  const char* dialogue;  // and its results
  const char* extension;
  void (*make)(Trial& trial);
  int channel;  // to be ticked; 0: the dialogue finds its channels by their labels
  // What stands in the row that begins with this cell, in this column.
  const char* row;
  const char* column;
  std::function<double(Trial& trial)> expected;
};

const Analysis kAnalyses[] = {
    {"Center of Gravity", "frmGravity", ".cog", examples::MakeJump, 0, "Height (impulse)", "Value",
     [](Trial&) { return 2.9 * 2.9 / (2 * 9.80665); }},
    {"Sway of the centre of pressure", "frmSway", ".cog", MakeCircle, 0, "Path length", "Both",
     [](Trial&) { return 999 * 4 * std::sin(std::numbers::pi / 200); }},
    {"3D Accelerometry", "frmAccelerometry", ".tab", examples::MakeHeadFall, 0, "Peak resultant", "Value",
     [](Trial& trial) { return Largest(trial, trial.NChan) / 9.80665; }},
    {"Impact analysis", "frmImpact", ".tab", examples::MakeForcePlateStep, 3, "02", "Peak",
     [](Trial& trial) { return Largest(trial, 3); }},
    {"Work or Angular impulse analysis", "frmWork", ".tab", examples::MakeAnkleStep, 1, "00", "Net",
     [](Trial& trial) { return AreaUnder(trial, 1); }},
    {"Moment power analysis", "frmMomentPower", ".tab", examples::MakeAnkleStep, 0, "02", "Net",
     [](Trial& trial) { return AreaUnder(trial, 3); }},
    // Last: the next trial would be asked about the events.
    {"Foot contacts", "frmContacts", ".tab", examples::MakeTreadmillWalk, 1, "00", "Peak",
     [](Trial& trial) { return Largest(trial, 1); }},
};

class AnalysesWindow : public Story {
 protected:
  void Open(const Analysis& analysis) {
    WriteTrialFile(Path("trial.vmb"), analysis.make);
    window_->State().UserLevel = UserLevelKind::Expert;
    Entry("Refresh")->trigger();
    ASSERT_TRUE(test::WaitFor([this] { return FileRow("trial.vmb").isValid(); }));
    DoubleClickFile("trial.vmb");
  }
  void ExpectDialogue(const Analysis& analysis, const char* button) {
    person_.When(analysis.dialogue, [&analysis, button](QWidget* dialog) {
      if (analysis.channel > 0) {
        auto* table = dialog->findChild<ui::ChannelTableView*>();
        const QModelIndex box = table->model()->index(analysis.channel - 1, 4);
        const QRect cell = table->visualRect(box);
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, {cell.left() + 12, cell.center().y()});
      }
      Person::Press(dialog, button);
    });
  }
  // The numbers of the largest row that begins so: the peak of contacts is that of one of them.
  double Found(const Analysis& analysis) {
    double largest = std::nan("");
    for (const ResultTable& table : window_->State().results.ResultTables) {
      const auto column = std::find(table.columns.begin(), table.columns.end(), analysis.column);
      for (const auto& row : table.rows) {
        if (column == table.columns.end() || std::get<std::string>(row[0]) != analysis.row) {
          continue;
        }
        largest = std::fmax(largest,
                            std::get<double>(row[static_cast<std::size_t>(column - table.columns.begin())]));
      }
    }
    return largest;
  }
};

TEST_F(AnalysesWindow, ComputeShowAndSave) {
  for (const Analysis& analysis : kAnalyses) {
    SCOPED_TRACE(analysis.caption);
    Open(analysis);
    const int channels = Shown().NChan;
    ExpectDialogue(analysis, "Cancel");
    Choose(analysis.caption);
    EXPECT_EQ(Shown().NChan, channels);
    EXPECT_TRUE(window_->State().results.ResultTables.empty());
    const std::string saved = std::string("results") + analysis.extension;
    ExpectDialogue(analysis, "Compute");
    person_.When(analysis.dialogue, [&](QWidget* results) {
      Shot(*results, std::string("analysis-") + analysis.dialogue);
      ExpectSaveTo(saved);
      person_.When(analysis.dialogue, [](QWidget* after) { Person::Press(after, "Exit"); });
      Person::Press(results, "Save");
    });
    Choose(analysis.caption);
    const double expected = analysis.expected(Shown());
    EXPECT_NEAR(Found(analysis), expected, 0.002 * expected);
    EXPECT_NE(ReadFile(Path(saved)).find(analysis.row), std::string::npos);
    std::filesystem::remove(Path(saved));
    Shown().FileChanged = false;
  }
}

}  // namespace
}  // namespace velmora::test
