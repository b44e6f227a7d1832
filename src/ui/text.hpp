#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace velmora::ui {

/// Text is UTF-8 inside the program and UTF-16 in Qt.
inline QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string ToStd(const QString& text) {
  return text.toStdString();
}

}  // namespace velmora::ui
