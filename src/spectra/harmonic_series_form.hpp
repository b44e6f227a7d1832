#pragma once

#include "spectra/spectrum_form.hpp"

namespace velmora {

/// frm4Series: the harmonic regression of one channel as graph and table.
class HarmonicSeriesForm : public SpectrumForm {
 public:
  /// Of the spectrum that stands in the workbench.
  HarmonicSeriesForm(Workbench& workbench, int channel);

 private:
  void AddButtons();
  [[nodiscard]] ResultTable MakeTable() const;
  [[nodiscard]] const ResultTable& Table() const;
  void ShowTable(bool on);
  [[nodiscard]] std::string ClipboardText() const;
  std::string Save();
};

}  // namespace velmora
