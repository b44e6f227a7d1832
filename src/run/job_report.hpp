#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "run/outcome.hpp"

namespace velmora {

/// The line of a job's process to the one that started it: messages of one text line each.
class JobReport {
 public:
  explicit JobReport(int descriptor) : descriptor_(descriptor) {}

  void Step(const StepPlace& place) const;
  /// One JSON object without a line end.
  void TranscriptLine(std::string_view line) const;
  void End(const Outcome& outcome) const;

 private:
  void Send(char kind, std::string_view line) const;

  int descriptor_;
};

struct TranscriptLine {
  std::string text;
};

using JobMessage = std::variant<StepPlace, TranscriptLine, Outcome>;

/// The message in a line (without its end) that a JobReport sent.
JobMessage ReadJobMessage(std::string_view line);

}  // namespace velmora
