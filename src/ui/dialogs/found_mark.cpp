#include "ui/dialogs/found_mark.hpp"

#include "ui/text.hpp"

namespace velmora::ui {

FoundMark::FoundMark(Form& form, const Form::FoundValue& found) : found_(found) {
  setObjectName(QStringLiteral("found") + ToQt(found.field->name));
  setCheckable(true);
  setFocusPolicy(Qt::TabFocus);
  setStyleSheet(QStringLiteral(
      "QToolButton { border: 1px solid rgba(128, 128, 128, 90); border-radius: 8px; padding: 2px 8px; }"
      "QToolButton:checked { background: rgba(0, 158, 115, 60); }"
      "QToolButton:focus, QToolButton:hover { border-color: palette(highlight); }"));
  connect(this, &QToolButton::clicked, this, [this, &form](bool take) {
    form.TakeFound(found_, take);
    Q_EMIT Edited();
  });
}

void FoundMark::Refresh() {
  const bool holds = Form::Holds(found_);
  const auto shown = [](const std::string& text) { return text.empty() ? tr("nothing") : ToQt(text); };
  setChecked(holds);
  setText((holds ? QStringLiteral("\u2713 ") : QString()) + ToQt(found_.where));
  setToolTip(
      holds ? tr("Filled in: %1. Press to take it back to %2.").arg(shown(found_.text), shown(found_.before))
            : tr("Press to fill in what was found: %1.").arg(shown(found_.text)));
}

}  // namespace velmora::ui
