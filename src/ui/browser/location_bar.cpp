#include "ui/browser/location_bar.hpp"

#include <QAbstractItemView>
#include <QBoxLayout>
#include <QComboBox>
#include <QCompleter>
#include <QDir>
#include <QEvent>
#include <QFileSystemModel>
#include <QKeyEvent>
#include <QLineEdit>
#include <QShortcut>
#include <QStorageInfo>
#include <QToolButton>

#include "ui/main/icons.hpp"

namespace velmora::ui {
namespace {

QStringList WithParents(const QString& path) {
  QDir directory(path);
  QStringList paths;
  do {
    paths << directory.absolutePath();
  } while (directory.cdUp());
  return paths;
}

QStringList FileSystems() {
  QStringList paths;
  for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
    const QString path = volume.rootPath();
    const bool ours = !path.startsWith(QStringLiteral("/proc")) && !path.startsWith(QStringLiteral("/sys")) &&
                      !path.startsWith(QStringLiteral("/dev")) && !path.startsWith(QStringLiteral("/run")) &&
                      !path.startsWith(QStringLiteral("/etc"));
    if (volume.isValid() && volume.isReady() && ours) {
      paths << path;
    }
  }
  return paths;
}

// As a shell takes it: '~' is home, and what does not begin at the root begins where the browser is.
QString Meant(const QString& typed, const QString& directory) {
  QString path = typed.trimmed();
  if (path == QStringLiteral("~") || path.startsWith(QStringLiteral("~/"))) {
    path = QDir::homePath() + path.mid(1);
  }
  return QDir::cleanPath(QDir(directory).absoluteFilePath(path));
}

}  // namespace

LocationBar::LocationBar(QWidget* parent) : QWidget(parent), line_(new QComboBox) {
  line_->setObjectName(QStringLiteral("location"));
  line_->setEditable(true);
  line_->setInsertPolicy(QComboBox::NoInsert);
  line_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  line_->setMinimumContentsLength(8);
  line_->setToolTip(tr("Where you are. Type a directory or a file and press Enter (Ctrl+L)"));
  auto* completer = new QCompleter(this);
  auto* paths = new QFileSystemModel(completer);
  paths->setRootPath(QString());
  completer->setModel(paths);
  line_->setCompleter(completer);
  line_->lineEdit()->installEventFilter(this);
  connect(line_->lineEdit(), &QLineEdit::returnPressed, this, &LocationBar::Typed);
  connect(line_, &QComboBox::activated, this, [this](int row) {
    const QString path = line_->itemData(row).toString();
    if (!path.isEmpty() && path == line_->currentText()) {
      Q_EMIT DirectoryChosen(path);
    }
  });
  auto* home = new QToolButton;
  home->setObjectName(QStringLiteral("home"));
  home->setIcon(IconOf(Glyph::Home));
  home->setToolTip(tr("Home"));
  home->setAutoRaise(true);
  connect(home, &QToolButton::clicked, this, [this] { Q_EMIT DirectoryChosen(QDir::homePath()); });
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(4);
  layout->addWidget(line_, 1);
  layout->addWidget(home);
  connect(new QShortcut(Qt::CTRL | Qt::Key_L, this), &QShortcut::activated, this, [this] {
    line_->setFocus();
    line_->lineEdit()->selectAll();
  });
}

void LocationBar::Show(const QString& directory) {
  directory_ = QDir(directory).absolutePath();
  Fill();
}

void LocationBar::SetRecent(const QStringList& directories) {
  recent_ = directories;
  if (!directory_.isEmpty()) {
    Fill();
  }
}

void LocationBar::Fill() {
  line_->clear();
  Section(WithParents(directory_));
  Section(recent_);
  Section(FileSystems());
  line_->setCurrentIndex(0);
  // The line makes what it shows the start of completions: their list would come up over what follows once
  // the completer, which reads directories in its own time, has read that one. No path starts like this.
  line_->completer()->setCompletionPrefix(QStringLiteral("\n"));
}

// Each place once.
void LocationBar::Section(const QStringList& paths) {
  bool first = true;
  for (const QString& path : paths) {
    if (line_->findData(path) >= 0) {
      continue;
    }
    if (first && line_->count() > 0) {
      line_->insertSeparator(line_->count());
    }
    first = false;
    line_->addItem(path, path);
    line_->setItemData(line_->count() - 1, path, Qt::ToolTipRole);
  }
}

void LocationBar::Typed() {
  const QString path = Meant(line_->currentText(), directory_);
  const bool isFile = QFileInfo(path).isFile();
  line_->completer()->popup()->hide();
  Fill();  // what cannot be opened does not stay
  if (isFile) {
    Q_EMIT FileChosen(path);
  } else {
    Q_EMIT DirectoryChosen(path);
  }
}

// Esc takes back what was typed.
bool LocationBar::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
    Fill();
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace velmora::ui
