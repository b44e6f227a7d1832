#include <QActionGroup>
#include <QApplication>
#include <QDockWidget>
#include <QFileInfo>
#include <QToolBar>

#include "browse/list_filters.hpp"
#include "core/files/file_filters.hpp"
#include "core/files/start.hpp"
#include "core/text/text.hpp"
#include "ui/browser/browser_panel.hpp"
#include "ui/main/about_dialog.hpp"
#include "ui/main/icons.hpp"
#include "ui/main/main_window.hpp"
#include "ui/recipes/recipe_dialog.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

constexpr int kLongestName = 400;  // pixels, in a menu

}  // namespace

QAction* MainWindow::AddTool(QToolBar* bar, std::string_view id, int glyph, const QString& text) {
  QAction* action = menus_->Of(id);
  action->setIcon(IconOf(static_cast<Glyph>(glyph)));
  action->setIconText(text);
  const QString keys = action->shortcut().toString(QKeySequence::NativeText);
  const QString plain = action->statusTip().section(QStringLiteral("   ("), 0, 0);
  action->setToolTip(keys.isEmpty() ? plain : plain + QStringLiteral("  ") + keys);
  action->setIconVisibleInMenu(false);
  bar->addAction(action);
  return action;
}

void MainWindow::AddBars() {
  AddOpenEntry();
  AddRecentMenu();
  AddRecipeEntry();
  AddViewOptions();
  AddOptionsMenu();
  AddFamilyMenus();
  AddHelpMenu();
  AddToolBar();
}

void MainWindow::AddToolBar() {
  QToolBar* bar = addToolBar(tr("Tools"));
  bar->setObjectName(QStringLiteral("toolBar"));
  bar->setMovable(false);
  bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  bar->setIconSize({18, 18});
  const auto add = [this, bar](std::string_view id, Glyph glyph, const QString& text) {
    return AddTool(bar, id, static_cast<int>(glyph), text);
  };
  add("file.load", Glyph::Open, tr("Load"));
  add("save.vmb", Glyph::Save, tr("Save"));
  bar->addSeparator();
  add("graph.single", Glyph::Graph, tr("Graph"));
  add("graph.multi", Glyph::Graph, QStringLiteral("Multi- Axis"));
  bar->addSeparator();
  add("smooth.butterworth", Glyph::Filter, tr("Filter"));
  add("analysis.scaling", Glyph::Scale, tr("Scaling"));
  add("edit.labels", Glyph::Units, tr("Labels"));
  bar->addSeparator();
  add("file.refresh", Glyph::Refresh, tr("Refresh"));
  auto* space = new QWidget;
  space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  bar->addWidget(space);
  const std::string manual = ManualPath(workbench_);
  QAction* manuals = bar->addAction(IconOf(Glyph::Manual), QStringLiteral("&Manuals"));
  manuals->setEnabled(QFileInfo(ToQt(manual)).isFile());
  manuals->setStatusTip(tr("Opens the manual"));
  connect(manuals, &QAction::triggered, this, [this, manual] { programs_.OpenManual(manual); });
  add("file.exit", Glyph::Exit, tr("Exit"));
}

void MainWindow::AddOpenEntry() {
  auto* open = new QAction(tr("Ope&n file..."), this);
  open->setShortcut(QKeySequence::Open);
  open->setStatusTip(tr("Asks for a data file and loads it"));
  connect(open, &QAction::triggered, this, [this] { opener_.AskForFile(); });
  QMenu* file = menus_->Top("&File");
  file->insertAction(file->actions().value(0), open);
}

void MainWindow::AddRecentMenu() {
  QMenu* file = menus_->Top("&File");
  recent_ = new QMenu(tr("Recen&t files"), this);
  file->insertMenu(menus_->Of("file.open-directory"), recent_);
  connect(recent_, &QMenu::aboutToShow, this, [this] {
    recent_->clear();
    for (const QString& path : settings_.RecentFiles()) {
      const QString name =
          recent_->fontMetrics().elidedText(QFileInfo(path).fileName(), Qt::ElideMiddle, kLongestName);
      QAction* action = recent_->addAction(QString(name).replace('&', QStringLiteral("&&")));
      action->setStatusTip(path);
      connect(action, &QAction::triggered, this, [this, path] { opener_.Open(ToStd(path)); });
    }
    if (recent_->isEmpty()) {
      recent_->addAction(tr("None"))->setEnabled(false);
    }
  });
}

void MainWindow::AddRecipeEntry() {
  auto* run = new QAction(tr("R&un a recipe..."), this);
  run->setObjectName(QStringLiteral("runRecipe"));
  run->setStatusTip(tr("Does the steps of a recipe to any number of files, while the window stays as it is"));
  menus_->Top("&File")->insertAction(menus_->Of("file.open-directory"), run);
  connect(run, &QAction::triggered, this, [this] {
    if (recipes_ == nullptr) {
      recipes_ = new RecipeDialog(ToQt(workbench_.DataDir), this);
      connect(recipes_, &RecipeDialog::TrialWanted, this,
              [this](const QString& path) { opener_.Open(ToStd(path)); });
    }
    if (!historyActions_.SavedRecipe().empty() && !recipes_->isVisible() && !recipes_->IsRunning()) {
      recipes_->SetRecipe(ToQt(historyActions_.SavedRecipe()));
    }
    recipes_->show();
    recipes_->raise();
    recipes_->activateWindow();
  });
}

void MainWindow::AddViewOptions() {
  QMenu* view = menus_->Top("&View");
  view->addSeparator();
  view->addAction(browserDock_->toggleViewAction());
  view->addAction(historyDock_->toggleViewAction());
}

void MainWindow::AddOptionsMenu() {
  QMenu* options = menus_->Top("&Options");
  const auto add = [options](const char* caption, bool& value, const auto& changed) {
    QAction* action = options->addAction(QString::fromUtf8(caption));
    action->setCheckable(true);
    action->setChecked(value);
    connect(action, &QAction::toggled, options, [&value, changed](bool on) {
      value = on;
      changed();
    });
  };
  Preferences& preferences = workbench_.preferences;
  const auto markGraph = [this, &preferences] {
    menus_->Top("&View")->setDefaultAction(
        menus_->Of(preferences.Multiaxis ? "graph.multi" : "graph.single"));
  };
  add("&Full-screen graphics", preferences.FullScreen, [] {});
  add("&Multiaxis graphs", preferences.Multiaxis, markGraph);
  markGraph();
  options->addSeparator();
  AddUserLevels(options);
  options->addSeparator();
  AddFilterMenus(options);
  options->addSeparator();
  AddProgramMenu(options->addMenu(tr("&Viewer")), ProgramKind::Viewer);
  AddProgramMenu(options->addMenu(tr("&Spreadsheet")), ProgramKind::Spreadsheet);
  options->addSeparator();
  AddThemes(options);
}

void MainWindow::AddUserLevels(QMenu* menu) {
  auto* group = new QActionGroup(this);
  for (const UserLevelKind level : {UserLevelKind::Novice, UserLevelKind::Expert}) {
    const bool novice = level == UserLevelKind::Novice;
    QAction* action = menu->addAction(novice ? QStringLiteral("&Novice") : QStringLiteral("&Expert"));
    action->setCheckable(true);
    action->setChecked(workbench_.UserLevel == level);
    action->setStatusTip(novice ? tr("Panels of finished work wait to be closed")
                                : tr("Panels of finished work close by themselves"));
    group->addAction(action);
    connect(action, &QAction::triggered, this, [this, level] {
      workbench_.UserLevel = level;
      ShowState();
    });
  }
}

void MainWindow::AddFilterMenus(QMenu* menu) {
  const auto add = [this, menu](const QString& title, std::span<const FileFilter> filters, std::int32_t& row,
                                const std::function<void(int)>& select) {
    QMenu* sub = menu->addMenu(title);
    auto* group = new QActionGroup(sub);
    for (std::size_t k = 0; k < filters.size(); ++k) {
      QAction* action = sub->addAction(ToQt(filters[k].caption));
      action->setCheckable(true);
      action->setStatusTip(ToQt(filters[k].patterns));
      group->addAction(action);
      connect(action, &QAction::triggered, this, [select, k] { select(static_cast<int>(k)); });
    }
    connect(sub, &QMenu::aboutToShow, this,
            [group, &row] { group->actions().at(static_cast<qsizetype>(row))->setChecked(true); });
  };
  add(tr("&Data files"), DataListFilters(), workbench_.preferences.FileType,
      [this](int filter) { browser_->SelectDataFilter(filter); });
  add(tr("&Text files"), TextFileFilters(), workbench_.preferences.TextType,
      [this](int filter) { browser_->SelectTextFilter(filter); });
}

void MainWindow::AddThemes(QMenu* menu) {
  QMenu* looks = menu->addMenu(tr("&Appearance"));
  auto* group = new QActionGroup(looks);
  const std::pair<ThemeChoice, QString> choices[] = {{ThemeChoice::Desktop, tr("As the &desktop")},
                                                     {ThemeChoice::Light, tr("&Light")},
                                                     {ThemeChoice::Dark, tr("D&ark")}};
  for (const auto& [choice, caption] : choices) {
    QAction* action = looks->addAction(caption);
    action->setCheckable(true);
    action->setChecked(settings_.Theme() == choice);
    group->addAction(action);
    connect(action, &QAction::triggered, this, [this, theme = choice] {
      settings_.SaveTheme(theme);
      ApplyTheme(*qApp, theme);
    });
  }
}

void MainWindow::AddProgramMenu(QMenu* menu, ProgramKind kind) {
  connect(menu, &QMenu::aboutToShow, this, [this, menu, kind] { programs_.FillWithPrograms(menu, kind); });
}

void MainWindow::AddFamilyMenus() {
  auto* programs = new QMenu(tr("&Programs"), this);
  menus_->Top("&File")->insertMenu(menus_->Of("file.refresh"), programs);
  connect(programs, &QMenu::aboutToShow, this,
          [this, programs] { programs_.FillWithFamilyPrograms(programs); });
  QMenu* manuals = menus_->Top("&Help")->addMenu(QStringLiteral("&Manuals"));
  connect(manuals, &QMenu::aboutToShow, this, [this, manuals] { programs_.FillWithManuals(manuals); });
}

void MainWindow::AddHelpMenu() {
  QMenu* help = menus_->Top("&Help");
  connect(help->addAction(QStringLiteral("&About Velmora2")), &QAction::triggered, this,
          [this] { ShowAbout(this); });
}

}  // namespace velmora::ui
