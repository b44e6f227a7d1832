#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/questions/form.hpp"
#include "core/trial/helpers.hpp"
#include "core/workbench.hpp"

// The text files of results: how they were made, then their tables with all digits.
namespace velmora {

/// A parameter in force as a file tells it: by the name that a recipe sets it by, with the words of the
/// dialogue behind it.
struct ResultParameter {
  std::string name;
  std::string value;
  std::string caption;
};

/// All fields of a dialogue that somebody may set, in its order: choices in words, channels by number and
/// label. Fields that do not apply as the others are now are left out.
std::vector<ResultParameter> ParametersOf(const Trial& trial, const Form& form);

/// Which file a view saves: what it is called ("Integrated EMG") and its extension (".iem").
struct ResultFileKind {
  std::string what;
  std::string extension;
};

/// What stands above the tables of a file, behind the lines of the trial.
struct ResultHead {
  std::optional<SampleRange> range;
  std::vector<ResultParameter> parameters;
};

/// Tab-separated text, lines ended CR LF: the trial, "Range:", one line a parameter, and each table behind
/// an empty line. Numbers have all their digits, empty cells are empty.
std::string ResultFileText(const Workbench& workbench, const ResultHead& head,
                           std::span<const ResultTable> tables);

/// "Save as .IEM file": asks for a name, offering the trial's, and writes the file. Returns the path; empty
/// after Cancel, or after a failure, which ends a recipe's step.
std::string SaveResultFile(Workbench& workbench, const ResultFileKind& kind, const ResultHead& head,
                           std::span<const ResultTable> tables);

}  // namespace velmora
