#include "spectra/windows.hpp"

namespace velmora {

const SpectralWindow& WindowOf(std::int16_t type) {
  const bool known = type >= 0 && type < static_cast<std::int16_t>(kSpectralWindows.size());
  return kSpectralWindows[known ? static_cast<std::size_t>(type) : 0];
}

std::vector<double> WindowWeights(const SpectralWindow& window, std::int64_t n) {
  std::vector<double> weights(static_cast<std::size_t>(n), 1.0);
  if (window.weight != nullptr) {
    for (std::size_t i = 0; i < weights.size(); ++i) {
      weights[i] = window.weight(static_cast<double>(i), static_cast<double>(n));
    }
  }
  return weights;
}

void ApplyWindow(const SpectralWindow& window, std::span<double> x) {
  if (window.weight == nullptr) {
    return;
  }
  const auto n = static_cast<double>(x.size());
  for (std::size_t i = 0; i < x.size(); ++i) {
    x[i] *= window.weight(static_cast<double>(i), n);
  }
}

}  // namespace velmora
