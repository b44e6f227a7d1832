#include "run/batch/progress_bar.hpp"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace velmora {
namespace {

constexpr std::size_t kWidth = 30;

}  // namespace

ProgressBar::ProgressBar(std::size_t runs, std::size_t stepsPerRun)
    : shown_(isatty(STDERR_FILENO) == 1), stepsPerRun_(stepsPerRun), stepsDone_(runs) {
  Draw();
}

ProgressBar::~ProgressBar() {
  if (shown_) {
    std::fputs("\r\033[K", stderr);
  }
}

void ProgressBar::Step(std::size_t run, int step) {
  SetDone(run, static_cast<std::size_t>(std::max(step - 1, 0)));
}

void ProgressBar::End(std::size_t run, bool failed) {
  ++ended_;
  failed_ += failed ? 1 : 0;
  SetDone(run, stepsPerRun_);
}

void ProgressBar::SetDone(std::size_t run, std::size_t steps) {
  allStepsDone_ += steps - stepsDone_[run];
  stepsDone_[run] = steps;
  Draw();
}

void ProgressBar::Draw() {
  if (!shown_) {
    return;
  }
  const std::size_t all = std::max<std::size_t>(stepsPerRun_ * stepsDone_.size(), 1);
  const std::size_t filled = kWidth * allStepsDone_ / all;
  std::string line = "\r[" + std::string(filled, '#') + std::string(kWidth - filled, '.') + "] " +
                     std::to_string(ended_) + " of " + std::to_string(stepsDone_.size());
  if (failed_ > 0) {
    line += ", " + std::to_string(failed_) + " failed";
  }
  if (line != drawn_) {
    std::fputs((line + "\033[K").c_str(), stderr);
    drawn_ = std::move(line);
  }
}

}  // namespace velmora
