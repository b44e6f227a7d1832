#pragma once

#include <QObject>
#include <functional>
#include <string>

class QWidget;

namespace velmora::ui {

/// Takes the files that are dropped on a window.
class FileDrops : public QObject {
 public:
  using Open = std::function<void(const std::string& path)>;

  FileDrops(QWidget* window, Open open);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  Open open_;
};

}  // namespace velmora::ui
