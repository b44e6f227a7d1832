#pragma once

#include "core/trial/trial.hpp"
#include "graph/multi/multi_choose_form.hpp"
#include "ui/dialogs/form_picture.hpp"

namespace velmora::ui {

/// The stack that the dialogue of the multi-axis graph would open: a lane a graph with its number and the
/// labels of its channels in their colours.
class LayoutPicture : public FormPicture {
 public:
  LayoutPicture(const MultiChooseForm& form, const Trial& trial);

  void Show(int channel) override;
  [[nodiscard]] QSize sizeHint() const override { return {260, 320}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void PaintLane(QPainter& painter, const QRectF& lane, int graph) const;

  const MultiChooseForm& form_;
  const Trial& trial_;
  PerChannel<std::int16_t> graphs_{};
};

}  // namespace velmora::ui
