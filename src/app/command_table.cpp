#include "app/command_table.hpp"

#include <algorithm>
#include <exception>
#include <new>
#include <span>
#include <string>
#include <utility>

#include "browse/file_commands.hpp"
#include "channels/channel_commands.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "data/data_commands.hpp"
#include "dsp/bias/bias_commands.hpp"
#include "dsp/design/design_commands.hpp"
#include "dsp/filters/filter_commands.hpp"
#include "dsp/math/math_commands.hpp"
#include "dsp/smoothing/smooth_commands.hpp"
#include "dsp/time_base/time_base_commands.hpp"
#include "edit/edit_commands.hpp"
#include "emg/emg_commands.hpp"
#include "ensemble/ensemble_commands.hpp"
#include "export/export_commands.hpp"
#include "forceplate/plate_commands.hpp"
#include "graph/crop_commands.hpp"
#include "graph/graph_commands.hpp"
#include "graph/look_commands.hpp"
#include "graph/multi/multi_commands.hpp"
#include "graph/multi/multi_events.hpp"
#include "graph/multi/multi_thresholds.hpp"
#include "graph/multi/multi_values.hpp"
#include "graph/xy/xy_commands.hpp"
#include "impact/impact_commands.hpp"
#include "import/import_commands.hpp"
#include "report/report_commands.hpp"
#include "spectra/spectra_commands.hpp"
#include "statistics/statistics_commands.hpp"
#include "trigger/trigger_commands.hpp"

namespace velmora {
namespace {

std::vector<Command> Assemble() {
  std::vector<Command> all;
  for (const std::span<const Command> folder :
       {ImportCommands(),    FileCommands(),    ExportCommands(),  EditCommands(),       ChannelCommands(),
        MathCommands(),      FilterCommands(),  DesignCommands(),  SmoothCommands(),     BiasCommands(),
        TimeBaseCommands(),  SpectraCommands(), EmgCommands(),     PlateCommands(),      ImpactCommands(),
        GraphCommands(),     MultiCommands(),   LookCommands(),    ValueCommands(),      EventCommands(),
        ThresholdCommands(), CropCommands(),    TriggerCommands(), StatisticsCommands(), EnsembleCommands(),
        DataCommands(),      XYCommands(),      ReportCommands()}) {
    all.insert(all.end(), folder.begin(), folder.end());
  }
  return all;
}

/// A view that is open shows the trial as a command outside it leaves it, however that ends.
class ViewRefresh {
 public:
  ViewRefresh(Workbench& workbench, const Command& command)
      : workbench_(workbench), before_(command.needs == Needs::View ? nullptr : workbench.view.get()) {}
  ViewRefresh(const ViewRefresh&) = delete;
  ViewRefresh& operator=(const ViewRefresh&) = delete;
  ~ViewRefresh() {
    if (before_ == nullptr || before_ != workbench_.view.get()) {
      return;
    }
    try {
      if (before_->TrialChanged()) {
        return;
      }
    } catch (...) {  // NOLINT: there is no memory left to draw it; the trial is as it should be
    }
    workbench_.view.reset();
  }

 private:
  Workbench& workbench_;
  OpenView* before_;
};

void RunById(Workbench& workbench, std::string_view id) {
  if (const Command* command = FindCommand(id)) {
    RunCommand(workbench, *command);
  }
}

}  // namespace

const std::vector<Command>& AllCommands() {
  static const std::vector<Command> all = Assemble();
  return all;
}

const Command* FindCommand(std::string_view id) {
  const auto it = std::find_if(AllCommands().begin(), AllCommands().end(),
                               [id](const Command& command) { return command.id == id; });
  return it == AllCommands().end() ? nullptr : &*it;
}

void RunCommand(Workbench& workbench, const Command& command) {
  std::string fault;
  const ActionScope action(workbench.listener, &command);
  const ViewRefresh refresh(workbench, command);
  workbench.NextCommand = {};
  workbench.chooser.ClearModes();  // those of a command that was left before its picker
  workbench.RunById = RunById;
  try {
    command.run(workbench);
    RunById(workbench, std::exchange(workbench.NextCommand, {}));
    return;
  } catch (const CommandAbandoned&) {
    throw;
  } catch (const std::bad_alloc&) {
    fault = "There is not enough memory.";
  } catch (const std::exception& error) {
    fault = error.what();
  }
  ShowFailure(workbench, {.title = WithoutMnemonic(command.caption), .text = fault, .icon = Icon::Stop});
}

}  // namespace velmora
