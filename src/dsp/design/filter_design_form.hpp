#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/questions/analysis_form.hpp"
#include "dsp/design/planned_filter.hpp"

namespace velmora {

/// Designs a filter of any family, shows what it will do as it will be run, and runs it over channels.
class FilterDesignForm : public AnalysisForm {
 public:
  explicit FilterDesignForm(Workbench& workbench);

 private:
  // As the fields number them.
  enum Family : std::int32_t {
    kButterworth,
    kChebyshev,
    kInverseChebyshev,
    kElliptic,
    kFir,
    kNotch,
    kCfc,
    kSavitzkyGolay,
    kCoefficients
  };
  enum Picture : std::int32_t { kGainDb, kGain, kPhase, kDelay, kImpulse, kStep };

  void FollowEdits();
  void OfferCutoffs();
  void AddBandFields();
  void AddFamilyFields();
  void AddRunFields();
  void ShowOwnFields();
  void Update();

  [[nodiscard]] bool IsRecursive() const { return family_ <= kElliptic; }
  [[nodiscard]] bool HasEdges() const { return family_ <= kNotch; }
  [[nodiscard]] bool IsZeroLag() const;
  [[nodiscard]] bool KeepsCutoff() const;
  [[nodiscard]] bool WorksOutTaps() const;
  /// Hz; what the picture marks and the table of edges tells.
  [[nodiscard]] std::vector<double> Edges() const;

  /// Throws FilterDesignError.
  [[nodiscard]] PlannedFilter Design() const;
  [[nodiscard]] Biquads DesignSections() const;
  [[nodiscard]] std::vector<double> DesignTaps() const;
  /// "Low-pass Butterworth, order 2, zero-lag, 6 Hz"
  [[nodiscard]] std::string Words() const;
  [[nodiscard]] std::string EdgeWords() const;

  void Draw(const PlannedFilter& filter);
  void DrawAnswer(const PlannedFilter& filter, FormGraph& graph) const;
  void DrawResponse(const std::vector<PlannedPoint>& points, FormGraph& graph) const;
  void FillTables(const PlannedFilter& filter, const std::vector<PlannedPoint>& points);

  bool Compute() override;
  [[nodiscard]] bool FitsChannels(const PlannedFilter& filter);
  void KeepCutoffs(const ChannelList& channels);

  std::int32_t family_ = kButterworth;
  std::int32_t passType_ = 0;
  double cutoff_ = 0.0;  // Hz
  double higher_ = 0.0;  // Hz
  bool cutoffTyped_ = false;
  bool higherTyped_ = false;
  std::int32_t order_ = 2;
  double ripple_ = 0.5;        // dB
  double attenuation_ = 40.0;  // dB
  std::int32_t taps_ = 101;
  std::int32_t window_ = 0;
  double transition_ = 0.0;  // Hz
  double notchWidth_ = 2.0;  // Hz
  std::int32_t harmonics_ = 0;
  std::int32_t class_ = 1;
  std::int32_t points_ = 11;
  std::int32_t polynomial_ = 3;
  std::int32_t derivative_ = 0;
  std::string numerator_ = "1";
  std::string denominator_ = "1";
  std::int32_t direction_ = 0;
  bool keepCutoff_ = true;
  ChannelFlags channels_{};
  std::int32_t picture_ = kGainDb;
  std::string atEdges_;
  std::string whyNot_;  // the filter cannot be built; empty when it can
};

/// The dialogue. Refuses a trial that is not over time.
void DesignDigitalFilter(Workbench& workbench);

}  // namespace velmora
