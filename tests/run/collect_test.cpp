// Tables of a study: what a recipe collects from each of its inputs.
#include "core/text/numbers.hpp"
#include "run/study/study_table.hpp"
#include "support/full_disk.hpp"
#include "support/program_fixture.hpp"
#include "support/recipe_test.hpp"

namespace velmora::test {
namespace {

class CollectTest : public RecipeTest {
 protected:
  void MakeTrial(Trial& trial) override {
    SetChannels(trial, {{4, -1, 2, 7, 7}, {0.1F, 0, 0, 0, std::nanf("")}}, 10.0);
    trial.ChanLabel[1] = "Fz";
    trial.ChanLabel[2] = "EMG";
    trial.TrialTitle = "a \"quoted\", title";
    for (int i = 1; i <= 5; ++i) {
      trial.Data(i, 0) += start_;
    }
    trial.CursorLo = lo_;
    trial.CursorHi = hi_;
    ResultTable table{.name = "frmMade",
                      .title = "Made of: x.vmb",
                      .columns = {"Channel", "Label", "Mean"},
                      .rows = {{"00", "Fz", 0.1}, {"01", "EMG", std::monostate()}}};
    run_->State().results.ResultTables = {table};
  }
  /// The cells of the row that these columns give.
  std::vector<std::string> Collect(const std::string& columns) {
    Run("  - collect: \"${out}/t.csv\"\n    columns: {" + columns + "}\n");
    EXPECT_EQ(Why(), "all ran");
    return rows_.rows.at(0);
  }
  void Run(const std::string& steps) {
    const Recipe recipe =
        ReadRecipe("velmora2: 1\nsteps:\n" + steps, "r.yaml", {{"out", directory_.Path("")}});
    run_.emplace(RunOptions{.input = "in/a.vmb",
                            .onStep = {},
                            .claim = {},
                            .transcript = {},
                            .collect = [this](const TableRows& rows) {
                              rows_ = rows;
                              return std::string();
                            }});
    MakeTrial(run_->State().trial);
    outcome_ = run_->Run(recipe);
  }
  [[nodiscard]] std::string Warned() const {
    std::string all;
    for (const StepProblem& warning : outcome_.warnings) {
      all += warning.why + "\n";
    }
    return all;
  }

  std::int32_t lo_ = 0;
  std::int32_t hi_ = 0;
  float start_ = 0;
  TableRows rows_;
};

TEST_F(CollectTest, StatisticsAreOfTheSamplesBetweenTheCursors) {
  const std::string all =
      "a: {channel: fz, statistic: minimum}, b: {channel: fz, statistic: maximum}, c: {channel: 1, "
      "statistic: range},"
      "d: {channel: fz, statistic: mean}, e: {channel: fz, statistic: rms}, f: {channel: 'F*', statistic: "
      "sd},"
      "g: {channel: fz, statistic: first}, h: {channel: fz, statistic: last}, i: {channel: fz, statistic: "
      "time-of-minimum}, j: {channel: fz, statistic: time-of-maximum}, k: {channel: fz, statistic: Count}";
  // By hand: the sum is 19, of squares 119, of squares about the mean 46.8.
  EXPECT_EQ(Collect(all), (Texts{"-1", "7", "8", "3.8", PlainNumber(std::sqrt(119.0 / 5)),
                                 PlainNumber(std::sqrt(46.8 / 4)), "4", "7", "0.1", "0.3", "5"}));
  lo_ = 3;
  hi_ = 4;
  EXPECT_EQ(Collect(all), (Texts{"2", "7", "5", "4.5", PlainNumber(std::sqrt(26.5)),
                                 PlainNumber(std::sqrt(12.5)), "2", "7", "0.2", "0.3", "2"}));
  EXPECT_EQ(Warned(), "");
  EXPECT_EQ(Collect("a: {channel: EMG, statistic: first}"), Texts{"0"});
  start_ = 534;  // of a recording, or of a crop that keeps its times
  EXPECT_EQ(Collect("a: {channel: Fz, statistic: time-of-maximum}"), Texts{"534.3"});
  lo_ = hi_ = 1;
  EXPECT_EQ(Collect("a: {channel: EMG, statistic: first}, b: {channel: EMG, statistic: sd}"),
            (Texts{"0.1", ""}));
  EXPECT_HAS(Warned(), "column b is empty: a single sample has no standard deviation");
}

TEST_F(CollectTest, TakesValuesFromTheInfoAndFromResultTables) {
  EXPECT_EQ(
      Collect("t: subject 7, r: {info: /Rate}, n: {info: /TrialTitle}, u: {info: /channels/1/ChanLabel},"
              "f: {info: /FileChanged}, a: {table: 'made of*', row: EMG, column: label},"
              "b: {table: frmMade, row: '00', column: Mean}, c: {table: 1, row: 2, column: Channel},"
              "d: {table: 1, row: fz, column: 3}"),
      (Texts{"subject 7", "10", "a \"quoted\", title", "Fz", "0", "EMG", "0.1", "01", "0.1"}));
  EXPECT_EQ(Warned(), "");
  Run("  - collect: x.tab\n    table: frmMade\n");
  EXPECT_EQ(rows_.columns, (Texts{"input", "Channel", "Label", "Mean"}));
  EXPECT_EQ(rows_.rows, (std::vector<Texts>{{"in/a.vmb", "00", "Fz", "0.1"}, {"in/a.vmb", "01", "EMG", ""}}));
}

TEST_F(CollectTest, AValueThatIsNotThereIsEmptyAndToldOf) {
  EXPECT_EQ(
      Collect(
          "a: {info: /Raet}, b: {info: /channels}, c: {channel: Fx, statistic: mean}, d: {channel: EMG, "
          "statistic: mean}, e: {table: frmMad, row: 1, column: 1}, f: {table: 1, row: Fx, column: 1}, g: "
          "{table: 1, row: 1, column: Meen}, h: {table: 1, row: EMG, column: Mean}, i: {info: /channels/01},"
          "j: {channel: EMG, statistic: last}"),
      Texts(10));
  for (const char* part :
       {"column a is empty: the info has no /Raet",
        "column b is empty: /channels of the info is no single value",
        "column c is empty: there is no channel labelled \"Fx\"; did you mean \"Fz\"?",
        "column d is empty: sample 5 is not finite", "no result table \"frmMad\"; did you mean \"frmMade\"?",
        "no row \"Fx\"; did you mean \"Fz\"?, but 00, Fz, 01, EMG",
        "no column \"Meen\"; did you mean \"Mean\"?", "column h is empty: the cell is empty",
        "no /channels/01", "column j is empty: sample 5 is not finite"}) {
    EXPECT_HAS(Warned(), part);
  }
  const auto fault = [](const std::string& step) {
    const ReadingOfRecipe reading = TryReadRecipe("velmora2: 1\nsteps:\n  - " + step, {});
    return FaultText("r", reading.faults);
  };
  EXPECT_HAS(fault("collect: t.xls\n    columns: {a: x}"), "r:3: a table of a study is a .csv or .tab file");
  EXPECT_HAS(fault("collect: t.csv"), "collect has either columns or table");
  EXPECT_HAS(fault("collect: t.csv\n    columns: {a: {info: Rate}}"), "r:4: \"Rate\" is no JSON pointer");
  EXPECT_HAS(fault("collect: t.csv\n    columns: {a: {channel: 1, statistic: meen}}"),
             "did you mean \"mean\"?");
  EXPECT_HAS(fault("collect: t.csv\n    columns: {a: {table: x, row: 1}}"), "has table, row and column");
  EXPECT_HAS(fault("collect: t.csv\n    columns: {a: {chanel: 1}}"), "did you mean \"channel\"?");
}

TEST(StudyTable, QuotesReadsBackAndTakesColumnsAsTheyCome) {
  StudyTable table;
  table.Add({"", {"a", "b", "a"}, {{"1", "x,y", "3"}, {"\"", "two\nlines"}}});
  table.Add({"", {"b", "c"}, {{" ", "t\tu"}}});
  EXPECT_EQ(table.Text(','), "a,b,a,c\n1,\"x,y\",3,\n\"\"\"\",\"two\nlines\",,\n, ,,t\tu\n");
  EXPECT_EQ(table.Text('\t'), "a\tb\ta\tc\n1\tx,y\t3\t\n\"\"\"\"\t\"two\nlines\"\t\t\n\t \t\t\"t\tu\"\n");
  for (const char separator : {',', '\t'}) {
    StudyTable again;
    again.Add(ReadTableText(table.Text(separator), separator));
    EXPECT_EQ(again.Text(','), table.Text(','));
  }
  EXPECT_EQ(ReadTableText("a,b\r\n1,2", ',').rows, (std::vector<Texts>{{"1", "2"}}));
  EXPECT_THROW(ReadTableText("a\n\"1", ','), std::invalid_argument);
  EXPECT_THROW(ReadTableText("a\n\"1\"2", ','), std::invalid_argument);
  EXPECT_THROW(ReadTableText("a\n1,2", ','), std::invalid_argument);
}

class CollectProgram : public Program {};

TEST_F(CollectProgram, ATableIsWrittenByNobodyElse) {
  const std::string trial = Trial("t.vmb", {{1, 2, 3}});
  const auto run = [&](const std::string& steps, const std::vector<std::string>& more = {}) {
    std::vector<std::string> arguments = {Recipe("  - do: file.load\n    file: \"${input}\"\n" + steps),
                                          trial, "--out", Path("out")};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return Run(arguments);
  };
  const auto why = [&](const std::string& steps, const std::vector<std::string>& more = {}) {
    const Ended ended = run(steps, more);
    EXPECT_EQ(ended.status, 1);
    return ended.err;
  };
  const std::string collect = "  - collect: \"${out}/t.csv\"\n    columns: {a: b}\n";
  EXPECT_EQ(run(collect + "  - collect: \"${out}/../out/t.csv\"\n    columns: {a: c}\n").status, 0);
  EXPECT_EQ(ReadFile(Path("out/t.csv")), "a\nb\nc\n") << "the recipe itself may, again and again";
  std::filesystem::remove(Path("out/t.csv"));
  EXPECT_HAS(why(collect + "  - info: \"${out}/t.csv\"\n"), "a table of the study goes there");
  EXPECT_HAS(why("  - info: \"${out}/t.csv\"\n" + collect), "writes it too");
  EXPECT_HAS(why("  - collect: \"${out}/no/t.csv\"\n    columns: {a: b}\n"), "No such file or directory");
  EXPECT_HAS(why(collect, {"--transcript", Path("out/t.csv")}), "the transcript goes there");
  WriteFile(Path("out/t.csv"), "precious");
  const std::string recipe = Recipe("  - collect: \"${out}/t.csv\"\n    columns: {a: \"${long}\"}\n");
  const FullDisk disk(3000);  // of the program, too
  const Ended full = Run({recipe, trial, "--out", Path("out"), "--set", "long=" + std::string(5000, 'x')});
  EXPECT_EQ(full.status, 1);
  EXPECT_HAS(full.err, "t.csv: File too large");
  EXPECT_HAS(full.err, "1 done, 0 failed");
  EXPECT_EQ(ReadFile(Path("out/t.csv")), "precious");
}

}  // namespace
}  // namespace velmora::test
