#pragma once

#include "core/questions/form.hpp"

namespace velmora {

/// The coefficients of one channel's fit, for looking at.
class CoefficientForm : public Form {
 public:
  CoefficientForm(Workbench& workbench, ResultTable table);
};

}  // namespace velmora
