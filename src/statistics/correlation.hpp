#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "core/questions/long_work.hpp"
#include "core/simd.hpp"
#include "core/trial/helpers.hpp"
#include "core/trial/trial.hpp"
#include "dsp/channel_list.hpp"

namespace velmora {

/// How two channels go together over the samples at which both are numbers.
struct Correlation {
  std::int64_t count = 0;
  std::optional<double> r{};         // Pearson's; none for a constant channel
  std::optional<double> spearman{};  // Pearson's of the ranks, ties sharing their mean rank
  double lag1X = 0.0;                // r1 = sum d(i) d(i+1) / sum d^2
  double lag1Y = 0.0;
};

/// Every pair (x, y) with x before y, in ascending order: (1,2), (1,3), ..., (2,3), ... of the list.
/// Sums of products are 64-bit in ascending order of the samples, of values less their mean. `level`: none is
/// the plain loop; the bits are the same. Empty when it was ended.
std::vector<Correlation> CorrelatePairs(Trial& trial, const ChannelList& channels, SampleRange range,
                                        const GoesOn& goesOn = {},
                                        std::optional<SimdLevel> level = MachineSimdLevel());

/// tanh(atanh r -+ 1.96 / sqrt(n - 3)); none for n of 3 and less or |r| = 1.
struct Interval {
  double low;
  double high;
};
std::optional<Interval> ConfidenceOf(double r, double count);

/// r sqrt((n - 2) / (1 - r^2)); infinite for |r| = 1; none for n of 2 and less.
std::optional<double> StudentOf(double r, double count);
/// The two-sided probability of that with n - 2 degrees of freedom.
std::optional<double> ProbabilityOf(double r, double count);

/// How many independent samples those of two series are worth: n (1 - q) / (1 + q), q = r1(x) r1(y), held to
/// 2..n (Bartlett 1946, J. R. Stat. Soc. Suppl. 8, 27).
double EffectiveCount(const Correlation& of);

/// Ranks from 1, equal values sharing the mean of theirs; all values are numbers.
std::vector<double> RanksOf(const std::vector<float>& values);

}  // namespace velmora
