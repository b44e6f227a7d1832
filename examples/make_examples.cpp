// velmora2-make-examples DIR: writes the sample trials into a directory, which is made if missing.
#include <cstdio>
#include <filesystem>
#include <string>

#include "app/command_table.hpp"
#include "core/workbench.hpp"
#include "run/recipe_questions.hpp"
#include "sample_trials.hpp"

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
};

/// Saves as a person would, with the command of the File menu.
void Save(const Sample& sample, const std::filesystem::path& directory) {
  const std::string path = (directory / (std::string(sample.name) + ".vmb")).string();
  const std::vector<Answer> answers = {{.what = FileAnswer{{path}}}};
  RecipeQuestions questions;
  Workbench workbench(questions);
  sample.make(workbench.trial);
  questions.BeginStep(answers, workbench.trial);
  RunCommand(workbench, *FindCommand("save.vmb"));
  if (!workbench.report.failures.empty()) {
    throw std::runtime_error(workbench.report.failures.front());
  }
  std::printf("%s\n", path.c_str());
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("Usage: velmora2-make-examples DIR\n", stderr);
    return 2;
  }
  try {
    std::filesystem::create_directories(argv[1]);
    for (const Sample& sample : kSamples) {
      Save(sample, argv[1]);
    }
  } catch (const std::exception& error) {
    std::fprintf(stderr, "velmora2-make-examples: %s\n", error.what());
    return 1;
  }
  return 0;
}
