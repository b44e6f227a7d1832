#include "dsp/math/combine.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>
#include <stdexcept>
#include <string>

#include "core/text/numbers.hpp"

namespace velmora {
namespace {

constexpr float kNothing = 1e-6F;

/// The values of one sample, in the order of the channels, and their weights.
struct Values {
  std::span<const double> x;
  std::span<const double> weights;
};

double SumOf(const Values& of) {
  double sum = of.x[0];
  for (const double x : of.x.subspan(1)) {
    sum += x;
  }
  return sum;
}

double DifferenceOf(const Values& of) {
  double left = of.x[0];
  for (const double x : of.x.subspan(1)) {
    left -= x;
  }
  return left;
}

double ProductOf(const Values& of) {
  double product = of.x[0];
  for (const double x : of.x.subspan(1)) {
    product *= x;
  }
  return product;
}

double ResultantOf(const Values& of) {
  double squares = 0.0;
  for (const double x : of.x) {
    squares += x * x;
  }
  return std::sqrt(squares);
}

double WeightedSumOf(const Values& of) {
  double sum = 0.0;
  for (std::size_t k = 0; k < of.x.size(); ++k) {
    sum += of.weights[k] * of.x[k];
  }
  return sum;
}

// A sample that is no number stays one: extremes would pass it over.
double ExtremeOf(const Values& of, bool largest) {
  double extreme = of.x[0];
  for (const double x : of.x) {
    extreme = std::isnan(x) || (largest ? x > extreme : x < extreme) ? x : extreme;
    if (std::isnan(extreme)) {
      break;
    }
  }
  return extreme;
}

bool DividesBy(double divisor) {
  return !(std::fabs(divisor) <= static_cast<double>(kNothing));
}

double Combined(Combination how, const Values& of) {
  switch (how) {
    case Combination::Sum:
      return SumOf(of);
    case Combination::Difference:
      return DifferenceOf(of);
    case Combination::Product:
      return ProductOf(of);
    case Combination::Ratio:
      return DividesBy(of.x[1]) ? of.x[0] / of.x[1] : 0.0;
    case Combination::Mean:
      return SumOf(of) / static_cast<double>(of.x.size());
    case Combination::Resultant:
      return ResultantOf(of);
    case Combination::Minimum:
      return ExtremeOf(of, false);
    case Combination::Maximum:
      return ExtremeOf(of, true);
    case Combination::WeightedSum:
      return WeightedSumOf(of);
    case Combination::Angle:
      return std::atan2(of.x[1], of.x[0]) * (180 / Pi);
  }
  return 0.0;
}

}  // namespace

CombinedChannel CombineChannels(const Trial& trial, Combination how, const ChannelList& channels,
                                const PerChannel<double>& weights) {
  std::vector<double> x(channels.size());
  std::vector<double> weightOf;
  for (const int c : channels) {
    weightOf.push_back(weights[c]);
  }
  CombinedChannel made;
  made.samples.reserve(static_cast<std::size_t>(trial.NData));
  for (std::int64_t i = 1; i <= trial.NData; ++i) {
    const float* frame = trial.matrix.Frame(i);
    std::transform(channels.begin(), channels.end(), x.begin(), [frame](int c) { return frame[c]; });
    made.zeroed += how == Combination::Ratio && !DividesBy(x[1]) ? 1 : 0;
    const auto result = static_cast<float>(Combined(how, {x, weightOf}));
    if (!std::isfinite(result) &&
        std::all_of(x.begin(), x.end(), [](double value) { return std::isfinite(value); })) {
      throw std::range_error("The result for sample " + std::to_string(i) +
                             " is not a number that data can hold.");
    }
    made.samples.push_back(result);
  }
  return made;
}

}  // namespace velmora
