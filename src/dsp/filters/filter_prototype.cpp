#include "dsp/filters/filter_prototype.hpp"

#include <cmath>

#include "core/text/numbers.hpp"
#include "dsp/filters/elliptic_functions.hpp"

namespace velmora {
namespace {

using Complex = std::complex<double>;

// sqrt(10^(dB/10) - 1), the square of which is added to 1 in |H|^2 = 1/(1 + (e F)^2).
double RippleFactor(double decibels) {
  return std::sqrt(std::expm1(decibels * std::log(10.0) / 10));
}

double GainAt(double rippleFactor) {
  return 1 / std::sqrt(1 + rippleFactor * rippleFactor);
}

// Angle of pole i of `order`, i = 1 .. order/2, from the negative real axis.
double Angle(int i, int order) {
  return Pi * (order + 1 - 2 * i) / (2.0 * order);
}

bool IsOdd(int order) {
  return order % 2 == 1;
}

Prototype Butterworth(int order) {
  Prototype filter{.gainAtEdge = std::sqrt(0.5)};
  for (int i = 1; i <= order / 2; ++i) {
    filter.poles.pairs.emplace_back(-std::cos(Angle(i, order)), std::sin(Angle(i, order)));
  }
  if (IsOdd(order)) {
    filter.poles.reals.push_back(-1.0);
  }
  return filter;
}

// The poles of an equal ripple lie on an ellipse.
Roots EllipsePoles(int order, double rippleFactor) {
  const double v = std::asinh(1 / rippleFactor) / order;
  Roots poles;
  for (int i = 1; i <= order / 2; ++i) {
    const double angle = Angle(i, order);
    poles.pairs.emplace_back(-std::sinh(v) * std::cos(angle), std::cosh(v) * std::sin(angle));
  }
  if (IsOdd(order)) {
    poles.reals.push_back(-std::sinh(v));
  }
  return poles;
}

Prototype Chebyshev(int order, double rippleDb) {
  const double ripple = RippleFactor(rippleDb);
  return {.poles = EllipsePoles(order, ripple),
          .gainAtZero = IsOdd(order) ? 1.0 : GainAt(ripple),
          .gainAtEdge = GainAt(ripple)};
}

// 1 minus the Chebyshev response, turned inside out: s becomes 1/s.
Prototype InverseChebyshev(int order, double attenuationDb) {
  const double factor = RippleFactor(attenuationDb);
  Prototype filter{.gainAtEdge = GainAt(factor)};
  const Roots ellipse = EllipsePoles(order, 1 / factor);
  for (const Complex pole : ellipse.pairs) {
    filter.poles.pairs.push_back(std::conj(1.0 / pole));
  }
  for (const double pole : ellipse.reals) {
    filter.poles.reals.push_back(1 / pole);
  }
  for (int i = 1; i <= order / 2; ++i) {
    filter.zeros.pairs.emplace_back(0.0, 1 / std::sin(Angle(i, order)));
  }
  return filter;
}

// The modulus for which pass and stop band ripple alike: the degree equation, in complements.
EllipticFunctions SolveDegreeEquation(int order, double k1) {
  const double k1Complement = std::sqrt((1 - k1) * (1 + k1));
  const EllipticFunctions functions(k1Complement, k1);
  double complement = std::pow(k1Complement, order);
  for (int i = 1; i <= order / 2; ++i) {
    complement *= std::pow(functions.Sn((2.0 * i - 1) / order), 4);
  }
  return {std::sqrt((1 - complement) * (1 + complement)), complement};
}

Prototype Elliptic(int order, double rippleDb, double attenuationDb) {
  const double ripple = RippleFactor(rippleDb);
  const double k1 = ripple / RippleFactor(attenuationDb);
  const double k1Complement = std::sqrt((1 - k1) * (1 + k1));
  const EllipticFunctions functions = SolveDegreeEquation(order, k1);
  const double v = EllipticFunctions(k1, k1Complement).InverseOfImaginary(1 / ripple) / order;
  Prototype filter{.gainAtZero = IsOdd(order) ? 1.0 : GainAt(ripple), .gainAtEdge = GainAt(ripple)};
  for (int i = 1; i <= order / 2; ++i) {
    const double u = (2.0 * i - 1) / order;
    const Complex pole = Complex(0, 1) * functions.Cd({u, -v});
    filter.poles.pairs.emplace_back(-std::abs(pole.real()), std::abs(pole.imag()));
    filter.zeros.pairs.emplace_back(0.0, 1 / (functions.Modulus() * functions.Cd(u).real()));
  }
  if (IsOdd(order)) {
    filter.poles.reals.push_back(-functions.SnOfImaginary(v));
  }
  return filter;
}

}  // namespace

Prototype MakePrototype(Approximation approximation, int order, double rippleDb, double attenuationDb) {
  switch (approximation) {
    case Approximation::Chebyshev:
      return Chebyshev(order, rippleDb);
    case Approximation::InverseChebyshev:
      return InverseChebyshev(order, attenuationDb);
    case Approximation::Elliptic:
      return Elliptic(order, rippleDb, attenuationDb);
    case Approximation::Butterworth:
      break;
  }
  return Butterworth(order);
}

}  // namespace velmora
