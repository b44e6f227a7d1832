#pragma once

#include <utility>

#include "core/results/result_form.hpp"
#include "results/result_presses.hpp"

namespace velmora {

/// A view of results whose picture can be saved and printed, too.
template <typename View>
class Pictured : public View {
 public:
  template <typename... Parts>
  explicit Pictured(Workbench& workbench, Parts&&... parts) : View(workbench, std::forward<Parts>(parts)...) {
    for (FormButton& more : PictureButtons(workbench, *this)) {
      this->buttons_.insert(this->buttons_.end() - 1, std::move(more));  // leaving is last
    }
  }
};

/// As ShowResults.
inline void ShowPicturedResults(Workbench& workbench, Results results) {
  Pictured<ResultForm>(workbench, std::move(results)).Show(workbench);
}

}  // namespace velmora
