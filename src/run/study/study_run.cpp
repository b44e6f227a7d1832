#include "run/study/study_run.hpp"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <optional>

#include "core/files/files.hpp"
#include "run/batch/batch.hpp"
#include "run/batch/closing_table.hpp"
#include "run/batch/exit_status.hpp"
#include "run/batch/interrupt.hpp"
#include "run/batch/tell.hpp"
#include "run/batch/text_file.hpp"
#include "run/recipe/recipe_reader.hpp"
#include "run/study/check.hpp"
#include "run/study/manifest.hpp"
#include "run/study/resume.hpp"
#include "run/study/write_tables.hpp"

namespace velmora {
namespace {

/// A run from its preparation to what is kept of it.
class StudyRun {
 public:
  explicit StudyRun(const Arguments& arguments)
      : arguments_(arguments), results_(ResultsToCome(arguments)), claims_(arguments) {}

  /// What has to be right before anything runs. False, with the reason told, when it is not; a recipe that
  /// cannot be read leaves no trace.
  bool Prepare();
  int Run();

 private:
  void CheckInputs();
  void PrepareOutputs();
  void Reserve(const std::string& path, const char* why);
  bool KeepTables();
  bool KeepTranscript();
  bool KeepManifest();
  [[nodiscard]] int Status() const;

  const Arguments& arguments_;
  std::vector<RunResult> results_;
  OutputClaims claims_;
  std::string text_;
  Recipe first_;
  std::optional<TranscriptFile> transcript_;
  std::vector<FileDigest> tables_;
  std::string subject_;  // what a fault is about
};

bool StudyRun::Prepare() {
  try {
    subject_ = arguments_.recipe;
    text_ = ReadTextFile(arguments_.recipe);
    first_ = RecipeFor(arguments_, text_, 0);
    CheckInputs();
    PrepareOutputs();
    return true;
  } catch (const RecipeError& error) {
    Tell(error.what());
  } catch (const std::exception& error) {
    Tell(subject_ + ": " + error.what());
  }
  return false;
}

void StudyRun::CheckInputs() {
  if (const std::vector<std::string> twice = InputsGivenTwice(arguments_.inputs); !twice.empty()) {
    subject_ = twice.front();
    throw FileError("the input is given twice");
  }
}

void StudyRun::PrepareOutputs() {
  subject_ = arguments_.out;
  std::filesystem::create_directories(arguments_.out);
  if (!arguments_.transcript.empty()) {
    Reserve(arguments_.transcript, "the transcript goes there");
    transcript_.emplace(arguments_.transcript, results_.size());
  }
  if (arguments_.manifest.empty()) {
    return;
  }
  Reserve(arguments_.manifest, "the manifest goes there");
  const OutputFile writable(arguments_.manifest);
  if (arguments_.resume && std::filesystem::exists(arguments_.manifest)) {
    TakeOver(ReadManifest(arguments_.manifest), ManifestOf(arguments_, text_), results_, claims_);
  }
}

void StudyRun::Reserve(const std::string& path, const char* why) {
  subject_ = path;
  if (const std::string taken = claims_.Reserve(path, why); !taken.empty()) {
    throw FileError(taken);
  }
}

bool StudyRun::KeepTables() {
  bool kept = true;
  for (const WrittenTable& table : WriteTables(results_, arguments_.out, arguments_.tables)) {
    if (!table.fault.empty()) {
      Tell(table.where + ": " + table.fault);
      kept = false;
    } else if (!arguments_.manifest.empty()) {
      tables_.push_back(DigestOf(table.where));
      tables_.back().path = table.file;
    }
  }
  return kept;
}

bool StudyRun::KeepTranscript() {
  try {
    if (transcript_) {
      transcript_->Commit();
    }
    return true;
  } catch (const FileError& error) {
    Tell(arguments_.transcript + ": " + error.what());
    return false;
  }
}

bool StudyRun::KeepManifest() {
  if (arguments_.manifest.empty()) {
    return true;
  }
  try {
    Manifest manifest = ManifestOf(arguments_, text_);
    manifest.results = std::move(results_);
    manifest.tables = tables_;
    WriteManifest(arguments_.manifest, manifest);
    return true;
  } catch (const FileError& error) {
    Tell(arguments_.manifest + ": " + error.what());
    return false;
  }
}

int StudyRun::Run() {
  CatchInterrupts();
  std::signal(SIGPIPE, SIG_IGN);  // results do not depend on who listens to how it went
  RunBatch({.arguments = arguments_,
            .text = text_,
            .first = first_,
            .claims = claims_,
            .transcript = transcript_ ? &*transcript_ : nullptr,
            .digests = !arguments_.manifest.empty()},
           results_);
  std::fputs(ClosingTable(results_).c_str(), stderr);
  const int status = Status();
  const bool tables = KeepTables();
  const bool transcript = KeepTranscript();
  const bool manifest = KeepManifest();
  return tables && transcript && manifest ? status : std::max(status, kStepFailed);
}

int StudyRun::Status() const {
  if (const int signal = InterruptSignal(); signal != 0) {
    return kSignalled + signal;
  }
  const auto done = [](const RunResult& result) { return result.state == RunResult::State::Done; };
  return std::all_of(results_.begin(), results_.end(), done) ? kAllRan : kStepFailed;
}

}  // namespace

int RunStudy(const Arguments& arguments) {
  StudyRun run(arguments);
  return run.Prepare() ? run.Run() : kBadUsage;
}

}  // namespace velmora
