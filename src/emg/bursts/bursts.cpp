#include "emg/bursts/bursts.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "dsp/design/sliding_sums.hpp"
#include "dsp/design/smooth_low_pass.hpp"

namespace velmora {
namespace {

// y(i) = x(i)^2 - x(i-1) x(i+1) (Kaiser 1990); the ends take their neighbours' values.
std::vector<double> TeagerKaiser(const std::vector<double>& x) {
  std::vector<double> y(x.size());
  for (std::size_t i = 1; i + 1 < x.size(); ++i) {
    y[i] = x[i] * x[i] - x[i - 1] * x[i + 1];
  }
  y.front() = y[1];
  y.back() = y[y.size() - 2];
  return y;
}

std::int64_t Reaching(std::span<const double> signal, const SignalBurst& burst, double level) {
  return std::count_if(signal.begin() + burst.on, signal.begin() + burst.off + 1,
                       [level](double value) { return value >= level; });
}

}  // namespace

std::vector<double> EnvelopeOf(const Trial& trial, int channel, SampleRange range, const EnvelopeRule& rule) {
  std::vector<double> signal = SamplesOf(trial, channel, range);
  if (rule.teagerKaiser) {
    signal = TeagerKaiser(signal);
  }
  if (rule.rectify) {
    for (double& value : signal) {
      value = std::abs(value);
    }
  }
  if (rule.cutoff > 0) {
    SmoothByLowPass(signal, trial.Rate, rule.cutoff);
  }
  return signal;
}

std::size_t QuietestStretch(std::span<const double> signal, std::size_t width) {
  std::vector<double> sums(signal.size() - width + 1);
  SumWindows(signal.data(), static_cast<std::int64_t>(width), static_cast<std::int64_t>(sums.size()),
             sums.data());
  return static_cast<std::size_t>(std::min_element(sums.begin(), sums.end()) - sums.begin());
}

std::vector<SignalBurst> FindSignalBursts(std::span<const double> signal, const BurstRule& rule) {
  std::vector<SignalBurst> bursts;
  const auto n = static_cast<std::int64_t>(signal.size());
  for (std::int64_t i = 0; i < n; ++i) {
    if (!(signal[static_cast<std::size_t>(i)] >= rule.threshold)) {
      continue;
    }
    if (!bursts.empty() && i - bursts.back().off - 1 <= rule.longestGap) {
      bursts.back().off = i;
    } else {
      bursts.push_back({i, i});
    }
  }
  std::erase_if(bursts, [&](const SignalBurst& burst) {
    return burst.off - burst.on + 1 < rule.shortest ||
           (rule.second && Reaching(signal, burst, *rule.second) < rule.secondSamples);
  });
  return bursts;
}

double RudolphTerm(double a, double b) {
  if (!std::isfinite(a) || !std::isfinite(b)) {
    return std::numeric_limits<double>::quiet_NaN();
  }
  const double low = std::max(std::min(a, b), 0.0);
  const double high = std::max(std::max(a, b), 0.0);
  return high > 0 ? low / high * (low + high) : 0.0;
}

CoContraction CoContractionOf(const Trial& trial, int agonist, int antagonist, SampleRange range) {
  CoContraction found;
  double common = 0.0;
  double sumA = 0.0;
  double sumB = 0.0;
  double both = 0.0;
  double terms = 0.0;
  for (std::int32_t i = range.lo; i <= range.hi; ++i) {
    const double x = trial.Data(i, agonist);
    const double y = trial.Data(i, antagonist);
    found.negative += (x < 0 ? 1 : 0) + (y < 0 ? 1 : 0);
    const double a = std::max(x, 0.0);
    const double b = std::max(y, 0.0);
    common += std::min(a, b);
    sumA += a;
    sumB += b;
    both += a + b;
    terms += RudolphTerm(a, b);
  }
  const double n = range.hi - range.lo + 1;
  if (both > 0) {
    found.falconerWinter = 200 * common / both;
  }
  found.rudolph = terms / n;
  found.unnithan = common * (1.0 / trial.Rate);
  found.meanAgonist = sumA / n;
  found.meanAntagonist = sumB / n;
  return found;
}

}  // namespace velmora
