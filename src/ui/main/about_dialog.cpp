#include "ui/main/about_dialog.hpp"

#include <QBoxLayout>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>

#include "core/files/start.hpp"
#include "ui/main/icons.hpp"
#include "ui/text.hpp"

namespace velmora::ui {

void ShowAbout(QWidget* parent) {
  QDialog dialog(parent);
  dialog.setObjectName(QStringLiteral("frmAbout"));
  dialog.setWindowTitle(QObject::tr("About Velmora2"));
  auto* layout = new QVBoxLayout(&dialog);
  layout->setContentsMargins(28, 24, 28, 18);
  layout->setSpacing(8);
  QStringList lines = ToQt(AboutText()).split('\n');
  auto* top = new QHBoxLayout;
  auto* picture = new QLabel;
  picture->setPixmap(IconOf(Glyph::Graph).pixmap(48, 48));
  top->addWidget(picture);
  top->addSpacing(10);
  auto* name = new QLabel(lines.takeFirst());
  QFont font = name->font();
  font.setPointSizeF(font.pointSizeF() * 2.0);
  font.setWeight(QFont::DemiBold);
  name->setFont(font);
  top->addWidget(name, 1);
  layout->addLayout(top);
  layout->addSpacing(6);
  for (const QString& line : lines) {
    auto* label = new QLabel(line.trimmed());
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(label);
  }
  layout->addSpacing(10);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  layout->addWidget(buttons);
  dialog.exec();
}

}  // namespace velmora::ui
