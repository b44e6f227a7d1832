#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/questions/form.hpp"
#include "core/workbench.hpp"
#include "dsp/filters/filter_response.hpp"

namespace velmora {

/// What a filter does before it is used on data: magnitude and phase over frequency and the answer to a
/// step, as two tables that follow every edit. OK keeps them as the result tables.
class FilterTestingForm : public Form {
 public:
  explicit FilterTestingForm(Workbench& workbench);

 private:
  void OfferFilter();
  void AddFields();
  void Update();
  void AddTables(const RunningFilter& filter);
  bool Keep();
  [[nodiscard]] bool IsByPasses() const;
  [[nodiscard]] bool IsBandChosen() const;
  [[nodiscard]] RunningFilter Design() const;
  [[nodiscard]] RunningFilter DesignByPasses() const;
  [[nodiscard]] std::string Description() const;

  Workbench& workbench_;
  std::int32_t optPassType_ = 0;
  std::int32_t optFilter_ = 0;
  double cutoff_ = 0.0;        // Hz
  double secondCutoff_ = 0.0;  // Hz
  std::int32_t order_ = 2;
  bool zeroLag_ = true;
  double rate_ = 1000.0;  // Hz
  std::string whyNot_;    // the filter cannot be built; empty when it can
};

}  // namespace velmora
