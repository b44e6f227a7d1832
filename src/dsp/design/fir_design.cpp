#include "dsp/design/fir_design.hpp"

#include <cmath>
#include <string>

#include "core/text/numbers.hpp"

namespace velmora {
namespace {

double Sinc(double x) {
  return x == 0 ? 1.0 : std::sin(Pi * x) / (Pi * x);
}

// The modified Bessel function of order 0 by its series.
double BesselI0(double x) {
  const double quarter = x * x / 4;
  double term = 1.0;
  double sum = 1.0;
  for (int k = 1; term > sum * 1e-17; ++k) {
    term *= quarter / (static_cast<double>(k) * k);
    sum += term;
  }
  return sum;
}

double WindowAt(const FirRequest& request, std::int32_t k) {
  const double last = request.taps - 1;
  const double turn = 2 * Pi * k / last;
  switch (request.window) {
    case FirWindow::Hamming:
      return 0.54 - 0.46 * std::cos(turn);
    case FirWindow::Hanning:
      return 0.5 - 0.5 * std::cos(turn);
    case FirWindow::Blackman:
      return 0.42 - 0.5 * std::cos(turn) + 0.08 * std::cos(2 * turn);
    case FirWindow::Kaiser: {
      const double beta = KaiserBeta(request.attenuation);
      const double place = 2 * k / last - 1;
      return BesselI0(beta * std::sqrt(std::fmax(0.0, 1 - place * place))) / BesselI0(beta);
    }
    case FirWindow::Rectangular:
      break;
  }
  return 1.0;
}

struct PassBand {
  double left;  // fractions of half the rate
  double right;
};

std::vector<PassBand> PassBandsOf(const FirRequest& request) {
  const double low = request.cutoff / (request.rate / 2);
  const double high = request.higher / (request.rate / 2);
  switch (request.band) {
    case Band::HighPass:
      return {{low, 1.0}};
    case Band::BandPass:
      return {{low, high}};
    case Band::BandStop:
      return {{0.0, low}, {high, 1.0}};
    case Band::LowPass:
      break;
  }
  return {{0.0, low}};
}

// Where the gain is to be 1: in the first pass band.
double FrequencyOfUnitGain(const PassBand& first) {
  return first.left == 0 ? 0.0 : first.right == 1 ? 1.0 : (first.left + first.right) / 2;
}

}  // namespace

std::vector<double> DesignFir(const FirRequest& request) {
  CheckEdges(request.band, request.rate, request.cutoff, request.higher);
  if (request.taps < kFewestTaps || request.taps > kMostTaps || request.taps % 2 == 0) {
    throw FilterDesignError("The number of taps must be odd and from " + std::to_string(kFewestTaps) +
                            " to " + std::to_string(kMostTaps) + ".");
  }
  const std::vector<PassBand> bands = PassBandsOf(request);
  const double middle = (request.taps - 1) / 2.0;
  std::vector<double> taps;
  for (std::int32_t k = 0; k < request.taps; ++k) {
    const double m = k - middle;
    double ideal = 0.0;
    for (const PassBand& band : bands) {
      ideal += band.right * Sinc(band.right * m);
      ideal -= band.left * Sinc(band.left * m);
    }
    taps.push_back(WindowAt(request, k) * ideal);
  }
  const double at = FrequencyOfUnitGain(bands.front());
  double gain = 0.0;
  for (std::int32_t k = 0; k < request.taps; ++k) {
    gain += taps[static_cast<std::size_t>(k)] * std::cos(Pi * (k - middle) * at);
  }
  for (double& tap : taps) {
    tap /= gain;
  }
  return taps;
}

double KaiserBeta(double attenuation) {
  constexpr double steep = 50;
  constexpr double flat = 21;
  if (attenuation > steep) {
    return 0.1102 * (attenuation - 8.7);
  }
  return attenuation > flat ? 0.5842 * std::pow(attenuation - flat, 0.4) + 0.07886 * (attenuation - flat)
                            : 0.0;
}

double KaiserTaps(double attenuation, double transition, double rate) {
  const double taps = std::ceil((attenuation - 7.95) / (2.285 * 2 * Pi * transition / rate) + 1);
  return std::fmod(taps, 2) == 0 ? taps + 1 : taps;
}

}  // namespace velmora
