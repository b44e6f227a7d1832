#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace velmora {

/// One line on the terminal that tells how far the runs are. Nothing when standard error is no
/// terminal. The line is gone when the bar goes.
class ProgressBar {
 public:
  ProgressBar(std::size_t runs, std::size_t stepsPerRun);
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;
  ~ProgressBar();

  [[nodiscard]] bool IsShown() const { return shown_; }

  /// A run has begun its step, counted from 1.
  void Step(std::size_t run, int step);
  void End(std::size_t run, bool failed);

 private:
  void SetDone(std::size_t run, std::size_t steps);
  void Draw();

  bool shown_;
  std::size_t stepsPerRun_;
  std::vector<std::size_t> stepsDone_;
  std::size_t allStepsDone_ = 0;
  std::size_t ended_ = 0;
  std::size_t failed_ = 0;
  std::string drawn_;
};

}  // namespace velmora
