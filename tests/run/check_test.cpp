// velmora2-run --check: everything that is wrong with a recipe and its inputs, at once.

#include "support/program_fixture.hpp"

namespace velmora::test {
namespace {

class Check : public Program {};

TEST_F(Check, TellsEveryFaultWithItsLineAndWritesNothing) {
  const std::string trial = Trial("a.vmb", {{1, 2, 3}});
  WriteFile(Path("empty.vmb"), "");
  const std::string recipe = Recipe(R"(  - do: file.load
    file: "${input}"
  - do: cursor.two
  - do: smooth.butterwort
  - do: smooth.digital
    answers:
      - form: {optPasType: 1, FilterCutoffs: {"EMG*": 20}, press: Fliter}
  - do: math.square
    answers: [{box: Yess}, {pick: {chanels: [1], press: Proces}}, {form: {a: {0: 1}, found: perhaps}}, {bxo: Yes}]
  - do: graph.single
    answers:
      - form: {channels: Fz, TxtWindw: 2}
  - inf: x
  - info: "${factr}.json"
  - collect: "${out}/t.csv"
    columns: {a: {channel: Fz, statistic: meen}}
  - view: {key: Hom}
  - do: time.normalize
    answers: [input: 0x10]
  - do: math.add
    answers: [pick: {values: {1: "2,5"}}]
  - do: math.negate
    answers: [pick: {names: {1: Fz}}]
  - do: smooth.butterworth
    answers:
      - form: {FilterCutoffs: 6, Passes: {Fz: one}, optPassType: {1: 0}}
)");
  const Ended run = Run({recipe, "--check", trial, Path("none.vmb"), Path("empty.vmb"), Path("./a.vmb"),
                         "--set", "factor=1", "--out", Path("made"), "--transcript", Path("made.jsonl")});
  EXPECT_EQ(run.status, 2);
  const std::vector<std::pair<int, std::string>> expected = {
      {5, "no step before this one opens a graph"},
      {6, "there is no command \"smooth.butterwort\"; did you mean \"smooth.butterworth\"?"},
      {9, "no field \"optPasType\""},
      {9, "no button \"Fliter\", but Filter, Zero-lag, Cancel; did you mean \"Filter\"?"},
      {11, "no box has a button \"Yess\"; did you mean \"Yes\"?"},
      {11, "no button \"Proces\"; did you mean \"Process\"?"},
      {11, "pick has no key \"chanels\"; did you mean \"channels\"?"},
      {11, "\"0\" is no channel: channels count from 1"},
      {11, "found must be true or false"},
      {11, "an answer has no key \"bxo\"; did you mean \"box\"?"},
      {14, "no field \"TxtWindw\""},
      {15, "a step has no key \"inf\"; did you mean \"info\"?"},
      {16, "unknown variable ${factr}; did you mean \"factor\"?"},
      {18, "there is no statistic \"meen\"; did you mean \"mean\"?"},
      {19, "the graph has no key \"Hom\""},
      {21, "\"0x10\" is no number"},
      {23, "the value of channel 1: \"2,5\" is no number"},
      {25, "there is no column of names"},
      {28, "field FilterCutoffs wants a value for each channel"},
      {28, "field Passes: \"one\" is no number"},
      {28, "field optPassType has one value for all channels"}};
  std::istringstream lines(run.err);
  std::vector<std::string> told;
  for (std::string line; std::getline(lines, line);) {
    told.push_back(line);
  }
  ASSERT_EQ(told.size(), expected.size() + 3) << run.err;
  for (const auto& [line, why] : expected) {
    const std::string place = recipe + ":" + std::to_string(line) + ": ";
    EXPECT_TRUE(std::any_of(told.begin(), told.end(),
                            [&](const std::string& text) {
                              return text.starts_with(place) && text.find(why) != std::string::npos;
                            }))
        << line << ": " << why << "\n"
        << run.err;
  }
  EXPECT_HAS(run.err, Path("none.vmb") + ": No such file");
  EXPECT_HAS(run.err, Path("empty.vmb") + ": the file is empty");
  EXPECT_HAS(run.err, Path("./a.vmb") + ": the input is given twice");
  EXPECT_FALSE(std::filesystem::exists(Path("made")) || std::filesystem::exists(Path("made.jsonl")));
}

TEST_F(Check, FindsNoFaultInTheExamplesAndTouchesNoFile) {
  const auto none = [this](const std::string& recipe) {
    const Ended run = Run({"--check", recipe, "--set", "weight=720", "--set", "folder=."});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, recipe + ": no fault found\n");
  };
  for (const auto& entry : std::filesystem::recursive_directory_iterator(EXAMPLES)) {
    if (entry.path().extension() == ".yaml") {
      none(entry.path().string());
    }
  }
  const std::string kept = Trial("kept.vmb", {{1, 2, 3}});
  const std::string bytes = ReadFile(kept);
  none(Recipe(
      "  - do: math.negate\n    answers: [pick: {channels: all}]\n  - do: save.vmb\n    answers: [file: \"" +
      kept + "\"]\n  - info: \"" + kept + "\"\n  - do: file.delete\n    answers: [{file: \"" + kept +
      "\"}, {box: Yes, optional: true}]\n"));
  EXPECT_EQ(ReadFile(kept), bytes);
}

// With every kind of file that its recipe writes.
TEST_F(Check, EveryExampleStandsInTheTableOfTheExamples) {
  const std::string table = ReadFile(EXAMPLES "/README.md");
  std::size_t examples = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(EXAMPLES)) {
    if (entry.path().extension() != ".yaml") {
      continue;
    }
    ++examples;
    const std::string name = entry.path().lexically_relative(EXAMPLES).string();
    const std::size_t at = table.find("](" + name + ")");
    ASSERT_NE(at, std::string::npos) << name;
    const std::string row = table.substr(at, table.find('\n', at) - at);
    const std::string recipe = ReadFile(entry.path().string());
    for (std::size_t file = recipe.find("${out}/"); file != std::string::npos;
         file = recipe.find("${out}/", file + 1)) {
      const std::filesystem::path path(recipe.begin() + static_cast<std::ptrdiff_t>(file),
                                       recipe.begin() + static_cast<std::ptrdiff_t>(recipe.find('"', file)));
      EXPECT_NE(row.find(path.extension().native()), std::string::npos) << name << ": " << path;
    }
  }
  std::size_t rows = 0;
  for (std::size_t at = table.find(".yaml) |"); at != std::string::npos;
       at = table.find(".yaml) |", at + 1)) {
    ++rows;
  }
  EXPECT_EQ(rows, examples) << "each once, and none that is gone";
}

}  // namespace
}  // namespace velmora::test
