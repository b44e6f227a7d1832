#include "dsp/design/residuals.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "core/text/numbers.hpp"
#include "dsp/filters/filter_padding.hpp"
#include "dsp/filters/recursive_filter.hpp"
#include "dsp/filters/recursive_filter_lanes.hpp"

namespace velmora {
namespace {

constexpr int kSideBySide = 32;
constexpr std::size_t kFewestOfLine = 10;

std::int32_t PaddingOf(const Trial& trial) {
  return RoundHalfEven32(trial.NData / 5.0);
}

double Root(double sum, SampleRange range) {
  return std::sqrt(sum / static_cast<double>(std::int64_t{range.hi} - range.lo + 1));
}

// As many copies of the padded channel as there are cut-offs, as the channels of a trial of their own.
Trial Copies(Trial& trial, int channel, int count) {
  const ChannelView x = trial.Channel(channel);
  const FilterPadding padding = MakePadding(PaddingOf(trial), false, trial.NData, trial.NData - 1);
  Trial copies;
  copies.Rate = trial.Rate;
  copies.AllocateData(count, trial.NData + 2 * std::int64_t{padding.count}, SampleMatrix::Fill::None);
  std::vector<float> ends(2 * static_cast<std::size_t>(padding.count));
  FillPadding(x, {1, trial.NData}, padding, {ends.data(), 1, padding.count},
              {ends.data() + padding.count, 1, padding.count});
  for (std::int64_t i = 0; i < copies.NData; ++i) {
    const std::int64_t inside = i - padding.count;
    const bool head = inside < 0;
    const bool tail = inside >= trial.NData;
    const float value = head   ? ends[static_cast<std::size_t>(i)]
                        : tail ? ends[static_cast<std::size_t>(i - trial.NData)]
                               : x[inside];
    std::fill_n(copies.matrix.Frame(i + 1), count + 1, value);
  }
  return copies;
}

void FilterCopies(Trial& copies, std::span<const float> cutoffs, SimdLevel level, const Turn& turn) {
  ChannelsFilter filter;
  filter.Passes.fill(1);
  filter.ZeroLag.fill(true);
  std::copy(cutoffs.begin(), cutoffs.end(), filter.Cutoffs.begin() + 1);
  FilterChannels(copies, filter, level, turn);
}

// Least squares over the points from `first` on.
struct Fit {
  double atZero = 0.0;
  double slope = 0.0;
  double r2 = 0.0;
};

Fit FitFrom(std::span<const float> x, std::span<const double> y, std::size_t first) {
  const auto n = static_cast<double>(x.size() - first);
  double meanX = 0.0;
  double meanY = 0.0;
  for (std::size_t k = first; k < x.size(); ++k) {
    meanX += double{x[k]};
    meanY += y[k];
  }
  meanX /= n;
  meanY /= n;
  double xx = 0.0;
  double xy = 0.0;
  double yy = 0.0;
  for (std::size_t k = first; k < x.size(); ++k) {
    const double dx = x[k] - meanX;
    const double dy = y[k] - meanY;
    xx += dx * dx;
    xy += dx * dy;
    yy += dy * dy;
  }
  const double slope = xy / xx;
  return {.atZero = meanY - slope * meanX, .slope = slope, .r2 = xy * xy / (xx * yy)};
}

std::optional<double> WhereItComesDown(std::span<const float> x, std::span<const double> y, double to) {
  for (std::size_t k = 1; k < x.size(); ++k) {
    if (y[k - 1] > to && y[k] <= to) {
      const double part = (y[k - 1] - to) / (y[k - 1] - y[k]);
      return x[k - 1] + part * (double{x[k]} - x[k - 1]);
    }
  }
  return std::nullopt;
}

}  // namespace

std::vector<float> ResidualCutoffs(double from, double to, std::int32_t steps) {
  std::vector<float> cutoffs;
  for (std::int32_t j = 0; j <= steps; ++j) {
    cutoffs.push_back(static_cast<float>(from + j * (to - from) / steps));
  }
  return cutoffs;
}

FilterVerdict VerdictOfResidualFilter(float cutoff, double rate) {
  return DesignSection(PassType::Low, FilterDesign::Butterworth, cutoff, rate, 1, true).verdict;
}

std::vector<double> ResidualCurve(Trial& trial, int channel, SampleRange range,
                                  std::span<const float> cutoffs, SimdLevel level, const Turn& turn) {
  std::vector<double> curve;
  while (curve.size() < cutoffs.size()) {
    const std::size_t count = std::min<std::size_t>(kSideBySide, cutoffs.size() - curve.size());
    Trial copies = Copies(trial, channel, kSideBySide);
    FilterCopies(copies, cutoffs.subspan(curve.size(), count), level, turn);
    const std::int64_t padding = (copies.NData - trial.NData) / 2;
    const ChannelView x = trial.Channel(channel);
    std::array<double, kSideBySide> sums{};
    for (std::int64_t i = range.lo; i <= range.hi; ++i) {
      const float* y = copies.matrix.Frame(padding + i) + 1;
      const double sample = x[i - 1];
      for (int k = 0; k < kSideBySide; ++k) {
        const double away = sample - double{y[k]};
        sums.at(static_cast<std::size_t>(k)) += away * away;
      }
    }
    for (std::size_t k = 0; k < count; ++k) {
      curve.push_back(Root(sums.at(k), range));
    }
  }
  return curve;
}

std::vector<double> ResidualCurvePlain(Trial& trial, int channel, SampleRange range,
                                       std::span<const float> cutoffs) {
  const ChannelView x = trial.Channel(channel);
  std::vector<double> curve;
  for (const float cutoff : cutoffs) {
    std::vector<float> y;
    for (std::int64_t i = 0; i < x.size(); ++i) {
      y.push_back(x[i]);
    }
    LowPassArray(y, trial.Rate, {.Cutoff = cutoff, .Padding = PaddingOf(trial), .IsZeroLag = true});
    double sum = 0.0;
    for (std::int64_t i = range.lo - 1; i < range.hi; ++i) {
      const double away = double{x[i]} - double{y[static_cast<std::size_t>(i)]};
      sum += away * away;
    }
    curve.push_back(Root(sum, range));
  }
  return curve;
}

std::optional<ResidualLine> FindResidualLine(std::span<const float> cutoffs, std::span<const double> curve,
                                             double linearity, double lineFrom) {
  for (std::size_t j = 0; j + kFewestOfLine <= cutoffs.size(); ++j) {
    if (lineFrom > 0 && cutoffs[j] < lineFrom) {
      continue;
    }
    const Fit fit = FitFrom(cutoffs, curve, j);
    if (lineFrom > 0 || fit.r2 >= linearity) {
      return ResidualLine{.first = j,
                          .atZero = fit.atZero,
                          .slope = fit.slope,
                          .cutoff = WhereItComesDown(cutoffs, curve, fit.atZero)};
    }
  }
  return std::nullopt;
}

}  // namespace velmora
