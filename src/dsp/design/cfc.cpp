#include "dsp/design/cfc.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "core/text/numbers.hpp"
#include "dsp/design/reflection.hpp"
#include "dsp/filters/filter_design.hpp"

namespace velmora {
namespace {

constexpr double kClassToDesign = 2.0775;
constexpr double kReflected = 0.010;  // seconds

template <typename Samples>
void Sweep(Samples first, Samples last, const CfcSection& c) {
  if (last - first < 3) {
    return;
  }
  double x2 = first[0];
  double x1 = first[1];
  for (auto at = first + 2; at != last; ++at) {
    const double x0 = *at;
    *at = c.a0 * x0 + c.a1 * x1 + c.a2 * x2 + c.b1 * at[-1] + c.b2 * at[-2];
    x2 = x1;
    x1 = x0;
  }
}

}  // namespace

CfcSection DesignCfc(double frequencyClass, double rate) {
  if (!(rate > 0 && std::isfinite(rate))) {
    throw FilterDesignError("The sampling rate must be above zero.");
  }
  if (!(frequencyClass * kClassToDesign < rate / 2)) {
    throw FilterDesignError("The sampling rate is too low for class " + PlainNumber(frequencyClass) + ".");
  }
  const double root2 = std::sqrt(2.0);
  const double wd = 2 * Pi * frequencyClass * kClassToDesign;
  const double half = wd * (1 / rate) / 2;
  const double wa = std::sin(half) / std::cos(half);
  const double whole = 1 + root2 * wa + wa * wa;
  const double a0 = wa * wa / whole;
  return {.a0 = a0,
          .a1 = 2 * a0,
          .a2 = a0,
          .b1 = -2 * (wa * wa - 1) / whole,
          .b2 = (-1 + root2 * wa - wa * wa) / whole,
          .rate = rate};
}

void RunCfc(std::span<double> x, const CfcSection& section) {
  if (x.empty()) {
    return;
  }
  const auto n = static_cast<std::int64_t>(x.size());
  const std::int64_t padding = std::min(
      n - 1,
      static_cast<std::int64_t>(std::fmax(2, static_cast<double>(RoundHalfEven(kReflected * section.rate)))));
  std::vector<double> run = ContinuedByReflection(x, padding);
  Sweep(run.begin(), run.end(), section);
  Sweep(run.rbegin(), run.rend(), section);
  std::copy_n(run.begin() + padding, x.size(), x.begin());
}

}  // namespace velmora
