#pragma once

#include <string>

#include "core/questions/form.hpp"
#include "core/workbench.hpp"
#include "impact/head_impact.hpp"

namespace velmora {

/// The severity measures of one channel's acceleration between the cursors, reduced anew after every edit.
class HeadImpactForm : public Form {
 public:
  /// `last`: no other channel follows.
  HeadImpactForm(Workbench& workbench, int channel, bool last);

  [[nodiscard]] const HeadImpact& Impact() const { return impact_; }
  /// What was found, in a line.
  [[nodiscard]] std::string Words() const;
  /// Notices of what spoils the numbers, for whoever does not see the warnings.
  void NoteDoubts() const;

 private:
  void AddFields();
  void AddButtons(bool last);
  void TakeScaling();
  void Reduce(bool zeroNegatives);
  void ShowRefusedFilter();
  void TellWarnings();
  void TellReduction();
  void FillTable();
  void DrawGraph();
  /// Powers of the values fit into no number.
  [[nodiscard]] bool IsBeyondNumbers() const;
  /// The range, its samples or the sampling rate give none, whatever is pressed.
  [[nodiscard]] bool HasNoResult() const;
  [[nodiscard]] std::string MetricHint() const;
  [[nodiscard]] double TimeOfSample(std::int64_t sample) const;
  [[nodiscard]] double HicEnd() const;

  Workbench& workbench_;
  int channel_;
  SampleRange range_;
  HeadImpact impact_;
  bool rateCarriesFilter_;

  std::string scalingText_ = "1.000";
  bool metresToG_ = false;
  std::int32_t abscissa_ = 0;
  double cutoff_ = 1000.0;  // Hz
  double hicSpan_ = 36.0;   // ms
  double mass_;             // kg

  std::string warnings_;
  std::string reduction_;
  bool gsiFlagged_ = false;
  bool hicFlagged_ = false;
};

}  // namespace velmora
