#include "impact/hic.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "core/simd.hpp"
#include "core/text/numbers.hpp"

namespace velmora {
namespace {

constexpr int kBlock = 64;  // windows that are added side by side

using WindowAdder = void (*)(const float* a, std::int64_t window, float* totals);

#define SIMD_KERNEL "impact/hic_lanes.inc"
#include "core/simd_widths.inc"

WindowAdder AdderOf(SimdLevel level) {
  return AtLevel<WindowAdder>(level, sse2::AddWindows, avx2::AddWindows, avx512::AddWindows);
}

/// The best window of those seen so far, told in ascending order.
class BestWindow {
 public:
  BestWindow(std::int64_t window, double timeStep)
      : timeStep_(timeStep), duration_(static_cast<double>(window) * timeStep) {}

  // The criterion rises with the total, so a window whose total is not above the largest before cannot win.
  void See(std::int64_t start, float total) {
    if (!(total > largest_)) {
      return;
    }
    largest_ = total;
    const double mean = static_cast<double>(total) * timeStep_ / duration_;
    const auto h = static_cast<float>(std::pow(mean, 2.5) * duration_);
    if (h > best_.value) {
      best_ = {h, start + 1, static_cast<float>(duration_ * 1000)};
    }
  }
  [[nodiscard]] const Hic& Best() const { return best_; }
  // Totals that differ give criteria that differ, as long as these are normal 32-bit numbers.
  [[nodiscard]] bool TellsTotalsApart() const {
    return std::isfinite(best_.value) && best_.value >= std::numeric_limits<float>::min();
  }

 private:
  double timeStep_;
  double duration_;
  float largest_ = 0.0F;
  Hic best_;
};

/// All windows of one length over one acceleration.
class WindowSearch {
 public:
  WindowSearch(std::span<const float> a, std::int64_t window, double timeStep, SimdLevel level)
      : a_(a.data()),
        window_(window),
        starts_(static_cast<std::int64_t>(a.size()) - window + 1),
        timeStep_(timeStep),
        add_(AdderOf(level)),
        lastBlock_((starts_ - 1) / kBlock * kBlock),
        tail_(a.begin() + lastBlock_, a.end()) {
    tail_.resize(static_cast<std::size_t>(window) + kBlock);  // lanes behind the last window read on
  }

  [[nodiscard]] Hic Find() const {
    const std::vector<bool> candidates = Candidates();
    if (!candidates.empty()) {
      const BestWindow best = Search([&candidates](std::size_t block) { return candidates[block]; });
      if (best.TellsTotalsApart()) {
        return best.Best();
      }
    }
    return Search([](std::size_t) { return true; }).Best();
  }

 private:
  // A running 64-bit sum gives every true total; a chain of 32-bit additions of numbers not below 0 stays
  // within window * 2^-24 of it.
  [[nodiscard]] double Slack() const { return 4 * static_cast<double>(window_) * 0x1p-24; }

  [[nodiscard]] bool RunningSumTells() const {
    bool usable = Slack() < 0.5;
    const std::int64_t size = starts_ + window_ - 1;
    for (std::int64_t i = 0; i < size; ++i) {
      usable = usable & (a_[i] >= 0) & (a_[i] <= std::numeric_limits<float>::max());
    }
    return usable;
  }

  // Blocks with a window that may be the best; empty when the running sum tells nothing.
  [[nodiscard]] std::vector<bool> Candidates() const {
    if (!RunningSumTells()) {
      return {};
    }
    std::vector<double> largest;
    double total = 0.0;
    for (std::int64_t k = 0; k < window_; ++k) {
      total += a_[k];
    }
    for (std::int64_t first = 0; first < starts_; first += kBlock) {
      double most = total;
      const std::int64_t end = std::min(first + kBlock, starts_ - 1);
      for (std::int64_t start = first; start < end; ++start) {
        most = std::max(most, total);
        total += static_cast<double>(a_[start + window_]) - a_[start];
      }
      largest.push_back(std::max(most, end < first + kBlock ? total : most));
    }
    const double enough = *std::max_element(largest.begin(), largest.end()) * (1 - Slack());
    std::vector<bool> candidates;
    candidates.reserve(largest.size());
    for (const double most : largest) {
      candidates.push_back(most >= enough);
    }
    return candidates;
  }

  template <typename Wanted>
  [[nodiscard]] BestWindow Search(const Wanted& wanted) const {
    BestWindow best(window_, timeStep_);
    float totals[kBlock];
    for (std::int64_t first = 0; first < starts_; first += kBlock) {
      if (!wanted(static_cast<std::size_t>(first / kBlock))) {
        continue;
      }
      add_(first == lastBlock_ ? tail_.data() : a_ + first, window_, totals);
      const std::int64_t last = std::min<std::int64_t>(kBlock, starts_ - first);
      for (std::int64_t k = 0; k < last; ++k) {
        best.See(first + k, totals[k]);
      }
    }
    return best;
  }

  const float* a_;
  std::int64_t window_;
  std::int64_t starts_;
  double timeStep_;
  WindowAdder add_;
  std::int64_t lastBlock_;
  std::vector<float> tail_;
};

}  // namespace

std::int64_t HicWindow(double span, double rate) {
  return std::max<std::int64_t>(1, RoundHalfEven(span * rate / 1000));
}

Hic FindHic(std::span<const float> a, std::int64_t window, double timeStep, SimdLevel level) {
  if (a.empty()) {
    return {};
  }
  const auto size = static_cast<std::int64_t>(a.size());
  return WindowSearch(a, std::clamp<std::int64_t>(window, 1, size), timeStep, level).Find();
}

Hic FindHicPlain(std::span<const float> a, std::int64_t window, double timeStep) {
  const auto size = static_cast<std::int64_t>(a.size());
  window = std::min(window, size);
  const double duration = static_cast<double>(window) * timeStep;
  Hic best;
  for (std::int64_t start = 0; window > 0 && start <= size - window; ++start) {
    float total = 0.0F;
    for (std::int64_t k = 0; k < window; ++k) {
      total += a[static_cast<std::size_t>(start + k)];
    }
    const auto h =
        static_cast<float>(std::pow(static_cast<double>(total) * timeStep / duration, 2.5) * duration);
    if (h > best.value) {
      best = {h, start + 1, static_cast<float>(duration * 1000)};
    }
  }
  return best;
}

}  // namespace velmora
