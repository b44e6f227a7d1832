#include "ui/dialogs/asking_dialog.hpp"

#include <QCloseEvent>
#include <QLineEdit>

#include "ui/dialogs/beside_graph.hpp"
#include "ui/screen_room.hpp"

namespace velmora::ui {

AskingDialog::AskingDialog(QWidget* parent) : QDialog(parent) {
  setWindowModality(Qt::ApplicationModal);
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
}

void AskingDialog::StandBeside(QWidget* graph) {
  graph_ = graph->window();
  setWindowModality(Qt::NonModal);
  new BesideGraph(this);
}

std::string AskingDialog::Ask() {
  Refresh();
  if (focusWidget() == nullptr) {
    FocusFirst();
  }
  pressed_ = cancelCaption_;
  if (!isVisible()) {
    if (graph_ != nullptr) {
      PlaceBeside(*this, *graph_);
    } else {
      PlaceOver(*this, parentWidget() != nullptr ? *parentWidget() : *this);
    }
    show();
    Shown();
  }
  activateWindow();
  loop_.exec();
  return pressed_;
}

// What is offered is selected, so that typing replaces it.
void AskingDialog::FocusFirst() {
  QWidget* first = nextInFocusChain();
  while (first != this && !((first->focusPolicy() & Qt::TabFocus) != 0 && first->isEnabledTo(this) &&
                            first->isVisibleTo(this) && first->focusProxy() == nullptr)) {
    first = first->nextInFocusChain();
  }
  first->setFocus(Qt::TabFocusReason);
  if (auto* line = qobject_cast<QLineEdit*>(first)) {
    line->selectAll();
  }
}

void AskingDialog::Press(const std::string& caption) {
  if (!loop_.isRunning()) {
    return;  // a second click while the first one is at work
  }
  pressed_ = caption;
  loop_.quit();
}

void AskingDialog::reject() {
  Press(cancelCaption_);
}

// The window goes when whoever asks says so.
void AskingDialog::closeEvent(QCloseEvent* event) {
  event->ignore();
  reject();
}

}  // namespace velmora::ui
