#pragma once

#include "photographer.hpp"

namespace velmora::pictures {

/// Pictures of the dialogues and results of analyses; `data` holds the example trials.
void ShowAnalyses(ui::MainWindow& window, Photographer& photographer, const fs::path& data);

/// Of those of force platforms alone: a jump, and somebody who stands.
void ShowPlatforms(ui::MainWindow& window, Photographer& photographer, const fs::path& data);

}  // namespace velmora::pictures
