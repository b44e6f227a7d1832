#pragma once

#include <functional>

#include "core/questions/form.hpp"
#include "core/trial/helpers.hpp"
#include "core/workbench.hpp"
#include "dsp/channel_list.hpp"

namespace velmora {

/// Integration statistics of channels over samples StatLo to StatHi, a row a channel.
class IntegralForm : public Form {
 public:
  IntegralForm(Workbench& workbench, const ChannelList& channels);

 private:
  [[nodiscard]] ResultTable Table(const ChannelList& channels) const;
  [[nodiscard]] std::string ClipboardText() const;

  Workbench& workbench_;
  double startTime_;
  double endTime_;
  std::int32_t firstSample_;
  std::int32_t lastSample_;
  std::int32_t count_;
  double duration_;
};

/// Asks for channels ("Select channel(s).", one alone is taken without a question), then for the range, which
/// becomes StatLo to StatHi, and shows the form. The file is as changed as it was.
void ShowIntegrationStatistics(Workbench& workbench, const std::function<SampleRange()>& askRange);

}  // namespace velmora
