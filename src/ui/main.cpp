#include <QApplication>
#include <clocale>
#include <csignal>
#include <string>
#include <vector>

#include "core/files/settings.hpp"
#include "core/files/standard_descriptors.hpp"
#include "sample_trials.hpp"
#include "ui/main/main_window.hpp"
#include "ui/main/theme.hpp"
#include "ui/main/window_settings.hpp"

int main(int argc, char** argv) {
  velmora::OpenStandardDescriptors();
  // A file that grows past the limit of the shell is an error to report, not the end of the program.
  std::signal(SIGXFSZ, SIG_IGN);
  QApplication app(argc, argv);
  std::setlocale(LC_NUMERIC, "C");  // files and fields have decimal points, whatever the desktop writes
  QApplication::setApplicationName(QStringLiteral("velmora2"));
  QApplication::setApplicationDisplayName(QStringLiteral("Velmora2"));
  velmora::SettingsStore store;
  velmora::ui::PrepareTheme(app);
  const std::vector<std::string> items(argv + 1, argv + argc);
  velmora::ui::MainWindow window(store, items, velmora::examples::MakeEmgBursts);
  velmora::ui::ApplyTheme(app, velmora::ui::WindowSettings(store).Theme());
  window.show();
  window.Begin();
  return QApplication::exec();
}
