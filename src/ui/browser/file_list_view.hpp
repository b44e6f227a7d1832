#pragma once

#include <QTreeWidget>
#include <string>

namespace velmora::ui {

/// The files of a directory: name, size, date. Sorted by a click on a head.
class FileListView : public QTreeWidget {
  Q_OBJECT

 public:
  enum class Marking { Unreadable, None };

  explicit FileListView(Marking marking, QWidget* parent = nullptr);

  /// In the same directory the row stays where it is.
  void ShowFiles(const std::string& directory, std::string_view patterns);
  /// Files that the patterns left out.
  [[nodiscard]] int Hidden() const { return hidden_; }
  void MarkLoaded(const std::string& path);
  /// Makes the file the current row, when it is listed, without telling anybody.
  void GoTo(const std::string& path);
  /// Empty when none is selected. The path is the file's bytes, which need not be UTF-8: a QString would
  /// not find it again.
  [[nodiscard]] std::string SelectedPath() const;

 Q_SIGNALS:
  void Selected(const std::string& path);
  void Opened(const std::string& path);
  void RightClicked(const std::string& path);
  /// A click into a list without files.
  void EmptyClicked();

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  [[nodiscard]] std::string PathOf(const QTreeWidgetItem* item) const;

  [[nodiscard]] QTreeWidgetItem* ItemOf(const std::string& path) const;
  void FitColumns();

  Marking marking_;
  std::string directory_;
  std::string loaded_;
  int hidden_ = 0;
};

}  // namespace velmora::ui
