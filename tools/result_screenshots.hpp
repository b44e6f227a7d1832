#pragma once

#include "photographer.hpp"

namespace velmora::pictures {

// Pictures of result views, over the trial that is loaded.
void ShowSpectra(ui::MainWindow& window, Photographer& photographer);
void ShowEmg(ui::MainWindow& window, Photographer& photographer);
void ShowStatistics(ui::MainWindow& window, Photographer& photographer);
void ShowImpacts(ui::MainWindow& window, Photographer& photographer);
void ShowPlates(ui::MainWindow& window, Photographer& photographer);

}  // namespace velmora::pictures
