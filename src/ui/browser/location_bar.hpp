#pragma once

#include <QStringList>
#include <QWidget>

class QComboBox;

namespace velmora::ui {

/// Where the browser is: a line to type a path into, with the directories above, those that were worked
/// in last and the file systems to choose from, and a way home.
class LocationBar : public QWidget {
  Q_OBJECT

 public:
  explicit LocationBar(QWidget* parent = nullptr);

  void Show(const QString& directory);
  void SetRecent(const QStringList& directories);

 Q_SIGNALS:
  void DirectoryChosen(const QString& path);
  /// What was typed is a file.
  void FileChosen(const QString& path);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Fill();
  void Section(const QStringList& paths);
  void Typed();

  QComboBox* line_;
  QString directory_;
  QStringList recent_;
};

}  // namespace velmora::ui
