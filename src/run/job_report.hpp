#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "run/outcome.hpp"
#include "run/study/study_table.hpp"

namespace velmora {

/// The line between a job's process and the one that started it: messages of one text line each.
class JobReport {
 public:
  explicit JobReport(int descriptor) : descriptor_(descriptor) {}

  void Step(const StepPlace& place) const;
  /// One JSON object without a line end.
  void TranscriptLine(std::string_view line) const;
  void End(const Outcome& outcome) const;
  /// Asks whether the job may write this file and waits for the answer: why not, empty when it may.
  [[nodiscard]] std::string Claim(const std::string& path) const;
  /// Sends rows for a table of the study and waits for the answer: why it must not be written, empty when it
  /// may.
  [[nodiscard]] std::string Collect(const TableRows& rows) const;

 private:
  [[nodiscard]] std::string Answer() const;
  void Send(char kind, std::string_view line) const;

  int descriptor_;
};

struct TranscriptLine {
  std::string text;
};

struct OutputClaim {
  std::string path;
};

using JobMessage = std::variant<StepPlace, TranscriptLine, Outcome, OutputClaim, TableRows>;

/// The message in a line (without its end) that a JobReport sent.
JobMessage ReadJobMessage(std::string_view line);

/// Answers an OutputClaim or TableRows, at the other end of the line.
void AnswerJob(int descriptor, const std::string& refusal);

}  // namespace velmora
