#include "dsp/filters/filter_response.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "core/text/numbers.hpp"

namespace velmora {
namespace {

using Complex = std::complex<double>;

// Of 1 + c1 z^-1 + c2 z^-2.
std::array<Complex, 2> RootsOf(double c1, double c2) {
  const Complex half = std::sqrt(Complex(c1 * c1 / 4 - c2));
  return {-c1 / 2 + half, -c1 / 2 - half};
}

// A root inside the unit circle keeps 1 - root/z in the right half of the plane, where its angle has no
// jumps; one on the circle jumps by half a turn at its own frequency, as the response does. Where the
// response is 0, the angle is that of the frequencies just above.
double AngleOf(double c1, double c2, Complex inverseZ) {
  double angle = 0.0;
  for (const Complex root : RootsOf(c1, c2)) {
    const Complex factor = 1.0 - root * inverseZ;
    angle += factor == 0.0 ? Pi / 2 : std::arg(factor);
  }
  return angle;
}

double PhaseOf(const Biquads& sections, Complex inverseZ) {
  double angle = 0.0;
  for (const Biquad& section : sections) {
    angle += section.b0 < 0 ? Pi : 0.0;
    angle += AngleOf(section.b1 / section.b0, section.b2 / section.b0, inverseZ);
    angle -= AngleOf(section.a1, section.a2, inverseZ);
  }
  return angle * 180 / Pi;
}

void RunForward(const Biquads& sections, std::vector<float>& x) {
  RunBiquads(sections, {x.data(), 1, static_cast<std::int64_t>(x.size())});
}

// n samples from the step on.
std::vector<float> ForwardStep(const RunningFilter& filter, std::size_t n) {
  std::vector<float> y(n, 1.0F);
  RunForward(filter.sections, y);
  return y;
}

// n samples before the step and n from it on. As many again keep the backward run's start out of the way.
std::vector<float> ZeroLagStep(const RunningFilter& filter, std::size_t n) {
  std::vector<float> y(3 * n, 1.0F);
  std::fill_n(y.begin(), n, 0.0F);
  for (int run = 0; run < 2; ++run) {
    RunForward(filter.sections, y);
    std::reverse(y.begin(), y.end());
  }
  y.resize(2 * n);
  return y;
}

// How many samples the answer to a step takes to come to rest.
std::size_t SettlingSamples(const RunningFilter& filter) {
  constexpr std::size_t fewest = 64;
  constexpr std::size_t most = 65536;
  constexpr double tolerance = 1e-3;
  const double rest = Response(filter.sections, 1.0).real();
  const auto settled = [rest](float value) { return std::abs(value - rest) < tolerance; };
  std::size_t n = fewest;
  while (n < most) {
    const std::vector<float> y = ForwardStep(filter, n);
    if (std::all_of(y.end() - static_cast<std::ptrdiff_t>(n / 4), y.end(), settled)) {
      break;
    }
    n *= 2;
  }
  return n;
}

}  // namespace

Biquads Repeated(const SectionOf<double>& section, PassType type, int passes) {
  const double middle = type == PassType::Low ? 2 * section.a0 : -2 * section.a0;
  return Biquads(static_cast<std::size_t>(passes),
                 {section.a0, middle, section.a0, -section.b1, -section.b2});
}

std::vector<double> ResponseFrequencies(const std::vector<double>& edges, double rate) {
  constexpr int intervals = 300;
  const double highest = rate / 2;
  const double lowest = *std::min_element(edges.begin(), edges.end()) / 100;
  std::vector<double> frequencies = edges;
  frequencies.push_back(0.0);
  for (int i = 0; i < intervals; ++i) {
    frequencies.push_back(lowest * std::pow(highest / lowest, static_cast<double>(i) / intervals));
  }
  frequencies.push_back(highest);
  std::sort(frequencies.begin(), frequencies.end());
  frequencies.erase(std::unique(frequencies.begin(), frequencies.end()), frequencies.end());
  return frequencies;
}

std::vector<FrequencyPoint> FrequencyResponse(const RunningFilter& filter,
                                              const std::vector<double>& frequencies) {
  std::vector<FrequencyPoint> points;
  for (const double frequency : frequencies) {
    const Complex inverseZ = std::polar(1.0, -2 * Pi * frequency / filter.rate);
    const double gain = std::abs(Response(filter.sections, inverseZ));
    if (filter.zeroLag) {
      points.push_back({frequency, gain * gain, 0.0});
    } else {
      points.push_back({frequency, gain, PhaseOf(filter.sections, inverseZ)});
    }
  }
  return points;
}

std::vector<StepPoint> StepResponse(const RunningFilter& filter) {
  constexpr std::size_t mostPoints = 1024;
  const std::size_t n = SettlingSamples(filter);
  const std::size_t before = filter.zeroLag ? n : 0;
  const std::vector<float> y = filter.zeroLag ? ZeroLagStep(filter, n) : ForwardStep(filter, n);
  const std::size_t stride = (y.size() + mostPoints - 1) / mostPoints;  // a power of 2, as n is
  std::vector<StepPoint> points;
  for (std::size_t i = 0; i < y.size(); i += stride) {
    points.push_back({(static_cast<double>(i) - static_cast<double>(before)) / filter.rate, y[i]});
  }
  return points;
}

}  // namespace velmora
