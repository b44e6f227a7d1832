#include "ui/dialogs/qt_questions.hpp"

#include <QApplication>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "core/questions/form.hpp"
#include "core/questions/picker.hpp"
#include "core/questions/progress.hpp"
#include "ui/dialogs/file_dialog.hpp"
#include "ui/dialogs/form_dialog.hpp"
#include "ui/dialogs/picker_dialog.hpp"
#include "ui/elided_label.hpp"
#include "ui/screen_room.hpp"
#include "ui/text.hpp"
#include "ui/trial/channel_table_view.hpp"

namespace velmora::ui {
namespace {

constexpr int kWidestWord = 420;  // pixels, in a box
constexpr int kNarrowest = 380;

QMessageBox::Icon BoxIcon(Icon icon) {
  switch (icon) {
    case Icon::Exclamation:
      return QMessageBox::Warning;
    case Icon::Information:
      return QMessageBox::Information;
    case Icon::Question:
      return QMessageBox::Question;
    case Icon::Stop:
      return QMessageBox::Critical;
    case Icon::None:
      break;
  }
  return QMessageBox::NoIcon;
}

QMessageBox::StandardButton BoxButton(Button button) {
  switch (button) {
    case Button::Cancel:
      return QMessageBox::Cancel;
    case Button::Yes:
      return QMessageBox::Yes;
    case Button::No:
      return QMessageBox::No;
    case Button::Retry:
      return QMessageBox::Retry;
    case Button::OK:
      break;
  }
  return QMessageBox::Ok;
}

bool Has(const Box& box, Button button) {
  return std::find(box.buttons.begin(), box.buttons.end(), button) != box.buttons.end();
}

/// The button for whoever presses Enter without having read.
Button SafeButton(const Box& box) {
  if (Has(box, Button::Cancel)) {
    return Button::Cancel;
  }
  return Has(box, Button::No) && box.icon != Icon::Question ? Button::No : box.buttons.front();
}

/// What Esc and the close button of the box mean.
Button LeavingButton(const Box& box) {
  if (Has(box, Button::Cancel)) {
    return Button::Cancel;
  }
  return Has(box, Button::No) ? Button::No : box.buttons.front();
}

// A text that is taller than the screen, less the buttons below it, is scrolled.
void ScrollTallText(QMessageBox& message, int room) {
  constexpr int kButtons = 120;
  auto* label = message.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
  auto* layout = message.layout();
  if (label == nullptr || layout == nullptr || label->sizeHint().height() <= room - kButtons) {
    return;
  }
  auto* scroll = new QScrollArea;
  delete layout->replaceWidget(label, scroll);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setWidget(label);
  scroll->setWidgetResizable(true);
  scroll->setMinimumSize(label->sizeHint().width() + 2 * scroll->verticalScrollBar()->sizeHint().width(),
                         room - kButtons);
}

}  // namespace

QtQuestions::QtQuestions(QWidget* window) : window_(window), workedIn_(window) {
  QObject::connect(qApp, &QGuiApplication::focusWindowChanged, &context_,
                   [this](QWindow* focused) { NoteWindow(focused); });
}

void QtQuestions::Attach(Workbench& workbench, ChannelTraces& traces) {
  workbench_ = &workbench;
  traces_ = &traces;
}

void QtQuestions::AnswerNextPick(std::function<std::string(ChannelPicker&)> answer) {
  nextPick_ = std::move(answer);
}

void QtQuestions::AnswerNextForm(std::function<std::string(Form&)> answer) {
  nextForm_ = std::move(answer);
}

void QtQuestions::AnswerNextInput(std::string text) {
  nextInput_ = std::move(text);
}

bool QtQuestions::TakeGraphWanted() {
  return std::exchange(graphWanted_, false);
}

// Which window is active is the window manager's word and comes late: none is while one dialogue goes and
// the next one comes. So the innermost dialogue on the screen counts, then the window that was worked in
// last. A panel of progress is no parent: it goes before what is asked over it.
QWidget* QtQuestions::Parent() const {
  QWidget* modal = QApplication::activeModalWidget();
  if (modal != nullptr && modal->isVisible() && modal != progress_.get()) {
    return modal;
  }
  if (beside_ != nullptr && beside_->isVisible()) {
    return beside_;
  }
  return workedIn_ != nullptr && workedIn_->isVisible() ? workedIn_.data() : window_;
}

void QtQuestions::NoteWindow(QWindow* window) {
  for (QWidget* top : QApplication::topLevelWidgets()) {
    if (window != nullptr && top->windowHandle() == window && top->isWindow() &&
        top->windowType() == Qt::Window) {
      workedIn_ = top;
    }
  }
}

// Most given texts leave out which file they mean. Whoever has a dozen of them in hand wants to know.
QString QtQuestions::FileSpokenOf(const Box& box) const {
  const QString path =
      ToQt(box.about.empty() && progress_ != nullptr ? progress_->Panel().FileName() : box.about);
  const QString name = path.section('/', -1);
  return ToQt(box.text).contains(name) ? QString() : name;
}

Button QtQuestions::AskBox(const Box& box) {
  QWidget* parent = Parent();
  const QString text = ToQt(box.text);
  QMessageBox message(BoxIcon(box.icon), ToQt(box.title.empty() ? "Velmora2" : box.title),
                      ElideWords(text, parent->fontMetrics(), kWidestWord), QMessageBox::NoButton, parent);
  if (message.text() != text) {
    message.setToolTip(text);
  }
  message.setTextFormat(Qt::PlainText);
  if (const QString file = FileSpokenOf(box); !file.isEmpty()) {
    message.setInformativeText(ElideWords(file, parent->fontMetrics(), kWidestWord));
  }
  message.setTextInteractionFlags(Qt::TextSelectableByMouse);
  for (const Button button : box.buttons) {
    message.addButton(BoxButton(button));
  }
  message.setDefaultButton(BoxButton(SafeButton(box)));
  message.setEscapeButton(BoxButton(LeavingButton(box)));
  ScrollTallText(message, RoomOn(*parent).height());
  const int pressed = message.exec();
  parent->activateWindow();
  for (const Button button : box.buttons) {
    if (BoxButton(button) == pressed) {
      return button;
    }
  }
  return LeavingButton(box);
}

std::string QtQuestions::AskInput(const InputQuestion& question) {
  if (nextInput_) {
    return *std::exchange(nextInput_, std::nullopt);
  }
  QWidget* parent = Parent();
  QInputDialog dialog(parent);
  dialog.setWindowTitle(ToQt(question.title.empty() ? "Velmora2" : question.title));
  dialog.setLabelText(ElideWords(ToQt(question.prompt), dialog.fontMetrics(), kWidestWord));
  dialog.setTextValue(ToQt(question.defaultText));
  dialog.setMinimumWidth(kNarrowest);
  if (auto* label = dialog.findChild<QLabel*>()) {
    label->setWordWrap(true);
  }
  PlaceOver(dialog, *parent);
  const bool accepted = dialog.exec() == QDialog::Accepted;
  parent->activateWindow();
  return accepted ? ToStd(dialog.textValue()) : std::string();
}

std::vector<std::string> QtQuestions::AskFile(const FileQuestion& question) {
  return nextFiles_.empty() ? ChooseFiles(question, *Parent()) : std::exchange(nextFiles_, {});
}

template <typename Make>
AskingDialog& QtQuestions::DialogOf(const void* asker, const Make& make) {
  std::unique_ptr<AskingDialog>& dialog = dialogs_[asker];
  if (dialog == nullptr) {
    dialog = make();
  }
  return *dialog;
}

// The keys go back to where the dialogue came from, which not every window manager sees to.
void QtQuestions::Leave(const void* asker) {
  if (dialogs_.erase(asker) > 0) {
    Parent()->activateWindow();
  }
}

std::string QtQuestions::AskPick(ChannelPicker& picker) {
  if (nextPick_) {
    return std::exchange(nextPick_, nullptr)(picker);
  }
  return DialogOf(&picker,
                  [&] {
                    Offer(picker);
                    auto dialog = std::make_unique<PickerDialog>(picker, *workbench_, *traces_, Parent());
                    ShowOffer(*dialog);
                    return dialog;
                  })
      .Ask();
}

// One channel is an answer to either kind of picker, several only to the one that takes several.
void QtQuestions::Offer(ChannelPicker& picker) {
  const auto count = std::count(offered_.begin(), offered_.end(), true);
  if (picker.Selects() && count > 0) {
    picker.Offer(std::exchange(offered_, {}));
  } else if (picker.SelectsOne() && count == 1) {
    const auto* chosen = std::find(offered_.begin(), offered_.end(), true);
    picker.Choose(static_cast<int>(chosen - offered_.begin()));
    offered_ = {};
  }
}

void QtQuestions::Offer(Form& form) {
  if (std::count(offered_.begin(), offered_.end(), true) == 0) {
    return;
  }
  for (const FormField& field : form.Fields()) {
    if (!field.isSelection) {
      continue;
    }
    for (int c = 1; c <= workbench_->trial.NChan; ++c) {
      form.Edit(field, c, offered_[c] ? "true" : "false");
    }
    offered_ = {};
    return;
  }
}

// A dialogue that selects no channels, but asks for a value of each, starts at the first of them.
void QtQuestions::ShowOffer(const AskingDialog& dialog) const {
  if (auto* table = dialog.findChild<ChannelTableView*>()) {
    table->SelectChannels(offered_);
  }
}

void QtQuestions::EndPick(ChannelPicker& picker) {
  Leave(&picker);
}

std::string QtQuestions::AskForm(Form& form) {
  nextFiles_.clear();
  if (nextForm_) {
    return nextForm_(form);
  }
  return DialogOf(&form,
                  [&] {
                    form.TakeFound();  // marked as found, to be taken back by whoever knows better
                    Offer(form);
                    auto dialog = MakeFormDialog(form, *workbench_, Parent());
                    dialog->onFiles = [this](std::vector<std::string> paths) {
                      nextFiles_ = std::move(paths);
                    };
                    ShowOffer(*dialog);
                    StandBeside(form, *dialog);
                    return dialog;
                  })
      .Ask();
}

void QtQuestions::StandBeside(const Form& form, AskingDialog& dialog) {
  QWidget* graph = nullptr;
  for (QWidget* top : QApplication::topLevelWidgets()) {
    graph = top->isVisible() && top->objectName() == QStringLiteral("frmGraph") ? top : graph;
  }
  if (form.StandsBesideGraph() && graph != nullptr) {
    dialog.StandBeside(graph);
    beside_ = &dialog;
  }
}

void QtQuestions::EndForm(Form& form) {
  Leave(&form);
}

void QtQuestions::ShowProgress(ProgressPanel& panel) {
  if (progress_ == nullptr) {
    progress_ = std::make_unique<ProgressDialog>(panel, window_);
  }
  progress_->Update();
}

// A panel that has finished its work waits for a person who is new to the program. One that came up within
// the work of another leaves that one on the screen.
void QtQuestions::EndProgress(ProgressPanel& panel) {
  if (progress_ == nullptr || &progress_->Panel() != &panel) {
    return;
  }
  if (panel.Finished() && workbench_->UserLevel == UserLevelKind::Novice) {
    graphWanted_ = progress_->WaitForDone();
  }
  progress_.reset();
}

}  // namespace velmora::ui
