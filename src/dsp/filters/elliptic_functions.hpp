#pragma once

#include <complex>
#include <vector>

namespace velmora {

/// Jacobi's elliptic functions of one modulus by descending Landen transformations, arguments in quarter
/// periods: Sn(u) is sn(u K). (Orfanidis 2006, "Lecture Notes on Elliptic Filter Design", section 2.)
class EllipticFunctions {
 public:
  /// Modulus k and its complement, k^2 + complement^2 = 1, both above 0. Both are given because neither
  /// can be worked out from the other when it is close to 1.
  EllipticFunctions(double k, double complement);

  [[nodiscard]] double Modulus() const { return moduli_.front(); }
  [[nodiscard]] double Sn(double u) const;
  [[nodiscard]] std::complex<double> Cd(std::complex<double> u) const;
  /// s with sn(i v K) = i s.
  [[nodiscard]] double SnOfImaginary(double v) const;
  /// v with sn(i v K) = i s.
  [[nodiscard]] double InverseOfImaginary(double s) const;

 private:
  std::vector<double> moduli_;  // the given one, then each transformation's, down to 0
};

}  // namespace velmora
