#include "forceplate/plate_commands.hpp"

#include <array>
#include <numeric>
#include <vector>

#include "core/questions/progress.hpp"
#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "forceplate/combine_plates.hpp"
#include "forceplate/contacts/contacts_form.hpp"
#include "forceplate/define_plate_form.hpp"
#include "forceplate/file_plates.hpp"
#include "forceplate/force_plate_form.hpp"
#include "forceplate/gravity/gravity_form.hpp"
#include "forceplate/plate_form.hpp"
#include "forceplate/plate_geometry.hpp"
#include "forceplate/plate_types.hpp"
#include "forceplate/pressure_path_form.hpp"
#include "forceplate/reduce_plates.hpp"
#include "forceplate/sway/sway_form.hpp"

namespace velmora {
namespace {

constexpr std::string_view kPlateMenu = "&Analysis/&Analyze Force Plate Data";

void Refuse(Workbench& workbench, const char* text) {
  ShowRefusal(workbench, {.text = text, .icon = Icon::Exclamation});
}

void Show(Workbench& workbench) {
  ShowForcePlates(workbench, PlateEditMode::Show);
}

void Edit(Workbench& workbench) {
  ShowForcePlates(workbench, PlateEditMode::Edit);
}

void ChangeType(Workbench& workbench) {
  const Box box{.title = "Change Plate Parameters",
                .text =
                    "Warning, these parameters should not be changed unless they were incorrectly saved "
                    "during data collection.\nPress OK to continue or Cancel to exit.",
                .icon = Icon::Exclamation,
                .buttons = {Button::OK, Button::Cancel}};
  if (workbench.questions.AskBox(box) == Button::OK && DefinePlates(workbench)) {
    TellDefined(workbench);
  }
}

/// Why the two plates of this file cannot be made one; nullptr when they can.
const char* WhyNotCombined(const Trial& trial) {
  const PlateSource source = SourceOfPlates(trial);
  if (trial.PlatesCombined) {
    return "Plates have already been combined.";
  }
  if (source != PlateSource::BioWare && source != PlateSource::Apas) {
    return "Filetype not implemented.";
  }
  return trial.NPlates == 2 ? nullptr : "The program can only combine data from two plates.";
}

void OfferUsualSpacing(PlateMemory& plates, CombineKind kind) {
  plates.PlateOffsetX = 0.0;
  plates.PlateOffsetY = kind == CombineKind::EightChannels ? 600.0 : 508.0;
  plates.PlateOffsetZ = 0.0;
  plates.PlateAngle = 0.0;
  plates.ProgressionAngle = 0.0;
}

void NameCombined(Trial& trial, int base, CombineKind kind) {
  constexpr std::array names = {"Fx", "Fy", "Fz", "Ax", "Ay", "Tz", "Ff", "CF"};
  const int count = kind == CombineKind::EightChannels ? 8 : 6;
  for (int k = 0; k < count; ++k) {
    trial.ChanLabel[base + k + 1] = std::string(names.at(static_cast<std::size_t>(k))) + " comb.";
  }
}

void CombineChannels(Workbench& workbench, CombineKind kind) {
  constexpr double millimetres = 10.0;  // a centimetre
  const PlateMemory& plates = workbench.plates;
  Trial& trial = workbench.trial;
  const auto base = static_cast<int>(BaseChannelOf(trial, plates, 0));
  NameCombined(trial, base, kind);
  ProgressPanel panel(workbench, ProgressPanel::Kind::Processing);
  panel.SetStatus("Combining plates");
  panel.SetLimits(0, trial.NData / 100.0);
  double hundreds = 0;
  CombineTwoPlates(trial, base, kind,
                   {.X = plates.PlateOffsetX / millimetres,
                    .Y = plates.PlateOffsetY / millimetres,
                    .angle = plates.PlateAngle,
                    .progression = plates.ProgressionAngle},
                   [&panel, &hundreds] { panel.SetValue(++hundreds); });
  trial.PlatesCombined = true;
  MarkChanged(workbench, true);
  std::vector<int> channels(kind == CombineKind::EightChannels ? 8 : 6);
  std::iota(channels.begin(), channels.end(), base + 1);
  Did(workbench,
      "Two force plates combined, " + PlainNumber(plates.PlateOffsetX) + " and " +
          PlainNumber(plates.PlateOffsetY) + " mm apart",
      channels);
  if (!trial.ForcesReduced) {
    AddNotice(workbench,
              "The two plates were combined before their forces were reduced: the result means nothing.");
  }
}

void Combine(Workbench& workbench) {
  if (const char* why = WhyNotCombined(workbench.trial)) {
    Refuse(workbench, why);
    return;
  }
  const Box box{.title = "Conmbine Two Plates",
                .text = "Do you want the two plates combined?",
                .icon = Icon::Question,
                .buttons = {Button::Yes, Button::No}};
  if (workbench.questions.AskBox(box) != Button::Yes) {
    return;
  }
  const CombineKind kind = FamilyIn(workbench.trial, workbench.plates.PlateTable[0]) == PlateFamily::Amti
                               ? CombineKind::SixChannels
                               : CombineKind::EightChannels;
  const PlateMemory before = workbench.plates;
  OfferUsualSpacing(workbench.plates, kind);
  if (AskPlateSpacing(workbench)) {
    CombineChannels(workbench, kind);
  } else {
    workbench.plates = before;
  }
}

const char* WhyNotDrawn(const Workbench& workbench) {
  return workbench.trial.ForcesReduced ? nullptr : "The forces have not been reduced yet";
}

template <void (*procedure)(Workbench&)>
void WithData(Workbench& workbench) {
  if (workbench.trial.NData > 0) {
    procedure(workbench);
  }
}

constexpr std::array kPlateCommands = {
    Command{"plates.show", "Show plate parameters", kPlateMenu, Needs::Data, WithData<Show>},
    Command{"plates.change-type", "Change plate type", kPlateMenu, Needs::Data, WithData<ChangeType>},
    Command{"plates.edit", "Edit plate parameters", kPlateMenu, Needs::Data, WithData<Edit>},
    Command{"plates.reduce", "Reduce force plate data", kPlateMenu, Needs::Data, WithData<ReduceForcePlates>,
            WhyNotReduced},
    Command{"plates.combine", "Combine &Two plates", kPlateMenu, Needs::Data, WithData<Combine>},
    Command{"plates.gravity", "Center of &Gravity", kPlateMenu, Needs::Data, WithData<FindCentreOfGravity>},
    Command{"plates.pressure", "Center of &Pressure picture", kPlateMenu, Needs::Data,
            WithData<ShowPressurePath>, WhyNotDrawn},
    Command{"plates.rotate", "Ro&tate force plate", kPlateMenu, Needs::Data, WithData<AskRotation>},
    Command{"plates.sway", "&Sway of the centre of pressure", kPlateMenu, Needs::Data, WithData<MeasureSway>},
    Command{"plates.contacts", "&Foot contacts", kPlateMenu, Needs::Data, WithData<FindFootContacts>},
};

}  // namespace

std::span<const Command> PlateCommands() {
  return kPlateCommands;
}

}  // namespace velmora
