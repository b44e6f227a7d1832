#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "core/questions/analysis_form.hpp"
#include "core/results/result_form.hpp"
#include "core/trial/helpers.hpp"
#include "forceplate/sway/sway_measures.hpp"

namespace velmora {

/// Posturography: how a centre of pressure sways.
class SwayForm : public AnalysisForm {
 public:
  SwayForm(Workbench& workbench, SampleRange range);

  [[nodiscard]] Results TakeResults() { return std::move(results_); }

 private:
  bool Compute() override;
  [[nodiscard]] bool HasChannels();
  [[nodiscard]] std::vector<double> Prepared(int channel) const;
  void NoteUnloaded();
  [[nodiscard]] ResultTable Table(const Sway& sway) const;
  [[nodiscard]] FormGraph Picture(std::vector<double> ml, std::vector<double> ap, const Sway& sway) const;
  [[nodiscard]] std::string Units() const;
  /// Of a sway that has one.
  [[nodiscard]] std::string EllipseInWords(const Sway& sway) const;

  SampleRange range_;
  std::int32_t ml_ = 0;
  std::int32_t ap_ = 0;
  double cutoff_ = 0.0;  // Hz; 0: none
  bool detrend_ = false;
  Results results_;
};

/// Asks for the range, then the dialogue, and shows the measures. Refuses a trial that is not over time.
void MeasureSway(Workbench& workbench);

}  // namespace velmora
