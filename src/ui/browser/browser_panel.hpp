#pragma once

#include <QWidget>

#include "core/workbench.hpp"
#include "ui/browser/file_list_view.hpp"

class QComboBox;
class QPushButton;
class QSplitter;
class QTabWidget;

namespace velmora::ui {

class DirectoryTree;
class ElidedLabel;
class LocationBar;

/// Walks the directories and lists the data files and the text files of the current one. What is
/// chosen is told; nothing is loaded here.
class BrowserPanel : public QWidget {
  Q_OBJECT

 public:
  explicit BrowserPanel(Workbench& workbench, QWidget* parent = nullptr);

  /// Shows workbench.DataDir, its files and the name of the selected one.
  void Refresh();
  void ShowSelected();
  /// Marks the file that the trial was read from.
  void MarkLoaded();
  /// Directories to offer beside those above the current one.
  void ShowPlaces(const QStringList& recent);
  void SelectDataFilter(int row);
  void SelectTextFilter(int row);
  [[nodiscard]] FileListView* DataFiles() const { return data_; }
  [[nodiscard]] FileListView* TextFiles() const { return text_; }

 Q_SIGNALS:
  void DirectoryChosen(const QString& path);
  /// A path that was typed.
  void FileChosen(const QString& path);
  /// The selected text file, if there is one, is to be opened.
  void TextWanted();

 private:
  void AddLists(QSplitter* to);

  Workbench& workbench_;
  LocationBar* location_;
  DirectoryTree* tree_;
  QTabWidget* tabs_;
  QComboBox* dataFilter_;
  QComboBox* textFilter_;
  FileListView* data_;
  FileListView* text_;
  QPushButton* hiddenData_;
  QPushButton* hiddenText_;
  ElidedLabel* selected_;
};

}  // namespace velmora::ui
