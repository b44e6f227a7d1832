#include "forceplate/define_plate_form.hpp"

#include <algorithm>

#include "core/trial/helpers.hpp"
#include "forceplate/plate_checks.hpp"
#include "forceplate/plate_form.hpp"
#include "forceplate/plate_list_form.hpp"

namespace velmora {
namespace {

/// What both editors have: one that defines the trial's plates and one for a record of the database.
class DefineForm : public PlateForm {
 public:
  using PlateForm::PlateForm;
  [[nodiscard]] bool Accepted() const { return accepted_; }

 protected:
  void AddDefineButtons() {
    buttons_ = {{"&OK", FormButton::Role::Accept, [this] { return Accept(); }},
                {"&Defaults", FormButton::Role::Other, Staying(&DefineForm::LoadDefaults)},
                {"&Save", FormButton::Role::Other, Staying(&DefineForm::Save)},
                {"&Load", FormButton::Role::Other, Staying(&DefineForm::Load)}};
  }
  void AddCancel() {
    buttons_.push_back({"&Cancel", FormButton::Role::Cancel, [] { return true; }});
  }
  /// The plates that have to be complete at OK.
  [[nodiscard]] virtual std::int32_t PlatesToCheck() const = 0;
  virtual void Finish() {}

 private:
  std::function<bool()> Staying(void (DefineForm::*procedure)()) {
    return [this, procedure] {
      (this->*procedure)();
      return false;
    };
  }

  bool Accept() {
    const PlateMemory plates = Plates();
    for (std::int32_t k = 0; k < PlatesToCheck(); ++k) {
      if (const auto why = WhyIncomplete(plates.PlateTable[static_cast<std::size_t>(k)])) {
        ShowRefusal(workbench_, *why);
        return false;
      }
    }
    accepted_ = true;
    Finish();
    return true;
  }

  void Save() {
    if (const std::optional<std::string> name = SavePlate(workbench_, Shown())) {
      NamePlate(*name);
    }
  }

  void Load() {
    if (const std::optional<ForcePlate> plate = LoadPlate(workbench_)) {
      PutPlate(*plate);
    }
  }

  bool accepted_ = false;
};

class DefineTrialForm : public DefineForm {
 public:
  explicit DefineTrialForm(Workbench& workbench)
      : DefineForm(workbench, "frmDefinePlate", "Define Force Plate Parameters", workbench.plates,
                   std::max<std::int32_t>(workbench.trial.NPlates, 1)) {
    AddTrialFields(0);
    AddPlateFields();
    AddSpacingFields();
    AddShownPlate();
    AddDefineButtons();
    AddPlateButtons();
    AddCancel();
  }

 private:
  [[nodiscard]] std::int32_t PlatesToCheck() const override { return PlatesInUse(); }
  void Finish() override { Keep(); }
};

PlateMemory OnePlate(const std::string& plateName) {
  PlateMemory plates;
  plates.PlateTable[0].PlateName = plateName;
  return plates;
}

class DefineRecordForm : public DefineForm {
 public:
  DefineRecordForm(Workbench& workbench, const std::string& plateName)
      : DefineForm(workbench, "frmDefinePlates", "Define Force Plates", OnePlate(plateName), 1) {
    AddPlateFields();
    AddShownPlate();
    AddDefineButtons();
    AddCancel();
  }
  [[nodiscard]] ForcePlate Plate() const { return Shown(); }

 private:
  [[nodiscard]] std::int32_t PlatesToCheck() const override { return 1; }
};

}  // namespace

bool DefinePlates(Workbench& workbench) {
  DefineTrialForm form(workbench);
  form.Show(workbench);
  return form.Accepted();
}

std::optional<ForcePlate> DefineOnePlate(Workbench& workbench, const std::string& plateName) {
  DefineRecordForm form(workbench, plateName);
  form.Show(workbench);
  return form.Accepted() ? std::optional(form.Plate()) : std::nullopt;
}

}  // namespace velmora
