#include "ui/browser/file_list_view.hpp"

#include <QDateTime>
#include <QHeaderView>
#include <QLocale>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include "browse/file_list.hpp"
#include "core/files/paths.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

enum ListColumn { Name, Size, Date, Columns };
constexpr int kSortRole = Qt::UserRole;
constexpr int kNameRole = Qt::UserRole + 1;
constexpr int kUnreadableRole = Qt::UserRole + 2;
constexpr int kReadableName = 24;  // characters; size and date give way to them

class FileItem : public QTreeWidgetItem {
 public:
  using QTreeWidgetItem::QTreeWidgetItem;
  bool operator<(const QTreeWidgetItem& other) const override {
    const int column = treeWidget()->sortColumn();
    if (column == Name) {
      return text(Name).compare(other.text(Name), Qt::CaseInsensitive) < 0;
    }
    return data(column, kSortRole).toLongLong() < other.data(column, kSortRole).toLongLong();
  }
};

class FileDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    if (index.siblingAtColumn(Name).data(kUnreadableRole).toBool()) {
      option->palette.setColor(QPalette::Text, option->palette.color(QPalette::Disabled, QPalette::Text));
    }
  }
};

}  // namespace

FileListView::FileListView(Marking marking, QWidget* parent) : QTreeWidget(parent), marking_(marking) {
  setHeaderLabels({tr("Name"), tr("Size"), tr("Date")});
  setItemDelegate(new FileDelegate(this));
  setRootIsDecorated(false);
  setUniformRowHeights(true);
  setTextElideMode(Qt::ElideMiddle);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setSortingEnabled(true);
  sortByColumn(Name, Qt::AscendingOrder);
  setContextMenuPolicy(Qt::CustomContextMenu);
  header()->setStretchLastSection(false);
  header()->setSectionResizeMode(Name, QHeaderView::Stretch);
  header()->setSectionResizeMode(Size, QHeaderView::ResizeToContents);
  header()->setSectionResizeMode(Date, QHeaderView::ResizeToContents);
  header()->setMinimumSectionSize(40);
  connect(this, &QTreeWidget::itemSelectionChanged, this, [this] {
    if (!selectedItems().isEmpty()) {
      Q_EMIT Selected(SelectedPath());
    }
  });
  connect(this, &QTreeWidget::itemActivated, this,
          [this](const QTreeWidgetItem* item) { Q_EMIT Opened(PathOf(item)); });
  connect(this, &QTreeWidget::customContextMenuRequested, this, [this](const QPoint& at) {
    if (const QTreeWidgetItem* item = itemAt(at)) {
      Q_EMIT RightClicked(PathOf(item));
    }
  });
}

void FileListView::ShowFiles(const std::string& directory, std::string_view patterns) {
  const QSignalBlocker quiet(this);
  const std::string before = directory == directory_ ? SelectedPath() : std::string();
  const int scrolled = directory == directory_ ? verticalScrollBar()->value() : 0;
  directory_ = directory;
  clear();
  const QLocale locale;
  QList<QTreeWidgetItem*> items;
  const FileListing listing = ListFiles(directory, patterns);
  hidden_ = listing.others;
  for (const ListedFile& file : listing.files) {
    const QDateTime date = QDateTime::fromSecsSinceEpoch(file.date);
    auto* item = new FileItem(QStringList{ToQt(file.name), locale.formattedDataSize(file.size, 0),
                                          date.toString(QStringLiteral("yyyy-MM-dd"))});
    item->setData(Name, kNameRole, QByteArray::fromStdString(file.name));
    item->setData(Size, kSortRole, QVariant::fromValue(static_cast<qlonglong>(file.size)));
    item->setData(Date, kSortRole, QVariant::fromValue(static_cast<qlonglong>(file.date)));
    item->setTextAlignment(Size, Qt::AlignRight | Qt::AlignVCenter);
    const QString facts = locale.formattedDataSize(file.size, 1) + QStringLiteral(", ") +
                          date.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    item->setToolTip(Name, ToQt(file.name) + '\n' + facts);
    item->setToolTip(Date, facts);
    const std::string why =
        marking_ == Marking::Unreadable ? WhyUnreadable(directory + file.name) : std::string();
    if (!why.empty()) {
      item->setData(Name, kUnreadableRole, true);
      for (int k = 0; k < Columns; ++k) {
        item->setToolTip(k, ToQt(why));
      }
    }
    items << item;
  }
  addTopLevelItems(items);
  FitColumns();
  MarkLoaded(loaded_);
  GoTo(before);
  verticalScrollBar()->setValue(scrolled);
}

QTreeWidgetItem* FileListView::ItemOf(const std::string& path) const {
  for (int row = 0; row < topLevelItemCount() && path.starts_with(directory_); ++row) {
    if (PathOf(topLevelItem(row)) == path) {
      return topLevelItem(row);
    }
  }
  return nullptr;
}

void FileListView::MarkLoaded(const std::string& path) {
  const auto mark = [this](const std::string& file, bool on) {
    QFont font = this->font();
    font.setBold(true);
    if (QTreeWidgetItem* item = ItemOf(file)) {
      item->setData(Name, Qt::FontRole, on ? QVariant(font) : QVariant());
    }
  };
  mark(loaded_, false);
  loaded_ = path;
  mark(loaded_, true);
}

void FileListView::GoTo(const std::string& path) {
  QTreeWidgetItem* item = ItemOf(path);
  if (item != nullptr && item != currentItem()) {
    const QSignalBlocker quiet(this);
    setCurrentItem(item);
  }
}

// The date goes first, then the size: a file is told by its name.
void FileListView::FitColumns() {
  const int room = viewport()->width();
  const int name = std::min(std::max(sizeHintForColumn(Name), header()->sectionSizeHint(Name)),
                            fontMetrics().averageCharWidth() * kReadableName);
  const int size = std::max(sizeHintForColumn(Size), header()->sectionSizeHint(Size));
  const int date = std::max(sizeHintForColumn(Date), header()->sectionSizeHint(Date));
  setColumnHidden(Date, name + size + date > room);
  setColumnHidden(Size, name + size > room);
}

void FileListView::resizeEvent(QResizeEvent* event) {
  QTreeWidget::resizeEvent(event);
  FitColumns();
}

std::string FileListView::SelectedPath() const {
  return selectedItems().isEmpty() ? std::string() : PathOf(selectedItems().constFirst());
}

std::string FileListView::PathOf(const QTreeWidgetItem* item) const {
  return directory_ + item->data(Name, kNameRole).toByteArray().toStdString();
}

void FileListView::mousePressEvent(QMouseEvent* event) {
  QTreeWidget::mousePressEvent(event);
  if (topLevelItemCount() == 0 && event->button() == Qt::LeftButton) {
    Q_EMIT EmptyClicked();
  }
}

}  // namespace velmora::ui
