#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "run/batch/job_report.hpp"
#include "run/batch/outcome.hpp"

namespace velmora {

/// What the jobs tell and ask while they run, by the job's index, and with onEnd once for each job that was
/// started, in the order in which they end.
struct JobEvents {
  /// May be missing, which saves the messages.
  std::function<void(std::size_t job, const StepPlace& place)> onStep;
  std::function<void(std::size_t job, std::string_view line)> onTranscript;
  std::function<void(std::size_t job, const Outcome& outcome)> onEnd;
  /// A job wants to write this file; returns why it must not, empty when it may.
  std::function<std::string(std::size_t job, const std::string& path)> onClaim;
  /// A job has written this file. Needed only where jobs tell of it.
  std::function<void(std::size_t job, const std::string& path)> onWritten;
  /// A job has rows for a table of the study; returns why it must not be written, empty when it may.
  std::function<std::string(std::size_t job, TableRows rows)> onCollect;
};

using Job = std::function<Outcome(std::size_t index, const JobReport& report)>;

/// Runs these jobs in processes apart from this one, `atOnce` of them at a time. A process does many jobs one
/// after the other; one that crashes fails its job at the step it was in, and another takes its place. After
/// a caught interrupt (interrupt.hpp) no further job is started, and those running are asked to end, then
/// made to.
void RunJobs(const std::vector<std::size_t>& jobs, std::size_t atOnce, const Job& job,
             const JobEvents& events);

}  // namespace velmora
