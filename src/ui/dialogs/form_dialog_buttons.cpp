// The buttons of a form's dialogue: at its foot, in rows, in menus, and what is dropped on them.
#include <QDragEnterEvent>
#include <QGridLayout>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QUrl>
#include <map>

#include "core/text/text.hpp"
#include "ui/dialogs/form_dialog.hpp"
#include "ui/main/theme.hpp"
#include "ui/screen_room.hpp"
#include "ui/text.hpp"

namespace velmora::ui {

// On a screen with little room they stand in several rows.
QHBoxLayout* FormDialog::AddInRows(const std::vector<QPushButton*>& buttons, QBoxLayout* to) const {
  constexpr int kBesides = 60;  // margins
  const int room = form_.StandsBesideGraph() ? kNarrow : RoomOn(*this).width() - kBesides;
  auto* row = new QHBoxLayout;
  to->addLayout(row);
  int used = 0;
  for (QPushButton* push : buttons) {
    const int width = push->sizeHint().width() + std::max(row->spacing(), 0);
    if (used > 0 && used + width > room) {
      row->addStretch();
      row = new QHBoxLayout;
      to->addLayout(row);
      used = 0;
    }
    row->addWidget(push);
    used += width;
  }
  return row;
}

void FormDialog::AddButtons(QBoxLayout* to) {
  refusal_ = new QLabel;
  refusal_->setTextFormat(Qt::PlainText);
  refusal_->setWordWrap(true);  // a long one must not widen the dialogue
  SetTone(refusal_, Tone::Warning);
  to->addWidget(refusal_);
  std::vector<QPushButton*> left;
  std::vector<QPushButton*> right;
  for (std::size_t k = 0; k < pushes_.size(); ++k) {
    const FormButton& button = form_.Buttons()[k];
    if (!button.menu.empty()) {
      if (QPushButton* opens = AddToMenu(button)) {
        left.push_back(opens);
      }
      continue;
    }
    if (button.row > 0) {
      continue;
    }
    if (button.role == FormButton::Role::Other) {
      left.push_back(pushes_[k]);
    } else {
      right.push_back(pushes_[k]);
    }
    if (button.role == FormButton::Role::Cancel) {
      SetCancelCaption(WithoutMnemonic(button.caption));
    }
  }
  std::vector<QPushButton*> all = left;
  all.insert(all.end(), right.begin(), right.end());
  QHBoxLayout* last = AddInRows(all, to);
  last->insertStretch(last->count() - std::min<int>(last->count(), static_cast<int>(right.size())));
  const bool cancels =
      std::any_of(form_.Buttons().begin(), form_.Buttons().end(),
                  [](const FormButton& button) { return button.role == FormButton::Role::Cancel; });
  if (!cancels) {
    SetCancelCaption("OK");
  }
}

QPushButton* FormDialog::AddToMenu(const FormButton& button) {
  QMenu*& menu = menus_[button.menu];
  QPushButton* opens = nullptr;
  if (menu == nullptr) {
    opens = new QPushButton(ToQt(button.menu));
    opens->setAutoDefault(false);
    menu = new QMenu(opens);
    opens->setMenu(menu);
  }
  QAction* action = menu->addAction(ToQt(button.caption), this, [this, &button] { PressButton(button); });
  action->setCheckable(static_cast<bool>(button.checked));
  entries_.push_back({&button, action});
  return opens;
}

QPushButton* FormDialog::MakeButton(const FormButton& button) {
  auto* push =
      new QPushButton(ToQt(button.caption));  // the keys come to it where it is put, behind the fields
  push->setAutoDefault(false);
  push->setDefault(button.role == FormButton::Role::Accept);
  connect(push, &QPushButton::clicked, this, [this, &button] { PressButton(button); });
  setAcceptDrops(acceptDrops() || button.takesFiles);
  return push;
}

// Buttons that stand for the steps of the work, row by row below the fields.
QWidget* FormDialog::MakeButtonRows() {
  QGridLayout* grid = nullptr;
  std::map<int, int> columns;
  for (std::size_t k = 0; k < pushes_.size(); ++k) {
    const int row = form_.Buttons()[k].row;
    if (row == 0) {
      continue;
    }
    if (grid == nullptr) {
      grid = new QGridLayout(new QWidget);
      grid->setContentsMargins(0, 8, 0, 0);
    }
    grid->addWidget(pushes_[k], row, columns[row]++);
  }
  return grid == nullptr ? nullptr : grid->parentWidget();
}

// A press may have named buttons anew, or have made others possible.
void FormDialog::ShowButtons() {
  const std::vector<FormButton>& buttons = form_.Buttons();
  const bool leads = std::any_of(buttons.begin(), buttons.end(), [](const auto& one) { return one.next; });
  for (std::size_t k = 0; k < pushes_.size(); ++k) {
    if (pushes_[k] == nullptr) {
      continue;
    }
    ShowCaption(*pushes_[k], ToQt(buttons[k].caption));
    pushes_[k]->setEnabled(buttons[k].whyNot.empty());
    pushes_[k]->setToolTip(ToQt(buttons[k].whyNot));
    if (leads) {
      pushes_[k]->setDefault(buttons[k].next);
    }
  }
}

const FormButton* FormDialog::FileButton() const {
  const std::vector<FormButton>& all = form_.Buttons();
  const auto it = std::find_if(all.begin(), all.end(), [](const FormButton& button) {
    return button.takesFiles && button.whyNot.empty();
  });
  return it == all.end() ? nullptr : &*it;
}

void FormDialog::dragEnterEvent(QDragEnterEvent* event) {
  const QList<QUrl> urls = event->mimeData()->urls();
  if (FileButton() != nullptr && !urls.isEmpty() && urls.constFirst().isLocalFile()) {
    event->acceptProposedAction();
  }
}

// The program that the files come from waits until the drop is over.
void FormDialog::dropEvent(QDropEvent* event) {
  std::vector<std::string> paths;
  for (const QUrl& url : event->mimeData()->urls()) {
    if (url.isLocalFile()) {
      paths.push_back(ToStd(url.toLocalFile()));
    }
  }
  event->acceptProposedAction();
  QMetaObject::invokeMethod(
      this,
      [this, paths] {
        if (const FormButton* button = FileButton(); button != nullptr && onFiles) {
          onFiles(paths);
          PressButton(*button);
        }
      },
      Qt::QueuedConnection);
}

}  // namespace velmora::ui
