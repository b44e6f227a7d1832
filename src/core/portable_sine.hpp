#pragma once

#include <cmath>
#include <cstdint>

namespace velmora {

// Sine and cosine with the same bits on every machine: the C library's choose their instructions by the
// machine and differ in a last bit where it has fused multiplication. Reduction by a quarter turn in three
// parts (Cody and Waite 1980, "Software Manual for the Elementary Functions") and the polynomials of fdlibm
// (Sun Microsystems 1993); within one unit of the last place. No branch, so that loops become vectors.

struct SineAndCosine {
  double sine;
  double cosine;
};

/// The greatest angle, in radians, that the reduction is exact for. Above it use the C library's.
inline constexpr double kLargestPortableAngle = 800'000.0;

/// Of an angle in radians between plus and minus kLargestPortableAngle.
[[gnu::always_inline]] inline SineAndCosine PortableSineAndCosine(double angle) {
  constexpr double kQuarters = 6.36619772367581382433e-01;  // in a radian
  constexpr double kRounding = 6755399441055744.0;          // 1.5 * 2^52: adding it rounds to a whole number
  constexpr double kPart1 = 1.57079632673412561417e+00;     // of a quarter turn: 33 bits each
  constexpr double kPart2 = 6.07710050630396597660e-11;
  constexpr double kPart3 = 2.02226624879595063154e-21;
  const double shifted = angle * kQuarters + kRounding;
  const double quarters = shifted - kRounding;
  const double first = angle - quarters * kPart1;
  const double second = quarters * kPart2;
  const double near = first - second;
  const double lost = ((first - near) - second) - quarters * kPart3;
  const double x = near + lost;
  const double tail = (near - x) + lost;
  const double z = x * x;
  const double sinePolynomial = 8.33333333332248946124e-03 +
                                z * (-1.98412698298579493134e-04 +
                                     z * (2.75573137070700676789e-06 + z * (-2.50507602534068634195e-08 +
                                                                            z * 1.58969099521155010221e-10)));
  const double cube = z * x;
  const double sine =
      x - ((z * (0.5 * tail - cube * sinePolynomial) - tail) - cube * -1.66666666666666324348e-01);
  const double cosinePolynomial =
      z * (4.16666666666666019037e-02 +
           z * (-1.38888888888741095749e-03 +
                z * (2.48015872894767294178e-05 +
                     z * (-2.75573143513906633035e-07 +
                          z * (2.08757232129817482790e-09 + z * -1.13596475577881948265e-11)))));
  const double half = 0.5 * z;
  const double rest = 1.0 - half;
  const double cosine = rest + (((1.0 - rest) - half) + (z * cosinePolynomial - x * tail));
  const auto quadrant = static_cast<std::int32_t>(quarters);
  const bool swapped = (quadrant & 1) != 0;
  const double a = swapped ? cosine : sine;
  const double b = swapped ? sine : cosine;
  return {(quadrant & 2) != 0 ? -a : a, ((quadrant + 1) & 2) != 0 ? -b : b};
}

/// Of any angle.
inline SineAndCosine SineAndCosineOf(double angle) {
  if (std::abs(angle) <= kLargestPortableAngle) {
    return PortableSineAndCosine(angle);
  }
  return {std::sin(angle), std::cos(angle)};
}

}  // namespace velmora
