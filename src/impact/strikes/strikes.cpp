#include "impact/strikes/strikes.hpp"

#include <algorithm>
#include <cmath>

#include "core/text/numbers.hpp"
#include "dsp/math/mean_deviation.hpp"
#include "impact/phases/work_phases.hpp"

namespace velmora {
namespace {

using Signal = std::span<const double>;

double ValueAt(Signal x, std::int64_t i) {
  return x[static_cast<std::size_t>(i)];
}

/// Nothing where the signal only rises or falls so far.
std::optional<std::int64_t> FirstMaximum(Signal x, const Contact& contact, std::int64_t within) {
  const std::int64_t end =
      std::min({contact.last, contact.first + within, static_cast<std::int64_t>(x.size()) - 2});
  for (std::int64_t i = contact.first + 1; i <= end; ++i) {
    if (ValueAt(x, i - 1) < ValueAt(x, i) && ValueAt(x, i) >= ValueAt(x, i + 1)) {
      return i;
    }
  }
  return std::nullopt;
}

void MeasureRise(Signal x, double timeStep, Strike& strike) {
  const std::int64_t onset = strike.contact.first;
  const auto rise = static_cast<double>(strike.peak - onset);
  strike.riseFrom = onset + RoundHalfEven(0.2 * rise);
  strike.riseTo = onset + RoundHalfEven(0.8 * rise);
  if (strike.riseTo == strike.riseFrom) {
    return;
  }
  strike.averageRate = (ValueAt(x, strike.riseTo) - ValueAt(x, strike.riseFrom)) /
                       (static_cast<double>(strike.riseTo - strike.riseFrom) * timeStep);
  for (std::int64_t i = strike.riseFrom; i < strike.riseTo; ++i) {
    const double rate = (ValueAt(x, i + 1) - ValueAt(x, i)) / timeStep;
    strike.largestRate = std::max(strike.largestRate.value_or(rate), rate);
  }
}

Strike Measure(Signal x, const StrikeRule& rule, const Contact& contact, double timeStep) {
  const Signal samples = x.subspan(static_cast<std::size_t>(contact.first),
                                   static_cast<std::size_t>(contact.last - contact.first + 1));
  Strike strike{.contact = contact};
  std::optional<std::int64_t> peak;
  if (rule.firstMaximumWithin) {
    peak = FirstMaximum(x, contact, *rule.firstMaximumWithin);
  }
  strike.peak =
      peak ? *peak : contact.first + (std::max_element(samples.begin(), samples.end()) - samples.begin());
  strike.peakValue = ValueAt(x, strike.peak);
  MeasureRise(x, timeStep, strike);
  strike.impulse = RunningIntegral(samples, timeStep).back();
  strike.mean = MeanOf(samples);
  return strike;
}

}  // namespace

std::vector<Strike> FindStrikes(std::span<const double> x, const StrikeRule& rule, double timeStep) {
  std::vector<Strike> strikes;
  for (const Contact& contact : FindContacts(x, rule.contact)) {
    strikes.push_back(Measure(x, rule, contact, timeStep));
  }
  return strikes;
}

}  // namespace velmora
