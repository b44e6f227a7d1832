#include "report/report_form.hpp"

#include <new>
#include <optional>
#include <stdexcept>
#include <string>

#include "core/files/paths.hpp"
#include "core/questions/analysis_form.hpp"
#include "core/results/trial_lines.hpp"
#include "core/trial/helpers.hpp"
#include "formats/native_binary/native_binary_layout.hpp"
#include "graph/picture.hpp"
#include "report/report.hpp"
#include "report/report_html.hpp"

namespace velmora {
namespace {

class ReportForm : public AnalysisForm {
 public:
  explicit ReportForm(Workbench& workbench) : AnalysisForm(workbench, "frmReport", "Report") {
    title_ = TitleOnOneLine(workbench.trial);
    parts_.experiment = workbench.trial.FileTypeCode == native::kFileTypeCode;
    AddText("txtTitle", "&Title", title_);
    AddFlag("chkTables", "Last &results", parts_.tables);
    AddFlag("chkGraph", "Open &graph", parts_.graph);
    AddFlag("chkSteps", "&Steps", parts_.steps);
    AddFlag("chkChannels", "&Channels", parts_.channels);
    AddFlag("chkExperiment", "&Experiment information", parts_.experiment).tip =
        "Names of the subject are part of it. It is that of the last .vmb file, or what was entered since.";
    AddChoice("optFormat", "", format_, {"&HTML", "&PDF"});
    AddButtons("Sa&ve");
  }

 private:
  bool Compute() override {
    const std::string extension = format_ == 0 ? ".html" : ".pdf";
    const std::string what = format_ == 0 ? "HTML page" : "PDF document";
    if (!AskSaveName(workbench_,
                     {.title = "Save report",
                      .defaultName = workbench_.trial.TrialName + extension,
                      .extension = extension,
                      .filter = what + " (" + extension + ")|*" + extension + "|All files (*.*)|*.*"})) {
      return false;
    }
    try {
      OutputFile file(workbench_.OutputFileName);
      const std::optional<std::string> bytes = Bytes();
      if (!bytes) {
        return false;
      }
      file.Write(*bytes);
      CommitSave(workbench_, file);
      DidSave(workbench_, "Report saved");
      return true;
    } catch (const FileError& error) {
      ShowSaveFailure(workbench_, error.what());
    } catch (const std::bad_alloc&) {
      throw;
    } catch (const std::runtime_error& error) {
      ShowFailure(workbench_,
                  {.title = "Drawing Not Available", .text = error.what(), .icon = Icon::Exclamation});
    }
    return false;
  }

  // Nothing after Cancel.
  std::optional<std::string> Bytes() {
    const std::optional<Report> report = MakeReport(workbench_, title_, parts_);
    if (!report) {
      return std::nullopt;
    }
    const DesktopServices& desktop = workbench_.desktop;
    const bool html = format_ == 0;
    if (html ? report->picture && !desktop.draw : !desktop.drawDocument) {
      throw std::runtime_error("Pictures and documents cannot be drawn here.");
    }
    if (html) {
      return ReportHtml(*report, report->picture ? desktop.draw(*report->picture) : "");
    }
    return desktop.drawDocument({.html = ReportPages(*report),
                                 .picture = report->picture ? &*report->picture : nullptr,
                                 .title = title_,
                                 .time = report->time});
  }

  std::string title_;
  ReportParts parts_;
  std::int32_t format_ = 0;
};

}  // namespace

void ShowReportForm(Workbench& workbench) {
  ReportForm(workbench).Ask();
}

}  // namespace velmora
