// Designs and runs against scipy.signal; passed over where scipy is not there.
#include <cmath>

#include "dsp/design/fir_design.hpp"
#include "dsp/design/recursive_design.hpp"
#include "dsp/design/savitzky_golay.hpp"
#include "dsp/design/section_runs.hpp"
#include "support/scipy.hpp"

namespace velmora::test {
namespace {

constexpr const char* kScript = R"(
import sys, numpy
from scipy import signal
x = numpy.fromfile(sys.argv[1], numpy.float32).astype(float)
def tell(values): print(*numpy.asarray(values).tolist())
for window in ['hamming', 'hann', 'blackman', ('kaiser', signal.kaiser_beta(60)), 'boxcar']:
    tell(signal.firwin(101, 40, window=window, fs=1000))
    tell(signal.firwin(101, 40, window=window, fs=1000, pass_zero=False))
    tell(signal.firwin(101, [40, 150], window=window, fs=1000, pass_zero=False))
    tell(signal.firwin(101, [40, 150], window=window, fs=1000))
for attenuation in [15, 30, 60]:
    taps, beta = signal.kaiserord(attenuation, 12 / 500)
    tell([taps + (taps + 1) % 2, beta])
b, a = signal.iirnotch(50, 25, fs=1000)
tell([*b, *a])
tell(signal.savgol_filter(x, 21, 4, mode='interp'))
tell(signal.savgol_filter(x, 21, 4, deriv=1, delta=0.001, mode='interp'))
tell(signal.savgol_filter(x, 21, 4, deriv=2, delta=0.001, mode='interp'))
for order in [1, 4, 7]:
    sos = signal.butter(order, 30, fs=1000, output='sos')
    tell(signal.sosfiltfilt(sos, x, padlen=3 * (2 * len(sos) + 1)))
    tell(signal.sosfilt(sos, x))
)";

void ExpectClose(const std::vector<double>& ours, const std::vector<double>& theirs, double tolerance) {
  ASSERT_EQ(ours.size(), theirs.size());
  double most = 0;
  for (const double value : theirs) {
    most = std::max(most, std::abs(value));
  }
  for (std::size_t k = 0; k < ours.size(); ++k) {
    ASSERT_NEAR(ours[k], theirs[k], tolerance * most) << "number " << k;
  }
}

TEST(ScipyFilters, DesignsAndRunsAgree) {
  const std::string python = PythonWithScipy();
  if (python.empty()) {
    GTEST_SKIP() << "no Python here has scipy";
  }
  const Samples noise = NoiseChannels(1, 500)[0];
  const auto lines = LinesOfScript(python, kScript, noise);
  ASSERT_EQ(lines.size(), 33U);
  auto line = lines.begin();
  for (const FirWindow window : {FirWindow::Hamming, FirWindow::Hanning, FirWindow::Blackman,
                                 FirWindow::Kaiser, FirWindow::Rectangular}) {
    for (const Band band : {Band::LowPass, Band::HighPass, Band::BandPass, Band::BandStop}) {
      ExpectClose(
          DesignFir(
              {.band = band, .window = window, .rate = 1000, .cutoff = 40, .higher = 150, .attenuation = 60}),
          *line++, 1e-12);
    }
  }
  for (const double attenuation : {15.0, 30.0, 60.0}) {
    ExpectClose({KaiserTaps(attenuation, 12, 1000), KaiserBeta(attenuation)}, *line++, 1e-12);
  }
  const Biquad notch = DesignNotch({.rate = 1000, .frequency = 50, .width = 2})[0];
  ExpectClose({notch.b0, notch.b1, notch.b2, 1, notch.a1, notch.a2}, *line++, 1e-12);
  const std::vector<double> x(noise.begin(), noise.end());
  for (const int derivative : {0, 1, 2}) {
    std::vector<double> y = x;
    RunSavitzkyGolayPlain(y, DesignSavitzkyGolay(21, 4, derivative, 1000));
    ExpectClose(y, *line++, 1e-12);
  }
  for (const int order : {1, 4, 7}) {
    const Biquads sections = DesignFilter({.order = order, .rate = 1000, .cutoff = 30});
    for (const RunDirection way : {RunDirection::ZeroLag, RunDirection::Forward}) {
      std::vector<double> y = x;
      RunSectionsPlain(y, sections, way);
      ExpectClose(y, *line++, order == 7 ? 1e-9 : 1e-11);
    }
  }
}

}  // namespace
}  // namespace velmora::test
