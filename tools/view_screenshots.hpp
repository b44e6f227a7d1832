#pragma once

#include "photographer.hpp"

namespace velmora::pictures {

/// The header, the dialogue of the report and the table of numbers, of the trials in `data`.
void ShowViews(ui::MainWindow& window, Photographer& photographer, const fs::path& data);

}  // namespace velmora::pictures
