#pragma once

#include <array>
#include <string_view>

#include "core/command.hpp"
#include "core/questions/progress.hpp"
#include "core/workbench.hpp"
#include "dsp/bias/bias_file.hpp"
#include "export/save_data.hpp"
#include "export/save_refusals.hpp"
#include "formats/bioware/bioware2_writer.hpp"
#include "formats/c3d/c3d_writer.hpp"
#include "formats/delimited_text/delimited_text_writer.hpp"
#include "formats/fsv/fsv_writer.hpp"
#include "formats/native_ascii/native_ascii_writer.hpp"
#include "formats/native_binary/native_binary_writer.hpp"
#include "formats/units_file/units_file_writer.hpp"
#include "formats/worksheet/worksheet_writer.hpp"

namespace velmora {

/// One row per format that can be saved.
struct SaveEntry {
  SaveFormat format;
  std::string_view id;  // of its command
  std::string_view caption;
  /// Empty in a format that nobody can write.
  void (*write)(Workbench&, ProgressPanel&) = nullptr;
  /// Whether the format cannot take this trial; has said so then.
  bool (*refuses)(Workbench&) = nullptr;
  Needs needs = Needs::Data;
  /// Why it is greyed; may be missing.
  const char* (*whyNot)(const Workbench&) = nullptr;
};

/// The save list, in menu order: the row of a format is its number.
inline constexpr std::array kSaveList = {
    SaveEntry{SaveFormat::NativeAscii, "save.vma", "&Velmora ASCII (.VMA)", WriteNativeAscii},
    SaveEntry{SaveFormat::BioWare, "save.dat", "Bio&Ware 2 Format (.DAT)", WriteBioWare2, BioWareRefuses,
              Needs::Data, WhyNotOfForces},
    SaveEntry{SaveFormat::CommaSeparated, "save.csv", "&Comma Separated Variable (.CSV)",
              WriteCommaSeparated},
    SaveEntry{SaveFormat::LotusWorksheet, "save.wks", "&Lotus Worksheet (.WK1/.WKS)", WriteWorksheet,
              WorksheetRefuses},
    SaveEntry{SaveFormat::Velmora1Binary, "save.bin", "Vel&mora1 Binary (.BIN)", nullptr,
              Velmora1BinaryRefuses},
    SaveEntry{SaveFormat::ReducedForces, "save.rf", "&Reduced Forces Format (.RF)", nullptr,
              ReducedForcesRefuses},
    SaveEntry{SaveFormat::SpaceDelimited, "save.prn", "&Space Delimited ASCII File (.PRN)",
              WriteSpaceDelimited},
    SaveEntry{SaveFormat::TabDelimited, "save.tab", "&Tab Delimited ASCII File (.TAB)", WriteTabDelimited},
    SaveEntry{SaveFormat::BiasValues, "save.bsv", "Sa&ve Bias Values (.BSV)",
              [](Workbench& workbench, ProgressPanel& /*panel*/) { WriteBiasFile(workbench); }},
    SaveEntry{SaveFormat::NativeBinary, "save.vmb", "Velmora&2 Binary (.VMB) (default)", WriteNativeBinary},
    SaveEntry{SaveFormat::C3d, "save.c3d", "C&3D format (.C3D)", WriteC3d},
    SaveEntry{SaveFormat::UnitsFile, "save.vmu", "&Units, labels && factors (.VMU)", WriteUnitsFile,
              UnitsFileRefuses, Needs::Data, WhyNotOfForces},
    SaveEntry{SaveFormat::Visual3d, "save.fsv", "Visual&3D FSV format (.FSV/.TSV)", WriteFsv},
    SaveEntry{SaveFormat::ViconAnalog, "save.vad", "Save &Vicon AD file (.VAD)"},
};

}  // namespace velmora
