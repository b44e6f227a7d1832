#pragma once

#include <functional>

#include "core/trial/helpers.hpp"
#include "dsp/channel_list.hpp"
#include "results/statistics_form.hpp"

namespace velmora {

/// Integration statistics of channels over samples StatLo to StatHi, a row a channel.
class IntegralForm : public StatisticsForm {
 public:
  IntegralForm(Workbench& workbench, const ChannelList& channels);

 private:
  [[nodiscard]] ResultTable Table(const ChannelList& channels) const;
  [[nodiscard]] std::string ClipboardText() const override;
};

/// Asks for channels ("Select channel(s).", one alone is taken without a question), then for the range, which
/// becomes StatLo to StatHi, and shows the form. The file is as changed as it was.
void ShowIntegrationStatistics(Workbench& workbench, const std::function<SampleRange()>& askRange);

}  // namespace velmora
