#pragma once

#include <QTreeView>
#include <memory>

class QAbstractFileIconProvider;
class QFileSystemModel;

namespace velmora::ui {

/// The directories of this computer. Rows stay where they are while somebody clicks on them: one click
/// chooses a directory, a double click opens it in the tree.
class DirectoryTree : public QTreeView {
  Q_OBJECT

 public:
  explicit DirectoryTree(QWidget* parent = nullptr);
  ~DirectoryTree() override;

  /// Makes this the current directory and brings it in sight; what is in sight stays where it is.
  void Show(const QString& path);

 Q_SIGNALS:
  /// By mouse or keys; told once the click is over.
  void Chosen(const QString& path);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void CurrentChanged(const QModelIndex& index);
  void Reveal();

  std::unique_ptr<QAbstractFileIconProvider> icons_;
  QFileSystemModel* directories_;
  QString shown_;           // the directory to be seen, which the tree may not have read yet
  bool showing_ = false;    // the current row changes because the program says so
  bool revealing_ = false;  // rows may still come in above what is to be seen
};

}  // namespace velmora::ui
