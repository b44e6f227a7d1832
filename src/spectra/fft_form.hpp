#pragma once

#include "spectra/harmonic_regression.hpp"
#include "spectra/spectrum_form.hpp"

namespace velmora {

/// Which samples the FFT view transforms.
struct FftLength {
  std::int32_t M = 1;  // the largest power of two not above the distance of the cursors
  std::int32_t Half = 0;
  float Df = 0.0F;           // Hz
  std::int32_t MaxFreq = 0;  // Hz
};
FftLength FftLengthOf(const Trial& trial);

/// Takes the spectrum of the first M samples of a channel, wherever the cursors stand: line j of the
/// transform stands at harmonic j + 1, the mean in none. Sets the power lists, the four frequencies,
/// WindowName and the report; a spectrum of zeros has four zeros.
void AnalyseByFft(Workbench& workbench, int channel, const FftLength& length, EpochTransform& transform);

/// frmFFT: that spectrum as a graph.
class FftForm : public SpectrumForm {
 public:
  FftForm(Workbench& workbench, int channel, const FftLength& length);

 private:
  void AddFields();
  void AddButtons();

  FftLength length_;
  double df_;
  std::string trial_;
  std::string channel_;
  std::string label_;
};

}  // namespace velmora
