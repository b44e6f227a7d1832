#include "forceplate/force_plate_form.hpp"

#include <map>
#include <string_view>

#include "core/trial/helpers.hpp"
#include "forceplate/file_plates.hpp"
#include "forceplate/plate_form.hpp"

namespace velmora {
namespace {

class ForcePlateForm : public PlateForm {
 public:
  ForcePlateForm(Workbench& workbench, PlateEditMode mode)
      : PlateForm(workbench, "frmForcePlate", "Force Plate Parameters", workbench.plates,
                  workbench.trial.NPlates) {
    AddTrialFields(1);
    AddPlateFields();
    AddSpacingFields();
    AddShownPlate();
    buttons_ = {{"&OK", FormButton::Role::Accept, [this, mode] {
                   if (mode == PlateEditMode::Edit) {
                     Keep();
                     TellDefined(workbench_);
                   }
                   return true;
                 }}};
    AddPlateButtons();
    if (mode == PlateEditMode::Show) {
      MakeReadOnly();
      return;
    }
    buttons_.push_back({"&Cancel", FormButton::Role::Cancel, [this] { return CancelsAll(); }});
    Protect({"Width", "Length", "Thickness"},
            {.title = "Dimensions",
             .text = "These factors do not affect the force platform calculations.",
             .icon = Icon::Exclamation});
    if (workbench.trial.FileTypeCode == kBioWareFile) {
      Protect({"XYRange", "ZRange", "XSens", "YSens", "ZSens"},
              {.title = "Fixed Factors",
               .text = "These factors cannot be changed for BioWare files.  \n"
                       "They are applied as the data are read\nand not when the data are reduced.",
               .icon = Icon::Exclamation});
    }
  }

 private:
  bool CancelsAll() {
    return workbench_.questions.AskBox({.title = "Confirm Changes",
                                        .text = "Do you want to cancel all changes?",
                                        .icon = Icon::Question,
                                        .buttons = {Button::Yes, Button::No}}) == Button::Yes;
  }

  // The number goes back to what it was, which is what every edit before has left it at.
  void Protect(std::initializer_list<const char*> names, const Box& box) {
    for (const char* name : names) {
      FormField& field = Field(name);
      field.edited = [this, name, box] {
        *std::get<double*>(Field(name).target) = Protected(name);
        ShowRefusal(workbench_, box);
      };
    }
  }

  double Protected(const char* name) const {
    const ForcePlate& plate = workbench_.plates.PlateTable.at(static_cast<std::size_t>(PlateShown()));
    static const std::map<std::string_view, double ForcePlate::*> numbers = {
        {"Width", &ForcePlate::Width},         {"Length", &ForcePlate::Length},
        {"Thickness", &ForcePlate::Thickness}, {"XYRange", &ForcePlate::XYRange},
        {"ZRange", &ForcePlate::ZRange},       {"XSens", &ForcePlate::XSens},
        {"YSens", &ForcePlate::YSens},         {"ZSens", &ForcePlate::ZSens}};
    return plate.*numbers.at(name);
  }
};

/// Numbers with the prompts of their input boxes, OK and Cancel.
class SpacingForm : public PlateForm {
 public:
  explicit SpacingForm(Workbench& workbench)
      : PlateForm(workbench, "frmPlateSpacing", "Force Plate Spacing", workbench.plates,
                  workbench.trial.NPlates) {
    AddSpacingFields();
    buttons_ = {{"&OK", FormButton::Role::Accept,
                 [this] {
                   KeepSpacing();
                   accepted_ = true;
                   return true;
                 }},
                {"&Cancel", FormButton::Role::Cancel, [] { return true; }}};
  }
  [[nodiscard]] bool Accepted() const { return accepted_; }

 private:
  bool accepted_ = false;
};

class RotationForm : public Form {
 public:
  explicit RotationForm(Workbench& workbench) : Form("frmRotateForces", "Rotate Force Plate") {
    const auto add = [this](const char* name, const char* caption, double& angle, const char* prompt) {
      fields_.push_back({.name = name,
                         .caption = caption,
                         .target = &angle,
                         .prompt = prompt,
                         .pattern = "##0.00 deg",
                         .emptyKeeps = true,
                         .asksByInput = true});
    };
    add("RotationX", "X-axis Rotation", x_, "Enter rotation (degrees) of plate about the X-axis.");
    add("RotationY", "Y-axis Rotation", y_, "Enter rotation (degrees) of plate about the Y-axis.");
    add("RotationZ", "Z-axis Rotation", z_, "Enter rotation (degrees) of plate about the Z-axis.");
    buttons_ = {{"&Rotate", FormButton::Role::Accept,
                 [&workbench] {
                   ShowRefusal(workbench, {.text = "Not yet implemented.", .icon = Icon::Exclamation});
                   return false;
                 }},
                {"&Cancel", FormButton::Role::Cancel, [] { return true; }}};
  }

 private:
  double x_ = 0.0;  // degrees
  double y_ = 0.0;
  double z_ = 0.0;
};

}  // namespace

void ShowForcePlates(Workbench& workbench, PlateEditMode mode) {
  const Trial& trial = workbench.trial;
  const PlateSource source = SourceOfPlates(trial);
  const bool known = source == PlateSource::Definition || source == PlateSource::BioWare ||
                     source == PlateSource::Apas || trial.ForcesReduced;
  if (!known) {
    ShowRefusal(workbench, {.text = "Filetype not implemented.", .icon = Icon::Exclamation});
    return;
  }
  if (trial.NPlates < 1) {
    ShowRefusal(workbench, {.title = "Plate Parameters Not Defined",
                            .text = "Force plate parameters have not been defined.\n"
                                    "Use the 'Reduce force plate data' menu item.",
                            .icon = Icon::Exclamation});
    return;
  }
  ForcePlateForm(workbench, mode).Show(workbench);
}

bool AskPlateSpacing(Workbench& workbench) {
  SpacingForm form(workbench);
  form.Show(workbench);
  return form.Accepted();
}

void AskRotation(Workbench& workbench) {
  if (workbench.trial.NPlates < 1) {
    ShowRefusal(workbench, {.title = "No Force Plates Present",
                            .text = "No force plates have been detected in this data file.",
                            .icon = Icon::Exclamation});
    return;
  }
  RotationForm(workbench).Show(workbench);
}

}  // namespace velmora
