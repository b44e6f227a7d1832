#include "dsp/filters/filter_design.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

#include "core/text/numbers.hpp"

namespace velmora {
namespace {

using Complex = std::complex<double>;

// The edges on the imaginary axis of s = (z-1)/(z+1), where a frequency f lies at tan(pi f / rate).
struct WarpedBand {
  Band band;
  double edge;    // of low-pass and high-pass
  double centre;  // of the two bands
  double width;
};

double Warp(double frequency, double rate) {
  return std::tan(Pi * frequency / rate);
}

WarpedBand WarpedBandOf(const DesignRequest& request) {
  const double low = Warp(request.cutoff, request.rate);
  const double high = Warp(request.higher, request.rate);
  return {request.band, low, std::sqrt(low * high), high - low};
}

void Refuse(bool when, const std::string& why) {
  if (when) {
    throw FilterDesignError(why);
  }
}

void CheckRequest(const DesignRequest& request) {
  Refuse(request.order < 1 || request.order > kHighestDesignOrder,
         "The order of the filter must be from 1 to " + std::to_string(kHighestDesignOrder) + ".");
  CheckEdges(request.band, request.rate, request.cutoff, request.higher);
}

void AddPair(Roots& roots, Complex root) {
  roots.pairs.emplace_back(root.real(), std::abs(root.imag()));
}

// A root of a band is the two solutions of s^2 - 2 half s + centre^2 = 0.
void AddBandRoots(Roots& to, Complex half, double centre) {
  const Complex root = std::sqrt(half * half - centre * centre);
  AddPair(to, half + root);
  AddPair(to, half - root);
}

void AddBandRoots(Roots& to, double half, double centre) {
  const double square = (half - centre) * (half + centre);
  if (square < 0) {
    to.pairs.emplace_back(half, std::sqrt(-square));
    return;
  }
  // The larger one without cancellation, the other by their product.
  const double larger = half + std::copysign(std::sqrt(square), half);
  to.reals.push_back(larger);
  to.reals.push_back(centre * centre / larger);
}

template <typename Root>
void MoveRoot(Root root, const WarpedBand& to, Roots& moved) {
  const auto add = [&moved](auto value) {
    if constexpr (std::is_same_v<decltype(value), double>) {
      moved.reals.push_back(value);
    } else {
      AddPair(moved, value);
    }
  };
  switch (to.band) {
    case Band::LowPass:
      return add(root * to.edge);
    case Band::HighPass:
      return add(to.edge / root);
    case Band::BandPass:
      return AddBandRoots(moved, root * (to.width / 2), to.centre);
    case Band::BandStop:
      return AddBandRoots(moved, (to.width / 2) / root, to.centre);
  }
}

Roots MoveRoots(const Roots& roots, const WarpedBand& to) {
  Roots moved;
  for (const Complex root : roots.pairs) {
    MoveRoot(root, to, moved);
  }
  for (const double root : roots.reals) {
    MoveRoot(root, to, moved);
  }
  return moved;
}

// Where zeros at infinity of the prototype come to lie; the rest stay at infinity.
void AddZerosOfInfinity(Roots& zeros, std::size_t count, const WarpedBand& to) {
  if (to.band == Band::BandStop) {
    zeros.pairs.insert(zeros.pairs.end(), count, Complex(0.0, to.centre));
  } else if (to.band != Band::LowPass) {
    zeros.reals.insert(zeros.reals.end(), count, 0.0);
  }
}

Roots Bilinear(const Roots& analog) {
  Roots digital;
  for (const Complex s : analog.pairs) {
    AddPair(digital, (1.0 + s) / (1.0 - s));
  }
  for (const double s : analog.reals) {
    digital.reals.push_back((1 + s) / (1 - s));
  }
  return digital;
}

// 1 + c1 z^-1 + c2 z^-2, and one of its roots.
struct Quadratic {
  double c1;
  double c2;
  Complex root;
};

// Real roots go two by two, the first with the last: opposite zeros then share a section.
std::vector<Quadratic> Quadratics(Roots roots) {
  std::vector<Quadratic> factors;
  for (const Complex root : roots.pairs) {
    factors.push_back({-2 * root.real(), std::norm(root), root});
  }
  std::sort(roots.reals.begin(), roots.reals.end());
  std::size_t first = 0;
  std::size_t last = roots.reals.size();
  for (; first + 1 < last; ++first) {
    const double a = roots.reals[first];
    const double b = roots.reals[--last];
    factors.push_back({-(a + b), a * b, std::abs(a) > std::abs(b) ? a : b});
  }
  if (first < last) {
    factors.push_back({-roots.reals[first], 0.0, roots.reals[first]});
  }
  return factors;
}

// The poles nearest the unit circle take the zeros nearest to them and go last, so that no section
// before them raises what a later one takes away.
Biquads PairUp(const Roots& poles, const Roots& zeros) {
  std::vector<Quadratic> denominators = Quadratics(poles);
  std::vector<Quadratic> numerators = Quadratics(zeros);
  std::sort(denominators.begin(), denominators.end(),
            [](const Quadratic& a, const Quadratic& b) { return std::abs(a.root) > std::abs(b.root); });
  Biquads sections;
  for (const Quadratic& denominator : denominators) {
    const auto nearest = std::min_element(
        numerators.begin(), numerators.end(), [&denominator](const Quadratic& a, const Quadratic& b) {
          return std::abs(a.root - denominator.root) < std::abs(b.root - denominator.root);
        });
    sections.push_back({1.0, nearest->c1, nearest->c2, denominator.c1, denominator.c2});
    numerators.erase(nearest);
  }
  std::reverse(sections.begin(), sections.end());
  return sections;
}

void Scale(Biquad& section, double factor) {
  section.b0 *= factor;
  section.b1 *= factor;
  section.b2 *= factor;
}

// Where the prototype's frequency zero lies.
double ReferenceAngle(const WarpedBand& band) {
  switch (band.band) {
    case Band::HighPass:
      return Pi;
    case Band::BandPass:
      return 2 * std::atan(band.centre);
    default:
      return 0.0;
  }
}

// Every section gets gain 1 at the reference, from its coefficients as they are rounded; what the whole
// has to have there is put on the first.
void ScaleSections(Biquads& sections, double angle, double gain) {
  const Complex inverseZ = std::polar(1.0, -angle);
  Complex total = 1.0;
  for (Biquad& section : sections) {
    Scale(section, 1 / std::abs(Response(section, inverseZ)));
    total *= Response(section, inverseZ);
  }
  Scale(sections.front(), total.real() < 0 ? -gain : gain);
}

// What 64-bit coefficients cannot express shows at the edges first.
bool KeepsGain(const Biquads& sections, const DesignRequest& request, double gain) {
  constexpr double tolerance = 1e-3;
  const auto keeps = [&](double frequency) {
    const double ratio = std::abs(ResponseAt(sections, frequency, request.rate)) / gain;
    return std::abs(ratio - 1) < tolerance;
  };
  return keeps(request.cutoff) && (!IsBand(request.band) || keeps(request.higher));
}

}  // namespace

bool IsBand(Band band) {
  return band == Band::BandPass || band == Band::BandStop;
}

void CheckEdges(Band band, double rate, double cutoff, double higher) {
  Refuse(!(rate > 0 && std::isfinite(rate)), "The sampling rate must be above zero.");
  const double nyquist = rate / 2;
  const auto outside = [nyquist](double frequency) { return !(frequency > 0 && frequency < nyquist); };
  Refuse(outside(cutoff) || (IsBand(band) && outside(higher)),
         "A cutoff frequency must lie above 0 and below half the sampling rate, " +
             FormatNumber(nyquist, "0.00 Hz."));
  Refuse(IsBand(band) && !(cutoff < higher), "The lower cutoff must lie below the higher cutoff.");
}

Biquads DesignFilter(const DesignRequest& request) {
  CheckRequest(request);
  const Prototype prototype =
      MakePrototype(request.approximation, request.order, request.rippleDb, request.attenuationDb);
  const WarpedBand band = WarpedBandOf(request);
  const Roots poles = Bilinear(MoveRoots(prototype.poles, band));
  Roots analogZeros = MoveRoots(prototype.zeros, band);
  AddZerosOfInfinity(analogZeros, prototype.poles.Count() - prototype.zeros.Count(), band);
  Roots zeros = Bilinear(analogZeros);
  zeros.reals.insert(zeros.reals.end(), poles.Count() - zeros.Count(), -1.0);  // infinity
  Biquads sections = PairUp(poles, zeros);
  ScaleSections(sections, ReferenceAngle(band), prototype.gainAtZero);
  Refuse(!std::all_of(sections.begin(), sections.end(), IsStable) ||
             !KeepsGain(sections, request, prototype.gainAtEdge),
         "A filter of this order cannot be built at this cutoff frequency: it would not be stable.");
  return sections;
}

}  // namespace velmora
