#include "statistics/correlation.hpp"

#include <algorithm>
#include <bit>
#include <boost/math/distributions/students_t.hpp>
#include <boost/sort/spreadsort/integer_sort.hpp>
#include <cmath>
#include <cstddef>
#include <limits>
#include <span>

#include "statistics/product_sums.hpp"

namespace velmora {
namespace {

using Series = std::vector<float>;

// Twice the rank, which is whole where ties share a mean rank of a half.
std::vector<std::uint32_t> RanksTwice(const Series& values) {
  std::vector<std::uint64_t> order(values.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    // The bits of a number sort like the number, once those of negative ones are turned; -0 is 0.
    const auto bits = std::bit_cast<std::uint32_t>(values[i] + 0.0F);
    const std::uint32_t key = (bits >> 31) != 0 ? ~bits : bits | 0x80000000U;
    order[i] = std::uint64_t{key} << 32 | i;
  }
  boost::sort::spreadsort::integer_sort(order.begin(), order.end());
  std::vector<std::uint32_t> ranks(values.size());
  for (std::size_t first = 0; first < order.size();) {
    std::size_t next = first + 1;
    while (next < order.size() && order[next] >> 32 == order[first] >> 32) {
      ++next;
    }
    for (std::size_t k = first; k < next; ++k) {  // ranks first + 1 to next
      ranks[order[k] & 0xFFFFFFFFU] = static_cast<std::uint32_t>(first + 1 + next);
    }
    first = next;
  }
  return ranks;
}

bool Varies(const Series& series) {
  const auto [least, most] = std::minmax_element(series.begin(), series.end());
  return least != series.end() && *least < *most;
}

double MeanOfSeries(const Series& series) {
  double sum = 0.0;
  for (const float x : series) {
    sum += x;
  }
  return sum / static_cast<double>(series.size());
}

double Lag1Of(const Series& series, double mean) {
  double products = 0.0;
  double squares = 0.0;
  for (std::size_t i = 0; i < series.size(); ++i) {
    const double d = series[i] - mean;
    squares += d * d;
    products += i + 1 < series.size() ? d * (series[i + 1] - mean) : 0.0;
  }
  return squares > 0 ? products / squares : 0.0;
}

double HeldCoefficient(const std::vector<double>& sums, std::size_t m, std::size_t x, std::size_t y) {
  return std::clamp(sums[x * m + y] / std::sqrt(sums[x * m + x] * sums[y * m + y]), -1.0, 1.0);
}

/// Of every pair of series of one length without missing samples, in ascending order.
class PairsOf {
 public:
  PairsOf(const std::vector<Series>& series, const GoesOn& goesOn, std::optional<SimdLevel> level)
      : series_(series), goesOn_(goesOn), level_(level) {
    const std::size_t m = series.size();
    count_ = static_cast<std::int64_t>(series.front().size());
    for (const Series& of : series) {
      mean_.push_back(count_ > 0 ? MeanOfSeries(of) : 0.0);
      varies_.push_back(Varies(of));
      lag1_.push_back(varies_.back() ? Lag1Of(of, mean_.back()) : 0.0);
    }
    const auto deviations = [this](std::int64_t i, std::span<double> to) {
      for (std::size_t k = 0; k < to.size(); ++k) {
        to[k] = series_[k][static_cast<std::size_t>(i)] - mean_[k];
      }
    };
    products_ = ProductSums(count_, m, deviations, goesOn_, level_);
    RankAll();
  }

  [[nodiscard]] bool Ended() const { return products_.empty() || rankProducts_.empty(); }

  [[nodiscard]] Correlation Of(std::size_t x, std::size_t y) const {
    Correlation of{.count = count_, .lag1X = lag1_[x], .lag1Y = lag1_[y]};
    if (varies_[x] && varies_[y]) {
      of.r = HeldCoefficient(products_, series_.size(), x, y);
      of.spearman = HeldCoefficient(rankProducts_, series_.size(), x, y);
    }
    return of;
  }

 private:
  void RankAll() {
    std::vector<std::vector<std::uint32_t>> ranks;
    for (const Series& of : series_) {
      ranks.push_back(RanksTwice(of));
      if (!Goes(goesOn_, 0.5)) {
        return;
      }
    }
    const double mean = static_cast<double>(count_ + 1) / 2;  // whatever the ties
    const auto deviations = [&](std::int64_t i, std::span<double> to) {
      for (std::size_t k = 0; k < to.size(); ++k) {
        to[k] = ranks[k][static_cast<std::size_t>(i)] / 2.0 - mean;
      }
    };
    rankProducts_ = ProductSums(count_, series_.size(), deviations, goesOn_, level_);
  }

  const std::vector<Series>& series_;
  const GoesOn& goesOn_;
  std::optional<SimdLevel> level_;
  std::int64_t count_ = 0;
  std::vector<double> mean_;
  std::vector<bool> varies_;
  std::vector<double> lag1_;
  std::vector<double> products_;
  std::vector<double> rankProducts_;
};

bool IsWhole(const Series& series) {
  return std::all_of(series.begin(), series.end(), [](float x) { return std::isfinite(x); });
}

// The samples at which both are numbers.
std::vector<Series> Common(const Series& x, const Series& y) {
  std::vector<Series> both(2);
  for (std::size_t i = 0; i < x.size(); ++i) {
    if (std::isfinite(x[i]) && std::isfinite(y[i])) {
      both[0].push_back(x[i]);
      both[1].push_back(y[i]);
    }
  }
  return both;
}

std::vector<Series> SeriesOf(Trial& trial, const ChannelList& channels, SampleRange range) {
  std::vector<Series> series;
  for (const int c : channels) {
    const ChannelView view = trial.Channel(c);
    Series& of = series.emplace_back();
    of.reserve(static_cast<std::size_t>(range.hi - range.lo) + 1);
    for (std::int64_t i = range.lo; i <= range.hi; ++i) {
      of.push_back(view[i - 1]);
    }
  }
  return series;
}

}  // namespace

std::vector<double> RanksOf(const std::vector<float>& values) {
  std::vector<double> ranks;
  for (const std::uint32_t twice : RanksTwice(values)) {
    ranks.push_back(twice / 2.0);
  }
  return ranks;
}

std::vector<Correlation> CorrelatePairs(Trial& trial, const ChannelList& channels, SampleRange range,
                                        const GoesOn& goesOn, std::optional<SimdLevel> level) {
  const std::vector<Series> series = SeriesOf(trial, channels, range);
  std::vector<Series> whole;
  std::vector<std::optional<std::size_t>> place;  // among those without missing samples
  for (const Series& of : series) {
    const bool isWhole = IsWhole(of);
    place.push_back(isWhole ? std::optional(whole.size()) : std::nullopt);
    if (isWhole) {
      whole.push_back(of);
    }
  }
  std::optional<PairsOf> together;
  if (whole.size() > 1) {
    together.emplace(whole, goesOn, level);
    if (together->Ended()) {
      return {};
    }
  }
  std::vector<Correlation> all;
  for (std::size_t x = 0; x < series.size(); ++x) {
    for (std::size_t y = x + 1; y < series.size(); ++y) {
      if (place[x] && place[y]) {
        all.push_back(together->Of(*place[x], *place[y]));
        continue;
      }
      const std::vector<Series> both = Common(series[x], series[y]);
      const PairsOf pair(both, goesOn, level);
      if (pair.Ended()) {
        return {};
      }
      all.push_back(pair.Of(0, 1));
    }
  }
  return all;
}

std::optional<Interval> ConfidenceOf(double r, double count) {
  constexpr double kNormal975 = 1.959963984540054;
  if (!(count > 3) || !(std::fabs(r) < 1)) {
    return std::nullopt;
  }
  const double half = kNormal975 / std::sqrt(count - 3);
  return Interval{std::tanh(std::atanh(r) - half), std::tanh(std::atanh(r) + half)};
}

std::optional<double> StudentOf(double r, double count) {
  if (!(count > 2)) {
    return std::nullopt;
  }
  return std::fabs(r) < 1 ? r * std::sqrt((count - 2) / (1 - r * r))
                          : std::copysign(std::numeric_limits<double>::infinity(), r);
}

std::optional<double> ProbabilityOf(double r, double count) {
  const std::optional<double> t = StudentOf(r, count);
  if (!t || std::isinf(*t)) {
    return t ? std::optional(0.0) : std::nullopt;
  }
  const boost::math::students_t student(count - 2);
  return 2 * boost::math::cdf(boost::math::complement(student, std::fabs(*t)));
}

double EffectiveCount(const Correlation& of) {
  const double q = of.lag1X * of.lag1Y;
  const auto n = static_cast<double>(of.count);
  return std::clamp(n * (1 - q) / (1 + q), std::min(2.0, n), n);
}

}  // namespace velmora
