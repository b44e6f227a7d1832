#include "dsp/design/cfc_choice.hpp"

#include "core/trial/helpers.hpp"
#include "dsp/filters/filter_design.hpp"

namespace velmora {

std::vector<std::string> CfcClassNames() {
  std::vector<std::string> names;
  names.reserve(kCfcClasses.size());
  for (const int one : kCfcClasses) {
    names.push_back(std::to_string(one));
  }
  return names;
}

void TellLowCfcRate(Workbench& workbench, int frequencyClass) {
  if (workbench.trial.Rate < kCfcRateToClass * frequencyClass) {
    ShowRefusal(workbench,
                {.title = "Sampling Rate Low",
                 .text = "The sampling rate is below ten times the class; the standard asks for more.",
                 .icon = Icon::Exclamation});
  }
}

std::optional<CfcSection> DesignCfcFor(Workbench& workbench, int frequencyClass) {
  try {
    const CfcSection section = DesignCfc(frequencyClass, workbench.trial.Rate);
    TellLowCfcRate(workbench, frequencyClass);
    return section;
  } catch (const FilterDesignError& error) {
    ShowRefusal(workbench, {.title = "Invalid Filter", .text = error.what(), .icon = Icon::Exclamation});
    return std::nullopt;
  }
}

std::vector<std::string> CfcChoice::Names() {
  std::vector<std::string> names = CfcClassNames();
  names.insert(names.begin(), "None");
  return names;
}

int CfcChoice::Class() const {
  return chosen > 0 ? kCfcClasses.at(static_cast<std::size_t>(chosen - 1)) : 0;
}

std::string CfcChoice::Words() const {
  return chosen > 0 ? "CFC " + std::to_string(Class()) : "unfiltered";
}

}  // namespace velmora
