#include "ui/data/data_table.hpp"

#include <optional>
#include <utility>

#include "core/questions/form.hpp"
#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "data/sample_cell.hpp"
#include "ui/data/sample_grid.hpp"
#include "ui/screen_room.hpp"

namespace velmora::ui {
namespace {

constexpr std::int64_t kMostCopied = 5'000'000;  // cells; the clipboard holds them as text, twice

/// Answers `data.table` with one cell's value.
class OneValue {
 public:
  OneValue(GridCell cell, std::string value) : cell_(cell), value_(std::move(value)) {}

  std::string operator()(Form& form) {
    if (std::exchange(set_, true)) {
      return "Exit";
    }
    form.Edit(*form.FindField("txtSample"), std::to_string(cell_.sample));
    form.Edit(*form.FindField("comChannel"), std::to_string(cell_.channel));
    form.Edit(*form.FindField("txtValue"), value_);
    return "Set";
  }

 private:
  GridCell cell_;
  std::string value_;
  bool set_ = false;
};

}  // namespace

void DataTable::Open(const QList<QAction*>& walking) {
  if (workbench_.trial.NData < 1) {
    return;
  }
  if (window_.isNull()) {
    window_ = new DataWindow(workbench_, walking, parent_);
    QObject::connect(window_, &DataWindow::ChangeWanted, window_, [this] { Change(); });
    QObject::connect(window_, &DataWindow::PlaceWanted, window_, [this] { GoTo(); });
    QObject::connect(window_, &DataWindow::CopyWanted, window_, [this] { Copy(); });
    PlaceOver(*window_, *parent_);
  }
  ComeForward(*window_);
}

void DataTable::Refresh() {
  if (!window_.isNull()) {
    window_->Refresh();
  }
}

// Where the command would refuse anyway nothing is asked first.
void DataTable::Change() {
  if (runner_.Busy()) {
    return;
  }
  const GridCell cell = window_->Grid().Current();
  std::string typed;
  if (cell.channel > 0 || !IsTimeBased(workbench_)) {
    typed = person_.AskInput({.title = "Change Value",
                              .prompt = "Enter a new value or press Cancel.",
                              .defaultText = PlainNumber(workbench_.trial.Data(cell.sample, cell.channel)),
                              .isNumber = true});
    if (typed.empty()) {
      return;
    }
  }
  person_.AnswerNextForm(OneValue(cell, std::move(typed)));
  runner_.Run("data.table");
  person_.AnswerNextForm(nullptr);
  Refresh();
}

void DataTable::GoTo() {
  if (runner_.Busy()) {
    return;
  }
  SampleGrid& grid = window_->Grid();
  const std::string typed =
      person_.AskInput({.title = "Go to",
                        .prompt = "Enter the number of a sample, or a time with \"s\" behind it.",
                        .defaultText = std::to_string(grid.Current().sample)});
  if (typed.empty()) {
    return;
  }
  if (const std::optional<std::int32_t> sample = SampleNamed(workbench_, typed)) {
    grid.GoTo({*sample, grid.Current().channel});
  }
}

void DataTable::Copy() {
  const GridBlock block = window_->Grid().Selected();
  if (block.Cells() > kMostCopied) {
    ShowRefusal(workbench_,
                {.title = "Copy",
                 .text = "The clipboard takes at most " + FormatCount(kMostCopied) + " cells, and " +
                         FormatCount(block.Cells()) + " are selected.  Save the trial as text instead.",
                 .icon = Icon::Exclamation});
    return;
  }
  workbench_.desktop.copy(TextOfCells(workbench_.trial, {block.first.sample, block.last.sample},
                                      block.first.channel, block.last.channel));
}

}  // namespace velmora::ui
