#include "run/study/verify.hpp"

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <map>
#include <set>

#include "core/files/files.hpp"
#include "core/files/output_elsewhere.hpp"
#include "core/files/own_directory.hpp"
#include "core/text/text.hpp"
#include "run/batch/batch.hpp"
#include "run/batch/exit_status.hpp"
#include "run/batch/interrupt.hpp"
#include "run/batch/tell.hpp"
#include "run/recipe/recipe_reader.hpp"
#include "run/study/manifest.hpp"
#include "run/study/write_tables.hpp"

namespace velmora {
namespace {

namespace fs = std::filesystem;

class Verification {
 public:
  Verification(const Manifest& manifest, std::size_t jobs) : manifest_(manifest) {
    again_ = {.recipe = manifest.recipe, .out = manifest.out, .jobs = jobs, .set = manifest.set};
    again_.strict = manifest.strict;
    for (const RunResult& result : manifest.results) {
      if (!result.input.empty()) {
        again_.inputs.push_back(result.input);
      }
    }
  }

  int Run() {
    CheckWhatIsThere();
    const OutputElsewhere elsewhere(directory_.Path(), FilesToCome());
    std::vector<RunResult> results = ResultsToCome(again_);
    OutputClaims claims(again_);
    const Recipe first = RecipeFor(again_, manifest_.text, 0);
    RunBatch({.arguments = again_, .text = manifest_.text, .first = first, .claims = claims, .digests = true},
             results);
    if (InterruptSignal() != 0) {
      return kSignalled + InterruptSignal();
    }
    CompareRuns(results);
    CompareTables(results);
    std::printf("%zu of %zu files are the same\n", same_, files_);
    return different_ ? kStepFailed : kAllRan;
  }

 private:
  void Report(const std::string& what, const std::string& path) {
    std::printf("%s: %s\n", what.c_str(), OneLine(path).c_str());
    different_ = true;
  }

  /// Inputs and results as they lie there now.
  void CheckWhatIsThere() {
    const auto check = [this](const FileDigest& digest, const std::string& kind) {
      if (!fs::exists(digest.path)) {
        Report(kind + "missing", digest.path);
      } else if (!IsUnchanged(digest)) {
        Report(kind + "changed since", digest.path);
      }
    };
    for (const RunResult& result : manifest_.results) {
      if (result.outcome.read) {
        check(*result.outcome.read, "input ");
      }
      for (const FileDigest& file : result.outcome.files) {
        check(file, "");
      }
    }
    for (const FileDigest& table : manifest_.tables) {
      check(table, "");
    }
  }

  [[nodiscard]] std::set<std::string> FilesToCome() const {
    std::set<std::string> files;
    for (const RunResult& result : manifest_.results) {
      for (const FileDigest& file : result.outcome.files) {
        files.insert(file.path);
      }
    }
    for (const FileDigest& table : manifest_.tables) {
      files.insert(table.path);
    }
    return files;
  }

  void Compare(const FileDigest& before, const std::map<std::string, FileDigest>& made) {
    ++files_;
    const auto found = made.find(before.path);
    if (found == made.end()) {
      Report("not made again", before.path);
    } else if (found->second.sha256 != before.sha256) {
      Report("differs when made again", before.path);
    } else {
      ++same_;
    }
  }

  void CompareRuns(const std::vector<RunResult>& results) {
    for (std::size_t run = 0; run < results.size(); ++run) {
      const RunResult& before = manifest_.results[run];
      std::map<std::string, FileDigest> made;
      for (const FileDigest& file : results[run].outcome.files) {
        made[file.path] = file;
      }
      for (const FileDigest& file : before.outcome.files) {
        Compare(file, made);
      }
      const std::optional<StepProblem>& failure = results[run].outcome.failure;
      if (failure && before.state == RunResult::State::Done) {
        Report("fails now at " + PlaceText(failure->at) + ": " + failure->why, before.input);
      }
    }
  }

  void CompareTables(const std::vector<RunResult>& results) {
    std::map<std::string, FileDigest> made;
    for (const WrittenTable& table : WriteTables(results)) {
      if (table.fault.empty()) {
        made[table.file] = DigestOf(table.file);
      } else {
        Tell(table.file + ": " + table.fault);
      }
    }
    for (const FileDigest& table : manifest_.tables) {
      Compare(table, made);
    }
  }

  const Manifest& manifest_;
  OwnDirectory directory_;
  Arguments again_;
  std::size_t files_ = 0;
  std::size_t same_ = 0;
  bool different_ = false;
};

}  // namespace

int VerifyManifest(const std::string& path, std::size_t jobs) {
  CatchInterrupts();
  std::signal(SIGPIPE, SIG_IGN);
  try {
    const Manifest manifest = ReadManifest(path);
    return Verification(manifest, jobs).Run();
  } catch (const RecipeError& error) {
    Tell(error.what());
  } catch (const std::exception& error) {
    Tell(path + ": " + error.what());
  }
  return kBadUsage;
}

}  // namespace velmora
