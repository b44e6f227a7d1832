#include "run/study/join.hpp"

#include <map>
#include <optional>
#include <stdexcept>

#include "core/files/files.hpp"
#include "run/batch/exit_status.hpp"
#include "run/batch/tell.hpp"
#include "run/batch/text_file.hpp"
#include "run/study/manifest.hpp"
#include "run/study/study_table.hpp"

namespace velmora {
namespace {

char SeparatorFor(const std::string& path) {
  const std::optional<char> separator = SeparatorOf(path);
  if (!separator) {
    throw std::invalid_argument("a table of a study is a .csv or .tab file");
  }
  return *separator;
}

/// Does `join`, which says what it is at, and tells what went wrong there.
template <typename Join>
int Joined(const Join& join) {
  std::string subject;
  try {
    join(subject);
    return kAllRan;
  } catch (const std::exception& error) {
    Tell(subject + ": " + error.what());
    return kBadUsage;
  }
}

/// Adds the inputs of another part. A file is written for one input alone.
class ManifestJoin {
 public:
  void Add(Manifest part) {
    if (!whole_) {
      whole_ = part;
      whole_->results.clear();
      whole_->tables.clear();
    } else if (!SameStudy(*whole_, part)) {
      throw ManifestError("it is of another recipe, other settings or another version than those before");
    }
    for (RunResult& result : part.results) {
      for (const FileDigest& file : result.outcome.files) {
        const auto [owner, isFree] = owners_.try_emplace(file.path, result.input);
        if (!isFree) {
          throw ManifestError(file.path + " is written for " + owner->second + " and for " + result.input);
        }
      }
      whole_->results.push_back(std::move(result));
    }
    for (const FileDigest& table : part.tables) {
      tables_[table.path] = true;
    }
  }

  /// With the tables as they are now.
  Manifest Take(std::string& subject) {
    for (const auto& [path, named] : tables_) {
      subject = path;
      whole_->tables.push_back(DigestOf(path));
    }
    return std::move(*whole_);
  }

 private:
  std::optional<Manifest> whole_;
  std::map<std::string, std::string> owners_;
  std::map<std::string, bool> tables_;
};

}  // namespace

int JoinTables(const std::string& out, const std::vector<std::string>& parts) {
  return Joined([&](std::string& subject) {
    subject = out;
    const char separator = SeparatorFor(out);
    StudyTable table;
    for (const std::string& part : parts) {
      subject = part;
      table.Add(ReadTableText(ReadTextFile(part), SeparatorFor(part)));
    }
    subject = out;
    OutputFile file(out);
    file.Write(table.Text(separator));
    file.Commit();
  });
}

int JoinManifests(const std::string& out, const std::vector<std::string>& parts) {
  return Joined([&](std::string& subject) {
    ManifestJoin join;
    for (const std::string& part : parts) {
      subject = part;
      join.Add(ReadManifest(part));
    }
    const Manifest whole = join.Take(subject);
    subject = out;
    WriteManifest(out, whole);
  });
}

}  // namespace velmora
