#pragma once

#include <QWidget>

class QBoxLayout;

namespace velmora::ui {

/// What is in the middle while there is no trial: one sentence, three ways in, the recent files.
class WelcomePanel : public QWidget {
  Q_OBJECT

 public:
  explicit WelcomePanel(QWidget* parent = nullptr);
  void ShowRecent(const QStringList& paths);

 Q_SIGNALS:
  void ExampleWanted();
  void FileWanted(const QString& path);

 private:
  QBoxLayout* recent_;
};

}  // namespace velmora::ui
