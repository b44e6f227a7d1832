#pragma once

#include <QKeyEvent>
#include <optional>

#include "core/open_view.hpp"

namespace velmora::ui {

/// Which keys belong to a graph with Ctrl or Alt held: those that page, or also arrows, Home and End.
enum class KeysHeld { Paging, All };

/// A key as graphs know it. Nothing for keys that are not theirs.
std::optional<KeyPress> GraphKey(const QKeyEvent& event, KeysHeld heldToo = KeysHeld::Paging);

}  // namespace velmora::ui
