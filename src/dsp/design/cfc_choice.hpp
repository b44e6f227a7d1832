#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/workbench.hpp"
#include "dsp/design/cfc.hpp"

// The filter of impact tests as a choice of dialogues.
namespace velmora {

/// "60" to "1000".
std::vector<std::string> CfcClassNames();

/// The filter of a class at the trial's rate. Refuses by a box and returns nothing where the rate is too low
/// for it; below ten times the class a box tells that the standard asks for more.
std::optional<CfcSection> DesignCfcFor(Workbench& workbench, int frequencyClass);

/// Tells in a box when the trial's rate lies below ten times the class.
void TellLowCfcRate(Workbench& workbench, int frequencyClass);

/// Which class, or none, behind one field.
class CfcChoice {
 public:
  /// "None", then the classes.
  static std::vector<std::string> Names();

  /// The class; 0 for none.
  [[nodiscard]] int Class() const;
  /// "CFC 180", "unfiltered".
  [[nodiscard]] std::string Words() const;

  std::int32_t chosen = 0;
};

}  // namespace velmora
