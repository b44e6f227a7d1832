#include "forceplate/plate_form.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/trial/helpers.hpp"
#include "forceplate/plate_types.hpp"

namespace velmora {
namespace {

enum Maker : std::int32_t { kKistlerMaker, kAmtiMaker, kOtherMaker };

constexpr std::array<std::int32_t, 3> kFirstTypeOf = {0, kAmtiPlate, kCustomPlate};

constexpr const char* kReal = "#0.00";
constexpr const char* kWhole = "####0";
constexpr const char* kPlateGroup = "Plate";
constexpr const char* kSensorGroup = "Sensors";
constexpr const char* kSpacingGroup = "Second plate";

Maker MakerOf(std::int32_t type) {
  return type == kAmtiPlate ? kAmtiMaker : type == kCustomPlate ? kOtherMaker : kKistlerMaker;
}

/// A number of a plate, as the entry asks for it.
struct NumberRow {
  const char* name;
  const char* caption;
  double ForcePlate::*number;
  const char* group;
  const char* pattern;
  const char* prompt;
  bool ofSensors = false;  // AMTI plates have none
};

constexpr NumberRow kNumberRows[] = {
    {"a", "Sensors a, X (M-L)", &ForcePlate::a, kPlateGroup, kReal,
     "Enter distance to sensors (mm) for short axis."},
    {"b", "Sensors b, Y (A-P)", &ForcePlate::b, kPlateGroup, kReal,
     "Enter distance to sensors (mm) for long axis."},
    {"az0", "Sensors below the top", &ForcePlate::az0, kPlateGroup, kReal,
     "Enter distance to sensors (mm) vertically."},
    {"Width", "Width, X", &ForcePlate::Width, kPlateGroup, kReal, "Enter width (mm) of plate (short axis)."},
    {"Length", "Length, Y", &ForcePlate::Length, kPlateGroup, kReal,
     "Enter length (mm) of plate (long axis)."},
    {"Thickness", "Added surface", &ForcePlate::Thickness, kPlateGroup, kReal,
     "Enter thickness (mm) of any added surface (usually 0)."},
    {"XYRange", "X-Y range (pC)", &ForcePlate::XYRange, kSensorGroup, kWhole,
     "Enter X-Y (horizontal) range (pC) (usually 5000).", true},
    {"ZRange", "Z range (pC)", &ForcePlate::ZRange, kSensorGroup, kWhole,
     "Enter Z (vertical) range (pC) (usually 10000).", true},
    {"XSens", "X sensitivity", &ForcePlate::XSens, kSensorGroup, kReal,
     "Enter X sensitivity (usually -7.86).", true},
    {"YSens", "Y sensitivity", &ForcePlate::YSens, kSensorGroup, kReal,
     "Enter Y sensitivity (usually -7.86).", true},
    {"ZSens", "Z sensitivity", &ForcePlate::ZSens, kSensorGroup, kReal,
     "Enter Z sensitivity (usually -3.50).", true},
};

constexpr std::array<const char*, 6> kGainNames = {"comGainsFx", "comGainsFy", "comGainsFz",
                                                   "comGainsMx", "comGainsMy", "comGainsMz"};

FormField NumberField(const NumberRow& row, double& target) {
  return {.name = row.name,
          .caption = row.caption,
          .target = &target,
          .prompt = row.prompt,
          .pattern = row.pattern,
          .group = row.group,
          .emptyKeeps = true,
          .asksByInput = true};
}

// The table keeps the depth of a Kistler plate's sensors below 0, whatever sign it was entered with.
ForcePlate AsEntered(ForcePlate plate) {
  if (FamilyOf(plate) == PlateFamily::Kistler && plate.az0 != 0) {
    plate.az0 = -plate.az0;
  }
  return plate;
}

ForcePlate AsKept(ForcePlate plate) {
  if (FamilyOf(plate) == PlateFamily::Kistler && plate.az0 != 0) {
    plate.az0 = -std::abs(plate.az0);
  }
  return plate;
}

}  // namespace

PlateForm::PlateForm(Workbench& workbench, std::string name, std::string title, const PlateMemory& plates,
                     std::int32_t numPlates)
    : Form(std::move(name), std::move(title)), workbench_(workbench), draft_(plates), numPlates_(numPlates) {
  for (ForcePlate& plate : draft_.PlateTable) {
    plate = AsEntered(plate);
  }
  plate_ = draft_.PlateTable[0];
}

PlateMemory PlateForm::Plates() const {
  PlateMemory plates = draft_;
  plates.FirstChannel = firstChannel_ - firstNumber_;
  plates.PlateTable[static_cast<std::size_t>(plateShown_)] = plate_;
  plates.PlateTable[static_cast<std::size_t>(plateShown_)].PlateType = static_cast<std::int16_t>(optType_);
  for (ForcePlate& plate : plates.PlateTable) {
    plate = AsKept(plate);
  }
  return plates;
}

ForcePlate PlateForm::Shown() const {
  return Plates().PlateTable[static_cast<std::size_t>(plateShown_)];
}

std::vector<std::string> PlateForm::WayThroughAll() const {
  std::vector<std::string> presses;
  for (std::int32_t k = 0; k < kMostPlates && !fields_.front().readOnly; ++k) {
    const std::string caption = "Plate " + std::to_string(k + 1);
    const bool remembered = draft_.PlateTable[static_cast<std::size_t>(k)] != ForcePlate{};
    if (k != plateShown_ && remembered && FindButton(caption) != nullptr) {
      presses.push_back(caption);
    }
  }
  if (!presses.empty()) {
    presses.push_back("Plate " + std::to_string(plateShown_ + 1));
  }
  return presses;
}

void PlateForm::AddTrialFields(std::int32_t firstNumber) {
  constexpr double mostPlates = kMostPlates;
  firstNumber_ = firstNumber;
  firstChannel_ = draft_.FirstChannel + firstNumber;
  fields_.push_back({.name = "NumPlates",
                     .caption = "Number of plates",
                     .target = &numPlates_,
                     .lowest = 0,
                     .highest = mostPlates,
                     .prompt = "Enter correct number of plates.",
                     .title = "Number of Force Plates",
                     .group = kPlateGroup,
                     .emptyKeeps = true,
                     .asksByInput = true});
  fields_.push_back(
      {.name = "FirstChannel",
       .caption = "First channel",
       .target = &firstChannel_,
       .lowest = static_cast<double>(firstNumber),
       .prompt = "Enter first plate's initial data channel (usually " + std::to_string(firstNumber) + ").",
       .group = kPlateGroup,
       .emptyKeeps = true,
       .asksByInput = true});
}

void PlateForm::AddPlateFields() {
  std::vector<std::string> types(kPlateTypes.size());
  std::transform(kPlateTypes.begin(), kPlateTypes.end(), types.begin(),
                 [](const PlateTypeEntry& type) { return std::string(type.caption); });
  fields_.push_back({.name = "optMaker",
                     .caption = "Maker",
                     .target = &optMaker_,
                     .choices = {"Kistler", "AMTI", "Other"},
                     .group = kPlateGroup,
                     .edited = [this] { MakerChosen(); }});
  fields_.push_back({.name = "optType",
                     .caption = "Type",
                     .target = &optType_,
                     .choices = types,
                     .group = kPlateGroup,
                     .edited = [this] { FieldsApply(); }});
  fields_.push_back({.name = "PlateName",
                     .caption = "Name",
                     .target = &plate_.PlateName,
                     .group = kPlateGroup,
                     .emptyKeeps = true});
  for (const NumberRow& row : kNumberRows) {
    fields_.push_back(NumberField(row, plate_.*row.number));
  }
  for (std::size_t k = 0; k < kGainNames.size(); ++k) {
    fields_.push_back({.name = kGainNames[k],
                       .caption = "Gain " + std::string(kGainNames[k]).substr(8),
                       .target = &plate_.comGains[k],
                       .pattern = kWhole,
                       .group = kSensorGroup,
                       .emptyKeeps = true});
  }
  fields_.push_back({.name = "optFormulas",
                     .caption = "Formulas",
                     .target = &plate_.optFormulas,
                     .choices = {"As defined here", "As published"},
                     .group = kSensorGroup,
                     .isList = true});
  fields_.push_back({.name = "optDistance",
                     .caption = "Distances are in.  As entered they count as centimetres: only these give Ax "
                                "and Ay in cm and Tz in N.m.",
                     .target = &plate_.optDistance,
                     .choices = {"As entered", "Millimetres", "Centimetres", "Metres"},
                     .group = kPlateGroup,
                     .isList = true});
}

void PlateForm::AddSpacingFields() {
  const auto add = [this](const char* name, const char* caption, double& target, const char* prompt) {
    fields_.push_back({.name = name,
                       .caption = caption,
                       .target = &target,
                       .prompt = prompt,
                       .pattern = kReal,
                       .group = kSpacingGroup,
                       .emptyKeeps = true,
                       .asksByInput = true});
  };
  add("PlateOffsetX", "X distance (mm)", draft_.PlateOffsetX,
      "Enter X (M-L) distance (mm) to second force platform (usually 0).");
  add("PlateOffsetY", "Y distance (mm)", draft_.PlateOffsetY,
      "Enter Y (A-P) distance (mm) to second force platform (usually 1/2 plate length).");
  add("PlateOffsetZ", "Z distance (mm)", draft_.PlateOffsetZ,
      "Enter Z (vert.) distance (mm) to second force platform (usually zero).");
  add("PlateAngle", "Angle (deg)", draft_.PlateAngle,
      "Enter angle (deg) of second force platform w.r.t first (usually 0).");
  add("ProgressionAngle", "Progression (deg)", draft_.ProgressionAngle,
      "Enter angle (deg) of progression (usually 0).");
}

void PlateForm::AddShownPlate() {
  fields_.push_back({.name = "optPlate",
                     .caption = "Plate shown",
                     .target = &plateShown_,
                     .choices = {"Plate 1", "Plate 2", "Plate 3", "Plate 4"},
                     .group = kPlateGroup,
                     .readOnly = true,
                     .isList = true});
  optType_ = plate_.PlateType;
  FieldsApply();
}

void PlateForm::AddPlateButtons() {
  for (std::int32_t k = 0; k < kMostPlates; ++k) {
    buttons_.push_back({"Plate &" + std::to_string(k + 1), FormButton::Role::Other, [this, k] {
                          ShowPlate(k);
                          return false;
                        }});
  }
}

void PlateForm::MakeReadOnly() {
  for (FormField& field : fields_) {
    field.readOnly = true;
  }
}

void PlateForm::ShowPlate(std::int32_t plate) {
  plate_.PlateType = static_cast<std::int16_t>(optType_);
  draft_.PlateTable[static_cast<std::size_t>(plateShown_)] = plate_;
  plateShown_ = plate;
  plate_ = draft_.PlateTable[static_cast<std::size_t>(plate)];
  optType_ = plate_.PlateType;
  FieldsApply();
  showsAnother_ = true;
}

void PlateForm::PutPlate(const ForcePlate& plate) {
  plate_ = AsEntered(plate);
  optType_ = plate_.PlateType;
  FieldsApply();
}

void PlateForm::LoadDefaults() {
  const PlateTypeEntry& type = kPlateTypes.at(static_cast<std::size_t>(optType_));
  if (optType_ == kAmtiPlate) {
    return;
  }
  plate_.XYRange = type.XYRange;
  plate_.ZRange = type.ZRange;
  plate_.XSens = type.XSens;
  plate_.YSens = type.YSens;
  plate_.ZSens = type.ZSens;
}

void PlateForm::Keep() {
  const std::string database = workbench_.plates.Database;
  workbench_.plates = Plates();
  workbench_.plates.Database = database;  // Save and Load may have changed it meanwhile
  workbench_.trial.NPlates = static_cast<std::int16_t>(numPlates_);
}

void PlateForm::KeepSpacing() {
  PlateMemory& plates = workbench_.plates;
  plates.PlateOffsetX = draft_.PlateOffsetX;
  plates.PlateOffsetY = draft_.PlateOffsetY;
  plates.PlateOffsetZ = draft_.PlateOffsetZ;
  plates.PlateAngle = draft_.PlateAngle;
  plates.ProgressionAngle = draft_.ProgressionAngle;
}

FormField& PlateForm::Field(const char* name) {
  return const_cast<FormField&>(*FindField(name));
}

void PlateForm::MakerChosen() {
  if (MakerOf(optType_) != optMaker_) {
    optType_ = kFirstTypeOf.at(static_cast<std::size_t>(optMaker_));
  }
  FieldsApply();
}

void PlateForm::FieldsApply() {
  optMaker_ = MakerOf(optType_);
  const bool amti = optType_ == kAmtiPlate;
  for (const NumberRow& row : kNumberRows) {
    LetApply(row.name, !row.ofSensors || !amti);
  }
  for (const char* name : kGainNames) {
    LetApply(name, amti);
  }
}

// A record has what applies only now behind what made it apply.
void PlateForm::LetApply(const char* name, bool applies) {
  if (applies && Field(name).notApplicable) {
    NoteFilled(name);
  }
  Field(name).notApplicable = !applies;
}

void TellDefined(Workbench& workbench) {
  Did(workbench, "Force plates defined: " + std::to_string(workbench.trial.NPlates));
}

}  // namespace velmora
