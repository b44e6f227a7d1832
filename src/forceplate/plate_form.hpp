#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/command_memory.hpp"
#include "core/questions/form.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// The fields of force plates, one plate shown at a time. Works on a draft, in which az0 stands as it is
/// entered; Keep() makes the draft the definition in force.
class PlateForm : public Form {
 public:
  PlateForm(Workbench& workbench, std::string name, std::string title, const PlateMemory& plates,
            std::int32_t numPlates);

  /// The draft as it would be kept now.
  [[nodiscard]] PlateMemory Plates() const;
  [[nodiscard]] std::int32_t PlatesInUse() const { return numPlates_; }
  [[nodiscard]] std::int32_t PlateShown() const { return plateShown_; }
  [[nodiscard]] std::vector<std::string> WayThroughAll() const override;

 protected:
  /// firstNumber: of the first channel, as it is shown. Fields of the trial, then of the plate, ...
  void AddTrialFields(std::int32_t firstNumber);
  void AddPlateFields();
  void AddSpacingFields();
  /// ... and what is shown alone. Call it last, when all fields are there.
  void AddShownPlate();
  void AddPlateButtons();
  void MakeReadOnly();

  /// Takes another plate's fields; plates count from 0.
  void ShowPlate(std::int32_t plate);
  /// Puts a definition in the place of the plate shown.
  void PutPlate(const ForcePlate& plate);
  /// The plate shown takes a name.
  void NamePlate(const std::string& name) { plate_.PlateName = name; }
  [[nodiscard]] ForcePlate Shown() const;
  void LoadDefaults();
  /// The draft is the definition in force from now on.
  void Keep();
  /// Only where plate 2 lies is.
  void KeepSpacing();
  FormField& Field(const char* name);

  Workbench& workbench_;

 private:
  void MakerChosen();
  void FieldsApply();
  void LetApply(const char* name, bool applies);

  PlateMemory draft_;
  ForcePlate plate_;  // the one shown
  std::int32_t plateShown_ = 0;
  std::int32_t numPlates_;
  std::int32_t firstChannel_ = 0;
  std::int32_t firstNumber_ = 0;
  std::int32_t optMaker_ = 0;
  std::int32_t optType_ = 0;
};

/// Reports that the trial's plates are defined anew.
void TellDefined(Workbench& workbench);

}  // namespace velmora
