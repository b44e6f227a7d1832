// Both spectra against scipy.signal.periodogram under every window, of a made signal and of recordings;
// passed over where scipy is not there.
#include <fstream>
#include <sstream>

#include "spectra/windows.hpp"
#include "support/command_test.hpp"
#include "support/recordings.hpp"
#include "support/scipy.hpp"

namespace velmora::test {
namespace {

// Reads 32-bit samples and prints powers, window after window: of the first samples as they are, a power of
// two of them, and of all samples without their mean. scipy corrects for the window's gain, which we do not.
constexpr const char* kScript = R"(
import sys, numpy
from scipy import signal
x = numpy.fromfile(sys.argv[1], numpy.float32).astype(float)
first = x[:2 ** ((len(x) - 1).bit_length() - 1)]
for name in ['boxcar', 'blackman', 'blackmanharris', ('tukey', 0.2), 'flattop', 'hamming', 'hann', 'bartlett']:
    for y in [first, x - x.mean()]:
        w = signal.get_window(name, len(y))
        f, s = signal.periodogram(y, window=w, detrend=False, scaling='spectrum')
        print(*(s * (w.sum() / len(y)) ** 2).tolist())
)";

// A column of a text, from 0, without the lines of its head.
Samples ColumnOf(const std::string& path, int column) {
  std::ifstream file(path);
  Samples samples;
  for (std::string line; std::getline(file, line);) {
    std::istringstream cells(line);
    float value = 0;
    for (int k = 0; k <= column; ++k) {
      cells >> value;
    }
    if (!cells.fail()) {
      samples.push_back(value);
    }
  }
  return samples;
}

struct Periodogram : CommandTest {
  // Regression gives squared amplitudes, twice the mean squares; the FFT has line j at j + 1.
  void Compare(const std::string& python, const Samples& samples) {
    SetChannels(trial, {samples}, 1000);
    std::size_t first = 1;
    while (first * 2 <= samples.size() - 1) {
      first *= 2;
    }
    const std::vector<std::vector<double>> theirs = LinesOfScript(python, kScript, samples);
    ASSERT_EQ(theirs.size(), 2 * kSpectralWindows.size());
    auto line = theirs.begin();
    const std::vector<double>& powers = workbench.spectrum.PowerAbs;
    for (const SpectralWindow& window : kSpectralWindows) {
      Run(std::string(window.id).c_str());
      questions.FillForm({}, "Exit");
      Run("fourier.fft");
      ExpectNear(
          *line++, 1, [&](std::size_t j) { return powers[j + 1]; }, first / 2 - 1, 1e-12);
      questions.PickChannels({1});
      questions.FillForm({}, "Exit");
      Run("fourier.harmonic-regression");
      // Towards half the rate the recurrence loses digits; docs/spectra.md tells how many.
      const std::size_t last = (samples.size() - 1) / 2 * 99 / 100;
      ExpectNear(
          *line++, 2, [&](std::size_t k) { return powers[k]; }, last, 1e-9);
    }
  }
  template <typename Ours>
  static void ExpectNear(const std::vector<double>& theirs, double times, const Ours& ours, std::size_t last,
                         double tolerance) {
    ASSERT_GT(theirs.size(), last);
    const double most = *std::max_element(theirs.begin() + 1, theirs.end());
    for (std::size_t k = 1; k <= last; ++k) {
      ASSERT_NEAR(ours(k), times * theirs[k], tolerance * most) << "line " << k;
    }
  }
};

TEST_F(Periodogram, HasThePowersOfBothSpectra) {
  const std::string python = PythonWithScipy();
  if (python.empty()) {
    GTEST_SKIP() << "no Python here has scipy";
  }
  Samples emg = NoiseChannels(1, 1025)[0];
  for (std::size_t i = 0; i < emg.size(); ++i) {
    emg[i] += static_cast<float>(0.3 + std::sin(2 * Pi * 50.3 * static_cast<double>(i) / 1000));
  }
  Compare(python, emg);
  if (const auto recording = Recording("text/biosppy_emg_1.txt")) {
    Compare(python, ColumnOf(*recording, 0));
  }
  if (const auto recording = Recording("vendor/opensignals_emg2_acc_0_1.txt")) {
    Compare(python, ColumnOf(*recording, 2));
  }
}

}  // namespace
}  // namespace velmora::test
