#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/questions/analysis_form.hpp"
#include "core/trial/helpers.hpp"
#include "dsp/channel_list.hpp"
#include "dsp/design/cfc_choice.hpp"
#include "impact/strikes/strikes.hpp"

namespace velmora {

/// What was found in one channel.
struct ChannelStrikes {
  int channel = 1;
  std::vector<double> signal;  // over the range, as it was searched
  StrikeRule rule;
  std::vector<Strike> strikes{};
};

/// Landings and strikes: the impacts of forces or accelerations, how large they are and how fast they rise.
class StrikesForm : public AnalysisForm {
 public:
  StrikesForm(Workbench& workbench, SampleRange range);

  [[nodiscard]] const std::vector<ChannelStrikes>& Found() const { return found_; }
  [[nodiscard]] SampleRange Range() const { return range_; }
  [[nodiscard]] double BodyWeight() const { return bodyWeight_; }
  /// How peaks and rates are to be read.
  [[nodiscard]] std::string Words() const;

 private:
  void AddThresholdFields();
  void AddPeakFields();
  void Follow();
  bool Compute() override;
  /// What was typed, or what the channel's units and values say.
  [[nodiscard]] StrikeRule RuleFor(int channel, const std::vector<double>& signal) const;
  [[nodiscard]] ChannelStrikes Search(int channel, const std::optional<CfcSection>& filter) const;
  void TellWithoutImpacts() const;
  [[nodiscard]] std::int64_t SamplesIn(double seconds) const;

  SampleRange range_;
  ChannelFlags channels_{};
  double threshold_ = 0.0;
  double release_ = 0.0;
  double shortest_ = 0.005;    // s
  double shortestGap_ = 0.03;  // s
  bool negative_ = false;
  std::int32_t peak_ = 0;
  double peakWindow_ = 0.05;  // s
  CfcChoice filter_;
  double bodyWeight_ = 0.0;  // N
  std::vector<ChannelStrikes> found_;
};

/// Asks for the range, then the dialogue, and shows the impacts.
void AnalyseImpacts(Workbench& workbench);

}  // namespace velmora
