#include "ui/main/file_drops.hpp"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

#include "ui/text.hpp"

namespace velmora::ui {

FileDrops::FileDrops(QWidget* window, Open open) : QObject(window), open_(std::move(open)) {
  window->setAcceptDrops(true);
  window->installEventFilter(this);
}

bool FileDrops::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::DragEnter && event->type() != QEvent::Drop) {
    return QObject::eventFilter(watched, event);
  }
  auto* drop = static_cast<QDropEvent*>(event);  // entering is a kind of it
  const QList<QUrl> urls = drop->mimeData()->urls();
  std::vector<std::string> paths;
  for (const QUrl& url : urls) {
    if (url.isLocalFile()) {
      paths.push_back(ToStd(url.toLocalFile()));
    }
  }
  if (paths.empty() || QApplication::activeModalWidget() != nullptr) {
    return true;
  }
  drop->acceptProposedAction();
  if (event->type() == QEvent::Drop) {
    // The program that the file comes from waits until the drop is over.
    QMetaObject::invokeMethod(
        this, [this, paths] { open_(paths); }, Qt::QueuedConnection);
  }
  return true;
}

}  // namespace velmora::ui
