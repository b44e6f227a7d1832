#pragma once

#include <vector>

#include "core/questions/analysis_form.hpp"
#include "core/results/result_form.hpp"
#include "core/trial/helpers.hpp"
#include "statistics/cross_correlation.hpp"

namespace velmora {

/// frmCrossCorrelation: how far one channel follows another.
class CrossCorrelationForm : public AnalysisForm {
 public:
  CrossCorrelationForm(Workbench& workbench, SampleRange range);

  [[nodiscard]] Results& Found() { return results_; }

 private:
  bool Compute() override;
  bool TakeChannels();
  bool Refuse(const char* title, const std::string& text);
  [[nodiscard]] std::vector<float> SamplesOf(int channel) const;
  void MakeResults(std::int32_t largestLag, const BestLag& best);
  [[nodiscard]] std::string Words(const BestLag& best) const;
  [[nodiscard]] FormGraph Picture(std::int32_t largestLag, const BestLag& best) const;
  void Shift(std::int32_t lag);

  SampleRange range_;
  std::int32_t x_ = 0;
  std::int32_t y_ = 0;
  double maxLag_;  // s
  std::int32_t norm_ = 0;
  bool shift_ = false;
  std::vector<double> r_;
  Results results_;
};

/// Asks, and shows the tables and the curve.
void ShowCrossCorrelation(Workbench& workbench, SampleRange range);

}  // namespace velmora
