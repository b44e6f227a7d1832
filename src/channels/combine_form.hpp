#pragma once

#include <string>

#include "core/questions/analysis_form.hpp"
#include "dsp/channel_list.hpp"

namespace velmora {

/// frmCombine: one channel from several, new or in place of the first.
class CombineForm : public AnalysisForm {
 public:
  explicit CombineForm(Workbench& workbench);

 private:
  bool Compute() override;
  bool TakesAsMany(const ChannelList& channels);
  void OfferNames();

  std::int32_t operation_ = 0;
  ChannelFlags channels_{};
  ChannelNumbers weights_{};
  std::int32_t target_ = 0;
  std::string label_;
  std::string units_;
  bool labelTyped_ = false;
  bool unitsTyped_ = false;
};

}  // namespace velmora
