// What lies around the plot: buttons, modes of the mouse, read-outs, and pictures of it.
#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>

#include "core/files.hpp"
#include "core/helpers.hpp"
#include "core/numbers.hpp"
#include "plot/draw_picture.hpp"
#include "plot/graph_widget.hpp"
#include "ui/graph/graph_menus.hpp"
#include "ui/graph/graph_window.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

QFrame* Rule() {
  auto* rule = new QFrame;
  rule->setFrameShape(QFrame::VLine);
  rule->setFrameShadow(QFrame::Sunken);
  return rule;
}

QLabel* Value(const char* name) {
  auto* label = new QLabel;
  label->setObjectName(QString::fromLatin1(name));
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  label->setFocusPolicy(Qt::NoFocus);
  QFont font = label->font();
  font.setBold(true);
  label->setFont(font);
  return label;
}

}  // namespace

QPushButton* GraphWindow::AddButton(QLayout& bar, const char* name, const char* caption, const char* id) {
  auto* button = new QPushButton(QString::fromLatin1(caption));
  button->setObjectName(QString::fromLatin1(name));
  button->setFocusPolicy(Qt::NoFocus);  // the keys belong to the graph
  constexpr int kRoom = 22;
  button->setFixedWidth(button->fontMetrics().horizontalAdvance(QString(button->text()).remove('&')) + kRoom);
  bar.addWidget(button);
  if (id != nullptr) {
    connect(button, &QPushButton::clicked, this, [this, id] { RunById(id); });
  } else {
    button->setEnabled(false);
    button->setToolTip(tr("Not in this version yet"));
  }
  return button;
}

void GraphWindow::AddModes(QLayout& bar) {
  struct Mode {
    TrackMode mode;
    const char* name;
    const char* caption;
    const char* id;
    QString hint;
  };
  const Mode modes[] = {
      {TrackMode::None, "optNone", "&None", "zoom.disable", tr("Wheel zooms, middle button pans")},
      {TrackMode::DragCursors, "optCursor", "&Cursor", "zoom.cursor",
       tr("Drag a cursor; beside the cursors a drag pans")},
      {TrackMode::ZoomArea, "optZoom", "&Zoom", "zoom.area", tr("Drag a rectangle to zoom into it")},
      {TrackMode::PanXAndY, "optPan", "&Pan", "zoom.pan", tr("Drag the traces")}};
  bar.addWidget(new QLabel(tr("Mouse:")));
  for (const Mode& mode : modes) {
    QPushButton* button = AddButton(bar, mode.name, mode.caption, mode.id);
    button->setCheckable(true);
    button->setToolTip(mode.hint);
    modes_.emplace_back(mode.mode, button);
  }
}

void GraphWindow::AddBar() {
  auto* strip = new QWidget;
  auto* bar = new QHBoxLayout(strip);
  bar->setContentsMargins(6, 3, 10, 3);
  bar->setSpacing(4);
  AddButton(*bar, "cmdExit", "E&xit", "view.exit");
  AddButton(*bar, "cmdSave", "Sa&ve to .VMB", "view.save");
  AddButton(*bar, "cmdStats", "&Stats", nullptr);
  AddButton(*bar, "cmdSelect", "&Channels", "view.channels");
  windowButton_ = AddButton(*bar, "cmdWindow", "&Window", "view.window");
  pointsButton_ = AddButton(*bar, "cmdPoints", "&Points", "view.points");
  AddButton(*bar, "cmdReplot", "&Reset", "view.reset");
  bar->addWidget(Rule());
  AddModes(*bar);
  bar->addStretch(1);
  trial_ = Value("trial");
  count_ = Value("count");
  interval_ = Value("interval");
  countCaption_ = new QLabel;
  intervalCaption_ = new QLabel;
  for (QLabel* label : {trial_, countCaption_, count_, intervalCaption_, interval_}) {
    bar->addWidget(label);
    if (label != countCaption_ && label != intervalCaption_) {
      bar->addSpacing(8);
    }
  }
  auto* tools = new QToolBar(tr("Graph"));
  tools->setObjectName(QStringLiteral("graphBar"));
  tools->setMovable(false);
  tools->setContextMenuPolicy(Qt::PreventContextMenu);
  tools->addWidget(strip);
  addToolBar(tools);
}

void GraphWindow::AddStatusBar() {
  mode_ = new QLabel;
  place_ = new QLabel;
  place_->setContentsMargins(0, 0, 8, 0);
  statusBar()->addWidget(mode_, 1);
  statusBar()->addPermanentWidget(place_);
  statusBar()->setSizeGripEnabled(false);
}

void GraphWindow::ShowPlace(double x, double y) {
  place_->setText(tr("%1 : %2").arg(ToQt(FormatNumber(x, workbench_.ValuePattern)),
                                    ToQt(FormatNumber(y, workbench_.ValuePattern))));
}

void GraphWindow::AddPictureEntries() {
  QMenu* file = menus_->FileMenu();
  file->addSeparator();
  const auto add = [this, file](const QString& caption, const QKeySequence& keys,
                                void (GraphWindow::*run)()) {
    QAction* action = file->addAction(caption, keys);
    connect(action, &QAction::triggered, this, run);
  };
  add(tr("Save p&icture..."), Qt::CTRL | Qt::SHIFT | Qt::Key_S, &GraphWindow::SavePicture);
  add(tr("C&opy picture"), QKeySequence::Copy, &GraphWindow::CopyPicture);
  add(tr("&Print..."), QKeySequence::Print, &GraphWindow::Print);
  QAction* paper = file->addAction(tr("Pictures on &white"));
  paper->setCheckable(true);
  paper->setChecked(whitePaper_);
  connect(paper, &QAction::toggled, this, [this](bool on) { whitePaper_ = on; });
  file->addSeparator();
  QAction* exit = file->addAction(tr("E&xit"), QKeySequence::Close);
  connect(exit, &QAction::triggered, this, [this] { RunById("view.exit"); });
}

PictureOrder GraphWindow::Order(const SingleView& view) const {
  return {.graph = view.Drawing(),
          .title = view.TitleText(),
          .width = std::max(plot_->width(), PictureOrder::kSmallest),
          .height = std::max(plot_->height(), PictureOrder::kSmallest),
          .paper = whitePaper_ ? std::optional(kWhite) : std::nullopt};
}

void GraphWindow::SavePicture() {
  const SingleView* view = View();
  if (view == nullptr) {
    return;
  }
  const std::vector<std::string> chosen = workbench_.questions.AskFile(
      {.mode = FileQuestion::Mode::Save,
       .title = "Save picture",
       .defaultName = workbench_.trial.TrialName + ".png",
       .extension = ".png",
       .filter = "PNG image (.png)|*.png|SVG drawing (.svg)|*.svg|PDF document (.pdf)|*.pdf",
       .directory = workbench_.DataDir});
  if (chosen.empty()) {
    return;
  }
  const std::optional<PictureFormat> format = PictureFormatOf(chosen.front());
  if (!format) {
    ShowRefusal(workbench_, {.title = "Save picture",
                             .text = "A picture is a .png, .svg or .pdf file.",
                             .icon = Icon::Exclamation});
    return;
  }
  try {
    PictureOrder order = Order(*view);
    order.format = *format;
    OutputFile file(chosen.front());
    file.Write(DrawPicture(order));
    file.Commit();
  } catch (const std::exception& error) {
    ShowFailure(workbench_, {.title = "Save picture", .text = error.what(), .icon = Icon::Exclamation});
  }
}

void GraphWindow::CopyPicture() {
  if (const SingleView* view = View()) {
    const std::string png = DrawPicture(Order(*view));
    QApplication::clipboard()->setImage(
        QImage::fromData(QByteArray::fromRawData(png.data(), static_cast<qsizetype>(png.size()))));
  }
}

void GraphWindow::Print() {
  const SingleView* view = View();
  if (view == nullptr) {
    return;
  }
  QPrinter printer;
  printer.setPageOrientation(QPageLayout::Landscape);
  printer.setDocName(windowTitle());
  QPrintDialog dialog(&printer, this);
  if (dialog.exec() != QDialog::Accepted) {
    return;
  }
  try {
    PrintPicture(Order(*view), printer);
  } catch (const std::exception& error) {
    ShowFailure(workbench_, {.title = "Print", .text = error.what(), .icon = Icon::Exclamation});
  }
}

// Where the keys are, for a few seconds at the first graph of a session.
void GraphWindow::ShowHint() {
  constexpr int kMilliseconds = 7000;
  static bool shown = false;
  if (shown) {
    return;
  }
  shown = true;
  hint_ = new QLabel(tr("1 or 2 for cursors, wheel to zoom, ? for all keys"), plot_);
  hint_->setObjectName(QStringLiteral("hint"));
  hint_->setStyleSheet(QStringLiteral(
      "background: rgba(40, 40, 40, 210); color: white; border-radius: 5px; padding: 6px 12px;"));
  hint_->setAttribute(Qt::WA_TransparentForMouseEvents);
  hint_->adjustSize();
  hint_->show();
  QTimer::singleShot(kMilliseconds, hint_, &QObject::deleteLater);
  PlaceHint();
}

void GraphWindow::PlaceHint() {
  constexpr int kAboveTheAxis = 90;
  if (hint_ != nullptr) {
    hint_->move((plot_->width() - hint_->width()) / 2, plot_->height() - kAboveTheAxis);
  }
}

void GraphWindow::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  PlaceHint();
}

}  // namespace velmora::ui
