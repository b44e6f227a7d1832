#include "forceplate/plate_list_form.hpp"

#include "core/files/files.hpp"
#include "core/files/paths.hpp"
#include "core/questions/form.hpp"
#include "core/questions/progress.hpp"
#include "core/trial/helpers.hpp"
#include "forceplate/define_plate_form.hpp"
#include "forceplate/plate_database.hpp"

namespace velmora {
namespace {

constexpr const char* kDatabaseTitle = "Select force plate database";
constexpr const char* kDefinitions = "Force Plate Definitions";
constexpr const char* kDatabaseExtension = ".dbp";

/// The file used last is offered first.
std::string AskDatabase(Workbench& workbench, FileQuestion::Mode mode) {
  const std::string& last = workbench.plates.Database;
  const std::vector<std::string> answer =
      workbench.questions.AskFile({.mode = mode,
                                   .title = kDatabaseTitle,
                                   .defaultName = last.empty() ? "ForcePlates.dbp" : FileNamePart(last),
                                   .extension = kDatabaseExtension,
                                   .filter = "*.dbp",
                                   .directory = last.empty() ? workbench.DataDir : DirectoryOf(last)});
  if (answer.empty() || answer.front().empty()) {
    return {};
  }
  const bool named = mode == FileQuestion::Mode::Open || !FileExtension(answer.front()).empty();
  return FullPath(named ? answer.front() : answer.front() + kDatabaseExtension);
}

std::string AskPlateName(Workbench& workbench, const std::string& offered) {
  return RecordName(workbench.questions.AskInput({.title = "Plate Name",
                                                  .prompt = "Enter plate name and description here",
                                                  .defaultText = offered.empty() ? "New plate" : offered}));
}

PlateDatabase ReadUnderPanel(Workbench& workbench, const std::string& path) {
  ProgressPanel panel(workbench);
  panel.SetFileName(path);
  panel.SetFormat("Force Plate Database (.DPB)");
  panel.SetStatus(kDefinitions);
  return ReadPlateDatabase(path, [&panel](double done) { panel.SetValue(done); });
}

// What is there, so that nobody else's record is lost. A record among the samples of a trial would be the end
// of both.
PlateDatabase ReadToExtend(const std::string& path) {
  PlateDatabase database = PathExists(path) ? ReadPlateDatabase(path) : PlateDatabase();
  const bool holdsPlates = database.Records() > 0 && !database.Name(0).empty() && database.Plate(0);
  if (!database.Bytes().empty() && !holdsPlates) {
    throw FileError("it is no force plate database, and was left as it is");
  }
  return database;
}

bool PutIntoFile(Workbench& workbench, const std::string& path, const ForcePlate& plate) {
  workbench.OutputFileName = path;
  try {
    PlateDatabase database = ReadToExtend(path);
    database.Put(plate);
    WritePlateDatabase(workbench, path, database);
  } catch (const FileError& error) {
    ShowSaveFailure(workbench, error.what());
    return false;
  }
  workbench.plates.Database = path;
  DidSave(workbench, "Force plate \"" + plate.PlateName + "\" saved in");
  return true;
}

void TellWrongFormat(Workbench& workbench) {
  ShowRefusal(workbench, {.title = "No Definitions",
                          .text = "Force Plate Database was empty or in wrong format.\n"
                                  "Open a different file or add new ones to the database.",
                          .icon = Icon::Stop});
}

class PlateListForm : public Form {
 public:
  PlateListForm(Workbench& workbench, std::string path, PlateDatabase database)
      : Form("frmForcePlates", kDefinitions),
        workbench_(workbench),
        path_(std::move(path)),
        database_(std::move(database)) {
    fields_ = {{.name = "lstPlates", .caption = "Plate", .target = &record_, .isList = true}};
    const auto add = [this](const char* caption, FormButton::Role role, bool (PlateListForm::*procedure)()) {
      buttons_.push_back({caption, role, [this, procedure] { return (this->*procedure)(); }});
    };
    add("&OK", FormButton::Role::Accept, &PlateListForm::Choose);
    add("&New", FormButton::Role::Other, &PlateListForm::AddNew);
    add("O&pen", FormButton::Role::Other, &PlateListForm::OpenOther);
    add("&Help", FormButton::Role::Other, &PlateListForm::Help);
    buttons_.push_back({"&Cancel", FormButton::Role::Cancel, [] { return true; }});
    ListRecords();
  }
  [[nodiscard]] const std::optional<ForcePlate>& Chosen() const { return chosen_; }

 private:
  void ListRecords() {
    FormField& list = fields_.front();
    list.choices.clear();
    for (const std::string& name : database_.Names()) {
      list.choices.push_back(AsCaption(name));
    }
  }

  bool Choose() {
    const auto record = static_cast<std::size_t>(record_);
    if (record >= database_.Records()) {
      return true;  // there is none to choose
    }
    chosen_ = database_.Plate(record);
    if (!chosen_) {
      TellWrongFormat(workbench_);
    }
    return chosen_.has_value();
  }

  bool AddNew() {
    const std::string name = AskPlateName(workbench_, "");
    if (name.empty()) {
      return false;
    }
    if (const std::optional<ForcePlate> plate = DefineOnePlate(workbench_, name)) {
      if (PutIntoFile(workbench_, path_, *plate)) {
        database_.Put(*plate);
        ListRecords();
      }
    }
    return false;
  }

  bool OpenOther() {
    const Box box{.title = "Open Different Database",
                  .text =
                      "Do you want to open a different force platform database?\n"
                      "Press OK to continue or Cancel to keep using existing database.",
                  .icon = Icon::Question,
                  .buttons = {Button::OK, Button::Cancel}};
    if (workbench_.questions.AskBox(box) == Button::OK) {
      ShowRefusal(workbench_, {.text = "Not implemented yet.", .icon = Icon::Exclamation});
    }
    return false;
  }

  bool Help() {
    workbench_.questions.AskBox({.title = "Help for Defining Force Platforms",
                                 .text = "No help available.  Coming soon.",
                                 .icon = Icon::Information});
    return false;
  }

  Workbench& workbench_;
  std::string path_;
  PlateDatabase database_;
  std::int32_t record_ = 0;
  std::optional<ForcePlate> chosen_;
};

}  // namespace

std::optional<ForcePlate> LoadPlate(Workbench& workbench) {
  const std::string path = AskDatabase(workbench, FileQuestion::Mode::Open);
  if (path.empty()) {
    return std::nullopt;
  }
  PlateDatabase database;
  try {
    database = ReadUnderPanel(workbench, path);
  } catch (const FileError& error) {
    ShowFailure(workbench, {.title = kDefinitions,
                            .text = "Error reading file: " + path + "\n\n\"" + error.what() + "\"",
                            .icon = Icon::Exclamation});
    return std::nullopt;
  }
  workbench.plates.Database = path;
  if (database.Records() == 0) {
    TellWrongFormat(workbench);
  }
  PlateListForm form(workbench, path, std::move(database));
  form.Show(workbench);
  return form.Chosen();
}

std::optional<std::string> SavePlate(Workbench& workbench, ForcePlate plate) {
  plate.PlateName = AskPlateName(workbench, plate.PlateName);
  if (plate.PlateName.empty()) {
    return std::nullopt;
  }
  const std::string path = AskDatabase(workbench, FileQuestion::Mode::Save);
  if (path.empty() || !PutIntoFile(workbench, path, plate)) {
    return std::nullopt;
  }
  return plate.PlateName;
}

}  // namespace velmora
