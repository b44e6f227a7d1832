#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "core/workbench.hpp"
#include "formats/native_binary/native_binary_layout.hpp"

namespace velmora {

/// A text of the experiment information: how the dialogue has it, and its place in a record of the native
/// binary file.
struct ExperimentText {
  const char* name;
  const char* caption;  // with '&'
  std::string NativeRecords::*record;
  native::TextField field;
};

inline constexpr std::size_t kExperimentTexts = 7 + native::kExperimentLines;

namespace experiment {

constexpr native::TextField Line(std::size_t line) {
  return {line * native::kExperimentLineBytes, native::kExperimentLineBytes};
}

}  // namespace experiment

/// Who was recorded, then the experimenter's lines.
inline constexpr std::array<ExperimentText, kExperimentTexts> kExperiment = {{
    {"txtProject", "&Project name", &NativeRecords::FILMINFO, native::kProject},
    {"txtSurname", "&Surname", &NativeRecords::FILMINFO, native::kSurname},
    {"txtFirstName", "&First name", &NativeRecords::FILMINFO, native::kFirstName},
    {"txtSex", "Se&x", &NativeRecords::FILMINFO, native::kSex},
    {"txtAge", "&Age", &NativeRecords::FILMINFO, native::kAge},
    {"txtCode", "&Code", &NativeRecords::FILMINFO, native::kCode},
    {"txtDate", "&Date", &NativeRecords::FILMINFO, native::kDate},
    {"txtLine1", "Experiment line &1", &NativeRecords::EXPTINFO, experiment::Line(0)},
    {"txtLine2", "Experiment line &2", &NativeRecords::EXPTINFO, experiment::Line(1)},
    {"txtLine3", "Experiment line &3", &NativeRecords::EXPTINFO, experiment::Line(2)},
    {"txtLine4", "Experiment line &4", &NativeRecords::EXPTINFO, experiment::Line(3)},
}};

/// As it was entered, without the blanks that fill its field.
std::string ExperimentTextOf(const NativeRecords& records, const ExperimentText& text);

/// As they were entered; 0: not known.
double SubjectMass(const NativeRecords& records);
double SubjectHeight(const NativeRecords& records);

}  // namespace velmora
