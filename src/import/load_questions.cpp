#include "import/load_questions.hpp"

#include "core/helpers.hpp"
#include "import/detect_text_format.hpp"
#include "import/text_parser/text_parser.hpp"

namespace velmora {
namespace {

constexpr const char* kTryParsing =
    "\n\nIf the file is a text or ASCII file do you want to try parsing the file?";

bool SaysYes(Workbench& workbench, const std::string& title, const std::string& text) {
  workbench.trial.DiscardData();
  return workbench.questions.AskBox({.title = title,
                                     .text = text + kTryParsing,
                                     .icon = Icon::Question,
                                     .buttons = {Button::Yes, Button::No}}) == Button::Yes;
}

void Tell(Workbench& workbench, const Box& box) {
  workbench.trial.DiscardData();
  ShowFailure(workbench, box);
}

}  // namespace

void AskParseBioBench(Workbench& workbench, ProgressPanel& panel) {
  workbench.trial.FileTypeCode = 17;
  if (SaysYes(workbench, "Unsupported File Format",
              "BioBench (.BB) file format is not implemented in Velmora2.\n\nUse BioBench to read and "
              "convert the file to text format (use extension .BBT).")) {
    ParseTextFile(workbench, panel);
  }
}

void AskParseUnknownContents(Workbench& workbench, ProgressPanel& panel) {
  const Trial& trial = workbench.trial;
  if (SaysYes(
          workbench, "Unknown File Format",
          "File contents not recognized.  Filename was: '" + trial.TrialName + "." + trial.FileExt + "'.")) {
    ParseTextFile(workbench, panel);
  }
}

void AskParseUnknownExtension(Workbench& workbench, ProgressPanel& panel) {
  if (SaysYes(workbench, "Filetype Unrecognized",
              "File extension, '" + workbench.trial.FileExt + "', was unrecognized.")) {
    DetectTextFormat(workbench, panel);
  }
}

// The program named here does not exist on this system, so both buttons end the load.
void TellDaff(Workbench& workbench, ProgressPanel& /*panel*/) {
  Tell(workbench, {.title = "Filetype Not Implemented",
                   .text = "DAFF file format is not implemented in Velmora2.\n"
                           "Use Velmora1 to read such files and then save them in either .VMA or .BIN "
                           "formats.\nPress OK to open file with Velmora1 or press Cancel.",
                   .icon = Icon::Exclamation,
                   .buttons = {Button::OK, Button::Cancel}});
}

void TellOptotrak(Workbench& workbench, ProgressPanel& /*panel*/) {
  Tell(workbench, {.title = "File Format Not Supported",
                   .text = "Optotrak file formats are not supported.",
                   .icon = Icon::Exclamation});
}

void TellDelsysEmt(Workbench& workbench, ProgressPanel& /*panel*/) {
  Tell(workbench, {.title = "Cannot read this filetype",
                   .text = "Cannot read Delsys .EMT file format.",
                   .icon = Icon::Exclamation});
}

}  // namespace velmora
