#pragma once

#include <QKeyEvent>
#include <optional>

#include "core/open_view.hpp"

namespace velmora::ui {

/// A key as graphs know it. Nothing for keys that are not theirs: with Ctrl or Alt held only the keys
/// that page belong to a graph.
std::optional<KeyPress> GraphKey(const QKeyEvent& event);

}  // namespace velmora::ui
