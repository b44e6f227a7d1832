#pragma once

#include "photographer.hpp"

namespace velmora::pictures {

/// Pictures of the X-Y plot: its dialogue, then hip over knee in a wide and in a tall window, in the colours
/// of time and with the ellipse; `data` holds the example trials.
void ShowXYPlot(ui::MainWindow& window, Photographer& photographer, const fs::path& data);

}  // namespace velmora::pictures
