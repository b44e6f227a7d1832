// The program as it starts, up to its first picture. Settings are those of a first session.
#include <QApplication>
#include <clocale>

#include "core/files/settings.hpp"
#include "first_paint.hpp"
#include "sample_trials.hpp"
#include "ui/main/main_window.hpp"
#include "ui/main/theme.hpp"
#include "ui/main/window_settings.hpp"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  std::setlocale(LC_NUMERIC, "C");
  velmora::SettingsStore store("");
  velmora::ui::PrepareTheme(app);
  velmora::ui::MainWindow window(store, {";"}, velmora::examples::MakeEmgBursts);
  velmora::ui::ApplyTheme(app, velmora::ui::WindowSettings(store).Theme());
  const velmora::bench::FirstPaint end(window);
  window.show();
  window.Begin();
  return QApplication::exec();
}
