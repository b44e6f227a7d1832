#include "import/reader_table.hpp"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "core/trial/helpers.hpp"
#include "formats/amti/bsf_reader.hpp"
#include "formats/bioware/bioware2_reader.hpp"
#include "formats/bioware/bioware_archive_reader.hpp"
#include "formats/c3d/c3d_reader.hpp"
#include "formats/delimited_text/text_parser.hpp"
#include "formats/delsys/delsys_emg_reader.hpp"
#include "formats/edf/edf_reader.hpp"
#include "formats/fourier/fourier_file_reader.hpp"
#include "formats/hdf5/hdf5_reader.hpp"
#include "formats/lvm/lvm.hpp"
#include "formats/matlab/mat_reader.hpp"
#include "formats/motion_analysis/anb_reader.hpp"
#include "formats/motion_analysis/anc_reader.hpp"
#include "formats/native_ascii/native_ascii_reader.hpp"
#include "formats/native_binary/native_binary_reader.hpp"
#include "formats/opensim/opensim_text.hpp"
#include "formats/tdms/tdms_reader.hpp"
#include "formats/trc/trc_text.hpp"
#include "formats/vi_logger/vi_logger.hpp"
#include "formats/vicon_text/vicon_text.hpp"
#include "formats/wav/wav_reader.hpp"
#include "import/detect_text_format.hpp"
#include "import/load_questions.hpp"
#include "import/read_recording.hpp"
#include "import/text_formats.hpp"

namespace velmora {
namespace {

// UTF-8 texts may start with a mark.
std::string_view WithoutMark(std::string_view head) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  return head.starts_with(kMark) ? head.substr(kMark.size()) : head;
}
bool NamesLabView(std::string_view head) {
  return WithoutMark(head).starts_with("LabVIEW Measurement");
}
bool StartsWithPathFileType(std::string_view head) {
  return WithoutMark(head).starts_with("PathFileType");
}
bool StartsWithMatlab5(std::string_view head) {
  return head.starts_with("MATLAB 5.0 MAT-file");
}
bool StartsWithHdf5(std::string_view head) {
  return head.starts_with("\x89HDF\r\n\x1a\n");
}
bool StartsWithTdsm(std::string_view head) {
  return head.starts_with("TDSm");
}
bool HoldsEndHeader(std::string_view head) {
  return head.find("endheader") != std::string_view::npos;
}

bool StartsWithTilde(std::string_view head) {
  return head.starts_with('~');
}
bool StartsWithVelmora(std::string_view head) {
  return head.starts_with("Velmora");
}
bool StartsWithBioWare(std::string_view head) {
  return head.starts_with("BioWare 2");
}
// Later versions of the program write an archive of objects, the first of them a plate.
bool NamesBioWarePlate(std::string_view head) {
  return head.starts_with(std::string_view("\2\0\0\0", 4)) &&
         head.find("CPlateEight") != std::string_view::npos;
}
// Its binary files have a version behind the word, texts a letter or a blank.
bool IsDelsysText(std::string_view head) {
  constexpr std::size_t version = 4;
  return head.starts_with("Label:") ||
         (head.starts_with("DEMG") && head.size() > version && head[version] >= ' ');
}
bool HasC3dHead(std::string_view head) {
  head.remove_prefix(std::min(head.find_first_not_of('\0'), head.size()));
  constexpr std::size_t numbers = 24;  // at the start; no text has zeros among them
  return head.size() > numbers && head[0] > 0 && head[1] == 'P' &&
         head.substr(0, numbers).find('\0') != std::string_view::npos;
}
bool HasEdfHead(std::string_view head) {
  return head.starts_with("0       ") || head.starts_with(
                                             "\xFF"
                                             "BIOSEMI");
}
bool HasWavHead(std::string_view head) {
  const std::string_view magic = head.substr(0, 4);
  return (magic == "RIFF" || magic == "RIFX" || magic == "RF64") &&
         head.substr(std::min<std::size_t>(8, head.size())).starts_with("WAVE");
}
bool HasAnbHead(std::string_view head) {
  return head.starts_with(std::string_view("\0\0\0\0\0\x80\1\0", 8));
}
bool HasBsfHead(std::string_view head) {
  return head.size() > 8 && (head[0] == 'd' || head[0] == 'i') &&
         head.substr(1).starts_with(std::string_view("\0\0\0\xC8\3\0\0", 7));
}
bool HasDelsysHead(std::string_view head) {
  return head.size() > 6 && head.starts_with("DEMG") && head[4] > 0 && head[4] < 5 && head[5] == 0;
}
// The recorder's texts begin with the name of their file and travel under our extensions too.
bool StartsWithFi(std::string_view head) {
  return head.starts_with("Fi");
}
// A text may name the maker as well: the recordings themselves are binary.
bool NamesOptotrak(std::string_view head) {
  const bool binary = std::any_of(head.begin(), head.end(), [](char c) {
    return c >= 0 && c < ' ' && c != '\t' && c != '\r' && c != '\n';
  });
  return binary && head.find("OPTOTRAK") != std::string_view::npos;
}

// The reader of a format that carries how its trial was last looked at.
template <void (*read)(Workbench&, ProgressPanel&)>
void WithViewFlags(Workbench& workbench, ProgressPanel& panel) {
  read(workbench, panel);
  if (workbench.trial.NData > 0) {
    ApplyViewFlags(workbench);
  }
}

// A format that nobody can read but by guessing.
constexpr Format NotPublic(int code, std::string_view extensions, std::string_view name,
                           std::string_view wayRound, bool (*recognise)(std::string_view) = nullptr) {
  return {.code = code, .extensions = extensions, .name = name, .recognise = recognise, .wayRound = wayRound};
}

constexpr std::string_view kSaveAsAscii =
    "Open the trial with the program that wrote it and save it as Velmora ASCII (.VMA) or text (.TXT).";
constexpr std::string_view kPdtWay = "Export the data with their rate, or as plain columns of text (.TXT).";
constexpr std::string_view kMegaWay =
    "Export the data as plain columns of text (.TXT) from the program that recorded them.";

// A reader is a function here, or `.open` for a file of channels.
constexpr std::array kFormats = {
    Format{.code = 9,
           .extensions = "ANA",
           .name = "APAS analog",
           .recognise = StartsWithTilde,
           .wayRound = "Export the trial as ASCII from APAS and give the file the extension .TXT.",
           .whyNot = "What is published of their layout does not tell how the trials in them are stored"},
    NotPublic(40, "ANA", "Motion Analysis compressed ASCII analog",
              "Export the trial as .ANC or C3D from the program that recorded it."),
    Format{.code = 41,
           .extensions = "ANB",
           .name = "Motion Analysis binary analog",
           .open = OpenAnb,
           .signature = HasAnbHead},
    Format{18, "ASG", "F-Scan ASCII", ReadFScan},
    Format{15, "FIL", "Hybrid III ASCII", ParseTextFile},
    Format{15, "ASC ANC TAB CSV FSV TSV PRN TXT PDT V3D OUT", "delimited text", DetectTextFormat},
    Format{17, "BB", "BioBench binary", AskParseBioBench, nullptr, true},
    NotPublic(16, "BBT", "BioBench ASCII", "Export the data as plain columns of text (.TXT) from BioBench."),
    Format{90, "P2D", "Visual3D P2D", ReadP2d},
    NotPublic(1, "BIN", "Velmora1 binary analog", kSaveAsAscii, StartsWithVelmora),
    NotPublic(255, "BIN", "Rodex1 binary analog", kSaveAsAscii),
    Format{253, "VMB", "Velmora2 binary analog", WithViewFlags<ReadNativeBinary>},
    NotPublic(12, "VMA VME", "Mega ASCII", kMegaWay, StartsWithFi),
    Format{0, "VMA VME", "Velmora ASCII", WithViewFlags<ReadNativeAscii>},
    NotPublic(13, "CHA CHB CHE CHT CHX", "Kin-Com",
              "Export the data as plain columns of text (.TXT) from the Kin-Com program."),
    Format{.code = 19, .extensions = "C3D", .name = "C3D analog", .open = OpenC3d, .signature = HasC3dHead},
    Format{-1, "DAF", "DAFF", TellDaff, nullptr, true},
    Format{.code = 6,
           .extensions = "191 DAT",
           .name = "BioWare 2",
           .recognise = StartsWithBioWare,
           .open = OpenBioWare2},
    Format{.code = 302,
           .extensions = "191 DAT",
           .name = "BioWare",
           .recognise = NamesBioWarePlate,
           .open = OpenBioWareArchive},
    Format{-1, "191 DAT", "Optotrak", TellOptotrak, NamesOptotrak, true},
    Format{-1, "191 DAT", "unknown", AskParseUnknownContents, nullptr, true},
    Format{.code = 6, .extensions = "D20", .name = "BioWare 2", .open = OpenBioWare2},
    Format{
        .code = 22, .extensions = "REC EDF HYP BDF", .name = "EDF", .open = OpenEdf, .signature = HasEdfHead},
    Format{-1, "EMT", "Delsys .EMT", TellDelsysEmt, nullptr, true},
    // By their first lines; the row of the code comes before that of the extension, which leads here.
    Format{62, "", "Delsys ASCII EMG data", ReadDelsysText},
    Format{63, "", "Delsys ASCII EMG data", ReadDelsysText},
    Format{62, "EMG", "Delsys text", DetectTextFormat, IsDelsysText},
    Format{.code = 60,
           .extensions = "EMG",
           .name = "DelSys EMG",
           .open = OpenDelsysEmg,
           .signature = HasDelsysHead},
    Format{8, "FTF", "Fourier transform", ReadFourierFile},
    Format{
        .code = 301, .extensions = "BSF", .name = "AMTI NetForce", .open = OpenBsf, .signature = HasBsfHead},
    NotPublic(32, "LOG", "DataLink binary goniometer",
              "Export the data as text (.TXT) or .CSV from the DataLink program."),
    NotPublic(12, "MEG", "Mega ASCII", kMegaWay),
    NotPublic(21, "STM", "Stimo", "Export the data as text (.TXT) from the program that recorded them."),
    NotPublic(50, "VAD", "Vicon analog",
              "Open the trial in the program that made it and export C3D or text (.CSV)."),
    NotPublic(
        5, "RF RF1 RF2", "Reduced Forces ASCII",
        "Load the raw trial and reduce its forces here, or save it as text (.TXT) with the program that "
        "wrote it."),
    NotPublic(255, "STP", "Rodex1 binary analog", kSaveAsAscii),
    NotPublic(100, "FR AV KM KS RA EN MM FO JP PJ PS", "Tavorin binary", kSaveAsAscii),
    Format{.code = 24, .extensions = "WAV", .name = "Audio Wave", .open = OpenWav, .signature = HasWavHead},
    // Found by their first lines, whatever the extension.
    Format{.code = 42, .extensions = "", .name = "Motion Analysis ASCII analog", .open = OpenAnc},
    Format{.code = 23, .extensions = "", .name = "PDT ASCII", .read = ReadPdt, .wayRound = kPdtWay},
    Format{51, "", "Vicon comma-separated variables", ReadTable<OpenViconText>},
    Format{80, "", "NI VI Logger ASCII", ReadTable<OpenViLogger>},
    // Not among the formats that were given; they take no extension and no first line from one of those.
    Format{.code = 310,
           .extensions = "MOT STO",
           .name = "OpenSim",
           .recognise = HoldsEndHeader,
           .open = OpenOpenSim},
    Format{.code = 311,
           .extensions = "LVM",
           .name = "LabVIEW measurement",
           .recognise = NamesLabView,
           .open = OpenLvm,
           .signature = NamesLabView},
    Format{.code = 312,
           .extensions = "TRC",
           .name = "Motion Analysis markers",
           .recognise = StartsWithPathFileType,
           .open = OpenTrc,
           .signature = StartsWithPathFileType},
    Format{.code = 313,
           .extensions = "TDMS",
           .name = "LabVIEW TDMS",
           .recognise = StartsWithTdsm,
           .open = OpenTdms,
           .signature = StartsWithTdsm},
    Format{
        .code = 314, .extensions = "MAT", .name = "MATLAB", .open = OpenMat, .signature = StartsWithMatlab5},
    Format{
        .code = 315, .extensions = "H5 HDF5", .name = "HDF5", .open = OpenHdf5, .signature = StartsWithHdf5},
};

bool HasExtension(const Format& format, std::string_view extension) {
  for (std::string_view rest = format.extensions; !rest.empty();) {
    const std::size_t end = std::min(rest.find(' '), rest.size());
    if (rest.substr(0, end) == extension) {
      return true;
    }
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return false;
}

}  // namespace

std::span<const Format> Formats() {
  return kFormats;
}

const Format* FindFormat(std::string_view extension, std::string_view head) {
  const auto* it = std::find_if(kFormats.begin(), kFormats.end(), [extension, head](const Format& format) {
    return HasExtension(format, extension) && (format.recognise == nullptr || format.recognise(head));
  });
  if (it == kFormats.end()) {
    it = std::find_if(kFormats.begin(), kFormats.end(), [head](const Format& format) {
      return format.signature != nullptr && format.signature(head);
    });
  }
  return it == kFormats.end() ? nullptr : &*it;
}

const Format& FormatOfCode(int code) {
  const auto* it = std::find_if(kFormats.begin(), kFormats.end(),
                                [code](const Format& format) { return format.code == code; });
  if (it == kFormats.end()) {
    throw std::logic_error("no format has code " + std::to_string(code));
  }
  return *it;
}

void ReadFormat(Workbench& workbench, ProgressPanel& panel, const Format& format) {
  if (format.open != nullptr) {
    workbench.trial.FileTypeCode = static_cast<std::int16_t>(format.code);
    ReadRecording(workbench, panel, format.name, format.open);
    return;
  }
  if (format.read != nullptr) {
    format.read(workbench, panel);
    return;
  }
  AskParseUnpublished(workbench, panel, format);
}

}  // namespace velmora
