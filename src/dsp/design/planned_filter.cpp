#include "dsp/design/planned_filter.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <utility>

#include "core/text/numbers.hpp"

namespace velmora {
namespace {

using Complex = std::complex<double>;

/// Numerator and denominator of one run in powers of z^-1, section by section.
struct Polynomials {
  std::vector<double> b;
  std::vector<double> a;
};

const std::vector<double>& MiddleWeights(const SavitzkyGolay& filter) {
  return filter.weights[static_cast<std::size_t>(filter.points / 2)];
}

struct PolynomialsOf {
  std::vector<Polynomials> operator()(const Biquads& sections) const {
    std::vector<Polynomials> all;
    for (const Biquad& c : sections) {
      all.push_back({{c.b0, c.b1, c.b2}, {1.0, c.a1, c.a2}});
    }
    return all;
  }
  std::vector<Polynomials> operator()(const TapFilter& filter) const { return {{filter.taps, {1.0}}}; }
  std::vector<Polynomials> operator()(const SavitzkyGolay& filter) const {
    const std::vector<double>& weights = MiddleWeights(filter);
    return {{{weights.rbegin(), weights.rend()}, {1.0}}};
  }
  std::vector<Polynomials> operator()(const CfcSection& c) const {
    return {{{c.a0, c.a1, c.a2}, {1.0, -c.b1, -c.b2}}};
  }
  std::vector<Polynomials> operator()(const DirectFilter& filter) const { return {{filter.b, filter.a}}; }
};

/// Filters that are one symmetric run, moved to its middle, instead of a run there and back.
bool IsCentred(const PlannedFilter& filter) {
  return std::holds_alternative<SavitzkyGolay>(filter.kind) ||
         (std::holds_alternative<TapFilter>(filter.kind) && filter.direction == RunDirection::ZeroLag);
}

double HalfOf(const PlannedFilter& filter) {
  const std::vector<Polynomials> all = std::visit(PolynomialsOf{}, filter.kind);
  return (static_cast<double>(all.front().b.size()) - 1) / 2;
}

Complex At(const std::vector<double>& polynomial, Complex inverseZ) {
  return std::accumulate(polynomial.rbegin(), polynomial.rend(), Complex(0.0),
                         [inverseZ](Complex sum, double one) { return sum * inverseZ + one; });
}

Complex OneRun(const std::vector<Polynomials>& all, Complex inverseZ) {
  Complex response = 1.0;
  for (const Polynomials& one : all) {
    response *= At(one.b, inverseZ) / At(one.a, inverseZ);
  }
  return response;
}

Complex AllRuns(const PlannedFilter& filter, const std::vector<Polynomials>& all, double frequency) {
  const double angle = 2 * Pi * frequency / filter.rate;
  const Complex once = OneRun(all, std::polar(1.0, -angle));
  if (IsCentred(filter)) {
    return once * std::polar(1.0, angle * (static_cast<double>(all.front().b.size()) - 1) / 2);
  }
  return filter.IsWithoutLag() ? Complex(std::norm(once)) : once;
}

// Samples by which a polynomial delays: the sum of k c(k) z^-k over the sum of c(k) z^-k.
double DelayOf(const std::vector<double>& polynomial, Complex inverseZ) {
  std::vector<double> weighted = polynomial;
  for (std::size_t k = 0; k < weighted.size(); ++k) {
    weighted[k] *= static_cast<double>(k);
  }
  const Complex value = At(polynomial, inverseZ);
  return value == 0.0 ? 0.0 : (At(weighted, inverseZ) / value).real();
}

double DelayOf(const std::vector<Polynomials>& all, Complex inverseZ) {
  double delay = 0.0;
  for (const Polynomials& one : all) {
    delay += DelayOf(one.b, inverseZ) - DelayOf(one.a, inverseZ);
  }
  return delay;
}

double Degrees(double radians) {
  return radians * 180 / Pi;
}

// Degrees without jumps of whole turns: what lies between two frequencies is walked through in steps that are
// short beside the filter.
class PhaseWalk {
 public:
  PhaseWalk(const PlannedFilter& filter, const std::vector<Polynomials>& all) : filter_(filter), all_(all) {
    std::size_t length = 2;
    for (const Polynomials& one : all) {
      length += one.b.size() + one.a.size();
    }
    longest_ = filter.rate / (8 * static_cast<double>(length));
  }

  double To(double frequency) {
    if (IsCentred(filter_) || filter_.IsWithoutLag()) {
      return PhaseWithoutLag(AllRuns(filter_, all_, frequency));
    }
    if (std::holds_alternative<TapFilter>(filter_.kind)) {
      return PhaseOfTaps(frequency);
    }
    const double way = frequency - at_;
    const auto steps = static_cast<std::int64_t>(std::fmax(1.0, std::ceil(way / longest_)));
    for (std::int64_t k = 1; k <= steps; ++k) {
      const double part = static_cast<double>(k) / static_cast<double>(steps);
      Turn(AllRuns(filter_, all_, frequency - way * (1 - part)));
    }
    at_ = frequency;
    return Degrees(phase_);
  }

 private:
  void Turn(Complex response) {
    if (std::abs(response) > 1e-14) {
      const double angle = std::arg(response);
      phase_ = angle + 2 * Pi * std::round((phase_ - angle) / (2 * Pi));
    }
  }

  static double PhaseWithoutLag(Complex response) {
    constexpr double quarter = 90;
    const double turned = std::round(Degrees(std::arg(response)) / quarter) * quarter;
    return std::abs(response) > 1e-14 ? turned : 0.0;
  }

  // Symmetric taps delay all frequencies alike; many would make a long walk.
  [[nodiscard]] double PhaseOfTaps(double frequency) const {
    const double turns = frequency / filter_.rate * HalfOf(filter_);
    return PhaseWithoutLag(AllRuns(filter_, all_, frequency) * std::polar(1.0, 2 * Pi * turns)) - 360 * turns;
  }

  const PlannedFilter& filter_;
  const std::vector<Polynomials>& all_;
  double longest_;
  double at_ = 0.0;
  double phase_ = 0.0;
};

// --- Answers

void RunPlain(std::span<double> x, const PlannedFilter& filter) {
  if (const auto* sections = std::get_if<Biquads>(&filter.kind)) {
    RunSectionsPlain(x, *sections, filter.direction);
  } else if (const auto* cfc = std::get_if<CfcSection>(&filter.kind)) {
    RunCfc(x, *cfc);
  } else if (const auto* direct = std::get_if<DirectFilter>(&filter.kind)) {
    RunDirect(x, *direct, filter.direction);
  }
}

// A sum of taps answers by its taps alone.
PlannedAnswers AnswersOfTaps(const PlannedFilter& filter) {
  const std::vector<double> taps = std::visit(PolynomialsOf{}, filter.kind).front().b;
  const double before = IsCentred(filter) ? HalfOf(filter) : 0.0;
  const auto size = static_cast<std::int64_t>(taps.size());
  const std::int64_t around = std::max<std::int64_t>(4, (size + 4) / 8);
  PlannedAnswers answers;
  double sum = 0.0;
  for (std::int64_t k = -around; k <= size + around; ++k) {
    const double tap = k >= 0 && k < size ? taps[static_cast<std::size_t>(k)] : 0.0;
    sum += tap;
    answers.time.push_back((static_cast<double>(k) - before) / filter.rate);
    answers.impulse.push_back(tap);
    answers.step.push_back(sum);
  }
  return answers;
}

// Long enough in front and behind that the ends do not show.
PlannedAnswers AnswersOver(const PlannedFilter& filter, std::size_t n) {
  const bool both = filter.IsWithoutLag();
  const std::size_t around = both ? n : n / 8;
  std::vector<double> impulse(both ? 2 * n : around + n);
  std::vector<double> step = impulse;
  impulse[around] = 1.0;
  std::fill(step.begin() + static_cast<std::ptrdiff_t>(around), step.end(), 1.0);
  RunPlain(impulse, filter);
  RunPlain(step, filter);
  const std::size_t first = both ? n / 2 : 0;
  const std::size_t last = both ? n / 2 + n : step.size();
  PlannedAnswers answers;
  for (std::size_t i = first; i < last; ++i) {
    answers.time.push_back((static_cast<double>(i) - static_cast<double>(around)) / filter.rate);
    answers.impulse.push_back(impulse[i]);
    answers.step.push_back(step[i]);
  }
  return answers;
}

bool HasSettled(const PlannedAnswers& answers) {
  constexpr double tolerance = 1e-3;
  const std::size_t tail = answers.step.size() - answers.step.size() / 8;
  const double rest = answers.step.back();
  const double largest =
      std::abs(*std::max_element(answers.impulse.begin(), answers.impulse.end(),
                                 [](double a, double b) { return std::abs(a) < std::abs(b); }));
  for (std::size_t i = tail; i < answers.step.size(); ++i) {
    if (std::abs(answers.step[i] - rest) > tolerance || std::abs(answers.impulse[i]) > tolerance * largest) {
      return false;
    }
  }
  return true;
}

}  // namespace

bool PlannedFilter::IsWithoutLag() const {
  return direction == RunDirection::ZeroLag || std::holds_alternative<CfcSection>(kind) ||
         std::holds_alternative<SavitzkyGolay>(kind);
}

std::int64_t PlannedFilter::FewestSamples() const {
  if (const auto* taps = std::get_if<TapFilter>(&kind)) {
    return taps->Half() + 1;
  }
  const auto* polynomial = std::get_if<SavitzkyGolay>(&kind);
  return polynomial != nullptr ? polynomial->points : 1;
}

void RunPlanned(Trial& trial, const ChannelList& channels, const PlannedFilter& filter, SimdLevel level,
                const Turn& turn) {
  if (const auto* sections = std::get_if<Biquads>(&filter.kind)) {
    RunSections(trial, channels, *sections, filter.direction, level, turn);
    return;
  }
  if (const auto* taps = std::get_if<TapFilter>(&filter.kind)) {
    RunTaps(trial, channels, *taps, filter.direction, level, turn);
    return;
  }
  if (const auto* polynomial = std::get_if<SavitzkyGolay>(&filter.kind)) {
    RunSavitzkyGolay(trial, channels, *polynomial, level, turn);
    return;
  }
  std::vector<double> copy(static_cast<std::size_t>(trial.NData));
  for (const int c : channels) {
    const ChannelView x = trial.Channel(c);
    for (std::int64_t i = 0; i < x.size(); ++i) {
      copy[static_cast<std::size_t>(i)] = x[i];
    }
    RunPlain(copy, filter);
    for (std::int64_t i = 0; i < x.size(); ++i) {
      x[i] = static_cast<float>(copy[static_cast<std::size_t>(i)]);
    }
    Give(turn);
  }
}

Complex PlannedResponse(const PlannedFilter& filter, double frequency) {
  return AllRuns(filter, std::visit(PolynomialsOf{}, filter.kind), frequency);
}

std::vector<PlannedPoint> PlannedResponses(const PlannedFilter& filter,
                                           const std::vector<double>& frequencies) {
  const std::vector<Polynomials> all = std::visit(PolynomialsOf{}, filter.kind);
  PhaseWalk walk(filter, all);
  std::vector<PlannedPoint> points;
  for (const double frequency : frequencies) {
    const Complex inverseZ = std::polar(1.0, -2 * Pi * frequency / filter.rate);
    const bool lags = !IsCentred(filter) && !filter.IsWithoutLag();
    points.push_back({.frequency = frequency,
                      .gain = std::abs(AllRuns(filter, all, frequency)),
                      .phase = walk.To(frequency),
                      .delay = lags ? DelayOf(all, inverseZ) / filter.rate : 0.0});
  }
  return points;
}

PlannedAnswers AnswersOf(const PlannedFilter& filter) {
  if (std::holds_alternative<TapFilter>(filter.kind) || std::holds_alternative<SavitzkyGolay>(filter.kind)) {
    return AnswersOfTaps(filter);
  }
  constexpr std::size_t fewest = 64;
  constexpr std::size_t most = 32768;
  for (std::size_t n = fewest;; n *= 2) {
    PlannedAnswers answers = AnswersOver(filter, n);
    if (n >= most || HasSettled(answers)) {
      return answers;
    }
  }
}

}  // namespace velmora
