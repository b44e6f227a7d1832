#include "ui/dialogs/picker_dialog.hpp"

#include <QBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "core/text/text.hpp"
#include "formats/fixed_names.hpp"
#include "ui/desktop.hpp"
#include "ui/elided_label.hpp"
#include "ui/graph/form_graph_panel.hpp"
#include "ui/main/theme.hpp"
#include "ui/screen_room.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

constexpr int kWidth = 560;
constexpr int kFewestRows = 4;
constexpr int kRowsThatFit = 16;

}  // namespace

PickerDialog::PickerDialog(ChannelPicker& picker, const Workbench& workbench, const ChannelTraces& traces,
                           QWidget* parent)
    : AskingDialog(parent),
      picker_(picker),
      workbench_(workbench),
      left_(picker.ValuesOf(), workbench, picker.NoValue(), [&picker](int c) { return picker.Value(c); }) {
  setObjectName(QStringLiteral("frmChoose"));
  setWindowTitle(tr("Channels"));
  auto* layout = new QVBoxLayout(this);
  AddHead(layout);
  model_ = new ChannelTableModel(workbench, Columns(), this);
  table_ = new ChannelTableView(workbench, &traces, model_, this);
  const int row = table_->verticalHeader()->defaultSectionSize();
  table_->setMinimumSize(kWidth, row * (kFewestRows + 1) + 6);
  if (picker.Channels() > kPageChannels) {
    auto* search = new QLineEdit;
    search->setPlaceholderText(tr("Search labels and units"));
    search->setClearButtonEnabled(true);
    connect(search, &QLineEdit::textChanged, table_, &ChannelTableView::ShowOnly);
    layout->addWidget(search);
  }
  auto* middle = new QHBoxLayout;
  middle->addWidget(table_, 1);
  auto* commands = new QVBoxLayout;
  AddCommands(commands);
  middle->addLayout(commands);
  layout->addLayout(middle, 1);
  AddPreview(layout);
  AddClosing(layout);
  connect(model_, &ChannelTableModel::Edited, this, [this] { Refresh(); });
  connect(table_, &QTableView::clicked, this, [this](const QModelIndex& index) {
    if (picker_.SelectsOne()) {
      picker_.Choose(ChannelTableModel::ChannelOf(index));
      Refresh();
    }
  });
  const int rowsThatFit = picker.HasPreview() ? kFewestRows : kRowsThatFit;
  const int more = std::clamp(picker.Channels(), kFewestRows, rowsThatFit) - kFewestRows;
  resize(sizeHint() + QSize(0, row * more));
  SetCurrent(FirstSelected());
  table_->setFocus();
}

int PickerDialog::FirstSelected() const {
  for (int c = 1; c <= picker_.Channels(); ++c) {
    if (picker_.IsSelected(c)) {
      return c;
    }
  }
  return 1;
}

// Where there are values, what is typed is the value of the current channel.
void PickerDialog::SetCurrent(int channel) {
  const bool types = picker_.HasValues() || picker_.HasNames();
  table_->setCurrentIndex(model_->index(channel - 1, types ? model_->columnCount({}) - 1 : 0));
}

std::vector<ChannelColumn> PickerDialog::Columns() {
  std::vector<ChannelColumn> columns;
  if (picker_.Selects() || picker_.SelectsOne()) {
    ChannelColumn mark;
    mark.kind = picker_.SelectsOne() ? ChannelColumn::Kind::Choice : ChannelColumn::Kind::Check;
    mark.checked = [this](int channel) { return picker_.IsSelected(channel); };
    mark.check = [this](int channel, bool on) {
      picker_.SelectsOne() ? picker_.Choose(channel) : picker_.Select(channel, on);
    };
    columns.push_back(mark);
  }
  columns.push_back(SwatchColumn());
  columns.push_back(NumberColumn());
  columns.push_back(LabelColumn(workbench_));
  columns.push_back(UnitsColumn(workbench_));
  columns.push_back(TraceColumn());
  if (picker_.HasValues() || picker_.HasNames()) {
    ChannelColumn value;
    value.head = ToQt(picker_.ColumnHead());
    value.kind = picker_.HasNames() ? ChannelColumn::Kind::Text : ChannelColumn::Kind::Number;
    value.text = [this](int channel) { return ToQt(picker_.ValueText(channel)); };
    value.edit = [this](int channel, const QString& typed) {
      if (typed.isEmpty()) {
        return;
      }
      picker_.HasNames() ? picker_.SetName(channel, ToStd(typed)) : picker_.SetValue(channel, ToStd(typed));
    };
    if (picker_.HasNames()) {
      value.remark = [this](const QString& typed) {
        return ToQt(NameRemark(ToStd(typed), picker_.NameLength()));
      };
    }
    if (picker_.HasValues()) {
      value.origin = [this](int channel) { return left_.Hint(channel); };
    }
    columns.push_back(value);
  }
  return columns;
}

void PickerDialog::AddHead(QBoxLayout* to) {
  auto* prompt = new QLabel(ToQt(picker_.Prompt()));
  prompt->setTextFormat(Qt::PlainText);
  prompt->setWordWrap(true);
  QFont font = prompt->font();
  font.setPointSizeF(font.pointSizeF() * 1.15);
  font.setBold(true);
  prompt->setFont(font);
  to->addWidget(prompt);
  auto* title = new ElidedLabel;
  title->setText(ToQt(picker_.TitleText()));
  auto* size = new QLabel(
      QStringLiteral("%1 Hz   ·   %2 s").arg(ToQt(picker_.RateText()), ToQt(picker_.DurationText())));
  auto* row = new QHBoxLayout;
  row->setSpacing(18);
  for (QLabel* label : {static_cast<QLabel*>(title), size}) {
    SetTone(label, Tone::Quiet);
    row->addWidget(label);
  }
  row->addStretch(1);
  to->addLayout(row);
}

void PickerDialog::Command(QBoxLayout* to, const char* caption,
                           const std::function<void(ChannelPicker&)>& procedure) {
  auto* button = new QPushButton(QString::fromUtf8(caption));
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, [this, procedure] {
    table_->FinishEditing();
    procedure(picker_);
    Refresh();
  });
  to->addWidget(button);
}

void PickerDialog::AddCommands(QBoxLayout* to) {
  if (picker_.Selects()) {
    Command(to, "&All", &ChannelPicker::All);
    Command(to, "&None", &ChannelPicker::None);
    Command(to, "&Invert", &ChannelPicker::Invert);
  } else if (picker_.HasValues()) {
    Command(to, "&All", &ChannelPicker::All);
  }
  if (picker_.OffersEights()) {
    Command(to, "&1st 8", &ChannelPicker::FirstEight);
    Command(to, "&2nd 8", &ChannelPicker::SecondEight);
  }
  if (picker_.HasValues()) {
    Command(to, "&Zero All", &ChannelPicker::ZeroAll);
    auto* calculator = new QPushButton(QStringLiteral("Calc&ulator"));
    calculator->setAutoDefault(false);
    connect(calculator, &QPushButton::clicked, this, [] { StartCalculator(); });
    to->addWidget(calculator);
  }
  Command(to, "&Reset", &ChannelPicker::Reset);
  if (picker_.OffersNextPage()) {
    auto* next = new QPushButton(QStringLiteral("&Next channels"));
    next->setAutoDefault(false);
    connect(next, &QPushButton::clicked, this, [this] {
      picker_.NextChannels();
      ShowPage();
    });
    to->addWidget(next);
  }
  to->addStretch();
}

// What the command will do with the choice, in words and drawn.
void PickerDialog::AddPreview(QBoxLayout* to) {
  if (picker_.HasPreview()) {
    constexpr int kBesides = 300;  // the rows and buttons around it
    preview_ = new FormGraphPanel;
    preview_->SetLeastHeight(std::clamp(RoomOn(*this).height() - kBesides, 120, 360));
    to->addWidget(preview_, 3);
    connect(table_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] { ShowPreview(); });
  }
  if (!picker_.Remark().empty()) {
    auto* remark = new QLabel(ToQt(picker_.Remark()));
    remark->setObjectName(QStringLiteral("remark"));
    remark->setTextFormat(Qt::PlainText);
    remark->setWordWrap(true);
    to->addWidget(remark);
  }
}

void PickerDialog::ShowPreview() {
  const int channel = table_->CurrentChannel();
  if (preview_ != nullptr && channel >= 1 && channel <= picker_.Channels()) {
    preview_->Show(picker_.PreviewOf(channel));
  }
}

void PickerDialog::AddClosing(QBoxLayout* to) {
  auto* row = new QHBoxLayout;
  count_ = new ElidedLabel;
  SetTone(count_, Tone::Quiet);
  row->addWidget(count_);
  row->addStretch();
  const std::string caption = picker_.ClosingCaption();
  auto* close = new QPushButton(ToQt(caption));
  close->setDefault(true);
  connect(close, &QPushButton::clicked, this, [this, caption] {
    table_->FinishEditing();
    Press(WithoutMnemonic(caption));
  });
  auto* cancel = new QPushButton(QStringLiteral("&Cancel"));
  cancel->setAutoDefault(false);
  connect(cancel, &QPushButton::clicked, this, [this] { Press("Cancel"); });
  row->addWidget(close);
  row->addWidget(cancel);
  to->addLayout(row);
}

void PickerDialog::ShowPage() {
  table_->scrollTo(model_->index(picker_.FirstShown() - 1, 0), QAbstractItemView::PositionAtTop);
  SetCurrent(picker_.FirstShown());
}

void PickerDialog::Refresh() {
  model_->Refresh();
  ShowPreview();
  if (!picker_.Selects()) {
    count_->setText(left_.Remark());
    return;
  }
  int selected = 0;
  for (int c = 1; c <= picker_.Channels(); ++c) {
    selected += picker_.IsSelected(c) ? 1 : 0;
  }
  count_->setText(tr("%1 of %2 selected").arg(selected).arg(picker_.Channels()));
}

}  // namespace velmora::ui
