#pragma once

#include <QWidget>

class QBoxLayout;
class QHBoxLayout;

namespace velmora::ui {

/// Two rows of buttons beside each other, or one below the other where the window is too narrow.
class TwoPartBar : public QWidget {
 public:
  TwoPartBar();

  [[nodiscard]] QHBoxLayout& First() { return *first_; }
  [[nodiscard]] QHBoxLayout& Second() { return *second_; }
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void Arrange();

  QBoxLayout* parts_;
  QHBoxLayout* first_;
  QHBoxLayout* second_;
};

}  // namespace velmora::ui
