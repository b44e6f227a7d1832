#include "ui/browser/browser_panel.hpp"

#include <QAbstractFileIconProvider>
#include <QBoxLayout>
#include <QComboBox>
#include <QDir>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>
#include <QStorageInfo>
#include <QTabWidget>
#include <QTimer>
#include <QTreeView>

#include "core/files/file_filters.hpp"
#include "core/files/paths.hpp"
#include "core/text/text.hpp"
#include "ui/main/theme.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

constexpr int kRowsSettle = 150;  // ms; the model sorts what it has read a little later

QComboBox* FilterBox(std::span<const FileFilter> filters) {
  auto* box = new QComboBox;
  for (const FileFilter& filter : filters) {
    box->addItem(ToQt(WithoutMnemonic(filter.caption)));
    box->setItemData(box->count() - 1, ToQt(filter.patterns), Qt::ToolTipRole);
  }
  box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  box->setMinimumContentsLength(12);
  return box;
}

/// All rows are directories: a picture of one in each tells nothing, and to look for it and for the kind
/// of each takes longer than all else at the start of the program.
class NoIcons : public QAbstractFileIconProvider {
 public:
  [[nodiscard]] QIcon icon(IconType /*type*/) const override { return {}; }
  [[nodiscard]] QIcon icon(const QFileInfo& /*file*/) const override { return {}; }
  [[nodiscard]] QString type(const QFileInfo& /*file*/) const override { return {}; }
};

QWidget* FilteredList(QComboBox* filter, FileListView* list) {
  auto* page = new QWidget;
  auto* layout = new QVBoxLayout(page);
  layout->setContentsMargins(0, 6, 0, 0);
  layout->setSpacing(6);
  layout->addWidget(filter);
  layout->addWidget(list, 1);
  return page;
}

}  // namespace

BrowserPanel::~BrowserPanel() {
  delete directories_;  // reads in another thread, with the icons
}

BrowserPanel::BrowserPanel(Workbench& workbench, QWidget* parent)
    : QWidget(parent), workbench_(workbench), icons_(std::make_unique<NoIcons>()) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(8, 8, 8, 6);
  layout->setSpacing(6);
  location_ = new QComboBox;
  location_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  location_->setToolTip(tr("Where you are: the directories above, and the file systems there are"));
  layout->addWidget(location_);
  connect(location_, &QComboBox::activated, this,
          [this](int row) { Q_EMIT DirectoryChosen(location_->itemData(row).toString()); });
  auto* split = new QSplitter(Qt::Vertical);
  split->setHandleWidth(8);
  AddTree(split);
  AddLists(split);
  split->setStretchFactor(0, 2);
  split->setStretchFactor(1, 3);
  layout->addWidget(split, 1);
  selected_ = new QLabel;
  selected_->setObjectName(QStringLiteral("selectedFile"));
  selected_->setTextFormat(Qt::PlainText);
  SetTone(selected_, Tone::Quiet);
  layout->addWidget(selected_);
}

void BrowserPanel::AddTree(QSplitter* to) {
  directories_ = new QFileSystemModel(this);
  directories_->setFilter(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Drives);
  directories_->setIconProvider(icons_.get());
  directories_->setRootPath(QStringLiteral("/"));
  tree_ = new QTreeView;
  tree_->setModel(directories_);
  tree_->setHeaderHidden(true);
  tree_->setUniformRowHeights(true);
  tree_->setIndentation(14);
  for (int k = 1; k < directories_->columnCount(); ++k) {
    tree_->hideColumn(k);
  }
  connect(tree_->selectionModel(), &QItemSelectionModel::currentChanged, this,
          [this](const QModelIndex& index) {
            if (!refreshing_) {
              Q_EMIT DirectoryChosen(directories_->filePath(index));
            }
          });
  // Rows come in while directories are read: what is current stays in sight.
  connect(directories_, &QFileSystemModel::directoryLoaded, this, [this] {
    QTimer::singleShot(
        0, tree_, [this] { tree_->scrollTo(tree_->currentIndex(), QAbstractItemView::PositionAtCenter); });
  });
  to->addWidget(tree_);
}

void BrowserPanel::AddLists(QSplitter* to) {
  tabs_ = new QTabWidget;
  tabs_->setDocumentMode(true);
  dataFilter_ = FilterBox(DataFileFilters());
  textFilter_ = FilterBox(TextFileFilters());
  data_ = new FileListView(FileListView::Marking::Unreadable);
  text_ = new FileListView(FileListView::Marking::None);
  data_->setObjectName(QStringLiteral("dataFiles"));
  text_->setObjectName(QStringLiteral("textFiles"));
  tabs_->addTab(FilteredList(dataFilter_, data_), tr("&Data files"));
  auto* open = new QPushButton(tr("O&pen text file"));
  open->setObjectName(QStringLiteral("openText"));
  open->setToolTip(tr("Opens the selected file in the text viewer or the spreadsheet of the Options menu"));
  connect(open, &QPushButton::clicked, this, [this] { Q_EMIT TextWanted(); });
  QWidget* texts = FilteredList(textFilter_, text_);
  texts->layout()->addWidget(open);
  tabs_->addTab(texts, tr("Te&xt files"));
  connect(dataFilter_, &QComboBox::activated, this, [this](int row) { SelectDataFilter(row); });
  connect(textFilter_, &QComboBox::activated, this, [this](int row) { SelectTextFilter(row); });
  to->addWidget(tabs_);
}

void BrowserPanel::SelectDataFilter(int row) {
  workbench_.preferences.FileType = row;
  Refresh();
}

void BrowserPanel::SelectTextFilter(int row) {
  workbench_.preferences.TextType = row;
  Refresh();
}

void BrowserPanel::Refresh() {
  const QSignalBlocker quietData(data_);
  const QSignalBlocker quietText(text_);
  dataFilter_->setCurrentIndex(workbench_.preferences.FileType);
  textFilter_->setCurrentIndex(workbench_.preferences.TextType);
  ShowLocations();
  ShowDirectory();
  const auto patterns = [](std::span<const FileFilter> filters, int row) {
    return filters[static_cast<std::size_t>(row)].patterns;
  };
  data_->ShowFiles(workbench_.DataDir, patterns(DataFileFilters(), workbench_.preferences.FileType));
  text_->ShowFiles(workbench_.DataDir, patterns(TextFileFilters(), workbench_.preferences.TextType));
  ShowSelected();
}

void BrowserPanel::ShowSelected() {
  const std::string& file = workbench_.trial.FileName;
  selected_->setText(tr("Selected: %1").arg(file.empty() ? tr("None") : ToQt(FileNamePart(file))));
  selected_->setToolTip(ToQt(file));
}

void BrowserPanel::ShowLocations() {
  location_->clear();
  QDir directory(ToQt(workbench_.DataDir));
  QStringList parents;
  do {
    parents << directory.absolutePath();
  } while (directory.cdUp());
  for (const QString& path : parents) {
    location_->addItem(path, path);
  }
  constexpr int kRoom = 230;
  location_->setItemText(0, fontMetrics().elidedText(parents.constFirst(), Qt::ElideLeft, kRoom));
  for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
    const QString path = volume.rootPath();
    const bool ours = !path.startsWith(QStringLiteral("/proc")) && !path.startsWith(QStringLiteral("/sys")) &&
                      !path.startsWith(QStringLiteral("/dev")) && !path.startsWith(QStringLiteral("/run")) &&
                      !path.startsWith(QStringLiteral("/etc"));
    if (volume.isValid() && volume.isReady() && ours && !parents.contains(path)) {
      location_->addItem(path, path);
    }
  }
  location_->setCurrentIndex(0);
}

void BrowserPanel::ShowDirectory() {
  refreshing_ = true;
  const QModelIndex current = directories_->index(QDir(ToQt(workbench_.DataDir)).absolutePath());
  tree_->setCurrentIndex(current);
  tree_->expand(current);
  tree_->scrollTo(current, QAbstractItemView::PositionAtCenter);
  refreshing_ = false;
}

}  // namespace velmora::ui
