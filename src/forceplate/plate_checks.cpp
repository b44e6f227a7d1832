#include "forceplate/plate_checks.hpp"

#include "forceplate/plate_types.hpp"

namespace velmora {

std::optional<Box> WhyIncomplete(const ForcePlate& plate) {
  if (FamilyOf(plate) == PlateFamily::Amti) {
    return std::nullopt;
  }
  if (plate.XYRange == 0 || plate.ZRange == 0 || plate.XSens == 0 || plate.YSens == 0 || plate.ZSens == 0) {
    return Box{.title = "Incorrectly Defined Plate",
               .text =
                   "Ranges or sensitivities were not correctly defined for a Kistler force plate. \n"
                   "Please completely define each plate.",
               .icon = Icon::Exclamation};
  }
  if (plate.PlateType != kCustomPlate) {
    return std::nullopt;
  }
  if (plate.a == 0 || plate.b == 0 || plate.az0 == 0) {
    return Box{.title = "Plate Incorrectly Defined",
               .text =
                   "Factors were not correctly defined for a custom plate. \n"
                   "Please completely define each plate.",
               .icon = Icon::Exclamation};
  }
  return Box{.title = "Invalid Force Plate",
             .text = "Custom force plates has not been implemented.",
             .icon = Icon::Exclamation};
}

}  // namespace velmora
