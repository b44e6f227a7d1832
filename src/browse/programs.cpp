#include "browse/programs.hpp"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>

#include "browse/file_list.hpp"
#include "core/files/paths.hpp"
#include "core/text/text.hpp"

namespace velmora {
namespace {

constexpr std::string_view kExcel = "Excel.exe";
constexpr std::string_view kQuattro = "QPW.exe";

// A name without its directories comes after those with some, which end in it.
constexpr std::array<std::string_view, 6> kViewers = {
    "WINDOWS\\Notepad.exe", "WINNT\\Notepad.exe", "Vista\\Notepad.exe",
    "Notepad.exe",          "Write.exe",          "HexEdit.exe"};
constexpr std::array<std::string_view, 2> kSpreadsheets = {kExcel, kQuattro};

bool IsOneOf(std::string_view extension, std::initializer_list<std::string_view> extensions) {
  return std::find(extensions.begin(), extensions.end(), extension) != extensions.end();
}

std::string WithBackslashes(std::string_view path) {
  std::string text = ToUpper(path);
  std::replace(text.begin(), text.end(), '/', '\\');
  return text;
}

std::vector<std::string> PathsIn(const std::filesystem::path& directory, std::string_view patterns) {
  std::vector<std::string> paths;
  const FileListing listing = ListFiles(directory.string(), patterns);
  for (const ListedFile& file : listing.files) {
    paths.push_back((directory / file.name).string());
  }
  return paths;
}

}  // namespace

std::string& ProgramOf(Preferences& preferences, ProgramKind kind) {
  return kind == ProgramKind::Viewer ? preferences.Viewer : preferences.Spreadsheet;
}

const std::string& ProgramOf(const Preferences& preferences, ProgramKind kind) {
  return kind == ProgramKind::Viewer ? preferences.Viewer : preferences.Spreadsheet;
}

std::span<const std::string_view> KnownPrograms(ProgramKind kind) {
  if (kind == ProgramKind::Viewer) {
    return kViewers;
  }
  return kSpreadsheets;
}

int ProgramRow(ProgramKind kind, std::string_view program) {
  const std::span<const std::string_view> known = KnownPrograms(kind);
  const std::string path = "\\" + WithBackslashes(program);
  const auto it = std::find_if(known.begin(), known.end(), [&path](std::string_view name) {
    return path.ends_with("\\" + WithBackslashes(name));
  });
  return it == known.end() ? -1 : static_cast<int>(it - known.begin());
}

Opening OpeningOf(std::string_view path, const Preferences& preferences) {
  const std::string extension = ToUpper(FileExtension(path));
  Opening opening{.kind = ProgramKind::Spreadsheet};
  if (IsOneOf(extension, {"XLA", "XLS", "XLT", "XML"})) {
    opening.programs = {std::string(kExcel), preferences.Spreadsheet};
  } else if (IsOneOf(extension, {"WB1", "WB2", "WB3", "QPW"})) {
    opening.programs = {std::string(kQuattro), preferences.Spreadsheet};
  } else if (IsOneOf(extension, {"WK1", "WKS"})) {
    opening.programs = {preferences.Spreadsheet};
  } else {
    opening = {.kind = ProgramKind::Viewer, .programs = {preferences.Viewer}};
  }
  return opening;
}

std::vector<std::string> FamilyPrograms(const std::string& directory) {
  std::vector<std::string> paths;
  if (!directory.empty()) {
    paths = PathsIn(directory, "*.*");
    std::erase_if(paths, [](const std::string& path) { return access(path.c_str(), X_OK) != 0; });
  }
  return paths;
}

std::vector<std::string> FamilyManuals(const std::string& directory) {
  return directory.empty() ? std::vector<std::string>{}
                           : PathsIn(std::filesystem::path(directory) / "manuals", "*.pdf");
}

}  // namespace velmora
