#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "core/questions/analysis_form.hpp"
#include "core/results/result_form.hpp"
#include "dsp/design/cfc_choice.hpp"
#include "impact/accelerometry/accelerometry.hpp"

namespace velmora {

/// Three axes of an accelerometer, mostly of a head, over one impact.
class AccelerometryForm : public AnalysisForm {
 public:
  AccelerometryForm(Workbench& workbench, SampleRange range);

  /// After a computation: the table, and the resultant with its intervals drawn.
  void ShowFound();

 private:
  void AddAxisFields();
  void AddMeasureFields();
  /// The units are those of the X axis, unless somebody chose them.
  void FollowUnits();
  [[nodiscard]] bool Metric() const { return units_ != 0; }
  [[nodiscard]] bool MayCompute();
  bool Compute() override;
  void WarnOfUnits();
  /// A sensor that mostly rests shows gravity, which tells what its samples are in.
  void WarnOfGravity();
  /// Appends what was asked for, over the whole trial.
  void AddChannelsAsked();
  [[nodiscard]] int ChannelsAsked() const { return (addResultant_ ? 1 : 0) + (addTilt_ ? 2 : 0); }
  [[nodiscard]] std::string Words() const;
  [[nodiscard]] std::string HicName(std::size_t k) const;
  [[nodiscard]] double TimeAt(std::int64_t sampleOfRange) const;
  [[nodiscard]] ResultTable Table() const;
  [[nodiscard]] FormGraph Graph() const;

  SampleRange range_;
  std::array<std::int32_t, 3> axes_{};
  std::int32_t units_ = 0;
  bool unitsChosen_ = false;
  CfcChoice filter_;
  double bias_ = 0.0;                           // s
  std::array<double, 2> hicLimits_ = {15, 36};  // ms
  bool addResultant_ = true;
  bool addTilt_ = false;

  Accelerations accelerations_;
  Accelerometry found_;
};

/// Asks for the range, then the dialogue, and shows what came of it.
void MeasureThreeAxes(Workbench& workbench);

}  // namespace velmora
