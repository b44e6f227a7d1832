#pragma once

#include <cstdint>
#include <vector>

#include "core/results/result_form.hpp"
#include "emg/bursts/onsets_form.hpp"

namespace velmora {

/// The bursts as tables, and drawn on the EMG of one channel after the other.
class OnsetsView : public ResultForm {
 public:
  OnsetsView(Workbench& workbench, const OnsetsForm& form);

 private:
  void Draw();

  SampleRange range_;
  std::vector<ChannelBursts> found_;
  std::int32_t shown_ = 0;
};

}  // namespace velmora
