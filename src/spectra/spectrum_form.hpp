#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/questions/form.hpp"
#include "core/workbench.hpp"
#include "spectra/power_summary.hpp"

namespace velmora {

/// The spectrum that stands in the workbench as a graph with four menus: what both views of a spectrum have
/// in common.
class SpectrumForm : public Form {
 protected:
  struct Look {
    std::string name;
    std::string title;
    std::vector<std::string> abscissas;
    std::vector<std::string> series;
    std::int32_t abscissa = 0;  // at first
    int channel = 1;
    std::int32_t lines = 0;  // in the lists of powers, behind subscript 0
    double step = 0.0;       // Hz from line to line
    std::int32_t MaxHarm = 0;
    std::int32_t MaxFreq = 0;  // Hz
    std::string maximumCaption;
  };

  SpectrumForm(Workbench& workbench, const Look& look);

  /// What the report says, and the same with the fraction of a harmonic in hertz.
  void AddFrequencyFields(const FourFrequencies& reported);
  void AddMenuFields();

  /// Draws the spectrum as the menus and limits say.
  void DrawGraph();
  /// The whole abscissa again, whatever was zoomed.
  void ShowWhole();
  /// Asks for the upper end of the abscissa.
  bool AskMaximum();

  Workbench& workbench_;
  Look look_;

 private:
  enum Series { Normalized, Cumulative, Relative, AllThree, Absolute };

  [[nodiscard]] bool ByFrequency() const { return abscissa_ == 1; }
  [[nodiscard]] double PlaceOf(std::size_t line) const;
  [[nodiscard]] FormGraph::Plot PlotOf(int series) const;
  [[nodiscard]] FormGraph::Axis OrdinateOf(const std::vector<FormGraph::Plot>& plots) const;
  [[nodiscard]] std::vector<FormGraph::Mark> Marks() const;
  [[nodiscard]] std::string ReadOut(double x) const;

  std::int32_t abscissa_;
  std::int32_t ordinate_ = 0;
  std::int32_t series_ = 0;
  std::int32_t background_ = 0;
  double upperLine_;  // ends of the abscissa, by its unit
  double upperFrequency_;
  FourFrequencies reported_;
  FourFrequencies exact_;
};

}  // namespace velmora
