#include "dsp/channel_math.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "core/numbers.hpp"

namespace velmora {
namespace {

constexpr double kFloatMax = std::numeric_limits<float>::max();

std::size_t At(int channel) {
  return static_cast<std::size_t>(channel);
}

// How results are stored. All channels of a sample lie side by side, so the fast order is sample by
// sample over all channels; a fault however must find the lower channels finished and the higher
// ones untouched, which takes channel by channel. Every operation is written once, over a list of
// channels, and runs either Unchecked over all of them or Checked over one after the other.
// `operand` is finite exactly when everything that went into `value` is: infinities that were there
// before are data, not faults.
struct Unchecked {
  static void Store(float& to, double value, double /*operand*/, int /*channel*/, std::int64_t /*sample*/) {
    to = static_cast<float>(value);
  }
};
struct Checked {
  static void Store(float& to, double value, double operand, int channel, std::int64_t sample) {
    const auto result = static_cast<float>(value);
    if (!std::isfinite(result) && std::isfinite(operand)) {
      throw ArithmeticFault(channel, sample);
    }
    to = result;
  }
};

template <typename Policy, typename Operation>
void Transform(Trial& trial, const ChannelList& channels, const Operation& operation) {
  const std::int64_t samples = trial.NData;
  for (std::int64_t i = 1; i <= samples; ++i) {
    float* frame = trial.matrix.Frame(i);
    for (const int c : channels) {
      const double x = frame[c];
      Policy::Store(frame[c], operation(x, c), x, c, i);
    }
  }
}

// Largest |x| of each channel; infinite when a sample is. NaN does not count: it stays what it is.
PerChannel<float> Magnitudes(const Trial& trial, const ChannelList& channels) {
  PerChannel<float> magnitudes{};
  const std::int64_t samples = trial.NData;
  for (std::int64_t i = 1; i <= samples; ++i) {
    const float* frame = trial.matrix.Frame(i);
    for (const int c : channels) {
      const float x = std::abs(frame[c]);
      magnitudes[At(c)] = x > magnitudes[At(c)] ? x : magnitudes[At(c)];
    }
  }
  return magnitudes;
}

// Runs `body(policy, list)`: over all channels at once when `bound(largest |x|, channel)` shows that
// no result can leave the range of a 32-bit float, else checked, channel by channel.
template <typename Bound, typename Body>
void RunGuarded(Trial& trial, const ChannelList& channels, const Bound& bound, const Body& body) {
  const PerChannel<float> magnitudes = Magnitudes(trial, channels);
  const bool safe = std::all_of(channels.begin(), channels.end(), [&](int c) {
    return bound(static_cast<double>(magnitudes[At(c)]), c) < kFloatMax;
  });
  if (safe) {
    body(Unchecked{}, channels);
    return;
  }
  for (const int c : channels) {
    body(Checked{}, ChannelList{c});
  }
}

template <typename Bound, typename Operation>
void TransformGuarded(Trial& trial, const ChannelList& channels, const Bound& bound,
                      const Operation& operation) {
  RunGuarded(trial, channels, bound, [&](auto policy, const ChannelList& list) {
    Transform<decltype(policy)>(trial, list, operation);
  });
}

template <typename Policy>
void AccumulateAs(Trial& trial, const ChannelList& channels) {
  const std::int64_t samples = trial.NData;
  for (std::int64_t i = 2; i <= samples; ++i) {
    const float* before = trial.matrix.Frame(i - 1);
    float* frame = trial.matrix.Frame(i);
    for (const int c : channels) {
      const double previous = before[c];
      const double x = frame[c];
      Policy::Store(frame[c], previous + x, previous - x, c, i);
    }
  }
}

template <typename Policy>
void IntegrateAs(Trial& trial, const ChannelList& channels, double timeStep) {
  PerChannel<double> totals{};
  const std::int64_t samples = trial.NData;
  for (std::int64_t i = 1; i <= samples; ++i) {
    float* frame = trial.matrix.Frame(i);
    for (const int c : channels) {
      const double x = frame[c];
      double& total = totals[At(c)];
      const double operands = total + x;
      total = total + x * timeStep;
      Policy::Store(frame[c], total, operands, c, i);
    }
  }
}

// `before` holds the original of the sample left of the one in work, since that one is overwritten.
template <typename Policy>
void DifferentiateAs(Trial& trial, const ChannelList& channels, double timeStep) {
  const double twoSteps = timeStep + timeStep;
  const std::int64_t last = trial.NData;
  PerChannel<double> before{};
  float* frame = trial.matrix.Frame(1);
  for (const int c : channels) {
    const double a = frame[c];
    const double difference = trial.matrix.Frame(2)[c] - a;
    before[At(c)] = a;
    Policy::Store(frame[c], difference / timeStep, difference, c, 1);
  }
  for (std::int64_t i = 2; i < last; ++i) {
    frame = trial.matrix.Frame(i);
    const float* next = trial.matrix.Frame(i + 1);
    for (const int c : channels) {
      const double difference = next[c] - before[At(c)];
      before[At(c)] = frame[c];
      Policy::Store(frame[c], difference / twoSteps, difference, c, i);
    }
  }
  frame = trial.matrix.Frame(last);
  for (const int c : channels) {
    const double difference = frame[c] - before[At(c)];
    Policy::Store(frame[c], difference / timeStep, difference, c, last);
  }
}

void RaiseChannel(Trial& trial, int channel, double power) {
  const ChannelView x = trial.Channel(channel);
  for (std::int64_t i = 0; i < x.size(); ++i) {
    const double base = x[i];
    const double result = std::pow(base, power);
    if (std::isnan(result) && !std::isnan(base)) {
      throw ArithmeticFault(channel, i + 1);
    }
    Checked::Store(x[i], result, base, channel, i + 1);
  }
}

}  // namespace

ChannelList SelectedChannels(const Trial& trial, const ChannelFlags& flags) {
  ChannelList channels;
  for (int c = 1; c <= trial.NChan; ++c) {
    if (flags[At(c)]) {
      channels.push_back(c);
    }
  }
  return channels;
}

ArithmeticFault::ArithmeticFault(int channel, std::int64_t sample)
    : std::range_error("The result for channel " + ChannelNumber(channel) + ", sample " +
                       std::to_string(sample) + ", is not a number that data can hold.  Samples before it " +
                       "have been changed.") {}

void Absolute(Trial& trial, const ChannelList& channels) {
  Transform<Unchecked>(trial, channels, [](double x, int) { return std::abs(x); });
}

void Negate(Trial& trial, const ChannelList& channels) {
  Transform<Unchecked>(trial, channels, [](double x, int) { return -x; });
}

void HalfWaveRectify(Trial& trial, const ChannelList& channels) {
  Transform<Unchecked>(trial, channels, [](double x, int) { return x < 0 ? 0.0 : x; });
}

void SquareRoot(Trial& trial, const ChannelList& channels) {
  Transform<Unchecked>(trial, channels, [](double x, int) { return x < 0 ? 0.0 : std::sqrt(x); });
}

void Invert(Trial& trial, const ChannelList& channels) {
  constexpr double smallest = 1e-6F;
  Transform<Unchecked>(trial, channels, [](double x, int) { return std::abs(x) > smallest ? 1.0 / x : x; });
}

void Square(Trial& trial, const ChannelList& channels) {
  TransformGuarded(
      trial, channels, [](double largest, int) { return largest * largest; },
      [](double x, int) { return x * x; });
}

void AddConstants(Trial& trial, const ChannelList& channels, const PerChannel<float>& constants) {
  TransformGuarded(
      trial, channels, [&](double largest, int c) { return largest + std::abs(double{constants[At(c)]}); },
      [&](double x, int c) { return x + constants[At(c)]; });
}

void MultiplyBy(Trial& trial, const ChannelList& channels, const PerChannel<float>& factors) {
  TransformGuarded(
      trial, channels, [&](double largest, int c) { return largest * std::abs(double{factors[At(c)]}); },
      [&](double x, int c) { return factors[At(c)] * x; });
}

void DivideBy(Trial& trial, const ChannelList& channels, const PerChannel<float>& divisors) {
  TransformGuarded(
      trial, channels, [&](double largest, int c) { return largest / std::abs(double{divisors[At(c)]}); },
      [&](double x, int c) { return x / divisors[At(c)]; });
}

void RaiseToPower(Trial& trial, const ChannelList& channels, const PerChannel<float>& powers) {
  for (const int c : channels) {
    RaiseChannel(trial, c, powers[At(c)]);
  }
}

void Accumulate(Trial& trial, const ChannelList& channels) {
  RunGuarded(
      trial, channels, [&](double largest, int) { return largest * trial.NData; },
      [&](auto policy, const ChannelList& list) { AccumulateAs<decltype(policy)>(trial, list); });
}

void IntegrateOverTime(Trial& trial, const ChannelList& channels, double timeStep) {
  RunGuarded(
      trial, channels, [&](double largest, int) { return largest * timeStep * trial.NData; },
      [&](auto policy, const ChannelList& list) { IntegrateAs<decltype(policy)>(trial, list, timeStep); });
}

void Differentiate(Trial& trial, const ChannelList& channels, double timeStep) {
  if (trial.NData < 3) {
    throw std::invalid_argument("a derivative needs at least three samples");
  }
  RunGuarded(
      trial, channels, [&](double largest, int) { return 2 * largest / timeStep; },
      [&](auto policy, const ChannelList& list) {
        DifferentiateAs<decltype(policy)>(trial, list, timeStep);
      });
}

double PathLength(const Trial& trial, const ChannelList& coordinates, std::int32_t first, std::int32_t last) {
  double total = 0.0;
  for (std::int64_t i = std::int64_t{first} + 1; i <= last; ++i) {
    double squares = 0.0;
    double difference = 0.0;
    for (const int c : coordinates) {
      difference = double{trial.Data(i, c)} - double{trial.Data(i - 1, c)};
      squares = squares + difference * difference;
    }
    total = total + (coordinates.size() == 1 ? std::abs(difference) : std::sqrt(squares));
  }
  return total;
}

double RmsOfResiduals(const Trial& trial, int x, int y) {
  double sum = 0.0;
  for (std::int64_t i = 1; i <= trial.NData; ++i) {
    const double residual = double{trial.Data(i, x)} - double{trial.Data(i, y)};
    sum = sum + residual * residual;
  }
  return std::sqrt(sum / trial.NData);
}

}  // namespace velmora
