#pragma once

#include <QObject>
#include <functional>
#include <string>
#include <vector>

class QWidget;

namespace velmora::ui {

/// Takes the files that are dropped on a window, unless a dialogue waits for an answer.
class FileDrops : public QObject {
 public:
  using Open = std::function<void(const std::vector<std::string>& paths)>;

  FileDrops(QWidget* window, Open open);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  Open open_;
};

}  // namespace velmora::ui
