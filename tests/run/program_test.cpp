// Drives the program itself: exit statuses, several inputs, signals.
#include <nlohmann/json.hpp>

#include "core/version.hpp"
#include "support/full_disk.hpp"
#include "support/program_fixture.hpp"

namespace velmora::test {
namespace {

using nlohmann::json;

const std::string kDouble = R"(
  - do: file.load
    file: "${input}"
  - do: math.multiply
    answers: [pick: {values: {1: "${factor}"}}]
  - do: save.vmb
    answers: [file: "${out}/${stem}-scaled.vmb"]
  - info: "${out}/${stem}.json"
)";

TEST_F(Program, RunsARecipeOverOneFile) {
  const std::string trial = Trial("a.vmb", {{1, 2, 3}, {4, 5, 6}});
  const Ended run = Run({Recipe(kDouble), trial, "--out", Path("new/results"), "--set", "factor=0.5",
                         "--transcript", Path("t.jsonl")});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(FilesIn("new/results"), (Texts{"a-scaled.vmb", "a.json"}));
  const std::string bytes = ReadFile(Path("new/results/a-scaled.vmb"));
  const float* first = reinterpret_cast<const float*>(bytes.data() + 4386) + 3;  // behind the times
  EXPECT_EQ(std::vector<float>(first, first + 6), (std::vector<float>{0.5F, 1, 1.5F, 4, 5, 6}));
  EXPECT_EQ(json::parse(ReadFile(Path("new/results/a.json")))["FileName"], trial);
  EXPECT_EQ(json::parse(ReadFile(Path("t.jsonl")).substr(0, ReadFile(Path("t.jsonl")).find('\n')))["input"],
            trial);
}

TEST_F(Program, AsksForNothingButWhatItIsToldTo) {
  const Ended info = Run({"--info", Trial("a.vmb", {{1, 2, 3}})});
  EXPECT_EQ(info.status, 0);
  EXPECT_EQ(json::parse(info.out)["NData"], 3);
  WriteFile(Path("bad.vmb"), "Velmora2");
  const Ended bad = Run({"--info", Path("bad.vmb")});
  EXPECT_EQ(bad.status, 1);
  EXPECT_EQ(bad.out, "");
  EXPECT_HAS(bad.err, "Error reading file.");
  WriteFile(Path("text.csv"), "a,b\n1,2\n3,4\n5,6\n");
  const Ended text = Run({"--info", Path("text.csv")});  // asks how to be read, and for a rate
  EXPECT_EQ(text.status, 0);
  EXPECT_EQ(json::parse(text.out)["NChan"], 2);
  EXPECT_HAS(text.err, "(taken: 0)");
  EXPECT_HAS(Run({"--commands"}).out, "\nmath.add ");
  EXPECT_EQ(Run({"--version"}).out, "velmora2-run " + std::string(VersionText) + "\n");
  EXPECT_HAS(Run({"--help"}).out, "--transcript FILE");
}

TEST_F(Program, AnswersThatFindNoRoomAreAFailure) {
  const auto full = [] { dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO); };
  const std::string trial = Trial("a.vmb", {{1, 2, 3}});
  const std::vector<std::vector<std::string>> questions = {
      {"--info", trial}, {"--commands"}, {"--help"}, {"--version"}};
  for (const auto& question : questions) {
    const Ended run = RunWith(full, question);
    EXPECT_EQ(run.status, 1) << question.front();
    EXPECT_HAS(run.err, "cannot write to standard output: No space left on device");
  }
}

TEST_F(Program, ATranscriptIsWholeWhoeverListens) {
  const auto closed = [] {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
      close(descriptor);
    }
  };
  const auto gone = [] {
    int ends[2];
    dup2(pipe(ends) == 0 ? ends[1] : -1, STDERR_FILENO);
    close(ends[0]);
    close(ends[1]);
  };
  const std::vector<std::string> arguments = {Recipe(kDouble),     Trial("a.vmb", {{1, 2, 3}}),
                                              Path("missing.vmb"), "--set",
                                              "factor=2",          "--out",
                                              Path("out"),         "--transcript",
                                              Path("t.jsonl")};
  Run(arguments);
  const std::string transcript = ReadFile(Path("t.jsonl"));
  EXPECT_HAS(transcript, "missing.vmb");
  for (const auto& rearrange : {std::function<void()>(closed), std::function<void()>(gone)}) {
    std::filesystem::remove(Path("t.jsonl"));
    EXPECT_EQ(RunWith(rearrange, arguments).status, 1);
    EXPECT_EQ(ReadFile(Path("t.jsonl")), transcript);
  }
}

TEST_F(Program, BadUsageAndUnreadableRecipesEndWithTwoAndWriteNothing) {
  const std::string recipe = Recipe("  - info: \"${out}/i.json\"\n");
  const std::vector<std::vector<std::string>> cases = {
      {},
      {"--frobnicate"},
      {recipe, "--jobs", "0"},
      {recipe, "--jobs", "two"},
      {recipe, "--set", "x"},
      {recipe, "--set", "1x=2"},
      {recipe, "--set", "input=2"},
      {recipe, "--info", recipe},
      {recipe, "--commands"},
      {Path("missing.yaml")},
      {Path("")},
      {Recipe("  - info: \"${odd}\"\n"), "--out", Path("made"), "--transcript", Path("made.jsonl")},
      {recipe, "--transcript", Path("no/such/t.jsonl")},
      {recipe, "--out", recipe},
  };
  for (const auto& arguments : cases) {
    const Ended run = Run(arguments);
    EXPECT_EQ(run.status, 2) << testing::PrintToString(arguments);
    EXPECT_NE(run.err, "");
  }
  EXPECT_FALSE(std::filesystem::exists(Path("made")));
  EXPECT_FALSE(std::filesystem::exists(Path("made.jsonl")));
  EXPECT_HAS(Run({Path("missing.yaml")}).err, "missing.yaml: No such file");
  EXPECT_HAS(Run({Recipe("  - inf: x\n")}).err, "r.yaml:3: a step has no key \"inf\"");
}

TEST_F(Program, OneCorruptFileOfTwentyIsNamedAndTheOthersAreDone) {
  std::vector<std::string> arguments = {Recipe(kDouble), "--out", Path("out"),    "--set",        "factor=2",
                                        "--jobs",        "2",     "--transcript", Path("t.jsonl")};
  for (int i = 0; i < 20; ++i) {
    // Files of very different length, so that they do not end in the order in which they begin.
    arguments.push_back(
        Trial("trial" + std::to_string(i) + ".vmb", NoiseChannels(4, i % 3 == 0 ? 20000 : 10)));
  }
  WriteFile(Path("trial7.vmb"), std::string(3000, 'x'));
  const Ended run = Run(arguments);
  EXPECT_EQ(run.status, 1);
  EXPECT_HAS(run.err, "19 done, 1 failed");
  EXPECT_HAS(run.err, "FAILED   " + Path("trial7.vmb") + "  step 1 (file.load, line 4)  ");
  EXPECT_EQ(FilesIn("out").size(), 38U);

  std::istringstream lines(ReadFile(Path("t.jsonl")));
  std::vector<std::string> inputs;  // as they follow each other
  for (std::string line; std::getline(lines, line);) {
    const std::string input = json::parse(line)["input"];
    if (inputs.empty() || inputs.back() != input) {
      inputs.push_back(input);
    }
  }
  EXPECT_EQ(inputs, std::vector<std::string>(arguments.begin() + 9, arguments.end()));
}

TEST_F(Program, TwoInputsDoNotOverwriteEachOthersResult) {
  std::filesystem::create_directory(Path("S01"));
  std::filesystem::create_directory(Path("S02"));
  const std::string first = Trial("S01/walk.vmb", {{1, 2, 3}});
  const std::string second = Trial("S02/walk.vmb", {{7, 8, 9}});
  for (const std::string jobs : {"1", "2"}) {
    for (const std::string result : {"  - do: save.vmb\n    answers: [file: \"${dir}/../${stem}.vmb\"]\n",
                                     "  - info: \"${dir}/../${stem}.vmb\"\n"}) {
      const Ended run = Run(
          {Recipe("  - do: file.load\n    file: \"${input}\"\n" + result), first, second, "--jobs", jobs});
      EXPECT_EQ(run.status, 1);
      EXPECT_HAS(run.err, "1 done, 1 failed");
      const std::string refused = run.err.substr(run.err.find("FAILED"));
      const bool firstWon = refused.find(second) < refused.find(first);
      EXPECT_TRUE(firstWon || jobs == "2") << run.err;
      EXPECT_HAS(run.err, (firstWon ? first : second) + " writes it too");
    }
  }
  const Ended twice = Run({Recipe(kDouble), first, Path("S01/../S01/walk.vmb"), "--set", "factor=2"});
  EXPECT_EQ(twice.status, 2);
  EXPECT_HAS(twice.err, "the input is given twice");
}

TEST_F(Program, WhatARunReadsIsNotWritten) {
  const std::string trial = Trial("a.vmb", {{1, 2, 3}});
  const std::string other = Trial("b.vmb", {{1, 2, 3}});
  const auto writing = [](const std::string& target) { return "  - info: \"" + target + "\"\n"; };
  const std::string bytes = ReadFile(other);
  const auto expectRefused = [this](const Ended& run, int status, const char* why) {
    EXPECT_EQ(run.status, status);
    EXPECT_HAS(run.err, why);
  };
  expectRefused(Run({Recipe(writing("${dir}/b.vmb")), trial, other}), 1, "it is an input of this run");
  EXPECT_EQ(ReadFile(other), bytes);
  expectRefused(Run({Recipe(writing(Path("r.yaml")))}), 1, "it is the recipe");
  EXPECT_HAS(ReadFile(Path("r.yaml")), "info");
  const std::string transcript = Path("t.jsonl");
  expectRefused(Run({Recipe(writing(transcript)), "--transcript", transcript}), 1,
                "the transcript goes there");
  EXPECT_EQ(ReadFile(transcript), "");
  expectRefused(Run({Recipe(writing(Path("i.json"))), other, "--transcript", other}), 2,
                "it is an input of this run");
  EXPECT_EQ(ReadFile(other), bytes);
}

TEST_F(Program, ADirectoryThatOneRunOpensIsNotThatOfTheNext) {
  Trial("a.vmb", {{1, 2, 3}});
  Trial("b.vmb", {{1, 2, 3}});
  std::filesystem::create_directory(Path("sub"));
  Recipe(
      "  - do: file.load\n    file: \"${input}\"\n  - info: \"${stem}.json\"\n"
      "  - collect: t.csv\n    columns: {name: \"${stem}\"}\n"
      "  - do: file.open-directory\n    answers: [file: sub]\n  - info: below.json\n");
  const auto there = [this] { ASSERT_EQ(chdir(Path(".").c_str()), 0); };
  for (const std::vector<std::string>& inputs : {std::vector<std::string>{"a.vmb"}, {"a.vmb", "b.vmb"}}) {
    std::vector<std::string> arguments = {"r.yaml", "--manifest", "m.json"};
    arguments.insert(arguments.end(), inputs.begin(), inputs.end());
    const Ended run = RunWith(there, arguments);
    EXPECT_HAS(run.err, inputs.size() == 1 ? "1 done, 0 failed" : "a.vmb writes it too");
    EXPECT_EQ(FilesIn("sub"), (std::vector<std::string>{"below.json"}));
  }
  EXPECT_EQ(ReadFile(Path("t.csv")), "name\na\nb\n");
  EXPECT_HAS(ReadFile(Path("m.json")), "\"t.csv\"");
}

TEST_F(Program, AFullDiskFailsTheStepAndLeavesTheOldFile) {
  const std::string trial = Trial("a.vmb", NoiseChannels(4, 20000));
  std::filesystem::create_directory(Path("out"));
  WriteFile(Path("out/a-scaled.vmb"), "precious");
  const std::string recipe = Recipe(kDouble);
  const Ended run = [&] {
    const FullDisk disk(100000);  // of the program, too
    return Run({recipe, trial, "--out", Path("out"), "--set", "factor=2"});
  }();
  EXPECT_EQ(run.status, 1);
  EXPECT_HAS(run.err, "step 3 (save.vmb, line 8)");
  EXPECT_HAS(run.err, "\"File too large\"");
  EXPECT_EQ(ReadFile(Path("out/a-scaled.vmb")), "precious");
  EXPECT_EQ(FilesIn("out"), Texts{"a-scaled.vmb"});
}

TEST_F(Program, StrictMakesAWarningAFailure) {
  const std::string recipe = Recipe(
      "  - do: file.load\n    file: \"${input}\"\n"
      "  - do: math.power\n    answers: [pick: {values: {1: -1}}]\n");
  const std::string trial = Trial("a.vmb", {{1, 2, 3}});
  const Ended lenient = Run({recipe, trial});
  EXPECT_EQ(lenient.status, 0);
  EXPECT_HAS(lenient.err, "warning");
  EXPECT_HAS(lenient.err, "Negative powers");
  EXPECT_EQ(Run({recipe, trial, "--strict"}).status, 1);
}

// The children of a process, as the kernel knows them.
std::vector<pid_t> ChildrenOf(pid_t process) {
  const std::string number = std::to_string(process);
  std::istringstream list(ReadFile("/proc/" + number + "/task/" + number + "/children"));
  return {std::istream_iterator<pid_t>(list), {}};
}

std::string ManySteps(int count) {
  std::string steps = "  - do: file.load\n    file: \"${input}\"\n";
  for (int i = 0; i < count; ++i) {
    steps +=
        "  - do: math.negate\n    answers: [pick: {channels: all}]\n"
        "  - do: save.vmb\n    answers: [file: \"${out}/${stem}.vmb\"]\n";
  }
  return steps;
}

TEST_F(Program, AnInterruptEndsJobsAndLeavesNoTemporaryFile) {
  std::vector<std::string> arguments = {Recipe(ManySteps(3000)), "--out", Path("out"), "--jobs", "2"};
  for (int i = 0; i < 4; ++i) {
    arguments.push_back(Trial("t" + std::to_string(i) + ".vmb", NoiseChannels(8, 5000)));
  }
  const pid_t runner = StartAndAwait("out", {"t0.vmb", "t1.vmb"}, [&] { return Start(arguments); });
  const std::vector<pid_t> children = ChildrenOf(runner);
  EXPECT_EQ(children.size(), 2U);
  kill(runner, SIGINT);
  const Ended run = Wait(runner);
  EXPECT_EQ(run.status, 130);
  EXPECT_HAS(run.err, "0 done, 0 failed, 2 interrupted, 2 not run");
  EXPECT_HAS(run.err, "interrupted  " + arguments[5] + "  step ");
  EXPECT_HAS(run.err, "interrupted  " + arguments[6] + "  step ");
  for (const pid_t child : children) {
    EXPECT_EQ(kill(child, 0), -1);
  }
  EXPECT_EQ(FilesIn("out"), (Texts{"t0.vmb", "t1.vmb"}));
}

TEST_F(Program, AnInterruptEndsASingleRunToo) {
  const std::vector<std::string> arguments = {Recipe(ManySteps(3000)), Trial("t.vmb", NoiseChannels(8, 5000)),
                                              "--out", Path("out")};
  const pid_t runner = StartAndAwait("out", {"t.vmb"}, [&] { return Start(arguments); });
  kill(runner, SIGTERM);
  const Ended run = Wait(runner);
  EXPECT_EQ(run.status, 143);
  EXPECT_HAS(run.err, "1 interrupted");
  EXPECT_EQ(FilesIn("out"), Texts{"t.vmb"});
}

TEST_F(Program, OneBlockOfAnswersConvertsAFolderOfManyFormats) {
  std::filesystem::create_directory(Path("in"));
  WriteFile(Path("in/emg.csv"),
            "Label: E Sampling frequency: 4 Number of points: 3 start: 0 Unit: V Domain Unit: s\n"
            "Label: A Sampling frequency: 2 Number of points: 2 start: 0 Unit: g Domain Unit: s\n\n"
            "X[s],\"E\",X[s],\"A\"\n0,1,0,10\n0.25,2,0.5,20\n0.5,3,,\n");
  WriteFile(Path("in/walk.mot"), "walk\nnRows=2\nendheader\ntime\thip\n0\t1\n0.5\t2\n");
  WriteFile(Path("in/jump.frc"), "1 2\n3 4\n5 6\n");
  WriteFile(Path("in/old.stm"), std::string("\x01\0\x02", 3));
  Trial("in/own.vmb", {{1, 2, 3}});
  std::vector<std::string> arguments = {std::string(EXAMPLES) + "/convert-folder.yaml", "--out", Path("out")};
  for (const std::string& name : FilesIn("in")) {
    arguments.push_back(Path("in/" + name));
  }
  const Ended run = Run(arguments);
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(FilesIn("out"), (Texts{"emg.csv", "emg.vmb", "jump.csv", "jump.vmb", "own.csv", "own.vmb",
                                   "walk.csv", "walk.vmb"}));
  EXPECT_HAS(run.err, "Interpolated to 4 Hz: A (2 Hz).");
  EXPECT_HAS(run.err, "Stimo files cannot be read.");
  EXPECT_HAS(run.err, "4 done, 1 failed");
  EXPECT_HAS(ReadFile(Path("out/emg.csv")), "0.25, 2, 15\n");
  EXPECT_HAS(ReadFile(Path("out/jump.csv")), "0.001, 3, 4\n");
}

}  // namespace
}  // namespace velmora::test
