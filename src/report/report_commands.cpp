#include "report/report_commands.hpp"

#include <array>

#include "core/workbench.hpp"
#include "report/report_form.hpp"

namespace velmora {
namespace {

void SaveReport(Workbench& workbench) {
  if (workbench.trial.NData > 0) {
    ShowReportForm(workbench);
  }
}

constexpr std::array kReportCommands = {
    Command{"report.save", "Save &a report", "&File", Needs::Data, SaveReport},
};

}  // namespace

std::span<const Command> ReportCommands() {
  return kReportCommands;
}

}  // namespace velmora
