#pragma once

#include <QTransform>

#include "core/trial/trial.hpp"
#include "forceplate/plate_form.hpp"
#include "ui/dialogs/form_picture.hpp"

namespace velmora::ui {

/// The plates from above, to scale, as they are being defined: outlines, sensors with the numbers of their
/// channels, axes; and below what the channels of the loaded trial would be for the plate shown.
class PlatePicture : public FormPicture {
 public:
  PlatePicture(const PlateForm& form, const Trial& trial);
  void Show(int channel) override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] int PlatesShown() const;
  [[nodiscard]] QRectF Extent(const PlateMemory& plates) const;
  void PaintPlate(QPainter& painter, const QTransform& onScreen, const PlateMemory& plates, int plate) const;
  void PaintAxes(QPainter& painter, const QTransform& onScreen) const;
  void PaintFacts(QPainter& painter, const QRectF& room, const PlateMemory& plates) const;
  [[nodiscard]] QStringList ChannelsOf(const PlateMemory& plates) const;
  [[nodiscard]] QString ForceOf(const PlateMemory& plates) const;

  const PlateForm& form_;
  const Trial& trial_;
};

}  // namespace velmora::ui
