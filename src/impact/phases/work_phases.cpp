#include "impact/phases/work_phases.hpp"

#include <cmath>
#include <optional>

namespace velmora {
namespace {

/// The phases that were closed, and the one that is open.
class PhaseList {
 public:
  explicit PhaseList(std::span<const double> x) : x_(x) {}

  // The stretch from one place to another has this area, and sample i lies at one of its ends.
  void Add(double from, double to, double area, std::int64_t i) {
    if (open_ && std::signbit(open_->integral) != std::signbit(area)) {
      Close();
    }
    if (!open_) {
      open_ = {.from = from, .to = to, .peakAt = i};
    }
    open_->to = to;
    open_->integral += area;
    See(i);
  }
  void See(std::int64_t i) {
    const double value = x_[static_cast<std::size_t>(i)];
    if (std::abs(value) > std::abs(open_->peak)) {
      open_->peak = value;
      open_->peakAt = i;
    }
  }
  void Close() {
    if (open_) {
      phases_.push_back(*open_);
      open_.reset();
    }
  }
  [[nodiscard]] std::vector<WorkPhase> Take() && {
    Close();
    return std::move(phases_);
  }

 private:
  std::span<const double> x_;
  std::vector<WorkPhase> phases_;
  std::optional<WorkPhase> open_;
};

}  // namespace

std::vector<WorkPhase> FindWorkPhases(std::span<const double> x, double timeStep) {
  PhaseList phases(x);
  for (std::size_t k = 0; k + 1 < x.size(); ++k) {
    const double a = x[k];
    const double b = x[k + 1];
    const auto i = static_cast<std::int64_t>(k);
    const auto place = static_cast<double>(i);
    if ((a < 0 && b > 0) || (a > 0 && b < 0)) {
      const double crossing = a / (a - b);
      phases.Add(place, place + crossing, a * crossing / 2 * timeStep, i);
      phases.Add(place + crossing, place + 1, b * (1 - crossing) / 2 * timeStep, i + 1);
    } else if (a == 0 && b == 0) {
      phases.Close();
    } else {
      phases.Add(place, place + 1, (a + b) / 2 * timeStep, i);
      phases.See(i + 1);
    }
  }
  return std::move(phases).Take();
}

std::vector<double> RunningIntegral(std::span<const double> x, double timeStep) {
  std::vector<double> running;
  running.reserve(x.size());
  double sum = 0.0;
  for (std::size_t k = 0; k < x.size(); ++k) {
    sum += k > 0 ? (x[k - 1] + x[k]) / 2 * timeStep : 0.0;
    running.push_back(sum);
  }
  return running;
}

}  // namespace velmora
