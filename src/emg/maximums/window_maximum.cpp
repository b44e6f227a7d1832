#include "emg/maximums/window_maximum.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "dsp/design/sliding_sums.hpp"

namespace velmora {
namespace {

double TermOf(float sample, MaximumMethod method) {
  const double x = sample;
  switch (method) {
    case MaximumMethod::Rms:
      return x * x;
    case MaximumMethod::Mean:
      return x;
    default:
      return std::abs(x);
  }
}

double ValueOf(double sum, std::int32_t width, MaximumMethod method) {
  return method == MaximumMethod::Rms ? std::sqrt(sum / width) : sum / width;
}

std::vector<double> TermsOf(Trial& trial, int channel, SampleRange range, MaximumMethod method) {
  const ChannelView x = trial.Channel(channel);
  std::vector<double> terms;
  terms.reserve(static_cast<std::size_t>(std::int64_t{range.hi} - range.lo + 1));
  for (std::int64_t i = range.lo - 1; i < range.hi; ++i) {
    terms.push_back(TermOf(x[i], method));
  }
  return terms;
}

std::int32_t WidthOf(std::int32_t width, MaximumMethod method) {
  return method == MaximumMethod::LargestAbsolute ? 1 : width;
}

}  // namespace

WindowMaximum FindWindowMaximum(Trial& trial, int channel, SampleRange range, const MaximumRule& rule,
                                SimdLevel level, const Turn& turn) {
  constexpr std::int64_t kTogether = 4096;
  const std::int32_t width = WidthOf(rule.width, rule.method);
  const std::vector<double> terms = TermsOf(trial, channel, range, rule.method);
  const std::int64_t windows = static_cast<std::int64_t>(terms.size()) - width + 1;
  std::vector<double> sums(static_cast<std::size_t>(std::min(kTogether, windows)));
  double largest = 0.0;
  std::int64_t at = -1;
  for (std::int64_t done = 0; done < windows; done += kTogether) {
    const std::int64_t now = std::min(kTogether, windows - done);
    SumWindows(terms.data() + done, width, now, sums.data(), level);
    const auto best = std::max_element(sums.begin(), sums.begin() + now);
    if (at < 0 || *best > largest) {
      largest = *best;
      at = done + (best - sums.begin());
    }
    Give(turn);
  }
  return {.value = ValueOf(largest, width, rule.method), .first = static_cast<std::int32_t>(range.lo + at)};
}

WindowMaximum FindWindowMaximumPlain(Trial& trial, int channel, SampleRange range, const MaximumRule& rule) {
  const std::int32_t width = WidthOf(rule.width, rule.method);
  const std::vector<double> terms = TermsOf(trial, channel, range, rule.method);
  double largest = 0.0;
  std::int32_t first = 0;
  for (std::size_t i = 0; i + static_cast<std::size_t>(width) <= terms.size(); ++i) {
    const double sum = SumWindowPlain(terms.data() + i, width);
    if (first == 0 || sum > largest) {
      largest = sum;
      first = range.lo + static_cast<std::int32_t>(i);
    }
  }
  return {.value = ValueOf(largest, width, rule.method), .first = first};
}

}  // namespace velmora
