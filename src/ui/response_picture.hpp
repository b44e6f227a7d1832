#pragma once

#include "core/workbench.hpp"
#include "dsp/filter_section.hpp"
#include "ui/form_picture.hpp"

namespace velmora::ui {

/// What the filter of the dialogue would do to the current channel: its gain over the frequencies.
class ResponsePicture : public FormPicture {
 public:
  ResponsePicture(const Form& form, const Workbench& workbench);
  void Show(int channel) override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Response {
    PassType type = PassType::Low;
    double cutoff = 0.0;
    int runs = 1;
    DesignedSection designed;
  };
  [[nodiscard]] Response Current() const;
  [[nodiscard]] QString Caption(const Response& response) const;
  void PaintGrid(QPainter& painter, const QRectF& area, double low, double high) const;
  void PaintCurve(QPainter& painter, const QRectF& area, double low, double high,
                  const Response& response) const;

  const Form& form_;
  const Workbench& workbench_;
  int channel_ = 0;
};

}  // namespace velmora::ui
