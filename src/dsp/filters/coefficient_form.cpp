#include "dsp/filters/coefficient_form.hpp"

#include <utility>

#include "core/trial/helpers.hpp"

namespace velmora {

CoefficientForm::CoefficientForm(Workbench& workbench, ResultTable table)
    : Form("frmCoeff", "Polynomial Fitting Coefficients") {
  tables_.push_back(std::move(table));
  buttons_ = {
      {"&Print", FormButton::Role::Other,
       [&workbench] {
         ShowRefusal(workbench,
                     {.title = "Print", .text = "This version cannot print.", .icon = Icon::Exclamation});
         return false;
       }},
      {"&Next", FormButton::Role::Accept, [] { return true; }},
  };
}

}  // namespace velmora
