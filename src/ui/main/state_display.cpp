#include "ui/main/state_display.hpp"

#include <QLabel>
#include <QMainWindow>
#include <QStatusBar>

#include "core/version.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

// Some window managers make a window as wide as its title: the ends of a path tell most.
QString Shortened(const QString& path) {
  constexpr qsizetype kLongestPath = 100;
  constexpr qsizetype kStart = 40;
  return path.size() <= kLongestPath
             ? path
             : path.left(kStart) + QStringLiteral("…") + path.right(kLongestPath - kStart - 1);
}

}  // namespace

StateDisplay::StateDisplay(QMainWindow* window) : window_(window), modified_(new QLabel), level_(new QLabel) {
  auto* version = new QLabel(QStringLiteral("Version: ") + ToQt(VersionText));
  for (QLabel* panel : {modified_, level_, version}) {
    panel->setContentsMargins(8, 0, 8, 0);
    window_->statusBar()->addPermanentWidget(panel);
  }
  window_->statusBar()->setSizeGripEnabled(false);
}

void StateDisplay::Show(const Workbench& workbench) {
  const bool loaded = workbench.trial.NData > 0;
  const bool modified = loaded && workbench.trial.FileChanged;
  modified_->setText(modified ? QStringLiteral("Modified") : QString());
  level_->setText(workbench.UserLevel == UserLevelKind::Expert ? QStringLiteral("Expert")
                                                               : QStringLiteral("Novice"));
  window_->setWindowTitle(loaded ? ToQt(workbench.ExeName + "    Current file is: ") +
                                       Shortened(ToQt(workbench.LoadedFile)) + QStringLiteral("[*]")
                                 : QStringLiteral("Velmora2"));
  window_->setWindowModified(modified);
}

}  // namespace velmora::ui
