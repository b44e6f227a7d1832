#pragma once

#include <span>
#include <vector>

namespace velmora {

/// The highest order that a fit is made for; far above what 64 bits can tell apart in powers of time.
inline constexpr int kHighestPolynomialOrder = 1000;

struct PolynomialFit {
  std::vector<double> coefficients;  // of t^0, t^1, ..., t^order
  std::vector<double> fitted;        // the polynomial at each x
  double meanSquaredError = 0.0;
};

/// Least squares fit of a polynomial of `order` (0 to kHighestPolynomialOrder) to y over x, of the same
/// length, at least 1. The fit is made in Chebyshev polynomials of x scaled to -1..1, by Householder QR
/// (Golub and Van Loan, Matrix Computations, 5.3), so that its values keep their digits at orders where
/// powers of x do not; with more coefficients than points it is the one of least norm.
PolynomialFit FitPolynomial(std::span<const double> x, std::span<const double> y, int order);

}  // namespace velmora
