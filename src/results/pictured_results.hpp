#pragma once

#include "core/results/result_form.hpp"

namespace velmora {

/// A view of results whose picture can be saved and printed.
class PicturedResults : public ResultForm {
 public:
  PicturedResults(Workbench& workbench, Results results);
};

/// As ShowResults.
void ShowPicturedResults(Workbench& workbench, Results results);

}  // namespace velmora
