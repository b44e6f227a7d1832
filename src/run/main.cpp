#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <string>

#include "app/command_table.hpp"
#include "core/files/files.hpp"
#include "core/files/paths.hpp"
#include "core/files/standard_descriptors.hpp"
#include "core/text/text.hpp"
#include "core/workbench.hpp"
#include "run/batch/arguments.hpp"
#include "run/batch/exit_status.hpp"
#include "run/batch/tell.hpp"
#include "run/batch/text_file.hpp"
#include "run/recipe/default_answers.hpp"
#include "run/report/info.hpp"
#include "run/study/check.hpp"
#include "run/study/join.hpp"
#include "run/study/study_run.hpp"
#include "run/study/verify.hpp"

namespace {

using namespace velmora;

// The status to end with.
int Print(const std::string& text) {
  if (std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0) {
    return kAllRan;
  }
  Tell(std::string("cannot write to standard output: ") + std::strerror(errno));
  return kStepFailed;
}

int PrintCommands() {
  std::size_t widest = 0;
  for (const Command& command : AllCommands()) {
    widest = std::max(widest, command.id.size());
  }
  std::string list;
  for (const Command& command : AllCommands()) {
    list += PadRight(command.id, widest + 2) + WithoutMnemonic(command.caption) + "\n";
  }
  return Print(list);
}

int PrintInfo(const std::string& path) {
  DefaultAnswers answers([](std::string_view message) { Tell(std::string(message)); });
  Workbench workbench(answers);
  workbench.trial.FileName = FullPath(path);
  try {
    RunCommand(workbench, *FindCommand("file.load"));
  } catch (const CommandAbandoned& abandoned) {
    Tell(abandoned.what());
    return kStepFailed;
  }
  if (workbench.trial.NData < 1) {
    Tell("no trial was loaded from " + path);
    return kStepFailed;
  }
  return Print(InfoText(workbench));
}

int CheckRecipe(const Arguments& arguments) {
  try {
    const std::vector<std::string> faults = FaultsOf(arguments, ReadTextFile(arguments.recipe));
    for (const std::string& fault : faults) {
      std::fputs((fault + "\n").c_str(), stderr);
    }
    return faults.empty() ? Print(arguments.recipe + ": no fault found\n") : kBadUsage;
  } catch (const FileError& error) {
    Tell(arguments.recipe + ": " + error.what());
    return kBadUsage;
  }
}

int Run(const Arguments& arguments) {
  if (arguments.commands) {
    return PrintCommands();
  }
  if (!arguments.info.empty()) {
    return PrintInfo(arguments.info);
  }
  if (!arguments.verify.empty()) {
    return VerifyManifest(arguments.verify, arguments.jobs);
  }
  const auto join = [](const std::vector<std::string>& files, auto procedure) {
    return procedure(files.front(), {files.begin() + 1, files.end()});
  };
  if (!arguments.joinTables.empty()) {
    return join(arguments.joinTables, JoinTables);
  }
  if (!arguments.joinManifests.empty()) {
    return join(arguments.joinManifests, JoinManifests);
  }
  return arguments.check ? CheckRecipe(arguments) : RunStudy(arguments);
}

}  // namespace

int main(int argc, char** argv) {
  OpenStandardDescriptors();
  // A file that grows past the limit of the shell is an error to report, not the end of the program.
  std::signal(SIGXFSZ, SIG_IGN);
  auto arguments = ReadArguments(argc, argv);
  if (const auto* said = std::get_if<LastWords>(&arguments)) {
    std::fputs(said->error.c_str(), stderr);
    return said->error.empty() ? Print(said->text) : kBadUsage;
  }
  return Run(std::get<Arguments>(arguments));
}
