#pragma once

#include "core/workbench.hpp"
#include "ui/dialogs/form_picture.hpp"
#include "ui/dialogs/line_chart.hpp"
#include "ui/dialogs/shown_filter.hpp"

namespace velmora::ui {

/// What the filter of the dialogue would do to the current channel: its gain over the frequencies.
class ResponsePicture : public FormPicture {
 public:
  ResponsePicture(const Form& form, const Workbench& workbench);
  void Show(int channel) override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] QString Caption(const ShownFilter& shown) const;
  void PaintCurve(QPainter& painter, const LineChart& chart, const ShownFilter& shown) const;

  const Form& form_;
  const Workbench& workbench_;
  int channel_ = 0;
};

}  // namespace velmora::ui
