#include "core/files/start.hpp"

#include <cstdlib>
#include <filesystem>
#include <string_view>

#include "core/files/file_filters.hpp"
#include "core/files/paths.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/version.hpp"

namespace velmora {
namespace {

constexpr std::string_view kFamily = "Tavorin";
constexpr std::string_view kProgram = "Velmora2";
constexpr std::string_view kSection = "Startup";
constexpr std::string_view kUsualViewer = "Notepad.exe";
constexpr std::string_view kUsualSpreadsheet = "Excel.exe";

std::string CurrentDirectory() {
  std::error_code error;
  return std::filesystem::current_path(error).string();
}

bool IsSeparator(char c) {
  return c == '/' || c == '\\';
}

/// The program's own settings, by key.
class StartSettings {
 public:
  explicit StartSettings(const SettingsStore& store) : store_(store) {}

  [[nodiscard]] std::string Text(std::string_view key, std::string_view otherwise = "") const {
    return store_.Get(kProgram, kSection, key, otherwise);
  }
  [[nodiscard]] bool IsTrue(std::string_view key) const { return EqualNoCase(Text(key), "True"); }
  [[nodiscard]] double Number(std::string_view key, double otherwise) const {
    return Val(Text(key, PlainNumber(otherwise)));
  }
  [[nodiscard]] std::int32_t Whole(std::string_view key, std::int32_t otherwise) const {
    return RoundHalfEven32(Number(key, otherwise));
  }
  /// A row of a list; 0 when there is no such row.
  [[nodiscard]] std::int32_t Row(std::string_view key, std::size_t rows) const {
    const std::int32_t row = Whole(key, 0);
    return row >= 0 && row < static_cast<std::int32_t>(rows) ? row : 0;
  }
  [[nodiscard]] std::string ProgramFile(std::string_view key, std::string_view usual) const {
    std::string file = Text(key, usual);
    return file.empty() || !FileExists("", file) ? std::string(usual) : file;
  }

 private:
  const SettingsStore& store_;
};

std::string TrueFalse(bool value) {
  return value ? "True" : "False";
}

void ReportStore(Workbench& workbench, bool saved) {
  if (!saved) {
    workbench.questions.AskBox(
        {.text = "Could not save settings on this computer's registry.", .icon = Icon::Exclamation});
  }
}

// A file that is there and cannot be opened is to be loaded, too: the load says why it cannot.
bool IsThere(const std::string& name) {
  std::error_code error;
  const std::filesystem::file_type type = std::filesystem::status(name, error).type();
  return type != std::filesystem::file_type::not_found && type != std::filesystem::file_type::directory;
}

}  // namespace

std::string CleanDirectory(std::string directory) {
  if (directory.empty()) {
    return CurrentDirectory() + "/";
  }
  const char first = directory.front();
  if (directory.size() == 1 && ((first >= 'A' && first <= 'Z') || (first >= 'a' && first <= 'z'))) {
    return directory + ":";
  }
  const std::size_t size = directory.size();
  if (size > 1 && IsSeparator(directory[size - 1]) && IsSeparator(directory[size - 2])) {
    directory.pop_back();
  }
  return directory;
}

void ReadStartSettings(Workbench& workbench, const SettingsStore& store) {
  const StartSettings settings(store);
  const std::string current = CurrentDirectory();
  Preferences& preferences = workbench.preferences;
  workbench.StartDir = current;
  preferences.ProgDir = store.Get(kFamily, kSection, "Progdir", "");
  workbench.DataDir = settings.Text("Datadir", current);
  workbench.trial.FileName = settings.Text("Lastfile");
  preferences.TriggerType = settings.Whole("TriggerType", -1);
  preferences.TriggerHigh = settings.Number("TriggerHigh", 1.0);
  preferences.TriggerLow = settings.Number("TriggerLow", -1.0);
  preferences.TriggerChannel = settings.Whole("TriggerChannel", 0);
  preferences.GraphWindowState = settings.Whole("GraphWindowState", 0);
  preferences.FullScreen = settings.IsTrue("FullScreen");
  preferences.Multiaxis = settings.IsTrue("Multiaxis");
  workbench.UserLevel = settings.Number("UserLevel", 0) > 0 ? UserLevelKind::Expert : UserLevelKind::Novice;
  preferences.Viewer = settings.ProgramFile("Viewer", kUsualViewer);
  preferences.Spreadsheet = settings.ProgramFile("Spreadsheet", kUsualSpreadsheet);
  preferences.FileType = settings.Row("FileType", DataFileFilters().size() + 1);  // one more in the list
  preferences.TextType = settings.Row("TextType", TextFileFilters().size());
  if (workbench.DataDir.empty()) {
    workbench.DataDir = store.Get(kFamily, kSection, "Datadir", current);
  }
  const char* family = std::getenv("TAVORIN");
  if (preferences.ProgDir.empty() && family != nullptr) {
    preferences.ProgDir = family;
  }
}

void WriteExitSettings(Workbench& workbench, SettingsStore& store) {
  const Preferences& preferences = workbench.preferences;
  const SettingsStore::Values values = {
      {"Progdir", preferences.ProgDir},
      {"Datadir", workbench.DataDir},
      {"LastFile", workbench.trial.FileName},
      {"FullScreen", TrueFalse(preferences.FullScreen)},
      {"Multiaxis", TrueFalse(preferences.Multiaxis)},
      {"UserLevel", std::to_string(static_cast<int>(workbench.UserLevel))},
      {"FileType", std::to_string(preferences.FileType)},
      {"TextType", std::to_string(preferences.TextType)},
      {"TriggerType", std::to_string(preferences.TriggerType)},
      {"TriggerHigh", PlainNumber(preferences.TriggerHigh)},
      {"TriggerLow", PlainNumber(preferences.TriggerLow)},
      {"TriggerChannel", std::to_string(preferences.TriggerChannel)},
      {"Viewer", preferences.Viewer},
      {"Spreadsheet", preferences.Spreadsheet},
      {"GraphWindowState", std::to_string(preferences.GraphWindowState)},
  };
  ReportStore(workbench, store.Save(kProgram, kSection, values));
}

void SaveLastFile(Workbench& workbench, SettingsStore& store, std::string_view application) {
  ReportStore(workbench,
              store.Save(application, kSection,
                         {{"Datadir", workbench.DataDir}, {"Lastfile", workbench.trial.FileName}}));
}

void TakeCommandLine(Workbench& workbench, const std::vector<std::string>& items) {
  if (items.empty()) {
    return;
  }
  workbench.trial.FileName = items.front();
  const std::string directory = DirectoryOf(items.front());
  if (directory != "./") {
    workbench.DataDir = directory;
  }
}

StartAction FirstAction(const Workbench& workbench) {
  const std::string& name = workbench.trial.FileName;
  if (name.empty() || name == "?") {
    return StartAction::ShowAbout;
  }
  return name != ";" && IsThere(name) ? StartAction::LoadFile : StartAction::Nothing;
}

std::string AboutText() {
  std::string text(kProgram);
  text.append("\nVersion: ").append(VersionText);
  text.append("\n     Biomechanics Data Processing System.");
  text.append("\n     This software is for educational or scientfic purposes.");
  return text;
}

std::string ManualPath(const Workbench& workbench) {
  const std::string& directory = workbench.preferences.ProgDir;
  return directory.empty() ? std::string() : directory + "/manuals/velmora2.pdf";
}

}  // namespace velmora
