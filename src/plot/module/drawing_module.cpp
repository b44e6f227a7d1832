// The drawing as a module that a program without Qt loads when it needs a picture.
#include <QApplication>
#include <clocale>
#include <cstdio>
#include <exception>
#include <new>

#include "graph/picture.hpp"
#include "plot/draw_document.hpp"
#include "plot/draw_picture.hpp"

namespace velmora {
namespace {

// Qt wants one for as long as the program runs; at its end it would only be in the way. No display is
// needed. Qt takes over the user's locale, in which numbers may have a comma.
void HaveApplication() {
  if (QCoreApplication::instance() != nullptr) {
    return;
  }
  // What Qt finds odd about the desktop says nothing about a picture.
  qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& /*where*/, const QString& text) {
    if (type == QtCriticalMsg || type == QtFatalMsg) {
      std::fprintf(stderr, "%s\n", qUtf8Printable(text));
    }
  });
  static int count = 3;
  static char program[] = "velmora2-drawing";
  static char option[] = "-platform";
  static char platform[] = "offscreen";
  static char* arguments[] = {program, option, platform, nullptr};
  static auto* application = new QApplication(count, arguments);
  application->setQuitOnLastWindowClosed(false);
  std::setlocale(LC_NUMERIC, "C");
}

template <typename Draw>
bool Drawn(std::string& answer, const Draw& draw) {
  try {
    HaveApplication();
    answer = draw();
    return true;
  } catch (const std::bad_alloc&) {
    answer = "there is not enough memory";
  } catch (const std::exception& error) {
    answer = error.what();
  } catch (...) {
    answer = "it cannot be drawn";
  }
  return false;
}

}  // namespace

extern "C" __attribute__((visibility("default"))) bool VelmoraDrawPicture(const PictureOrder& order,
                                                                          std::string& answer) {
  return Drawn(answer, [&order] { return DrawPicture(order); });
}

extern "C" __attribute__((visibility("default"))) bool VelmoraDrawDocument(const DocumentOrder& order,
                                                                           std::string& answer) {
  return Drawn(answer, [&order] { return DrawDocument(order); });
}

}  // namespace velmora
