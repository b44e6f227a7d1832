#include "export/save_refusals.hpp"

#include <string>

#include "core/trial/helpers.hpp"

namespace velmora {
namespace {

constexpr std::int16_t kBioWareType = 6;
constexpr int kMostVelmora1Channels = 16;

bool Refuse(Workbench& workbench, const std::string& text) {
  ShowRefusal(workbench, {.text = text, .icon = Icon::Exclamation});
  return true;
}

}  // namespace

const char* WhyNotOfForces(const Workbench& workbench) {
  return workbench.trial.ForcesReduced ? "Cannot save if data have been converted to forces." : nullptr;
}

bool UnitsFileRefuses(Workbench& workbench) {
  const char* why = WhyNotOfForces(workbench);
  return why != nullptr && Refuse(workbench, why);
}

bool BioWareRefuses(Workbench& workbench) {
  return UnitsFileRefuses(workbench) || (workbench.trial.FileTypeCode != kBioWareType &&
                                         Refuse(workbench, "Input file is NOT a BioWare .DAT file."));
}

bool Velmora1BinaryRefuses(Workbench& workbench) {
  if (workbench.trial.NChan <= kMostVelmora1Channels) {
    return false;
  }
  const Box box{.title = "Too Many Channels",
                .text =
                    "Warning.  This format can only hold 16 channels.\nOnly first 16 channels will be "
                    "stored.\nUse the Velmora2 binary format (.VMB) instead.\n\nPress OK to continue "
                    "saving or Cancel.",
                .icon = Icon::Exclamation,
                .buttons = {Button::OK, Button::Cancel}};
  return ShowRefusal(workbench, box) == Button::Cancel;
}

bool ReducedForcesRefuses(Workbench& workbench) {
  if (workbench.trial.NPlates < 1) {
    return Refuse(workbench, "This file does not appear to have force platform data.");
  }
  return !workbench.trial.ForcesReduced && Refuse(workbench, "Forces must be reduced before saving.");
}

}  // namespace velmora
