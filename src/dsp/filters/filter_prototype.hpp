#pragma once

#include <complex>
#include <vector>

namespace velmora {

/// Roots of a polynomial with real coefficients: each conjugate pair by its upper one.
struct Roots {
  std::vector<std::complex<double>> pairs;
  std::vector<double> reals;

  [[nodiscard]] std::size_t Count() const { return 2 * pairs.size() + reals.size(); }
};

enum class Approximation { Butterworth, Chebyshev, InverseChebyshev, Elliptic };

/// An analog low-pass filter whose edge lies at 1 radian a second.
struct Prototype {
  Roots poles;
  Roots zeros;  // those that are not at infinity
  double gainAtZero = 1.0;
  /// At the edge: the -3 dB point of Butterworth, the end of the pass band of Chebyshev and elliptic, the
  /// start of the stop band of inverse Chebyshev.
  double gainAtEdge = 1.0;
};

/// `rippleDb`: how far the pass band of Chebyshev and elliptic filters may fall. `attenuationDb`: how far
/// the stop band of inverse Chebyshev and elliptic filters is down. order at least 1.
/// (Parks and Burrus 1987, Digital Filter Design, chapter 7; Orfanidis 2006 for the elliptic one.)
Prototype MakePrototype(Approximation approximation, int order, double rippleDb, double attenuationDb);

}  // namespace velmora
