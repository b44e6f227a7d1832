#pragma once

#include <string>

#include "impact/phases/moment_power.hpp"
#include "impact/phases/phases_form.hpp"

namespace velmora {

/// The power of a joint's moment as a new channel, and its phases of generation and absorption.
class MomentPowerForm : public PhasesForm {
 public:
  MomentPowerForm(Workbench& workbench, SampleRange range);

 private:
  void AddMotionFields();
  /// Kind and unit of the motion as its channel's units say, unless somebody chose them.
  void FollowUnits();
  [[nodiscard]] bool IsAngle() const { return kind_ != 0; }
  [[nodiscard]] bool InDegrees() const { return angleUnit_ != 0; }
  [[nodiscard]] bool MayCompute();
  bool Compute() override;
  /// An angle that is told within one turn jumps where it goes on into the next.
  void WarnOfJumps();
  [[nodiscard]] std::string Words() const;

  std::int32_t moment_ = 0;
  std::int32_t motion_ = 0;
  std::int32_t kind_ = 0;
  std::int32_t angleUnit_ = 0;
  bool kindChosen_ = false;
  bool unitChosen_ = false;
  std::string label_ = "Power";
};

/// Asks for the range, then the dialogue, and shows the phases of the power.
void AnalyseMomentPower(Workbench& workbench);

}  // namespace velmora
