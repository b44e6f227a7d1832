#pragma once

#include <string>

#include "core/questions/form.hpp"
#include "core/workbench.hpp"
#include "emg/fatigue_series.hpp"

namespace velmora {

/// frmFatigue: how to cut a channel into intervals. Its button takes one channel after the other.
class FatigueForm : public Form {
 public:
  FatigueForm(Workbench& workbench, const std::string& title);

 private:
  void AddSpectrumFields();
  void AddIntervalFields();
  void AddOutputFields();
  void AddShownFields();
  void AddButtons();
  void Follow();
  [[nodiscard]] FatigueSettings Settings() const;
  [[nodiscard]] bool ByRegression() const;
  [[nodiscard]] bool Accepts();
  bool Refuse(const std::string& text);
  [[nodiscard]] bool ChooseChannel();
  [[nodiscard]] bool ChooseFile();
  void Start();
  void Tell(const FatigueSeries& series);

  Workbench& workbench_;
  FatigueOrder order_;
  std::int32_t method_ = 0;
  double interval_ = 1.0;  // seconds
  std::int32_t data_ = 5;  // index of the list
  std::int32_t harmonics_ = 0;
  double refractory_ = 0.0;  // seconds
  std::int32_t interleave_ = 2;
  bool save_ = false;
  std::int32_t power_ = 0;
  double intervals_ = 0.0;  // what these settings make
  double frequencyStep_ = 0.0;
  double overlap_ = 0.0;
};

}  // namespace velmora
