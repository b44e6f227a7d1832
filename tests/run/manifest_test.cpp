// What is kept of a run over many trials, and what can be made of it: verifying, resuming, joining.
#include "run/study/manifest.hpp"

#include <nlohmann/json.hpp>

#include "core/files/file_digest.hpp"
#include "support/full_disk.hpp"
#include "support/program_fixture.hpp"

namespace velmora::test {
namespace {

using nlohmann::json;

const std::string kStudy = R"(
  - do: file.load
    file: "${input}"
  - collect: "${out}/table.csv"
    columns: {name: "${stem}", peak: {channel: 1, statistic: maximum}}
  - info: "${out}/${stem}.txt"
  - do: math.multiply
    answers: [pick: {values: {1: "${factor}"}}]
  - do: save.csv
    answers: [{title: "Include Lables?", box: "Yes", optional: true}, {box: "Yes", optional: true}, {box: "Yes", optional: true}, {file: "${out}/${stem}.csv"}]
)";

class ManifestTest : public Program {
 protected:
  ManifestTest() {
    recipe_ = Recipe(kStudy);
    for (int i = 0; i < 5; ++i) {  // they do not end in the order in which they begin
      const int samples = i % 3 == 0 ? 5000 : 50 + i;
      trials_.push_back(Trial("t" + std::to_string(i) + ".vmb", NoiseChannels(2, samples)));
    }
  }
  /// Runs the study over some of the trials, with results in out/.
  Ended Study(const std::string& manifest, std::vector<std::string> inputs, const Texts& more = {}) {
    inputs.insert(inputs.begin(),
                  {recipe_, "--set", "factor=2", "--out", Path("out"), "--manifest", Path(manifest)});
    inputs.insert(inputs.end(), more.begin(), more.end());
    return Run(inputs);
  }
  [[nodiscard]] json Read(const std::string& name) const { return json::parse(ReadFile(Path(name))); }
  void Corrupt(const std::string& path) const { WriteFile(path, "Velmora2"); }

  std::string recipe_;
  std::vector<std::string> trials_;
};

TEST(FileDigest, IsThePublishedHash) {
  // FIPS 180-2, appendix B.1 and B.3.
  EXPECT_EQ(Sha256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_EQ(Sha256(std::string(1000000, 'a')),
            "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST_F(ManifestTest, NamesWhatWasReadAndWrittenInTheOrderOfTheInputs) {
  Corrupt(trials_[3]);
  EXPECT_EQ(Study("one.json", trials_).status, 1);
  const std::string one = ReadFile(Path("one.json"));
  std::filesystem::remove_all(Path("out"));
  EXPECT_EQ(Study("two.json", trials_, {"--jobs", "3"}).status, 1);
  EXPECT_EQ(ReadFile(Path("two.json")), one) << "the same whatever ran at a time";
  const json manifest = json::parse(one);
  EXPECT_EQ(manifest["recipe"]["text"], ReadFile(recipe_));
  EXPECT_EQ(manifest["set"], json({{"factor", "2"}}));
  ASSERT_EQ(manifest["inputs"].size(), 5U);
  for (std::size_t i = 0; i < 5; ++i) {
    const json& input = manifest["inputs"][i];
    EXPECT_EQ(input["path"], trials_[i]);
    EXPECT_EQ(input["sha256"], Sha256(ReadFile(trials_[i])));
    EXPECT_EQ(input["outcome"], i == 3 ? "failed" : "done");
    EXPECT_EQ(input["files"].size(), i == 3 ? 0U : 2U);
    for (const json& file : input["files"]) {
      const std::string bytes = ReadFile(file["path"]);
      EXPECT_EQ(file["size"], bytes.size());
      EXPECT_EQ(file["sha256"], Sha256(bytes));
    }
  }
  EXPECT_EQ(manifest["inputs"][3]["failure"]["step"], 1);
  std::istringstream table(ReadFile(Path("out/table.csv")));
  for (const char* row : {"name,peak", "t0,", "t1,", "t2,", "t4,"}) {
    std::string line;
    std::getline(table, line);
    EXPECT_TRUE(line.starts_with(row)) << line;
  }
  ASSERT_EQ(manifest["tables"].size(), 1U);
  EXPECT_EQ(manifest["tables"][0]["sha256"], Sha256(ReadFile(Path("out/table.csv"))));
}

TEST_F(ManifestTest, AFailedInputKeepsWhatItHadWrittenAndIsNamedAsFailed) {
  recipe_ = Recipe(kStudy + "  - do: math.power\n    answers: [pick: {values: {1: 200}}]\n");
  EXPECT_EQ(Study("m.json", {trials_[0]}).status, 1);
  const json input = Read("m.json")["inputs"][0];
  EXPECT_EQ(input["outcome"], "failed");
  EXPECT_EQ(input["files"].size(), 2U);
  EXPECT_TRUE(std::filesystem::exists(Path("out/t0.csv")));
  EXPECT_EQ(ReadFile(Path("out/table.csv")).substr(0, 13), "name,peak\nt0,");
}

TEST_F(ManifestTest, VerifyNamesWhatIsMissingChangedOrMadeDifferently) {
  ASSERT_EQ(Study("m.json", trials_).status, 0);
  const Ended same = Run({"--verify", Path("m.json"), "--jobs", "2"});
  EXPECT_EQ(same.status, 0);
  EXPECT_EQ(same.out, "11 of 11 files are the same\n");
  std::filesystem::remove(Path("out/t0.csv"));
  WriteFile(Path("out/t1.csv"), "other");
  Trial("t2.vmb", NoiseChannels(2, 60));
  std::filesystem::remove(trials_[4]);
  const Ended other = Run({"--verify", Path("m.json")});
  EXPECT_EQ(other.status, 1);
  for (const std::string& line :
       Texts{"missing: " + Path("out/t0.csv"), "changed since: " + Path("out/t1.csv"),
             "input changed since: " + trials_[2], "input missing: " + trials_[4],
             "differs when made again: " + Path("out/t2.csv"), "not made again: " + Path("out/t4.csv"),
             "differs when made again: " + Path("out/table.csv")}) {
    EXPECT_HAS("\n" + other.out, "\n" + line + "\n");
  }
  EXPECT_HAS(other.out, "6 of 11 files are the same");
  EXPECT_EQ(ReadFile(Path("out/t1.csv")), "other") << "nothing of the study is written";
}

// Beside the inputs, which is no part of --out; a Velmora ASCII file holds its own path.
TEST_F(ManifestTest, VerifyMakesAgainWhatWasWrittenAnywhereAndLeavesItAlone) {
  recipe_ = Recipe(kStudy + R"(
  - do: save.vma
    answers: [{box: "Yes", optional: true}, {file: "${dir}/${stem}.vma"}]
  - do: file.load
    file: "${dir}/${stem}.vma"
  - info: "${dir}/${stem}.read.json"
  - collect: "${dir}/aside.csv"
    columns: {peak: {channel: 1, statistic: maximum}}
)");
  const Ended study = Study("m.json", trials_);
  ASSERT_EQ(study.status, 0) << study.err;
  // Were it read in place of what is made again, its info would be another.
  WriteFile(Path("t0.vma"), "other");
  const auto untouched = std::filesystem::last_write_time(Path("t1.vma"));
  std::filesystem::remove(Path("t2.vma"));
  std::filesystem::remove_all(Path("out"));
  const Ended again = Run({"--verify", Path("m.json"), "--jobs", "2"});
  EXPECT_EQ(again.status, 1);
  EXPECT_HAS(again.out, "changed since: " + Path("t0.vma"));
  EXPECT_HAS(again.out, "missing: " + Path("out/t1.csv"));
  EXPECT_HAS(again.out, "22 of 22 files are the same\n");
  EXPECT_EQ(ReadFile(Path("t0.vma")), "other");
  EXPECT_EQ(std::filesystem::last_write_time(Path("t1.vma")), untouched);
  EXPECT_FALSE(std::filesystem::exists(Path("t2.vma")) || std::filesystem::exists(Path("out")));
}

TEST_F(ManifestTest, ResumeDoesWhatIsNotDoneOrNotWhatItWas) {
  Corrupt(trials_[3]);
  ASSERT_EQ(Study("m.json", {trials_.begin(), trials_.begin() + 4}).status, 1);
  std::filesystem::remove(Path("out/t0.csv"));
  Trial("t1.vmb", NoiseChannels(2, 70));
  Trial("t3.vmb", NoiseChannels(2, 53));
  const auto untouched = std::filesystem::last_write_time(Path("out/t2.csv"));
  const Ended resumed = Study("m.json", trials_, {"--resume"});
  EXPECT_EQ(resumed.status, 0);
  EXPECT_HAS(resumed.err, "5 done (1 before), 0 failed");
  EXPECT_EQ(std::filesystem::last_write_time(Path("out/t2.csv")), untouched);
  const std::string manifest = ReadFile(Path("m.json"));
  const std::string table = ReadFile(Path("out/table.csv"));
  std::filesystem::remove_all(Path("out"));
  ASSERT_EQ(Study("whole.json", trials_).status, 0);
  EXPECT_EQ(ReadFile(Path("whole.json")), manifest);
  EXPECT_EQ(ReadFile(Path("out/table.csv")), table);
  EXPECT_HAS(Study("m.json", trials_, {"--resume", "--strict"}).err, "5 done, 0 failed")
      << "another way to run it";
}

TEST_F(ManifestTest, ABadManifestIsToldAndNothingRuns) {
  ASSERT_EQ(Study("m.json", {trials_[0]}).status, 0);
  const std::string whole = ReadFile(Path("m.json"));
  const auto swapped = [&whole](const std::string& from, const std::string& to) {
    std::string text = whole;
    return text.replace(text.find(from), from.size(), to);
  };
  std::filesystem::remove_all(Path("out"));
  for (const auto& [text, why] : std::vector<std::pair<std::string, std::string>>{
           {whole.substr(0, whole.size() / 2), "it is cut off"},
           {"", "it is cut off"},
           {"{}", "it is no manifest"},
           {"[1]", "it is no manifest"},
           {swapped("manifest\": 1", "manifest\": 2"), "another layout, 2"},
           {swapped("\"inputs\"", "\"input\""), "it is damaged"},
           {swapped("\"done\"", "\"dnoe\""), "\"dnoe\" is no outcome"},
           {swapped("do: math", "do: Math"), "another SHA-256"},
       }) {
    WriteFile(Path("bad.json"), text);
    for (const Ended& run : {Run({"--verify", Path("bad.json")}), Study("bad.json", trials_, {"--resume"}),
                             Run({"--join-manifests", Path("joined.json"), Path("bad.json")})}) {
      EXPECT_EQ(run.status, 2) << why;
      EXPECT_HAS(run.err, "bad.json: ");
      EXPECT_HAS(run.err, why);
    }
    EXPECT_EQ(ReadFile(Path("bad.json")), text);
  }
  EXPECT_FALSE(std::filesystem::exists(Path("out/t0.csv")) || std::filesystem::exists(Path("joined.json")));
  EXPECT_EQ(Run({recipe_, "--resume"}).status, 2);
  EXPECT_EQ(Study("no/such/m.json", trials_).status, 2);
}

TEST_F(ManifestTest, PartsJoinToWhatOneRunOverAllWrites) {
  ASSERT_EQ(Study("whole.json", trials_).status, 0);
  const std::string table = ReadFile(Path("out/table.csv"));
  ASSERT_EQ(Study("a.json", {trials_[0], trials_[1]}).status, 0);
  std::filesystem::rename(Path("out/table.csv"), Path("a.csv"));
  ASSERT_EQ(Study("b.json", {trials_[2], trials_[3], trials_[4]}).status, 0);
  std::filesystem::rename(Path("out/table.csv"), Path("b.csv"));
  EXPECT_EQ(Run({"--join-tables", Path("out/table.csv"), Path("a.csv"), Path("b.csv")}).status, 0);
  EXPECT_EQ(ReadFile(Path("out/table.csv")), table);
  EXPECT_EQ(Run({"--join-manifests", Path("joined.json"), Path("a.json"), Path("b.json")}).status, 0);
  EXPECT_EQ(ReadFile(Path("joined.json")), ReadFile(Path("whole.json")));
  const Ended twice = Run({"--join-manifests", Path("x.json"), Path("a.json"), Path("a.json")});
  EXPECT_EQ(twice.status, 2);
  EXPECT_HAS(twice.err, "t0.txt is written for ");
  WriteFile(Path("cut.csv"), "a,b\n1,\"2");
  EXPECT_HAS(Run({"--join-tables", Path("x.csv"), Path("a.csv"), Path("cut.csv")}).err,
             "cut.csv: a quote is not closed");
  EXPECT_EQ(Run({"--join-tables", Path("x.csv"), Path("none.csv")}).status, 2);
  EXPECT_EQ(Run({"--join-tables", Path("x.txt"), Path("a.csv")}).status, 2);
  EXPECT_FALSE(std::filesystem::exists(Path("x.csv")) || std::filesystem::exists(Path("x.json")));
}

TEST_F(ManifestTest, OddPathsComeThroughAndAFullDiskLosesNothing) {
  WriteFile(Path("list"), "\xEF\xBB\xBF" + trials_[0] + "\r\n" + trials_[1] + "\r\n");  // from Windows
  EXPECT_EQ(Study("w.json", {}, {"--inputs", Path("list")}).status, 0);
  const std::string odd = Path("a\n\"b\",\xE9*.vmb");
  std::filesystem::copy(trials_[0], odd);
  WriteFile(Path("list"), odd + '\0' + trials_[1] + '\0');
  const Ended run = Study("m.json", {}, {"--inputs", Path("list")});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(ReadManifest(Path("m.json")).results.at(0).input, odd);
  EXPECT_EQ(ReadFile(Path("out/table.csv")).substr(0, 23), "name,peak\n\"a\n\"\"b\"\",\xE9*\",");
  EXPECT_EQ(Run({"--verify", Path("m.json")}).out, "5 of 5 files are the same\n");
  EXPECT_HAS(Study("m.json", {}, {"--inputs", Path("list"), "--resume"}).err, "2 done (2 before)");
  const std::string before = ReadFile(Path("m.json"));
  recipe_ = Recipe("  - collect: \"${out}/table.csv\"\n    columns: {name: \"${stem}\"}\n");
  const FullDisk disk(3000);  // of the program, too
  const Ended full =
      Study("m.json", {}, {"--inputs", Path("list"), "--set", "long=" + std::string(5000, 'x')});
  EXPECT_EQ(full.status, 1);
  EXPECT_HAS(full.err, "2 done, 0 failed");
  EXPECT_HAS(full.err, "m.json: File too large");
  EXPECT_EQ(ReadFile(Path("m.json")), before);
  EXPECT_HAS(ReadFile(Path("out/table.csv")), "t1\n");
}

// What was done until then is a study that can be gone on with.
TEST_F(ManifestTest, AnInterruptLeavesTableAndManifestOfWhatWasDone) {
  std::string steps = kStudy;
  for (int k = 0; k < 3000; ++k) {
    steps += "  - info: \"${out}/${stem}-${slow}.json\"\n";
  }
  recipe_ = Recipe(kStudy);
  ASSERT_EQ(Study("m.json", {trials_[0], trials_[1]}).status, 0);
  recipe_ = Recipe(steps);
  std::filesystem::remove_all(Path("out"));
  const pid_t runner = StartAndAwait("out", {"t0-x.json"}, [&] {
    return Start({recipe_, trials_[0], trials_[1], "--set", "factor=2", "--set", "slow=x", "--out",
                  Path("out"), "--manifest", Path("m.json")});
  });
  kill(runner, SIGTERM);
  const Ended run = Wait(runner);
  EXPECT_EQ(run.status, 143);
  const json inputs = Read("m.json")["inputs"];
  EXPECT_EQ(inputs[0]["outcome"], "interrupted");
  EXPECT_EQ(inputs[0]["files"].size(), 3U) << "each once";
  EXPECT_EQ(inputs[1]["outcome"], "not run");
  EXPECT_EQ(ReadFile(Path("out/table.csv")).substr(0, 13), "name,peak\nt0,");
}

// The study of docs/studies.md, without its figures.
TEST_F(ManifestTest, TheMadeStudyGivesOneTableOfThreeLaboratories) {
  ASSERT_EQ(
      std::system((std::string(VELMORA2_MAKE_EXAMPLES) + " " + Path("data") + " > " + Path("log")).c_str()),
      0);
  const std::string recipe = ReadFile(std::string(EXAMPLES) + "/study/landings.yaml");
  WriteFile(Path("r.yaml"), recipe.substr(0, recipe.find("  - do: graph.multi")));
  Texts inputs;
  for (const std::string& name : FilesIn("data/study")) {
    inputs.push_back(Path("data/study/" + name));
  }
  ASSERT_EQ(inputs.size(), 24U);
  ASSERT_EQ(Study("one.json", inputs, {"--jobs", "2"}).status, 0);
  // A person stands still at the end: their weight, 560 N and 45 N for each number, whatever wrote it.
  std::istringstream lines(ReadFile(Path("out/landings.csv")));
  std::string line;
  std::getline(lines, line);
  EXPECT_EQ(line.substr(0, 54), "trial,rate,peak force,time of peak,force at the end,va");
  for (int row = 0; std::getline(lines, line); ++row) {
    std::istringstream cells(line);
    std::string cell;
    for (int k = 0; k < 5; ++k) {
      std::getline(cells, cell, ',');
    }
    const double weight = 560.0 + 45.0 * (row / 4 + 1);
    EXPECT_NEAR(std::stod(cell), weight, 0.05 * weight) << line;
  }
}

}  // namespace
}  // namespace velmora::test
