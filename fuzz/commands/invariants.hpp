#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/workbench.hpp"

namespace velmora::fuzz {

/// What has to be there again when steps are repeated: what is known of a trial, and the bits of its samples.
struct TrialState {
  explicit TrialState(const Trial& trial);

  std::vector<std::string> known;
  std::vector<std::uint32_t> samples;

  friend bool operator==(const TrialState&, const TrialState&) = default;
};

/// Breaks off, telling the first difference, when they are not the same.
void WantSame(const TrialState& wanted, const TrialState& found, const std::string& when);

/// Breaks off when what the program keeps of its trial does not hold together.
void WantWhole(const Workbench& workbench);

}  // namespace velmora::fuzz
