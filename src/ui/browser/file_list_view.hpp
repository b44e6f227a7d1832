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

  void ShowFiles(const std::string& directory, std::string_view patterns);
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

 private:
  [[nodiscard]] std::string PathOf(const QTreeWidgetItem* item) const;

  Marking marking_;
  std::string directory_;
};

}  // namespace velmora::ui
