#include "ui/browser/directory_tree.hpp"

#include <QAbstractFileIconProvider>
#include <QDir>
#include <QFileSystemModel>
#include <QScrollBar>
#include <QTimer>
#include <utility>

namespace velmora::ui {
namespace {

/// All rows are directories: a picture of one in each tells nothing, and to look for it and for the kind
/// of each takes longer than all else at the start of the program.
class NoIcons : public QAbstractFileIconProvider {
 public:
  [[nodiscard]] QIcon icon(IconType /*type*/) const override { return {}; }
  [[nodiscard]] QIcon icon(const QFileInfo& /*file*/) const override { return {}; }
  // The model takes what it reads of a directory for known already, and leaves its row out until it sorts
  // for another reason, unless the kind that it is told here is a text.
  [[nodiscard]] QString type(const QFileInfo& /*file*/) const override { return QStringLiteral("Directory"); }
};

// A link and what it points to are one place: who clicked on the link stays there.
bool SamePlace(const QString& a, const QString& b) {
  return a == b || QFileInfo(a).canonicalFilePath() == QFileInfo(b).canonicalFilePath();
}

}  // namespace

DirectoryTree::DirectoryTree(QWidget* parent)
    : QTreeView(parent), icons_(std::make_unique<NoIcons>()), directories_(new QFileSystemModel(this)) {
  setObjectName(QStringLiteral("directories"));
  directories_->setFilter(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Drives);
  directories_->setIconProvider(icons_.get());
  directories_->setRootPath(QStringLiteral("/"));
  setModel(directories_);
  setHeaderHidden(true);
  setUniformRowHeights(true);
  setIndentation(14);
  setTextElideMode(Qt::ElideMiddle);
  setAutoScroll(false);  // it would move a row that is half in sight from under the pointer
  for (int k = 1; k < directories_->columnCount(); ++k) {
    hideColumn(k);
  }
  connect(selectionModel(), &QItemSelectionModel::currentChanged, this, &DirectoryTree::CurrentChanged);
  // The model reads and sorts in turns: what it did not know a moment ago is there then, and what was in
  // sight may be far off.
  const auto revealSoon = [this] {
    QTimer::singleShot(0, this, [this] {
      if (revealing_) {
        Reveal();
      }
    });
  };
  connect(directories_, &QFileSystemModel::directoryLoaded, this, revealSoon);
  connect(directories_, &QFileSystemModel::rowsInserted, this, revealSoon);
  connect(directories_, &QFileSystemModel::layoutChanged, this, revealSoon);
  connect(verticalScrollBar(), &QScrollBar::actionTriggered, this, [this] { revealing_ = false; });
}

DirectoryTree::~DirectoryTree() {
  setModel(nullptr);
  delete directories_;  // reads in another thread, with the icons
}

void DirectoryTree::Show(const QString& path) {
  const QString directory = QDir(path).absolutePath();
  if (currentIndex().isValid() && SamePlace(directories_->filePath(currentIndex()), directory)) {
    return;
  }
  shown_ = directory;
  revealing_ = true;
  Reveal();
}

void DirectoryTree::Reveal() {
  if (const QModelIndex index = directories_->index(shown_); index != currentIndex()) {
    showing_ = true;
    setCurrentIndex(index);
    expand(index);
    showing_ = false;
  }
  const QRect row = visualRect(currentIndex());
  if (!row.isValid() || !viewport()->rect().contains(row.center())) {
    scrollTo(currentIndex(), PositionAtCenter);
  }
}

void DirectoryTree::CurrentChanged(const QModelIndex& index) {
  if (!showing_ && index.isValid()) {
    const QString path = directories_->filePath(index);
    QMetaObject::invokeMethod(
        this, [this, path] { Q_EMIT Chosen(path); }, Qt::QueuedConnection);
  }
}

void DirectoryTree::mousePressEvent(QMouseEvent* event) {
  revealing_ = false;
  QTreeView::mousePressEvent(event);
}

void DirectoryTree::wheelEvent(QWheelEvent* event) {
  revealing_ = false;
  QTreeView::wheelEvent(event);
}

void DirectoryTree::keyPressEvent(QKeyEvent* event) {
  revealing_ = false;
  QTreeView::keyPressEvent(event);
  scrollTo(currentIndex());
}

}  // namespace velmora::ui
