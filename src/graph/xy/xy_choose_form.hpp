#pragma once

#include "core/questions/analysis_form.hpp"
#include "graph/xy/xy_setup.hpp"

namespace velmora {

/// The dialogue of the X-Y plot: which channels against which, which samples, how they are drawn.
class XYChooseForm : public AnalysisForm {
 public:
  /// Starts from `setup`, to which the answers go when it is left with OK.
  XYChooseForm(Workbench& workbench, XYSetup& setup);

 private:
  bool Compute() override;
  void FollowUnits();

  XYSetup& setup_;
  XYSetup chosen_;
  std::int32_t x_;
  std::int32_t range_;
  bool equalTyped_ = false;  // a person's own choice stays
};

}  // namespace velmora
