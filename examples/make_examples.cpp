// velmora2-make-examples DIR: writes the sample trials into a directory, which is made if missing, and the
// trials of a study into its subdirectory study/.
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "app/command_table.hpp"
#include "core/files/standard_descriptors.hpp"
#include "core/workbench.hpp"
#include "run/recipe/recipe_questions.hpp"
#include "sample_trials.hpp"
#include "study/study_trials.hpp"

namespace {

using namespace velmora;

struct Sample {
  const char* name;
  void (*make)(Trial&);
};

constexpr Sample kSamples[] = {
    {"emg-bursts", examples::MakeEmgBursts},
    {"force-plate-step", examples::MakeForcePlateStep},
    {"noisy-displacement", examples::MakeNoisyDisplacement},
    {"head-impacts", examples::MakeHeadImpacts},
    {"head-fall", examples::MakeHeadFall},
    {"ankle-step", examples::MakeAnkleStep},
    {"two-plate-step", examples::MakeTwoPlateStep},
    {"treadmill-walk", examples::MakeTreadmillWalk},
    {"quiet-stance", examples::MakeQuietStance},
    {"jump", examples::MakeJump},
    {"hold-first", examples::MakeHoldOfFirst},
    {"hold-second", examples::MakeHoldOfSecond},
    {"hip-knee-stride", examples::MakeHipKneeStride},
    {"stride-1", examples::MakeStride<1>},
    {"stride-2", examples::MakeStride<2>},
    {"stride-3", examples::MakeStride<3>},
    {"stride-4", examples::MakeStride<4>},
    {"stride-5", examples::MakeStride<5>},
    {"stride-6", examples::MakeStride<6>},
};

/// Saves as a person would, with a command of the File menu.
void Save(const char* command, const std::string& path, const std::function<void(Trial&)>& make) {
  const std::vector<Answer> answers = {{.what = FileAnswer{{path}}}};
  RecipeQuestions questions;
  Workbench workbench(questions);
  make(workbench.trial);
  questions.BeginStep(answers, workbench.trial);
  RunCommand(workbench, *FindCommand(command));
  if (!workbench.report.failures.empty()) {
    throw std::runtime_error(workbench.report.failures.front());
  }
  std::printf("%s\n", path.c_str());
}

void SaveAll(const std::filesystem::path& directory) {
  std::filesystem::create_directories(directory / "study");
  for (const Sample& sample : kSamples) {
    Save("save.vmb", (directory / (std::string(sample.name) + ".vmb")).string(), sample.make);
  }
  for (const examples::StudyTrial& study : examples::StudyTrials()) {
    Save(study.command.c_str(), (directory / "study" / (study.name + "." + study.extension)).string(),
         [&study](Trial& trial) { examples::MakeStudyTrial(study, trial); });
  }
}

constexpr const char* kUsage = "Usage: velmora2-make-examples DIR\n";

}  // namespace

int main(int argc, char** argv) {
  OpenStandardDescriptors();
  const std::string_view asked = argc == 2 ? argv[1] : "";
  if (asked == "--help" || asked == "-h") {
    std::printf(
        "%sWrites the sample trials into DIR, which is made if missing, and those of a study into "
        "DIR/study.\n",
        kUsage);
    return 0;
  }
  if (asked.empty() || asked.starts_with('-')) {  // a directory of such a name is ./-name
    std::fputs(kUsage, stderr);
    return 2;
  }
  try {
    SaveAll(argv[1]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "velmora2-make-examples: %s\n", error.what());
    return 1;
  }
  return 0;
}
