#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/preferences.hpp"

namespace velmora {

/// What a program outside this one is wanted for.
enum class ProgramKind { Viewer, Spreadsheet };

/// The preference that names the program of a kind.
std::string& ProgramOf(Preferences& preferences, ProgramKind kind);
const std::string& ProgramOf(const Preferences& preferences, ProgramKind kind);

/// The programs that are always offered, as they are stored; in menu order.
std::span<const std::string_view> KnownPrograms(ProgramKind kind);

/// The row of KnownPrograms that a stored program is, wherever it lies and in letters of either case; -1
/// when it is another one.
int ProgramRow(ProgramKind kind, std::string_view program);

/// Which program is to open a file of the text list.
struct Opening {
  ProgramKind kind = ProgramKind::Viewer;
  std::vector<std::string> programs;  // the first that is there
};

/// Workbooks go to a spreadsheet, some of them to one by name, and to the configured one where there is
/// none of that name; everything else, tables included, goes to the viewer.
Opening OpeningOf(std::string_view path, const Preferences& preferences);

/// The programs and the manuals of the family, as full paths by name; `directory` is
/// Preferences::ProgDir, and empty means that there are none.
std::vector<std::string> FamilyPrograms(const std::string& directory);
std::vector<std::string> FamilyManuals(const std::string& directory);

}  // namespace velmora
