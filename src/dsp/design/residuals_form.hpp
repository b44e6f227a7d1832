#pragma once

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "core/questions/analysis_form.hpp"
#include "core/results/result_form.hpp"
#include "dsp/channel_list.hpp"
#include "dsp/design/residuals.hpp"

namespace velmora {

/// Which low-pass cut-off leaves of a channel what is not noise: the residuals of many cut-offs, the line of
/// their straight part, and where it leads.
class ResidualsForm : public AnalysisForm {
 public:
  ResidualsForm(Workbench& workbench, SampleRange range);

  /// What was found.
  [[nodiscard]] Results TakeResults() { return std::move(results_); }

 private:
  struct Found {
    int channel = 1;
    std::vector<double> curve;
    std::optional<ResidualLine> line;

    [[nodiscard]] std::optional<double> Cutoff() const { return line ? line->cutoff : std::nullopt; }
  };

  bool Compute() override;
  /// False when the filter cannot be built at a cut-off.
  [[nodiscard]] bool AcceptsCutoffs();
  void TellUnfound(const std::vector<Found>& all);
  void OfferCutoffs(const std::vector<Found>& all);
  [[nodiscard]] Results ResultsOf(const std::vector<Found>& all) const;
  [[nodiscard]] ResultTable CutoffTable(const std::vector<Found>& all) const;
  [[nodiscard]] ResultTable CurveTable(const std::vector<Found>& all) const;
  [[nodiscard]] FormGraph Graph(const std::vector<Found>& all) const;

  SampleRange range_;
  ChannelFlags channels_{};
  double from_ = 0.0;  // Hz
  double to_ = 0.0;    // Hz
  std::int32_t steps_ = 100;
  double linearity_ = 0.99;
  double lineFrom_ = 0.0;  // Hz
  bool use_ = true;
  std::vector<float> cutoffs_;
  Results results_;
};

/// Asks for the range, then the dialogue. Refuses a trial that is not over time.
void FindCutoffsByResiduals(Workbench& workbench);

}  // namespace velmora
