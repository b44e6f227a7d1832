#pragma once

#include <QPlainTextEdit>
#include <vector>

#include "core/workbench.hpp"
#include "ui/dialogs/form_picture.hpp"

class QBoxLayout;
class QLabel;

namespace velmora::ui {

/// The first lines of the text file that is to be read, with what the dialogue takes for labels, units,
/// time and data marked.
class TextPicture : public FormPicture {
 public:
  TextPicture(const Form& form, const Workbench& workbench);
  void Show(int channel) override;

 protected:
  void changeEvent(QEvent* event) override;

 private:
  enum class Part { Skipped, Labels, Units, Time, Data, OtherData, Unread };

  void AddLegend(QBoxLayout* to);
  [[nodiscard]] QColor Ground(Part part) const;
  [[nodiscard]] Part PartOfColumn(int column) const;
  void MarkLine(int number, QList<QTextEdit::ExtraSelection>& marks) const;
  void Mark(int number, int from, int to, Part part, QList<QTextEdit::ExtraSelection>& marks) const;

  const Form& form_;
  const Workbench& workbench_;
  QPlainTextEdit* text_;
  QStringList lines_;
};

}  // namespace velmora::ui
