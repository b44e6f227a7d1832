#include "dsp/filters/filter_design.hpp"

#include <cmath>
#include <limits>

#include "core/text/numbers.hpp"
#include "support/trials.hpp"

namespace velmora::test {
namespace {

using Complex = std::complex<double>;

struct Published {
  DesignRequest request;
  std::vector<Complex> response;  // at 5, 37, 52, 110 and 333 Hz
};

// Made with scipy.signal 1.10.1: butter, cheby1, cheby2 and ellip with 0.5 dB and 40 dB, output="sos", then
// sosfreqz. It designs with polynomials of its own kind and solves for the elliptic modulus numerically.
const std::vector<Published> kPublished = {
    {{Approximation::Butterworth, Band::BandStop, 3, 1000.0, 45, 55},
     {{0.9991534697126744, -0.04113810745884464},
      {0.7736048737683054, -0.6325410739705576},
      {-0.06664507488471967, -0.05162390291861611},
      {0.9755045402533593, 0.21997512383852674},
      {0.999293419484312, 0.03758539252495404}}},
    {{Approximation::Chebyshev, Band::BandPass, 3, 1000.0, 30, 120},
     {{-0.00023945291223185966, -0.0014770574459812941},
      {0.18568075970931325, 0.9457212036224556},
      {0.8883911704802706, 0.4132640001793351},
      {-0.263315819687127, -0.9641295395159625},
      {-0.0008991757572342068, 0.003938291689778646}}},
    {{Approximation::InverseChebyshev, Band::BandPass, 2, 1000.0, 50, 60},
     {{0.009994182488341993, -3.3754720926057454e-05},
      {0.00895102440377032, -0.00040657378857154636},
      {-0.04818520272368979, 0.017911762324254267},
      {0.009722377655320738, 0.00022692974758382873},
      {0.009992763721097591, 3.7641141549305766e-05}}},
    {{Approximation::Elliptic, Band::LowPass, 4, 1000.0, 60, 0},
     {{0.9315115261913286, -0.1782072788865052},
      {-0.10325812421168033, -0.9622095113556082},
      {-0.8213426524516723, -0.5209452707299721},
      {-0.005267337275715704, -0.004482238398647766},
      {0.00791741504165431, 0.0010411939966885198}}},
    {{Approximation::Elliptic, Band::HighPass, 5, 1000.0, 25, 0},
     {{0.0019855896859402107, 0.008348158240296824},
      {-0.6083387891725573, 0.7936505258391732},
      {0.12321953615234864, 0.9466298923035116},
      {0.7592093253657753, 0.5963626488910796},
      {0.9879849323266572, 0.14111357085774395}}},
    {{Approximation::Elliptic, Band::BandStop, 4, 1000.0, 40, 160},
     {{0.9268145881441643, -0.2083156798536153},
      {-0.8818894486542433, -0.43431078336158724},
      {0.004892943211237731, 0.00551620571760885},
      {-0.00737037768030095, 0.003981058410610737},
      {0.8056431751574008, 0.5538766471362995}}},
    {{Approximation::Elliptic, Band::BandPass, 7, 1000.0, 80, 150},
     {{4.837180035364127e-05, 0.0013999487979086873},
      {0.0026757549341059786, 0.008892819269046436},
      {0.004275694199002832, 0.008136017435467815},
      {0.9987253631304666, 0.046267684077700065},
      {0.0011391474974869874, -0.006439402102794864}}},
};

TEST(FilterDesign, AgreesWithAnIndependentDesign) {
  const std::vector<double> frequencies = {5, 37, 52, 110, 333};
  for (const Published& published : kPublished) {
    const Biquads sections = DesignFilter(published.request);
    for (std::size_t k = 0; k < frequencies.size(); ++k) {
      const Complex response = ResponseAt(sections, frequencies[k], published.request.rate);
      EXPECT_LT(std::abs(response - published.response[k]), 1e-12)
          << "order " << published.request.order << " at " << frequencies[k] << " Hz: " << response;
    }
  }
}

// The frequency of the prototype, edge at 1, that a digital frequency stands for.
double PrototypeFrequency(const DesignRequest& request, double frequency) {
  const auto warp = [&](double f) { return std::tan(Pi * f / request.rate); };
  const double w = warp(frequency);
  const double edge = warp(request.cutoff);
  const double high = warp(request.higher);
  switch (request.band) {
    case Band::LowPass:
      return w / edge;
    case Band::HighPass:
      return edge / w;
    case Band::BandPass:
      return std::abs(w * w - edge * high) / ((high - edge) * w);
    case Band::BandStop:
      return (high - edge) * w / std::abs(w * w - edge * high);
  }
  return 0.0;
}

double ChebyshevPolynomial(int n, double x) {
  return x <= 1 ? std::cos(n * std::acos(x)) : std::cosh(n * std::acosh(x));
}

// |H|^2 as the textbooks give it, from the definition of each approximation.
double PowerGain(const DesignRequest& request, double x) {
  const int n = request.order;
  const double ripple = std::pow(10.0, 0.05) - 1;
  switch (request.approximation) {
    case Approximation::Chebyshev:
      return 1 / (1 + ripple * std::pow(ChebyshevPolynomial(n, x), 2));
    case Approximation::InverseChebyshev:
      return 1 / (1 + 9999.0 / std::pow(ChebyshevPolynomial(n, 1 / x), 2));
    default:
      return 1 / (1 + std::pow(x, 2 * n));
  }
}

std::vector<DesignRequest> Bands(Approximation approximation, int order) {
  return {{approximation, Band::LowPass, order, 1000.0, 6.0},
          {approximation, Band::LowPass, order, 1000.0, 430.0},
          {approximation, Band::HighPass, order, 1000.0, 20.0},
          {approximation, Band::HighPass, order, 1000.0, 300.0},
          {approximation, Band::BandPass, order, 1000.0, 20.0, 450.0},
          {approximation, Band::BandPass, order, 1000.0, 60.0, 80.0},
          {approximation, Band::BandStop, order, 1000.0, 48.0, 52.0},
          {approximation, Band::BandStop, order, 1000.0, 100.0, 400.0}};
}

bool Stable(const Biquads& sections) {
  for (const Biquad& s : sections) {
    // Radius of the larger pole, from the roots themselves.
    const Complex root = std::sqrt(Complex(s.a1 * s.a1 / 4 - s.a2));
    if (std::max(std::abs(-s.a1 / 2 + root), std::abs(-s.a1 / 2 - root)) >= 1) {
      return false;
    }
  }
  return true;
}

TEST(FilterDesign, EveryOrderAndBandFollowsItsDefinition) {
  for (const Approximation approximation :
       {Approximation::Butterworth, Approximation::Chebyshev, Approximation::InverseChebyshev}) {
    for (int order = 1; order <= 20; ++order) {
      for (const DesignRequest& request : Bands(approximation, order)) {
        const Biquads sections = DesignFilter(request);
        EXPECT_TRUE(Stable(sections));
        for (double f = 3.7; f < 500; f += 31.3) {
          const double gain = std::abs(ResponseAt(sections, f, 1000.0));
          const double expected = std::sqrt(PowerGain(request, PrototypeFrequency(request, f)));
          ASSERT_NEAR(gain, expected, 1e-6 * expected + 1e-12)
              << "approximation " << static_cast<int>(approximation) << " band "
              << static_cast<int>(request.band) << " order " << order << " at " << f << " Hz";
        }
      }
    }
  }
}

// An elliptic filter ripples between 0 and -0.5 dB in the pass band, and below -40 dB, which it reaches
// again and again, from where it first gets there.
TEST(FilterDesign, EllipticRipplesAlikeInBothBands) {
  for (const int order : {1, 2, 3, 4, 5, 8, 13, 20}) {
    for (const DesignRequest& request : Bands(Approximation::Elliptic, order)) {
      const Biquads sections = DesignFilter(request);
      EXPECT_TRUE(Stable(sections));
      double lowest = 1.0;
      double highest = 0.0;
      double stop = 1e9;
      std::vector<std::pair<double, double>> outside;  // prototype frequency and gain
      for (double f = 0.02; f < 500; f += 0.02) {
        const double x = PrototypeFrequency(request, f);
        const double gain = std::abs(ResponseAt(sections, f, 1000.0));
        if (x <= 1) {
          lowest = std::min(lowest, gain);
          highest = std::max(highest, gain);
        } else {
          outside.emplace_back(x, gain);
          stop = gain < 0.01 ? std::min(stop, x) : stop;
        }
      }
      const std::string what = "order " + std::to_string(order) + " band " +
                               std::to_string(static_cast<int>(request.band)) + " at " +
                               std::to_string(request.cutoff);
      EXPECT_LE(highest, 1 + 1e-6) << what;
      EXPECT_GE(lowest, std::pow(10.0, -0.025) - 1e-6) << what;
      double leak = 0.0;
      for (const auto& [x, gain] : outside) {
        leak = x >= stop ? std::max(leak, gain) : leak;
      }
      EXPECT_LE(leak, 0.01 + 1e-7) << what;
      if (order >= 2 && request.cutoff < 100) {
        EXPECT_GT(leak, 0.0095) << what;
      }
    }
  }
}

TEST(FilterDesign, RunsAsItsResponseSays) {
  const Biquads sections = DesignFilter({Approximation::Elliptic, Band::BandPass, 3, 200.0, 20.0, 40.0});
  std::vector<float> impulse(2000, 0.0F);
  impulse[0] = 1.0F;
  Trial trial;
  SetChannels(trial, {impulse, impulse}, 200.0);
  RunBiquads(sections, trial.Channel(1));
  for (const double f : {0.0, 19.0, 30.0, 55.0, 100.0}) {
    Complex transform = 0.0;
    for (std::int64_t i = 1; i <= trial.NData; ++i) {
      transform += double{trial.Data(i, 1)} * std::polar(1.0, -2 * Pi * f * static_cast<double>(i - 1) / 200);
    }
    EXPECT_LT(std::abs(transform - ResponseAt(sections, f, 200.0)), 1e-6) << f;
  }
  EXPECT_EQ(Channel(trial, 2), impulse);
}

TEST(FilterDesign, WhatCannotBeBuiltIsRefused) {
  const auto why = [](const DesignRequest& request) -> std::string {
    try {
      DesignFilter(request);
    } catch (const FilterDesignError& error) {
      return error.what();
    }
    return "";
  };
  const DesignRequest good{Approximation::Butterworth, Band::LowPass, 2, 1000.0, 6.0};
  EXPECT_EQ(why(good), "");
  for (const int order : {-1, 0, 21}) {
    DesignRequest request = good;
    request.order = order;
    EXPECT_EQ(why(request), "The order of the filter must be from 1 to 20.");
  }
  for (const double cutoff : {0.0, -1.0, 500.0, 1e300, std::nan("")}) {
    DesignRequest request = good;
    request.cutoff = cutoff;
    EXPECT_EQ(why(request),
              "A cutoff frequency must lie above 0 and below half the sampling rate, 500.00 Hz.");
  }
  EXPECT_EQ(why({Approximation::Chebyshev, Band::BandPass, 2, 1000.0, 20.0, 20.0}),
            "The lower cutoff must lie below the higher cutoff.");
  for (const double rate : {0.0, -1000.0, std::numeric_limits<double>::infinity(), std::nan("")}) {
    EXPECT_EQ(why({Approximation::Chebyshev, Band::LowPass, 2, rate, 20.0}),
              "The sampling rate must be above zero.");
  }
  // A band so narrow, or a cut-off so low, that 64 bits cannot tell its poles from the unit circle.
  EXPECT_NE(why({Approximation::Elliptic, Band::BandPass, 20, 1000.0, 50.0, 50.0000001}), "");
  EXPECT_NE(why({Approximation::Butterworth, Band::LowPass, 20, 1e6, 1e-5}), "");
}

}  // namespace
}  // namespace velmora::test
