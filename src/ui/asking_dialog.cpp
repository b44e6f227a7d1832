#include "ui/asking_dialog.hpp"

#include <QCloseEvent>

namespace velmora::ui {

AskingDialog::AskingDialog(QWidget* parent) : QDialog(parent) {
  setWindowModality(Qt::ApplicationModal);
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
}

std::string AskingDialog::Ask() {
  Refresh();
  pressed_ = cancelCaption_;
  setEnabled(true);
  show();
  activateWindow();
  loop_.exec();
  return pressed_;
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
