#pragma once

#include "core/workbench.hpp"
#include "dsp/filter_section.hpp"
#include "ui/form_picture.hpp"
#include "ui/line_chart.hpp"

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
  void PaintCurve(QPainter& painter, const LineChart& chart, const Response& response) const;

  const Form& form_;
  const Workbench& workbench_;
  int channel_ = 0;
};

}  // namespace velmora::ui
