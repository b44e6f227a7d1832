#pragma once

#include <vector>

#include "core/questions/analysis_form.hpp"
#include "core/results/result_form.hpp"
#include "core/trial/helpers.hpp"
#include "dsp/channel_list.hpp"
#include "statistics/regression.hpp"

namespace velmora {

/// frmRegression: one channel by others, over a range.
class RegressionForm : public AnalysisForm {
 public:
  RegressionForm(Workbench& workbench, SampleRange range);

  [[nodiscard]] Results& Found() { return results_; }

 private:
  static constexpr int kMostX = 10;

  bool Compute() override;
  bool TakeChannels();
  bool TakeRows(const GoesOn& goesOn);
  RegressionTrouble Fit();
  void MakeTables();
  [[nodiscard]] ResultTable TermTable() const;
  [[nodiscard]] ResultTable FitTable() const;
  [[nodiscard]] ResultTable AgreementTable() const;
  [[nodiscard]] std::string TermOf(int channel) const;
  /// The channels asked for: the fitted one, the residuals. Throws std::range_error where numbers make none
  /// that data can hold.
  [[nodiscard]] std::vector<std::vector<float>> Modelled() const;
  void Add(const std::vector<std::vector<float>>& modelled);
  void TellFit();

  SampleRange range_;
  std::int32_t y_ = 0;
  ChannelFlags channels_{};
  bool time_ = false;
  bool intercept_ = true;
  bool fitted_ = false;
  bool residuals_ = false;

  ChannelList terms_;  // 0 is the abscissa
  std::vector<std::vector<double>> columns_;
  std::vector<double> yValues_;
  Regression fit_;
  Results results_;
};

/// Asks, and shows the tables.
void ShowRegression(Workbench& workbench, SampleRange range);

}  // namespace velmora
