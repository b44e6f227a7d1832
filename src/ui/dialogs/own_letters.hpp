#pragma once

#include <QStringList>

namespace velmora::ui {

/// The captions ("&Compute") such that no two have the same letter to press with Alt, which would press
/// neither: it stays with the first that has it, and the others get another of their own letters, or none.
QStringList WithLettersOfTheirOwn(QStringList captions);

}  // namespace velmora::ui
