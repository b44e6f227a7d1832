#include "import/recorded_plates.hpp"

#include <algorithm>
#include <string>
#include <vector>

#include "core/trial/helpers.hpp"

namespace velmora {
namespace {

// The trial's channel (from 1) that a channel of the file became; 0: it was not taken.
int ColumnOf(std::span<const int> channels, int channel) {
  const auto it = std::find(channels.begin(), channels.end(), channel);
  return it == channels.end() ? 0 : static_cast<int>(it - channels.begin()) + 1;
}

// The column before a plate's first, when its channels lie one behind the other; -1: they do not.
int BaseOf(std::span<const int> channels, const RecordedPlate& plate) {
  for (std::size_t k = 0; k < plate.channels.size(); ++k) {
    const int column = ColumnOf(channels, plate.channels[k]);
    if (column == 0 || column != ColumnOf(channels, plate.channels.front()) + static_cast<int>(k)) {
      return -1;
    }
  }
  return plate.channels.empty() ? -1 : ColumnOf(channels, plate.channels.front()) - 1;
}

}  // namespace

void TakePlates(Workbench& workbench, const Recording& recording, std::span<const int> channels) {
  if (recording.plates.empty()) {
    return;
  }
  PlateMemory plates;
  plates.Database = workbench.plates.Database;
  std::vector<FilePlate> taken;
  std::string left;
  for (std::size_t k = 0; k < recording.plates.size(); ++k) {
    const RecordedPlate& plate = recording.plates[k];
    const int base = plate.reducible ? BaseOf(channels, plate) : -1;
    if (base >= 0 && taken.size() < plates.PlateTable.size()) {
      plates.PlateTable.at(taken.size()) = plate.definition;
      taken.push_back({.base = base,
                       .channels = static_cast<std::int32_t>(plate.channels.size()),
                       .loads = plate.loads,
                       .record = plate.record});
    } else {
      left += (left.empty() ? "" : ", ") + std::to_string(k + 1);
    }
  }
  if (!left.empty()) {
    AddNotice(workbench, "Force plates of the file that are not in the plate table: " + left +
                             ". The header lines tell what is known of them.");
  }
  if (!taken.empty()) {
    plates.FirstChannel = taken.front().base;
    workbench.plates = plates;
    workbench.trial.NPlates = static_cast<std::int16_t>(taken.size());
    workbench.trial.FilePlates = std::move(taken);
  }
}

}  // namespace velmora
