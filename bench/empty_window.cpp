// The limit for the start of the window: a main window of Qt with nothing in it.
#include <QApplication>
#include <QMainWindow>

#include "first_paint.hpp"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QMainWindow window;
  window.resize(1280, 800);
  const velmora::bench::FirstPaint end(window);
  window.show();
  return QApplication::exec();
}
