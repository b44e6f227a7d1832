#pragma once

#include <string>
#include <vector>

#include "core/workbench.hpp"
#include "emg/fatigue.hpp"
#include "emg/spectra_file.hpp"

namespace velmora {

/// What to make of which channel.
struct FatigueOrder {
  std::string title;
  int channel = 1;
  FatigueSettings settings;
  bool pause = false;  // after each interval but the last
  SavedPower saved = SavedPower::None;
};

/// The intervals that were done.
struct FatigueSeries {
  struct Spectrum {
    double from = 0.0;          // seconds
    std::vector<double> power;  // by harmonic, in squared units; subscript 0 is empty
  };

  std::vector<FatigueRow> rows;
  std::int32_t harmonics = 0;       // of a spectrum
  std::vector<double> frequencies;  // Hz, by harmonic
  std::vector<Spectrum> spectra;    // evenly spread over the series, to be looked at
  std::vector<double> lastPower;
};

/// Takes a spectrum in each interval, with a panel; Cancel there or in a pause ends it, and what is done
/// stays. The settings are those that the intervals were found good for. With spectra to be saved,
/// OutputFileName is written, unless none was done; a failure of that is told and stops nothing else.
FatigueSeries RunFatigue(Workbench& workbench, const FatigueOrder& order);

}  // namespace velmora
