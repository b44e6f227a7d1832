#include "dsp/math/channel_math.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "core/text/numbers.hpp"

namespace velmora {
namespace {

constexpr double kFloatMax = std::numeric_limits<float>::max();

// How results are stored. All channels of a sample lie side by side, so the fast order is sample by
// sample over all channels; a fault however must find the lower channels finished and the higher
// ones untouched, which takes channel by channel. Every operation is written once, over runs of
// neighbouring channels, and goes either Unchecked over all of them or Checked over one after the other.
// `operands` is finite exactly when everything that went into `value` is: infinities that were there
// before are data, not faults.
struct Unchecked {
  template <typename Real>
  static void Store(float& to, Real value, Real /*operands*/, int /*channel*/, std::int64_t /*sample*/) {
    to = static_cast<float>(value);
  }
};
struct Checked {
  template <typename Real>
  static void Store(float& to, Real value, Real operands, int channel, std::int64_t sample) {
    const auto result = static_cast<float>(value);
    if (!std::isfinite(result) && std::isfinite(operands)) {
      throw ArithmeticFault(channel, sample);
    }
    to = result;
  }
};

// `operation(x, k)` on 32-bit operands, k the channel's constant. For sums, products, quotients and
// square roots of 32-bit numbers a 64-bit result rounded to 32 bits is the 32-bit result, since 53 bits
// are more than twice 24 and two (Figueroa 1995, "When is double rounding innocuous?").
template <typename Policy, typename Operation>
void Transform(Trial& trial, const ChannelList& channels, const PerChannel<float>& constants,
               const Operation& operation) {
  const std::vector<ChannelRun> runs = RunsOf(channels);
  const float* k = constants.data();
  for (std::int64_t i = 1; i <= trial.NData; ++i) {
    float* __restrict x = trial.matrix.Frame(i);
    for (const ChannelRun run : runs) {
      for (int c = run.first; c <= run.last; ++c) {
        Policy::Store(x[c], operation(x[c], k[c]), x[c], c, i);
      }
    }
  }
}

constexpr PerChannel<float> kNoConstants{};

template <typename Operation>
void TransformFreely(Trial& trial, const ChannelList& channels, const Operation& operation) {
  Transform<Unchecked>(trial, channels, kNoConstants, operation);
}

// A pass that only reads waits for memory; asking 16 KiB ahead takes a quarter off its time.
constexpr std::ptrdiff_t kPrefetchFloats = 4096;
constexpr std::ptrdiff_t kCacheLineFloats = 16;

// Largest |x| of each channel; infinite when a sample is. NaN does not count: it stays what it is.
PerChannel<float> Magnitudes(const Trial& trial, const ChannelList& channels) {
  PerChannel<float> magnitudes{};
  float* __restrict largest = magnitudes.data();
  const std::ptrdiff_t stride = trial.matrix.Stride();
  const std::vector<ChannelRun> runs = RunsOf(channels);
  for (std::int64_t i = 1; i <= trial.NData; ++i) {
    const float* x = trial.matrix.Frame(i);
    for (std::ptrdiff_t ahead = 0; ahead < stride; ahead += kCacheLineFloats) {
      __builtin_prefetch(x + kPrefetchFloats + ahead);  // may point past the end: it only fetches
    }
    for (const ChannelRun run : runs) {
      for (int c = run.first; c <= run.last; ++c) {
        const float magnitude = std::abs(x[c]);
        largest[c] = magnitude > largest[c] ? magnitude : largest[c];
      }
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
    return bound(static_cast<double>(magnitudes[c]), c) < kFloatMax;
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
void TransformGuarded(Trial& trial, const ChannelList& channels, const PerChannel<float>& constants,
                      const Bound& bound, const Operation& operation) {
  const auto boundOf = [&](double largest, int c) {
    return bound(largest, std::abs(static_cast<double>(constants[c])));
  };
  RunGuarded(trial, channels, boundOf, [&](auto policy, const ChannelList& list) {
    Transform<decltype(policy)>(trial, list, constants, operation);
  });
}

template <typename Policy>
void AccumulateAs(Trial& trial, const ChannelList& channels) {
  const std::vector<ChannelRun> runs = RunsOf(channels);
  for (std::int64_t i = 2; i <= trial.NData; ++i) {
    const float* before = trial.matrix.Frame(i - 1);
    float* __restrict x = trial.matrix.Frame(i);
    for (const ChannelRun run : runs) {
      for (int c = run.first; c <= run.last; ++c) {
        Policy::Store(x[c], before[c] + x[c], before[c] / 2 - x[c] / 2, c, i);
      }
    }
  }
}

template <typename Policy>
void IntegrateAs(Trial& trial, const ChannelList& channels, double timeStep) {
  PerChannel<double> totals{};
  double* __restrict total = totals.data();
  const std::vector<ChannelRun> runs = RunsOf(channels);
  for (std::int64_t i = 1; i <= trial.NData; ++i) {
    float* __restrict x = trial.matrix.Frame(i);
    for (const ChannelRun run : runs) {
      for (int c = run.first; c <= run.last; ++c) {
        const double sample = x[c];
        const double operands = total[c] + sample;
        total[c] = total[c] + sample * timeStep;
        Policy::Store(x[c], total[c], operands, c, i);
      }
    }
  }
}

template <typename Policy>
void RectifyAndIntegrateAs(Trial& trial, const ChannelList& channels, double timeStep) {
  const std::vector<ChannelRun> runs = RunsOf(channels);
  constexpr PerChannel<float> zeros{};
  const float* before = zeros.data();
  for (std::int64_t i = 1; i <= trial.NData; ++i) {
    float* x = trial.matrix.Frame(i);
    for (const ChannelRun run : runs) {
      for (int c = run.first; c <= run.last; ++c) {
        const double area = std::abs(static_cast<double>(x[c])) * timeStep;
        Policy::Store(x[c], area + before[c], double{x[c]} + before[c], c, i);
      }
    }
    before = x;
  }
}

// `before` holds the original of the sample left of the one in work, since that one is overwritten.
template <typename Policy>
void DifferentiateAs(Trial& trial, const ChannelList& channels, double timeStep) {
  const double twoSteps = timeStep + timeStep;
  const std::int64_t last = trial.NData;
  PerChannel<float> originals{};
  float* __restrict before = originals.data();
  const std::vector<ChannelRun> runs = RunsOf(channels);
  const auto store = [&](std::int64_t i, const float* next, bool keepOwn, double step) {
    float* __restrict x = trial.matrix.Frame(i);
    for (const ChannelRun run : runs) {
      for (int c = run.first; c <= run.last; ++c) {
        const float own = x[c];
        const double left = keepOwn ? own : before[c];
        const double difference = static_cast<double>(next[c]) - left;
        before[c] = own;
        Policy::Store(x[c], difference / step, difference, c, i);
      }
    }
  };
  store(1, trial.matrix.Frame(2), true, timeStep);
  for (std::int64_t i = 2; i < last; ++i) {
    store(i, trial.matrix.Frame(i + 1), false, twoSteps);
  }
  PerChannel<float> end{};
  std::copy_n(trial.matrix.Frame(last), trial.NChan + 1, end.begin());
  store(last, end.data(), false, timeStep);
}

template <typename Policy>
void SubtractLinesAs(Trial& trial, const ChannelList& channels, const double* level, const float* slope) {
  const std::vector<ChannelRun> runs = RunsOf(channels);
  for (std::int64_t i = 1; i <= trial.NData; ++i) {
    float* __restrict x = trial.matrix.Frame(i);
    const auto index = static_cast<double>(i - 1);
    for (const ChannelRun run : runs) {
      for (int c = run.first; c <= run.last; ++c) {
        const double sample = x[c];
        Policy::Store(x[c], sample - level[c] - slope[c] * index, sample, c, i);
      }
    }
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

ArithmeticFault::ArithmeticFault(int channel, std::int64_t sample)
    : std::range_error("The result for channel " + ChannelNumber(channel) + ", sample " +
                       std::to_string(sample) + ", is not a number that data can hold." +
                       (sample > 1 ? "  Samples before it have been changed." : "")),
      channel_(channel) {}

void Absolute(Trial& trial, const ChannelList& channels) {
  TransformFreely(trial, channels, [](float x, float) { return std::abs(x); });
}

void Negate(Trial& trial, const ChannelList& channels) {
  TransformFreely(trial, channels, [](float x, float) { return -x; });
}

void HalfWaveRectify(Trial& trial, const ChannelList& channels) {
  TransformFreely(trial, channels, [](float x, float) { return x < 0 ? 0.0F : x; });
}

void SquareRoot(Trial& trial, const ChannelList& channels) {
  TransformFreely(trial, channels, [](float x, float) { return std::sqrt(x < 0 ? 0.0F : x); });
}

void Invert(Trial& trial, const ChannelList& channels) {
  constexpr float smallest = 1e-6F;
  TransformFreely(trial, channels, [](float x, float) {
    const float inverse = 1.0F / x;
    return std::abs(x) > smallest ? inverse : x;
  });
}

void Square(Trial& trial, const ChannelList& channels) {
  TransformGuarded(
      trial, channels, kNoConstants, [](double largest, double) { return largest * largest; },
      [](float x, float) { return x * x; });
}

void AddConstants(Trial& trial, const ChannelList& channels, const PerChannel<float>& constants) {
  TransformGuarded(
      trial, channels, constants, [](double largest, double k) { return largest + k; },
      [](float x, float k) { return x + k; });
}

void SubtractLines(Trial& trial, const ChannelList& channels, const PerChannel<double>& levels,
                   const PerChannel<float>& slopes) {
  const auto bound = [&](double largest, int c) {
    return largest + std::abs(levels[c]) + std::abs(double{slopes[c]}) * static_cast<double>(trial.NData);
  };
  RunGuarded(trial, channels, bound, [&](auto policy, const ChannelList& list) {
    SubtractLinesAs<decltype(policy)>(trial, list, levels.data(), slopes.data());
  });
}

void MultiplyBy(Trial& trial, const ChannelList& channels, const PerChannel<float>& factors) {
  TransformGuarded(
      trial, channels, factors, [](double largest, double k) { return largest * k; },
      [](float x, float k) { return k * x; });
}

void DivideBy(Trial& trial, const ChannelList& channels, const PerChannel<float>& divisors) {
  TransformGuarded(
      trial, channels, divisors, [](double largest, double k) { return largest / k; },
      [](float x, float k) { return x / k; });
}

void RaiseToPower(Trial& trial, const ChannelList& channels, const PerChannel<float>& powers) {
  for (const int c : channels) {
    RaiseChannel(trial, c, powers[c]);
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

void RectifyAndIntegrate(Trial& trial, const ChannelList& channels, double timeStep) {
  RunGuarded(
      trial, channels, [&](double largest, int) { return largest * timeStep * trial.NData; },
      [&](auto policy, const ChannelList& list) {
        RectifyAndIntegrateAs<decltype(policy)>(trial, list, timeStep);
      });
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
