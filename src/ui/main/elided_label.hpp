#pragma once

#include <QLabel>

namespace velmora::ui {

/// A line of plain text that is as wide as its place and never makes it wider: what does not fit is left
/// out, and the tool tip has it all.
class ElidedLabel : public QLabel {
 public:
  explicit ElidedLabel(Qt::TextElideMode where, QWidget* parent = nullptr);

  void ShowText(const QString& text);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void Elide();

  Qt::TextElideMode where_;
  QString full_;
};

}  // namespace velmora::ui
