#include "results/pictured_results.hpp"

#include <utility>

#include "results/result_presses.hpp"

namespace velmora {

PicturedResults::PicturedResults(Workbench& workbench, Results results)
    : ResultForm(workbench, std::move(results)) {
  for (FormButton& more : PictureButtons(workbench_, *this)) {
    buttons_.insert(buttons_.end() - 1, std::move(more));
  }
}

void ShowPicturedResults(Workbench& workbench, Results results) {
  PicturedResults(workbench, std::move(results)).Show(workbench);
}

}  // namespace velmora
