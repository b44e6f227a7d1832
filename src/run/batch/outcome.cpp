#include "run/batch/outcome.hpp"

namespace velmora {

std::string PlaceText(const StepPlace& place) {
  if (place.step == 0) {
    return {};
  }
  return "step " + std::to_string(place.step) + " (" + place.action + ", line " + std::to_string(place.line) +
         ")";
}

}  // namespace velmora
