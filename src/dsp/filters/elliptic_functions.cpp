#include "dsp/filters/elliptic_functions.hpp"

#include <cmath>
#include <cstddef>

#include "core/text/numbers.hpp"

namespace velmora {
namespace {

constexpr double kHalfPi = Pi / 2;
constexpr double kNegligible = 1e-18;

}  // namespace

EllipticFunctions::EllipticFunctions(double k, double complement) : moduli_{k} {
  while (k > kNegligible) {
    k = std::pow(k / (1 + complement), 2);
    complement = 2 * std::sqrt(complement) / (1 + complement);
    moduli_.push_back(k);
  }
}

double EllipticFunctions::Sn(double u) const {
  double w = std::sin(u * kHalfPi);
  for (std::size_t n = moduli_.size() - 1; n > 0; --n) {
    w = (1 + moduli_[n]) * w / (1 + moduli_[n] * w * w);
  }
  return w;
}

std::complex<double> EllipticFunctions::Cd(std::complex<double> u) const {
  std::complex<double> w = std::cos(u * kHalfPi);
  for (std::size_t n = moduli_.size() - 1; n > 0; --n) {
    w = (1 + moduli_[n]) * w / (1.0 + moduli_[n] * w * w);
  }
  return w;
}

double EllipticFunctions::SnOfImaginary(double v) const {
  double s = std::sinh(v * kHalfPi);
  for (std::size_t n = moduli_.size() - 1; n > 0; --n) {
    s = (1 + moduli_[n]) * s / (1 - moduli_[n] * s * s);
  }
  return s;
}

double EllipticFunctions::InverseOfImaginary(double s) const {
  for (std::size_t n = 1; n < moduli_.size(); ++n) {
    s = 2 * s / ((1 + moduli_[n]) * (1 + std::sqrt(1 + std::pow(moduli_[n - 1] * s, 2))));
  }
  return std::asinh(s) / kHalfPi;
}

}  // namespace velmora
