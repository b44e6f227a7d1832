#pragma once

#include "ui/dialogs/form_picture.hpp"

namespace velmora::ui {

/// The tables of a filter that is tried out as three charts: its gain and its phase over the frequencies,
/// and its answer to a step.
class FilterTestPicture : public FormPicture {
 public:
  explicit FilterTestPicture(const Form& form);
  void Show(int channel) override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Curve {
    QString caption;
    std::vector<QPointF> points;
    QString units;  // of the abscissa
    bool logarithmic = false;
  };
  [[nodiscard]] Curve CurveOf(std::size_t table, std::size_t column) const;
  void Paint(QPainter& painter, const QRectF& room, const Curve& curve) const;

  const Form& form_;
};

}  // namespace velmora::ui
