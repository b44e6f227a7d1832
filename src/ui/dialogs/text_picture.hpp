#pragma once

#include <QStringList>

#include "core/workbench.hpp"
#include "formats/delimited_text/layout/parse_settings.hpp"
#include "ui/dialogs/form_picture.hpp"

class QBoxLayout;
class QTableWidget;

namespace velmora::ui {

/// The first lines of a text file in its columns, with what the parser's dialogue makes of them: lines
/// skipped, labels and units, and each column as time, channel or not read. The ticks over the columns say
/// which ones become channels.
class TextPicture : public FormPicture {
 public:
  TextPicture(Form& form, const Workbench& workbench);
  void Show(int channel) override;

 protected:
  void changeEvent(QEvent* event) override;

 private:
  enum class Part { Skipped, Labels, Units, Time, Data, OtherData, Unread };

  void AddLegend(QBoxLayout* to);
  [[nodiscard]] QColor Ground(Part part) const;
  [[nodiscard]] ParseSettings Settings() const;
  [[nodiscard]] Part PartOfColumn(int column) const;
  [[nodiscard]] Part PartOfLine(int number) const;
  void ShowHeads();
  void ShowLine(int number);
  void SetCell(int number, int column, const QString& text, Part part);
  void ToggleColumn(int column);

  Form& form_;
  QTableWidget* table_;
  QStringList lines_;
  ParseSettings settings_;  // as the fields are now
};

}  // namespace velmora::ui
