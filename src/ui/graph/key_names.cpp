#include "ui/graph/key_names.hpp"

#include <map>
#include <string>

#include "ui/text.hpp"

namespace velmora::ui {
namespace {

std::string NameOf(const QKeyEvent& event) {
  static const std::map<int, const char*> names = {
      {Qt::Key_PageUp, "PageUp"}, {Qt::Key_PageDown, "PageDown"},    {Qt::Key_Home, "Home"},
      {Qt::Key_End, "End"},       {Qt::Key_Delete, "Delete"},        {Qt::Key_Insert, "Insert"},
      {Qt::Key_Left, "Left"},     {Qt::Key_Right, "Right"},          {Qt::Key_Up, "Up"},
      {Qt::Key_Down, "Down"},     {Qt::Key_ScrollLock, "ScrollLock"}};
  const int key = event.key();
  if (const auto known = names.find(key); known != names.end()) {
    return known->second;
  }
  if (key >= Qt::Key_F1 && key <= Qt::Key_F12) {
    return "F" + std::to_string(key - Qt::Key_F1 + 1);
  }
  return key > Qt::Key_Space && key <= Qt::Key_AsciiTilde ? std::string(1, static_cast<char>(key)) : "";
}

}  // namespace

std::optional<KeyPress> GraphKey(const QKeyEvent& event, KeysHeld heldToo) {
  const Qt::KeyboardModifiers held = event.modifiers();
  KeyPress key{.name = NameOf(event),
               .shift = held.testFlag(Qt::ShiftModifier),
               .ctrl = held.testFlag(Qt::ControlModifier),
               .alt = held.testFlag(Qt::AltModifier)};
  const bool all = heldToo == KeysHeld::All;
  const bool arrow = key.name == "Left" || key.name == "Right" || key.name == "Up" || key.name == "Down";
  const bool pages = key.name == "PageUp" || key.name == "PageDown" ||
                     (all && (arrow || key.name == "Home" || key.name == "End"));
  if (key.name.empty() || (key.alt && !(all && arrow)) || (key.ctrl && !pages)) {
    return std::nullopt;
  }
  return key;
}

}  // namespace velmora::ui
