#pragma once

#include <QWidget>
#include <memory>

#include "core/workbench.hpp"
#include "ui/browser/file_list_view.hpp"

class QAbstractFileIconProvider;
class QComboBox;
class QFileSystemModel;
class QLabel;
class QSplitter;
class QTabWidget;
class QTreeView;

namespace velmora::ui {

/// Walks the directories and lists the data files and the text files of the current one. What is
/// chosen is told; nothing is loaded here.
class BrowserPanel : public QWidget {
  Q_OBJECT

 public:
  explicit BrowserPanel(Workbench& workbench, QWidget* parent = nullptr);
  ~BrowserPanel() override;

  /// Shows workbench.DataDir, its files and the name of the selected one.
  void Refresh();
  void ShowSelected();
  void SelectDataFilter(int row);
  void SelectTextFilter(int row);
  [[nodiscard]] FileListView* DataFiles() const { return data_; }
  [[nodiscard]] FileListView* TextFiles() const { return text_; }

 Q_SIGNALS:
  void DirectoryChosen(const QString& path);
  /// The selected text file, if there is one, is to be opened.
  void TextWanted();

 private:
  void AddTree(QSplitter* to);
  void AddLists(QSplitter* to);
  void ShowLocations();
  void ShowDirectory();

  Workbench& workbench_;
  std::unique_ptr<QAbstractFileIconProvider> icons_;
  QComboBox* location_;
  QFileSystemModel* directories_;
  QTreeView* tree_;
  QTabWidget* tabs_;
  QComboBox* dataFilter_;
  QComboBox* textFilter_;
  FileListView* data_;
  FileListView* text_;
  QLabel* selected_;
  bool refreshing_ = false;
};

}  // namespace velmora::ui
