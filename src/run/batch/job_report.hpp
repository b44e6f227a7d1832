#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "run/batch/outcome.hpp"
#include "run/batch/step_mark.hpp"
#include "run/study/study_table.hpp"

namespace velmora {

/// The line between a process that does jobs and the one that started it: messages of one text line each.
class JobReport {
 public:
  /// Without `tellsSteps` a step is marked and nothing said of it.
  JobReport(int descriptor, const StepMark& mark, bool tellsSteps)
      : descriptor_(descriptor), mark_(mark), tellsSteps_(tellsSteps) {}

  /// Waits for the next job; none when there is none for this process any more.
  [[nodiscard]] std::optional<std::size_t> NextJob() const;

  void Step(const StepPlace& place) const;
  /// One JSON object without a line end.
  void TranscriptLine(std::string_view line) const;
  void End(const Outcome& outcome) const;
  /// Asks whether the job may write this file and waits for the answer: why not, empty when it may.
  [[nodiscard]] std::string Claim(const std::string& path) const;
  void Written(const std::string& path) const;
  /// Sends rows for a table of the study and waits for the answer: why it must not be written, empty when it
  /// may.
  [[nodiscard]] std::string Collect(const TableRows& rows) const;

 private:
  /// Nothing when the other end is closed, or the process is to end.
  [[nodiscard]] std::optional<std::string> ReadLine() const;
  [[nodiscard]] std::string Answer() const { return ReadLine().value_or("interrupted"); }
  void Send(char kind, std::string_view line) const;

  int descriptor_;
  const StepMark& mark_;
  bool tellsSteps_;
};

struct TranscriptLine {
  std::string text;
};

struct OutputClaim {
  std::string path;
};

struct WrittenFile {
  std::string path;
};

using JobMessage = std::variant<StepPlace, TranscriptLine, Outcome, OutputClaim, WrittenFile, TableRows>;

/// The message in a line (without its end) that a JobReport sent.
JobMessage ReadJobMessage(std::string_view line);

/// What a worker waits for in NextJob, at the other end of the line.
void GiveJob(int descriptor, std::size_t job);

/// Answers an OutputClaim or TableRows, at the other end of the line.
void AnswerJob(int descriptor, const std::string& refusal);

}  // namespace velmora
