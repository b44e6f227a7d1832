#include "run/study/channel_statistic.hpp"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"

namespace velmora {
namespace {

/// The stretch of a channel between the cursors.
struct Stretch {
  ChannelView samples;
  std::int64_t lo = 0;  // from 0
  std::int64_t hi = 0;  // the last

  [[nodiscard]] std::int64_t Count() const { return hi - lo + 1; }
};

Stretch BetweenCursors(Trial& trial, int channel) {
  const ChannelView samples = trial.Channel(channel);
  if (samples.size() == 0) {
    throw std::invalid_argument("there is no trial");
  }
  const auto [lo, hi] = std::minmax(trial.CursorLo, trial.CursorHi);
  if (lo < 1 || hi > samples.size()) {
    return {samples, 0, samples.size() - 1};
  }
  return {samples, lo - 1, hi - 1};
}

void CheckFinite(const Stretch& stretch, std::int64_t first, std::int64_t last) {
  for (std::int64_t i = first; i <= last; ++i) {
    if (!std::isfinite(stretch.samples[i])) {
      throw std::invalid_argument("sample " + std::to_string(i + 1) + " is not finite");
    }
  }
}

std::int64_t Extreme(const Stretch& stretch, bool highest) {
  std::int64_t at = stretch.lo;
  for (std::int64_t i = stretch.lo; i <= stretch.hi; ++i) {
    const bool beyond =
        highest ? stretch.samples[i] > stretch.samples[at] : stretch.samples[i] < stretch.samples[at];
    at = beyond ? i : at;
  }
  return at;
}

double Mean(const Stretch& stretch) {
  double sum = 0.0;
  for (std::int64_t i = stretch.lo; i <= stretch.hi; ++i) {
    sum += static_cast<double>(stretch.samples[i]);
  }
  return sum / static_cast<double>(stretch.Count());
}

double Rms(const Stretch& stretch) {
  double sum = 0.0;
  for (std::int64_t i = stretch.lo; i <= stretch.hi; ++i) {
    const auto x = static_cast<double>(stretch.samples[i]);
    sum += x * x;
  }
  return std::sqrt(sum / static_cast<double>(stretch.Count()));
}

double Sd(const Stretch& stretch) {
  if (stretch.Count() < 2) {
    throw std::invalid_argument("a single sample has no standard deviation");
  }
  const double mean = Mean(stretch);
  double sum = 0.0;
  for (std::int64_t i = stretch.lo; i <= stretch.hi; ++i) {
    const double off = static_cast<double>(stretch.samples[i]) - mean;
    sum += off * off;
  }
  return std::sqrt(sum / static_cast<double>(stretch.Count() - 1));
}

double Range(const Stretch& stretch) {
  return static_cast<double>(stretch.samples[Extreme(stretch, true)]) -
         static_cast<double>(stretch.samples[Extreme(stretch, false)]);
}

}  // namespace

const std::vector<std::string>& StatisticNames() {
  static const std::vector<std::string> names = {
      "minimum", "maximum",         "range",           "mean", "rms", "sd", "first",
      "last",    "time-of-minimum", "time-of-maximum", "count"};
  return names;
}

std::optional<Statistic> StatisticNamed(std::string_view name) {
  const std::vector<std::string>& names = StatisticNames();
  const auto found = std::find_if(names.begin(), names.end(),
                                  [name](const std::string& known) { return EqualNoCase(known, name); });
  return found == names.end() ? std::nullopt : std::optional(static_cast<Statistic>(found - names.begin()));
}

std::string StatisticText(Trial& trial, int channel, Statistic statistic) {
  const Stretch stretch = BetweenCursors(trial, channel);
  if (statistic != Statistic::Count) {
    CheckFinite(stretch, statistic == Statistic::Last ? stretch.hi : stretch.lo,
                statistic == Statistic::First ? stretch.lo : stretch.hi);
  }
  const auto timeOf = [&](bool highest) { return PlainNumber(trial.Data(Extreme(stretch, highest) + 1, 0)); };
  switch (statistic) {
    case Statistic::Minimum:
      return PlainNumber(stretch.samples[Extreme(stretch, false)]);
    case Statistic::Maximum:
      return PlainNumber(stretch.samples[Extreme(stretch, true)]);
    case Statistic::Range:
      return PlainNumber(Range(stretch));
    case Statistic::Mean:
      return PlainNumber(Mean(stretch));
    case Statistic::Rms:
      return PlainNumber(Rms(stretch));
    case Statistic::Sd:
      return PlainNumber(Sd(stretch));
    case Statistic::First:
      return PlainNumber(stretch.samples[stretch.lo]);
    case Statistic::Last:
      return PlainNumber(stretch.samples[stretch.hi]);
    case Statistic::TimeOfMinimum:
      return timeOf(false);
    case Statistic::TimeOfMaximum:
      return timeOf(true);
    case Statistic::Count:
      return std::to_string(stretch.Count());
  }
  return {};
}

}  // namespace velmora
