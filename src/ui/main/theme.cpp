#include "ui/main/theme.hpp"

#include <QApplication>
#include <QLabel>
#include <QStyle>
#include <map>

#include "ui/main/desktop_colours.hpp"
#include "ui/main/theme_style.hpp"

namespace velmora::ui {
namespace {

const char* const kChoice = "theme";
const char* const kTone = "tone";  // the property by which the style sheet knows a label

QColor Mixed(const QColor& a, const QColor& b, float part) {
  return QColor::fromRgbF(a.redF() * (1 - part) + b.redF() * part,
                          a.greenF() * (1 - part) + b.greenF() * part,
                          a.blueF() * (1 - part) + b.blueF() * part);
}

struct Tones {
  QColor window;
  QColor base;
  QColor alternate;
  QColor text;
  QColor button;
  QColor line;
  QColor accent;
};

const Tones kLight = {.window = QColor(0xF4F5F7),
                      .base = QColor(0xFFFFFF),
                      .alternate = QColor(0xF8F9FB),
                      .text = QColor(0x1D2430),
                      .button = QColor(0xFBFBFC),
                      .line = QColor(0xC9CED6),
                      .accent = QColor(0x1F6FB2)};
const Tones kDark = {.window = QColor(0x1F2329),
                     .base = QColor(0x16191E),
                     .alternate = QColor(0x1A1E24),
                     .text = QColor(0xE3E7ED),
                     .button = QColor(0x2B3038),
                     .line = QColor(0x3A414B),
                     .accent = QColor(0x4A9BDC)};

QPalette PaletteOf(const Tones& tones) {
  QPalette palette;
  const auto set = [&palette](QPalette::ColorRole role, const QColor& colour) {
    palette.setColor(role, colour);
  };
  set(QPalette::Window, tones.window);
  set(QPalette::WindowText, tones.text);
  set(QPalette::Base, tones.base);
  set(QPalette::AlternateBase, tones.alternate);
  set(QPalette::Text, tones.text);
  set(QPalette::Button, tones.button);
  set(QPalette::ButtonText, tones.text);
  set(QPalette::BrightText, Qt::white);
  set(QPalette::ToolTipBase, tones.base);
  set(QPalette::ToolTipText, tones.text);
  set(QPalette::PlaceholderText, Mixed(tones.text, tones.base, 0.55F));
  set(QPalette::Highlight, tones.accent);
  set(QPalette::HighlightedText, Qt::white);
  set(QPalette::Link, tones.accent);
  set(QPalette::Light, Mixed(tones.window, Qt::white, 0.08F));
  set(QPalette::Midlight, Mixed(tones.window, tones.line, 0.4F));
  set(QPalette::Mid, tones.line);
  set(QPalette::Dark, Mixed(tones.line, Qt::black, 0.25F));
  set(QPalette::Shadow, Mixed(tones.line, Qt::black, 0.6F));
  for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, Mixed(tones.text, tones.window, 0.58F));
  }
  palette.setColor(QPalette::Disabled, QPalette::Highlight, tones.line);
  return palette;
}

bool IsDark(const QPalette& palette) {
  return palette.color(QPalette::Window).lightnessF() < 0.5;
}

// Labels of a tone: a style sheet follows the theme, which a palette given to a label does not.
QString LabelSheet(const Tones& tones) {
  const QPalette palette = PaletteOf(tones);
  const QString marks = QStringLiteral("border-radius: 8px; padding: 2px 9px;");
  const auto rule = [](const char* tone, const QColor& colour, const QString& more) {
    return QStringLiteral("QLabel[tone=\"%1\"] { color: %2; %3 }")
        .arg(QString::fromUtf8(tone), colour.name(), more);
  };
  const auto ground = [&marks](QColor colour) {
    colour.setAlphaF(0.14F);
    return QStringLiteral("background: %1; ").arg(colour.name(QColor::HexArgb)) + marks;
  };
  const QColor warning = WarningColour(palette);
  return rule("quiet", QuietColour(palette), {}) + rule("warning", warning, {}) +
         rule("mark", tones.accent, ground(tones.accent)) + rule("warning-mark", warning, ground(warning));
}

QString StyleSheet(const Tones& tones) {
  return QStringLiteral(
             "QToolTip { color: %1; background: %2; border: 1px solid %3; padding: 4px; }"
             "QTableView, QTreeView, QListView { border: 1px solid %3; border-radius: 4px; }"
             "QHeaderView::section { background: %4; color: %1; border: none; border-bottom: 1px solid %3;"
             " padding: 5px 6px; }"
             "QToolBar { border: none; border-bottom: 1px solid %3; spacing: 2px; padding: 3px 6px; }"
             "QToolButton { padding: 4px 8px; border: 1px solid transparent; border-radius: 4px; }"
             "QToolBar QToolButton:hover:enabled { background: %5; border-color: %3; }"
             "QToolBar QToolButton:pressed { background: %3; }"
             "QMainWindow::separator { background: %3; width: 1px; height: 1px; }"
             "QStatusBar { border-top: 1px solid %3; } QStatusBar::item { border: none; }"
             "QDockWidget::title { padding: 6px 8px; background: %4; }"
             "QTabWidget::pane { border: none; border-top: 1px solid %3; }"
             "QTabBar::tab { padding: 6px 12px; border: none; border-bottom: 2px solid transparent; color: "
             "%7; }"
             "QTabBar::tab:selected { border-bottom-color: %6; color: %1; }"
             "QLineEdit, QPlainTextEdit { border: 1px solid %3; border-radius: 4px; padding: 3px 4px; "
             "background: %2; }"
             "QLineEdit:focus { border-color: %6; }"
             "QTableView QLineEdit { padding: 0px; border-radius: 0px; }"
             "QTreeView::item, QListView::item { padding: 3px 2px; }")
             .arg(tones.text.name(), tones.base.name(), tones.line.name(), tones.window.name(),
                  tones.button.name(), tones.accent.name(), Mixed(tones.text, tones.window, 0.35F).name()) +
         LabelSheet(tones);
}

}  // namespace

void PrepareTheme(QApplication& app) {
  if (app.findChild<DesktopColours*>() == nullptr) {
    auto* desktop = new DesktopColours(&app);  // before the palette becomes ours
    QApplication::setStyle(new ThemeStyle);
    QObject::connect(desktop, &DesktopColours::Changed, &app,
                     [&app] { ApplyTheme(app, app.property(kChoice).value<ThemeChoice>()); });
  }
}

void ApplyTheme(QApplication& app, ThemeChoice choice) {
  PrepareTheme(app);
  auto* desktop = app.findChild<DesktopColours*>();
  app.setProperty(kChoice, QVariant::fromValue(choice));
  const bool dark = choice == ThemeChoice::Dark || (choice == ThemeChoice::Desktop && desktop->PrefersDark());
  const Tones& tones = dark ? kDark : kLight;
  const QPalette palette = PaletteOf(tones);
  QApplication::setPalette(palette);
  // A row that is selected stays readable, with the colours that are in it.
  QPalette views = palette;
  views.setColor(QPalette::Highlight, Mixed(tones.base, tones.accent, dark ? 0.34F : 0.2F));
  views.setColor(QPalette::HighlightedText, tones.text);
  QApplication::setPalette(views, "QAbstractItemView");
  app.setStyleSheet(StyleSheet(tones));
}

void SetTone(QLabel* label, Tone tone) {
  static const std::map<Tone, const char*> names = {{Tone::Plain, ""},
                                                    {Tone::Quiet, "quiet"},
                                                    {Tone::Warning, "warning"},
                                                    {Tone::Mark, "mark"},
                                                    {Tone::WarningMark, "warning-mark"}};
  label->setProperty(kTone, QString::fromUtf8(names.at(tone)));
  label->style()->unpolish(label);
  label->style()->polish(label);
}

QColor QuietColour(const QPalette& palette) {
  return Mixed(palette.color(QPalette::Text), palette.color(QPalette::Window), 0.42F);
}

QColor WarningColour(const QPalette& palette) {
  return IsDark(palette) ? QColor(0xF0A060) : QColor(0xB4480E);
}

}  // namespace velmora::ui
