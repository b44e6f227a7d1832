#include "dsp/filters/recursive_filter.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <vector>

#include "dsp/filters/filter_padding.hpp"

namespace velmora {
namespace {

// One run over all of y. The first two samples are the initial condition and stay.
template <PassType type, typename Section>
void Sweep(const ChannelView& y, const Section& section) {
  const double a0 = section.a0;
  const double b1 = section.b1;
  const double b2 = section.b2;
  double x2 = y[0];
  double x1 = y[1];
  for (std::int64_t i = 2; i < y.size(); ++i) {
    const double x0 = y[i];
    const double sum = type == PassType::Low ? x1 + x0 + x1 + x2 : (x2 + x0) - (x1 + x1);
    y[i] = static_cast<float>(a0 * sum + b1 * double{y[i - 1]} + b2 * double{y[i - 2]});
    x2 = x1;
    x1 = x0;
  }
}

template <PassType type>
void RunPasses(std::vector<float>& samples, const FilterSection& section, const FilterSettings& settings) {
  const auto size = static_cast<std::int64_t>(samples.size());
  if (size < 3) {
    return;
  }
  const ChannelView forward(samples.data(), 1, size);
  const ChannelView backward(samples.data() + size - 1, -1, size);
  for (int pass = 0; pass < settings.Passes; ++pass) {
    Sweep<type>(forward, section);
    if (settings.IsZeroLag) {
      Sweep<type>(backward, section);
    }
  }
}

std::vector<float> Padded(const ChannelView& x, SampleRange range, const FilterPadding& padding) {
  const std::int64_t count = padding.count;
  const std::int64_t inner = std::int64_t{range.hi} - range.lo + 1;
  std::vector<float> y(static_cast<std::size_t>(inner + 2 * count));
  FillPadding(x, range, padding, {y.data(), 1, count}, {y.data() + count + inner, 1, count});
  for (std::int64_t i = 0; i < inner; ++i) {
    y[static_cast<std::size_t>(count + i)] = x[range.lo - 1 + i];
  }
  return y;
}

template <PassType type>
FilterVerdict Filter(const ChannelView& x, SampleRange range, double rate, FilterDesign design,
                     const FilterSettings& settings, std::int64_t highestPadding) {
  const DesignedSection designed =
      DesignSection(type, design, settings.Cutoff, rate, settings.Passes, settings.IsZeroLag);
  if (!designed.verdict.Accepted() || x.size() < 1) {
    return designed.verdict;
  }
  const FilterPadding padding = MakePadding(settings.Padding, settings.PadZeros, x.size(), highestPadding);
  std::vector<float> y = Padded(x, range, padding);
  RunPasses<type>(y, designed.section, settings);
  for (std::int64_t i = range.lo; i <= range.hi; ++i) {
    x[i - 1] = y[static_cast<std::size_t>(i - range.lo + padding.count)];
  }
  return designed.verdict;
}

SampleRange RangeWithin(const ChannelView& x, SampleRange range) {
  range.hi = static_cast<std::int32_t>(std::min<std::int64_t>(range.hi, x.size()));
  if (x.size() > 0 && (range.lo < 1 || range.lo > range.hi)) {
    throw std::out_of_range("the samples to filter lie outside the trial");
  }
  return range;
}

template <PassType type>
FilterVerdict FilterChannel(Trial& trial, int channel, SampleRange range, FilterDesign design,
                            const FilterSettings& settings) {
  const ChannelView x = trial.Channel(channel);
  return Filter<type>(x, RangeWithin(x, range), trial.Rate, design, settings, kHighestChannelPadding);
}

template <PassType type>
FilterVerdict FilterArray(std::span<float> values, double rate, FilterDesign design,
                          const FilterSettings& settings) {
  const auto size = static_cast<std::int64_t>(values.size());
  const SampleRange all{1, static_cast<std::int32_t>(size)};
  return Filter<type>({values.data(), 1, size}, all, rate, design, settings,
                      std::numeric_limits<std::int16_t>::max());
}

FilterDesign DesignOf(const FilterSettings& settings) {
  return settings.IsCritical ? FilterDesign::CriticallyDamped : FilterDesign::Butterworth;
}

}  // namespace

FilterVerdict LowPassChannel(Trial& trial, int channel, SampleRange range, const FilterSettings& settings) {
  if (settings.Rectify) {
    const ChannelView x = trial.Channel(channel);
    const SampleRange inside = RangeWithin(x, range);
    for (std::int64_t i = inside.lo; i <= inside.hi; ++i) {
      x[i - 1] = std::abs(x[i - 1]);
    }
  }
  return FilterChannel<PassType::Low>(trial, channel, range, DesignOf(settings), settings);
}

FilterVerdict HighPassChannel(Trial& trial, int channel, SampleRange range, const FilterSettings& settings) {
  return FilterChannel<PassType::High>(trial, channel, range, DesignOf(settings), settings);
}

FilterVerdict LowPassBesselChannel(Trial& trial, int channel, SampleRange range,
                                   const FilterSettings& settings) {
  return FilterChannel<PassType::Low>(trial, channel, range, FilterDesign::Bessel, settings);
}

FilterVerdict HighPassBesselChannel(Trial& trial, int channel, SampleRange range,
                                    const FilterSettings& settings) {
  return FilterChannel<PassType::High>(trial, channel, range, FilterDesign::Bessel, settings);
}

FilterVerdict FilterForward(Trial& trial, int channel, PassType type, FilterDesign design, float cutoff,
                            std::int16_t passes) {
  const ChannelView x = trial.Channel(channel);
  const DesignedSectionOf<double> designed = DesignForwardSection(type, design, cutoff, trial.Rate, passes);
  if (!designed.verdict.Accepted() || x.size() < 3) {
    return designed.verdict;
  }
  for (int pass = 0; pass < passes; ++pass) {
    if (type == PassType::Low) {
      Sweep<PassType::Low>(x, designed.section);
    } else {
      Sweep<PassType::High>(x, designed.section);
    }
  }
  return designed.verdict;
}

FilterVerdict LowPassArray(std::span<float> values, double rate, const FilterSettings& settings) {
  return FilterArray<PassType::Low>(values, rate, DesignOf(settings), settings);
}

FilterVerdict HighPassArray(std::span<float> values, double rate, const FilterSettings& settings) {
  return FilterArray<PassType::High>(values, rate, DesignOf(settings), settings);
}

FilterVerdict LowPassBesselArray(std::span<float> values, double rate, const FilterSettings& settings) {
  return FilterArray<PassType::Low>(values, rate, FilterDesign::Bessel, settings);
}

FilterVerdict HighPassBesselArray(std::span<float> values, double rate, const FilterSettings& settings) {
  return FilterArray<PassType::High>(values, rate, FilterDesign::Bessel, settings);
}

}  // namespace velmora
