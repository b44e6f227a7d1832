#include "emg/spectra_file.hpp"

#include "core/results/trial_lines.hpp"
#include "core/text/numbers.hpp"

namespace velmora {
namespace {

// Of harmonic 1 and all behind it.
std::string Cells(const std::vector<double>& list, std::string_view pattern) {
  std::string text;
  for (std::size_t k = 1; k < list.size(); ++k) {
    text += "\t" + FormatNumber(list[k], pattern);
  }
  return text + "\n";
}

}  // namespace

void SpectraFile::Append(const Workbench& workbench, double from) {
  const SpectrumMemory& spectrum = workbench.spectrum;
  std::string text;
  if (!begun_) {
    text = TrialLines(workbench) + "\nTime (s)" + Cells(spectrum.HarmFreq, "0.000");
    begun_ = true;
  }
  const bool relative = power_ == SavedPower::Relative;
  text +=
      FormatNumber(from, "0.0000") + Cells(relative ? spectrum.PowerRel : spectrum.PowerAbs, "0.000000E+00");
  file_.Write(text);
}

}  // namespace velmora
