#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/questions/analysis_form.hpp"
#include "core/results/result_form.hpp"
#include "core/trial/helpers.hpp"
#include "forceplate/gravity/gravity_found.hpp"

namespace velmora {

/// Where the body's centre of gravity goes, from the forces below it, and what a jump came to.
class GravityForm : public AnalysisForm {
 public:
  GravityForm(Workbench& workbench, SampleRange range);

  [[nodiscard]] Results TakeResults() { return std::move(results_); }

 private:
  // As the field numbers them.
  enum Mass : std::int32_t { kFromQuiet, kEntered };

  void AddChannelFields();
  void AddBodyFields();
  void Follow();
  bool Compute() override;
  [[nodiscard]] bool HasChannels();
  [[nodiscard]] bool HasPressureUnits();
  [[nodiscard]] bool IsLoaded(const GravityFound& found);
  [[nodiscard]] bool TakeWeight(GravityFound& found);
  [[nodiscard]] bool FindMotions(GravityFound& found);
  [[nodiscard]] std::optional<HorizontalMotion> FindHorizontal(const GravityFound& found, int force,
                                                               int pressure) const;
  [[nodiscard]] std::vector<int> HorizontalChannels() const;
  [[nodiscard]] int ChannelsToAdd() const;
  void AddMotions(const GravityFound& found);
  void TellDoubts(const GravityFound& found);
  void TellIfOnThePlate(int force, const std::optional<HorizontalMotion>& motion);
  [[nodiscard]] bool NeedsForce() const { return horizontal_ != HorizontalMethod::Pendulum; }
  [[nodiscard]] bool NeedsPressure() const { return horizontal_ != HorizontalMethod::AsVertical; }
  /// Whether the channels for this direction are chosen.
  [[nodiscard]] bool HasDirection(int force, int pressure) const;
  [[nodiscard]] std::size_t QuietSamples() const;

  SampleRange range_;
  std::int32_t fx_ = 0;
  std::int32_t fy_ = 0;
  std::int32_t fz_ = 0;
  std::int32_t ax_ = 0;
  std::int32_t ay_ = 0;
  std::int32_t massFrom_ = kFromQuiet;
  double mass_ = 0.0;   // kg
  double quiet_ = 1.0;  // s
  double gravity_ = 9.80665;
  bool unloaded_ = false;
  std::int32_t driftChoice_ = 0;
  std::int32_t horizontalChoice_ = 0;
  HorizontalMethod horizontal_ = HorizontalMethod::AsVertical;
  double height_ = 0.0;  // m
  bool addAcceleration_ = false;
  bool addVelocity_ = true;
  bool addDisplacement_ = true;
  double threshold_ = 20.0;  // N
  double start_ = 5.0;       // % of the weight
  Results results_;
};

/// Asks for the range, then the dialogue, and shows what was found. Refuses a trial that is not over time.
void FindCentreOfGravity(Workbench& workbench);

}  // namespace velmora
