#include "ui/main/command_runner.hpp"

#include "app/command_table.hpp"
#include "core/trial/helpers.hpp"
#include "ui/graph/view_window.hpp"

namespace velmora::ui {

CommandRunner::CommandRunner(Workbench& workbench, QtQuestions& person, QWidget* window)
    : workbench_(workbench), person_(person), window_(window), channelWindows_(workbench, window) {
  workbench_.onShowChannel = [this](int channel) { ShowChannel(channel); };
}

CommandRunner::~CommandRunner() {
  CloseGraph();
}

bool CommandRunner::Run(const Command& command) {
  if (Busy()) {
    return false;
  }
  if (selectedChannels && command.needs != Needs::View) {  // a view has channels of its own
    person_.OfferChannels(selectedChannels());
  }
  Do([this, &command] { RunCommand(workbench_, command); });
  person_.OfferChannels({});
  const bool graphWanted = person_.TakeGraphWanted();
  if (graphWanted) {
    OpenGraph();
  }
  return graphWanted;
}

bool CommandRunner::Run(std::string_view id) {
  return Run(*FindCommand(id));
}

void CommandRunner::Do(const std::function<void()>& work) {
  if (Busy()) {
    return;
  }
  ++running_;
  if (graph_ != nullptr) {
    graph_->Rest();
  }
  work();
  --running_;
  ShowView();
}

void CommandRunner::OpenGraph() {
  const bool multi = workbench_.preferences.Multiaxis && FindCommand("graph.multi") != nullptr;
  Run(multi ? "graph.multi" : "graph.single");
}

// The view that a command opened gets its window here; it goes when the view goes, or one of another kind
// comes.
void CommandRunner::ShowView() {
  if (graph_ != nullptr && workbench_.view != nullptr && !graph_->Fits()) {
    graph_->Rest();
    graph_->hide();
    graph_->deleteLater();
    graph_.clear();
  }
  if (graph_ != nullptr) {
    graph_->Refresh();
    if (workbench_.view == nullptr) {
      graph_.clear();  // it has closed and goes by itself
    } else if (!graph_->isVisible()) {
      graph_->ShowGraph();
    }
  } else if (workbench_.view != nullptr) {
    graph_ = MakeViewWindow(
        workbench_, [this](const Command& command) { Run(command); }, window_);
    graph_->ShowGraph();
  }
}

void CommandRunner::CloseGraph() {
  delete graph_;
  workbench_.view.reset();
}

void CommandRunner::HideGraph() {
  if (graph_ != nullptr) {
    graph_->Rest();
    graph_->hide();
  }
}

void CommandRunner::CloseViews() {
  CloseView(workbench_);
  CloseGraph();
  channelWindows_.CloseAll();
}

}  // namespace velmora::ui
