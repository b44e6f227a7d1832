#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "channels/waveform.hpp"
#include "core/questions/analysis_form.hpp"

namespace velmora {

/// frmWaveform: adds waveforms to a sum, which becomes a channel of the trial, or of a new one.
class WaveformForm : public AnalysisForm {
 public:
  explicit WaveformForm(Workbench& workbench);

 private:
  void AddFields();
  void LockTimes();
  void FollowShape();
  /// How many the sum has or will have; refused where rate or time make none.
  [[nodiscard]] std::optional<std::int64_t> Samples();
  bool Add();
  bool Compute() override;  // lands the sum
  void DrawSum();

  std::int32_t shape_ = static_cast<std::int32_t>(WaveShape::Sine);
  Waveform wave_;
  double seed_ = 1.0;
  double rate_ = 1000.0;  // Hz
  double time_ = 1.0;     // s
  std::string label_;
  std::string units_ = "?";
  bool labelTyped_ = false;
  std::vector<std::string> added_;  // the names of the shapes
  std::vector<double> sum_;         // sample by sample; empty before the first
};

}  // namespace velmora
