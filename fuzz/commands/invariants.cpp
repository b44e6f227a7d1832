#include "commands/invariants.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <nlohmann/json.hpp>

#include "commands/breach.hpp"
#include "core/text/numbers.hpp"
#include "fuzz_target.hpp"

namespace velmora::fuzz {
namespace {

void Want(bool holds, const std::string& what) {
  if (!holds) {
    Breach(what);
  }
}

// The library writes no text that is not UTF-8.
void WantText(const std::string& text) {
  try {
    static_cast<void>(nlohmann::json(text).dump());
  } catch (const nlohmann::json::type_error&) {
    Breach("a text of the trial is no text");
  }
}

void WantTrial(const Trial& trial) {
  Want(trial.NChan >= 0 && trial.NChan <= kMaxChannels, "the number of channels");
  Want(trial.NData >= 0, "the number of samples");
  ReachSamples(trial);
  for (int c = 0; c <= trial.NChan; ++c) {
    WantText(trial.ChanLabel[c].Text());
    WantText(trial.ChanUnits[c].Text());
  }
  WantText(trial.TrialTitle);
  Want(trial.Rate >= 0.0 && std::isfinite(trial.Rate), "the rate");
  Want(std::isfinite(trial.Duration), "the duration");
  Want(trial.NData == 0 || (trial.CursorLo >= 0 && trial.CursorLo <= trial.NData), "the lower cursor");
  Want(trial.NData == 0 || (trial.CursorHi >= 0 && trial.CursorHi <= trial.NData),
       "the upper cursor: " + std::to_string(trial.CursorHi) + " of " + std::to_string(trial.NData));
}

void WantPlates(const Trial& trial) {
  Want(trial.NPlates >= 0 && trial.NPlates <= kMostPlates, "the number of plates");
  for (const FilePlate& plate : trial.FilePlates) {
    Want(plate.base >= 0 && plate.base + plate.channels <= trial.NChan, "channels of a plate of the file");
  }
}

void WantTables(const std::vector<ResultTable>& tables) {
  for (const ResultTable& table : tables) {
    for (std::size_t row = 0; row < table.rows.size(); ++row) {
      Want(table.rows[row].size() <= table.columns.size(), "a row longer than its table is wide");
      for (std::size_t k = 0; k < table.rows[row].size(); ++k) {
        const std::string shown = ShownCell(table, row, k);
        const bool number = std::holds_alternative<double>(table.rows[row][k]);
        Want(!number || (shown.find("nan") == std::string::npos && shown.find("inf") == std::string::npos),
             "a cell that is no number: " + table.name + ", " + table.columns[k]);
      }
    }
  }
}

void WantEvents(const Workbench& workbench) {
  const EventMemory& events = workbench.events;
  Want(events.CurrentEvent >= 0 && events.CurrentEvent <= events.NEvents(), "the current event");
}

}  // namespace

TrialState::TrialState(const Trial& trial) {
  known = {
      "channels " + std::to_string(trial.NChan),
      "samples " + std::to_string(trial.NData),
      "rate " + PlainNumber(trial.Rate),
      "duration " + PlainNumber(trial.Duration),
      "title " + trial.TrialTitle,
      std::string("reduced ") + (trial.ForcesReduced ? "yes" : "no"),
      "plates " + std::to_string(trial.NPlates) + " of the file " + std::to_string(trial.FilePlates.size())};
  for (int c = 0; c <= trial.NChan; ++c) {
    known.push_back("channel " + std::to_string(c) + ": " + trial.ChanLabel[c].Text() + ", " +
                    trial.ChanUnits[c].Text() + ", " + PlainNumber(trial.ChanRate[c]) + " Hz");
  }
  for (std::int64_t i = 1; i <= trial.NData; ++i) {
    const float* frame = trial.matrix.Frame(i);
    std::transform(frame, frame + trial.NChan + 1, std::back_inserter(samples),
                   [](float value) { return std::bit_cast<std::uint32_t>(value); });
  }
}

void WantSame(const TrialState& wanted, const TrialState& found, const std::string& when) {
  const auto [here, there] =
      std::mismatch(wanted.known.begin(), wanted.known.end(), found.known.begin(), found.known.end());
  if (here != wanted.known.end() || there != found.known.end()) {
    Breach(when + ": wanted " + (here == wanted.known.end() ? "nothing" : *here) + ", found " +
           (there == found.known.end() ? "nothing" : *there));
  }
  const auto [a, b] =
      std::mismatch(wanted.samples.begin(), wanted.samples.end(), found.samples.begin(), found.samples.end());
  if (a != wanted.samples.end()) {
    Breach(when + ": wanted " + PlainNumber(std::bit_cast<float>(*a)) + ", found " +
           PlainNumber(std::bit_cast<float>(*b)) + " at place " + std::to_string(a - wanted.samples.begin()));
  }
}

void WantWhole(const Workbench& workbench) {
  WantTrial(workbench.trial);
  WantPlates(workbench.trial);
  WantTables(workbench.results.ResultTables);
  WantEvents(workbench);
}

}  // namespace velmora::fuzz
