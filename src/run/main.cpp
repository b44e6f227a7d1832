#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string>

#include "app/command_table.hpp"
#include "core/files/files.hpp"
#include "core/files/paths.hpp"
#include "core/files/standard_descriptors.hpp"
#include "core/text/text.hpp"
#include "core/workbench.hpp"
#include "run/arguments.hpp"
#include "run/batch.hpp"
#include "run/default_answers.hpp"
#include "run/info.hpp"
#include "run/interrupt.hpp"
#include "run/recipe_reader.hpp"
#include "run/study/check.hpp"
#include "run/study/write_tables.hpp"

namespace {

using namespace velmora;

constexpr int kAllRan = 0;
constexpr int kStepFailed = 1;
constexpr int kBadUsage = 2;
constexpr int kSignalled = 128;

// Standard output carries only what was asked for; how it went is told on standard error.
void Tell(const std::string& message) {
  std::fputs(("velmora2-run: " + message + "\n").c_str(), stderr);
}

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

std::string ReadText(const std::string& path) {
  const InputFile file(path);
  constexpr std::int64_t kLongest = 16 << 20;
  if (file.Size() > kLongest) {
    throw FileError("File too large");
  }
  std::string text(static_cast<std::size_t>(file.Size()), '\0');
  text.resize(file.ReadAt(0, text.data(), text.size()));
  return text;
}

int Status(const std::vector<RunResult>& results) {
  if (const int signal = InterruptSignal(); signal != 0) {
    return kSignalled + signal;
  }
  for (const RunResult& result : results) {
    if (result.state != RunResult::State::Done) {
      return kStepFailed;
    }
  }
  return kAllRan;
}

/// What has to be right before anything runs.
struct Preparation {
  std::string text;
  Recipe first;
  std::optional<OutputClaims> claims;
  std::optional<TranscriptFile> transcript;
};

/// False, with the reason told, when it is not right. A recipe that cannot be read leaves no trace.
bool Prepare(const Arguments& arguments, Preparation& prepared) {
  std::string subject = arguments.recipe;
  try {
    prepared.text = ReadText(arguments.recipe);
    prepared.first = RecipeFor(arguments, prepared.text, 0);
    if (const auto twice = InputsGivenTwice(arguments.inputs); !twice.empty()) {
      subject = twice.front();
      throw FileError("the input is given twice");
    }
    subject = arguments.out;
    std::filesystem::create_directories(arguments.out);
    subject = arguments.transcript;
    prepared.claims.emplace(arguments);
    if (!arguments.transcript.empty()) {
      const std::string taken = prepared.claims->Reserve(arguments.transcript, "the transcript goes there");
      if (!taken.empty()) {
        throw FileError(taken);
      }
      prepared.transcript.emplace(arguments.transcript, std::max<std::size_t>(arguments.inputs.size(), 1));
    }
    return true;
  } catch (const RecipeError& error) {
    Tell(error.what());
  } catch (const std::exception& error) {
    Tell(subject + ": " + error.what());
  }
  return false;
}

bool KeepTranscript(const Arguments& arguments, TranscriptFile& transcript) {
  try {
    transcript.Commit();
    return true;
  } catch (const FileError& error) {
    Tell(arguments.transcript + ": " + error.what());
    return false;
  }
}

bool KeepTables(const std::vector<RunResult>& results) {
  bool kept = true;
  for (const WrittenTable& table : WriteTables(results)) {
    if (!table.fault.empty()) {
      Tell(table.file + ": " + table.fault);
      kept = false;
    }
  }
  return kept;
}

int CheckRecipe(const Arguments& arguments) {
  try {
    const std::vector<std::string> faults = FaultsOf(arguments, ReadText(arguments.recipe));
    for (const std::string& fault : faults) {
      std::fputs((fault + "\n").c_str(), stderr);
    }
    return faults.empty() ? Print(arguments.recipe + ": no fault found\n") : kBadUsage;
  } catch (const FileError& error) {
    Tell(arguments.recipe + ": " + error.what());
    return kBadUsage;
  }
}

int RunRecipe(const Arguments& arguments) {
  Preparation prepared;
  if (!Prepare(arguments, prepared)) {
    return kBadUsage;
  }
  CatchInterrupts();
  std::signal(SIGPIPE, SIG_IGN);  // results do not depend on who listens to how it went
  TranscriptFile* transcript = prepared.transcript ? &*prepared.transcript : nullptr;
  const std::vector<RunResult> results =
      RunBatch(arguments, prepared.text, prepared.first, *prepared.claims, transcript);
  std::fputs(ClosingTable(results).c_str(), stderr);
  const bool tables = KeepTables(results);
  const bool kept = (transcript == nullptr || KeepTranscript(arguments, *transcript)) && tables;
  return kept ? Status(results) : std::max(Status(results), kStepFailed);
}

int Run(const Arguments& arguments) {
  if (arguments.commands) {
    return PrintCommands();
  }
  if (!arguments.info.empty()) {
    return PrintInfo(arguments.info);
  }
  return arguments.check ? CheckRecipe(arguments) : RunRecipe(arguments);
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
