#include "ui/graph/graph_pictures.hpp"

#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrinter>

#include "core/trial/helpers.hpp"
#include "graph/save_picture.hpp"
#include "plot/draw_picture.hpp"
#include "ui/text.hpp"

namespace velmora::ui {

GraphPictures::GraphPictures(Workbench& workbench, QWidget* window, Shown shown)
    : workbench_(workbench), window_(window), shown_(std::move(shown)) {}

GraphPictures::~GraphPictures() = default;

void GraphPictures::AddEntries(QMenu* menu) {
  const auto add = [this, menu](const QString& caption, const QKeySequence& keys,
                                void (GraphPictures::*run)()) {
    QAction* action = menu->addAction(caption, keys);
    QObject::connect(action, &QAction::triggered, window_, [this, run] { (this->*run)(); });
  };
  add(QStringLiteral("&Print"), QKeySequence::Print, &GraphPictures::Print);
  add(QStringLiteral("Printer setup"), {}, &GraphPictures::SetUpPrinter);
  add(QObject::tr("Save p&icture..."), Qt::CTRL | Qt::SHIFT | Qt::Key_S, &GraphPictures::Save);
  add(QObject::tr("C&opy picture"), QKeySequence::Copy, &GraphPictures::Copy);
  QAction* paper = menu->addAction(QObject::tr("Pictures on &white"));
  paper->setCheckable(true);
  paper->setChecked(whitePaper_);
  QObject::connect(paper, &QAction::toggled, window_, [this](bool on) { whitePaper_ = on; });
}

std::optional<PictureOrder> GraphPictures::Order() const {
  std::optional<PictureOrder> order = shown_();
  if (order && whitePaper_) {
    order->paper = kWhite;
  }
  return order;
}

void GraphPictures::Save() {
  if (std::optional<PictureOrder> order = Order()) {
    SavePicture(workbench_, std::move(*order));
  }
}

void GraphPictures::Copy() {
  if (const std::optional<PictureOrder> order = Order()) {
    const std::string png = DrawPicture(*order);
    QApplication::clipboard()->setImage(
        QImage::fromData(QByteArray::fromRawData(png.data(), static_cast<qsizetype>(png.size()))));
  }
}

QPrinter& GraphPictures::Printer() {
  if (printer_ == nullptr) {
    printer_ = std::make_unique<QPrinter>();
    printer_->setPageOrientation(QPageLayout::Landscape);
  }
  return *printer_;
}

void GraphPictures::SetUpPrinter() {
  QPageSetupDialog(&Printer(), window_).exec();
}

void GraphPictures::Print() {
  const std::optional<PictureOrder> order = Order();
  if (!order) {
    return;
  }
  Printer().setDocName(ToQt(workbench_.trial.TrialName));
  if (QPrintDialog(&Printer(), window_).exec() != QDialog::Accepted) {
    return;
  }
  try {
    PrintPicture(*order, Printer());
  } catch (const std::exception& error) {
    ShowFailure(workbench_, {.title = "Print", .text = error.what(), .icon = Icon::Exclamation});
  }
}

}  // namespace velmora::ui
