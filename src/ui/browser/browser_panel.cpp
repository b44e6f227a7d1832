#include "ui/browser/browser_panel.hpp"

#include <QBoxLayout>
#include <QComboBox>
#include <QPushButton>
#include <QSplitter>
#include <QTabWidget>

#include "browse/list_filters.hpp"
#include "core/files/paths.hpp"
#include "core/text/text.hpp"
#include "ui/browser/directory_tree.hpp"
#include "ui/browser/location_bar.hpp"
#include "ui/elided_label.hpp"
#include "ui/main/theme.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

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

/// The row that shows every file.
int RowOfAll(std::span<const FileFilter> filters) {
  const auto all = std::find_if(filters.begin(), filters.end(),
                                [](const FileFilter& filter) { return filter.patterns == "*.*"; });
  return static_cast<int>(all - filters.begin());
}

QWidget* FilteredList(QComboBox* filter, FileListView* list, QPushButton* hidden) {
  auto* page = new QWidget;
  auto* layout = new QVBoxLayout(page);
  layout->setContentsMargins(0, 6, 0, 0);
  layout->setSpacing(6);
  layout->addWidget(filter);
  layout->addWidget(list, 1);
  hidden->setFlat(true);
  hidden->setStyleSheet(QStringLiteral("text-align: left; padding: 3px; color: palette(link);"));
  hidden->setToolTip(BrowserPanel::tr("Shows all files of the directory"));
  layout->addWidget(hidden);
  return page;
}

void ShowCount(QPushButton* button, int files) {
  button->setText(files == 1 ? BrowserPanel::tr("1 file hidden by the filter: show it")
                             : BrowserPanel::tr("%1 files hidden by the filter: show them").arg(files));
  button->setVisible(files > 0);
}

}  // namespace

BrowserPanel::BrowserPanel(Workbench& workbench, QWidget* parent) : QWidget(parent), workbench_(workbench) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(8, 8, 8, 6);
  layout->setSpacing(6);
  location_ = new LocationBar;
  layout->addWidget(location_);
  connect(location_, &LocationBar::DirectoryChosen, this, &BrowserPanel::DirectoryChosen);
  connect(location_, &LocationBar::FileChosen, this, &BrowserPanel::FileChosen);
  // From a place that was typed the keys go on among its files.
  const auto goOn = [this] { (data_->isVisible() ? data_ : text_)->setFocus(); };
  connect(location_, &LocationBar::DirectoryChosen, this, goOn);
  connect(location_, &LocationBar::FileChosen, this, goOn);
  auto* split = new QSplitter(Qt::Vertical);
  split->setHandleWidth(8);
  tree_ = new DirectoryTree;
  connect(tree_, &DirectoryTree::Chosen, this, &BrowserPanel::DirectoryChosen);
  split->addWidget(tree_);
  AddLists(split);
  split->setStretchFactor(0, 2);
  split->setStretchFactor(1, 3);
  layout->addWidget(split, 1);
  selected_ = new ElidedLabel;
  selected_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  selected_->setObjectName(QStringLiteral("selectedFile"));
  SetTone(selected_, Tone::Quiet);
  layout->addWidget(selected_);
}

void BrowserPanel::AddLists(QSplitter* to) {
  tabs_ = new QTabWidget;
  tabs_->setDocumentMode(true);
  dataFilter_ = FilterBox(DataListFilters());
  textFilter_ = FilterBox(TextFileFilters());
  data_ = new FileListView(FileListView::Marking::Unreadable);
  text_ = new FileListView(FileListView::Marking::None);
  data_->setObjectName(QStringLiteral("dataFiles"));
  text_->setObjectName(QStringLiteral("textFiles"));
  hiddenData_ = new QPushButton;
  hiddenData_->setObjectName(QStringLiteral("hiddenDataFiles"));
  hiddenText_ = new QPushButton;
  connect(hiddenData_, &QPushButton::clicked, this,
          [this] { SelectDataFilter(RowOfAll(DataListFilters())); });
  connect(hiddenText_, &QPushButton::clicked, this,
          [this] { SelectTextFilter(RowOfAll(TextFileFilters())); });
  tabs_->addTab(FilteredList(dataFilter_, data_, hiddenData_), tr("&Data files"));
  auto* open = new QPushButton(tr("O&pen text file"));
  open->setObjectName(QStringLiteral("openText"));
  open->setToolTip(tr("Opens the selected file in the text viewer or the spreadsheet of the Options menu"));
  connect(open, &QPushButton::clicked, this, [this] { Q_EMIT TextWanted(); });
  QWidget* texts = FilteredList(textFilter_, text_, hiddenText_);
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
  location_->Show(ToQt(workbench_.DataDir));
  tree_->Show(ToQt(workbench_.DataDir));
  const auto patterns = [](std::span<const FileFilter> filters, int row) {
    return filters[static_cast<std::size_t>(row)].patterns;
  };
  data_->ShowFiles(workbench_.DataDir, patterns(DataListFilters(), workbench_.preferences.FileType));
  text_->ShowFiles(workbench_.DataDir, patterns(TextFileFilters(), workbench_.preferences.TextType));
  ShowCount(hiddenData_, data_->Hidden());
  ShowCount(hiddenText_, text_->Hidden());
  ShowSelected();
  MarkLoaded();
}

void BrowserPanel::MarkLoaded() {
  data_->MarkLoaded(workbench_.LoadedFile);
}

void BrowserPanel::ShowPlaces(const QStringList& recent) {
  location_->SetRecent(recent);
}

void BrowserPanel::ShowSelected() {
  const std::string& file = workbench_.trial.FileName;
  selected_->setText(tr("Selected: %1").arg(file.empty() ? tr("None") : ToQt(FileNamePart(file))));
  selected_->setToolTip(ToQt(file));
  data_->GoTo(file);
}

}  // namespace velmora::ui
