#pragma once

#include <string>
#include <string_view>

namespace velmora {

/// The text file that tells which trials went into an average. Every line is in the file as soon as it is
/// added, so that an average that is given up, or a program that ends, leaves a log of all that was done.
class EnsembleLog {
 public:
  EnsembleLog() = default;
  EnsembleLog(const EnsembleLog&) = delete;
  EnsembleLog& operator=(const EnsembleLog&) = delete;
  ~EnsembleLog() = default;

  /// Puts a new log in the place of `path`, in one step. Throws FileError, and the old file is as it was.
  void Open(const std::string& path, std::string_view firstLines);
  /// Adds lines, each with its line break. Returns the system's reason when they could not be written; they
  /// are tried again with those that follow.
  std::string Add(std::string_view lines);
  /// The same; no more lines come. Nothing when the log is not open.
  std::string Close(std::string_view lastLines = {});

  [[nodiscard]] bool IsOpen() const { return !path_.empty(); }
  [[nodiscard]] const std::string& Path() const { return path_; }

 private:
  std::string path_;
  std::string waiting_;  // lines that are not in the file yet
};

}  // namespace velmora
