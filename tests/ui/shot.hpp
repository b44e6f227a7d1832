#pragma once

#include <QApplication>
#include <QWidget>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace velmora::test {

/// A picture of what a person sees, when VELMORA_SCREENSHOTS names a directory for it.
inline void Shot(QWidget& window, const std::string& name) {
  QApplication::processEvents();
  if (const char* folder = std::getenv("VELMORA_SCREENSHOTS")) {
    std::filesystem::create_directories(folder);
    window.grab().save(QString::fromStdString(std::string(folder) + "/" + name + ".png"));
  }
}

}  // namespace velmora::test
