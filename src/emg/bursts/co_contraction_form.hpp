#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "core/questions/analysis_form.hpp"
#include "core/results/result_form.hpp"
#include "emg/bursts/bursts.hpp"

namespace velmora {

/// How much two muscles work against each other, by three indices.
class CoContractionForm : public AnalysisForm {
 public:
  CoContractionForm(Workbench& workbench, SampleRange range);

  /// What was found.
  [[nodiscard]] Results TakeResults() { return std::move(results_); }

 private:
  bool Compute() override;
  [[nodiscard]] bool MayCompute();
  void WarnOfUnits();
  void AddCurve();
  [[nodiscard]] ResultTable Table(const CoContraction& found) const;
  [[nodiscard]] std::string LabelOf(int channel) const;
  [[nodiscard]] std::string UnitsOf(int channel) const;

  SampleRange range_;
  std::int32_t agonist_ = 1;
  std::int32_t antagonist_ = 2;
  bool curve_ = false;
  Results results_;
};

/// Asks for the range, then the dialogue, and shows the indices. Refuses a trial that is not over time.
void FindCoContraction(Workbench& workbench);

}  // namespace velmora
