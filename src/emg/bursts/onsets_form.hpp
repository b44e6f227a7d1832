#pragma once

#include <string>
#include <utility>
#include <vector>

#include "core/questions/analysis_form.hpp"
#include "dsp/channel_list.hpp"
#include "dsp/math/mean_deviation.hpp"
#include "emg/bursts/bursts.hpp"

namespace velmora {

/// What was found in one channel.
struct ChannelBursts {
  int channel = 1;
  std::vector<double> envelope;  // by sample of the range
  double threshold = 0.0;
  std::optional<MeanDeviation> rest{};  // nothing where the threshold was entered
  bool lifeless = false;                // much of the rest is one value that never changes
  std::vector<SignalBurst> bursts{};
};

/// Onsets and offsets of all bursts of channels, which stay as they are.
class OnsetsForm : public AnalysisForm {
 public:
  OnsetsForm(Workbench& workbench, SampleRange range);

  [[nodiscard]] const std::vector<ChannelBursts>& Found() const { return found_; }
  [[nodiscard]] SampleRange Range() const { return range_; }

 private:
  // As the fields number them.
  enum Baseline : std::int32_t { kQuietest, kStart, kCursors, kEntered };

  void AddEnvelopeFields();
  void AddThresholdFields();
  void AddTimeFields();
  void Follow();
  bool Compute() override;
  /// Of the baseline in the range, from 0, or nothing, and told, when there is none.
  [[nodiscard]] bool HasBaseline();
  [[nodiscard]] std::int64_t SamplesOf(double milliseconds) const;
  [[nodiscard]] std::size_t QuietSamples() const;
  /// The stretch of the envelope that stands for rest, from 0.
  [[nodiscard]] SampleRange Rest(const std::vector<double>& envelope) const;
  /// Tells the channels whose rest is no recording of a muscle.
  void TellLifelessRest();
  [[nodiscard]] ChannelBursts Search(int channel) const;
  [[nodiscard]] std::string Words() const;
  void KeepEvents();

  SampleRange range_;
  ChannelFlags channels_{};
  EnvelopeRule envelope_;
  std::int32_t baseline_ = kQuietest;
  double quiet_ = 0.2;  // seconds
  double deviations_ = 3.0;
  ChannelNumbers thresholds_{};
  double shortest_ = 50.0;    // ms
  double longestGap_ = 10.0;  // ms
  double second_ = 0.0;
  double secondTime_ = 10.0;  // ms
  bool events_ = true;
  std::vector<ChannelBursts> found_;
};

/// Asks for the range, then the dialogue, and shows what was found. Refuses a trial that is not over time.
void FindOnsets(Workbench& workbench);

}  // namespace velmora
