#include "data/data_form.hpp"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "core/results/result_form.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/refusals.hpp"
#include "data/sample_cell.hpp"

namespace velmora {
namespace {

constexpr std::int32_t kMostRows = 10000;

// A 32-bit value by its own digits: 0.1, not 0.10000000149011612.
ResultTable::Cell CellOfSample(float value) {
  return CellOf(std::isfinite(value) ? Val(PlainNumber(value)) : static_cast<double>(value));
}

class DataForm : public ResultForm {
 public:
  explicit DataForm(Workbench& workbench) : ResultForm(workbench, "frmData", "Data Table") {
    const Trial& trial = workbench.trial;
    to_ = std::min(to_, trial.NData);
    AddCount("txtFrom", "&From sample", from_).edited = [this] { ShowRows(); };
    AddCount("txtTo", "&to sample", to_).edited = [this] { ShowRows(); };
    AddCount("txtSample", "Sa&mple", sample_);
    std::vector<std::string> columns;
    for (int c = 0; c <= trial.NChan; ++c) {
      columns.push_back(ColumnName(trial, c));
    }
    fields_.push_back({.name = "comChannel",
                       .caption = "&Channel",
                       .target = &channel_,
                       .choices = std::move(columns),
                       .isList = true,
                       .channelsFrom = 1});
    fields_.push_back({.name = "txtValue", .caption = "&Value", .target = &value_});
    buttons_ = {StayButton("&Set", [this] { Set(); }),
                {"E&xit", FormButton::Role::Accept, [this] {
                   RowsFit();  // says why there is no table, and stands in nobody's way
                   return true;
                 }}};
    ShowRows();
  }

 private:
  FormField& AddCount(const char* name, const char* caption, std::int32_t& value) {
    return fields_.emplace_back(FormField{.name = name, .caption = caption, .target = &value});
  }

  [[nodiscard]] std::int32_t LastRow() const {
    return static_cast<std::int32_t>(
        std::min<std::int64_t>(workbench_.trial.NData, std::int64_t{from_} + kMostRows - 1));
  }
  [[nodiscard]] bool FromFits() const { return from_ >= 1 && from_ <= workbench_.trial.NData; }
  [[nodiscard]] bool ToFits() const { return to_ >= from_ && to_ <= LastRow(); }

  bool RowsFit() {
    if (!FromFits()) {
      RefuseEntry(workbench_, "From sample", 1, workbench_.trial.NData);
    } else if (!ToFits()) {
      RefuseEntry(workbench_, "to sample", from_, LastRow());
    }
    return FromFits() && ToFits();
  }

  // The one field is typed before the other: until both fit each other there are no rows.
  void ShowRows() {
    const Trial& trial = workbench_.trial;
    const NumberPatterns& patterns = workbench_.patterns;
    ResultTable table{.name = "frmData", .title = "", .columns = {"Sample"}};
    // The table outlives the form.
    table.formats = {ThroughPattern("0"), [&workbench = workbench_](double x) {
                       return ShownAbscissa(workbench, static_cast<float>(x));
                     }};
    for (int c = 0; c <= trial.NChan; ++c) {
      const std::string units = c == 0 ? AbscissaUnits(workbench_) : OneLine(Trim(trial.ChanUnits[c].Text()));
      table.columns.push_back(ColumnName(trial, c) + (units.empty() ? "" : " (" + units + ")"));
    }
    table.formats.resize(table.columns.size(), [pattern = patterns.ValuePattern](double x) {
      return ShownSample(static_cast<float>(x), pattern);
    });
    for (std::int32_t i = from_; FromFits() && ToFits() && i <= to_; ++i) {
      std::vector<ResultTable::Cell>& row = table.rows.emplace_back();
      row.emplace_back(static_cast<double>(i));
      for (int c = 0; c <= trial.NChan; ++c) {
        row.push_back(CellOfSample(trial.Data(i, c)));
      }
    }
    SetTables({std::move(table)});
  }

  void Set() {
    if (ChangeValue(workbench_, sample_, channel_, value_)) {
      ShowRows();
    }
  }

  std::int32_t from_ = 1;
  std::int32_t to_ = 20;
  std::int32_t sample_ = 1;
  std::int32_t channel_ = 1;
  std::string value_;
};

}  // namespace

void ShowDataForm(Workbench& workbench) {
  DataForm(workbench).Show(workbench);
}

}  // namespace velmora
