#pragma once

#include <vector>

#include "core/questions/form.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// frmGenerateFourier: adds sines to a sum, which becomes a channel of the trial, or of a new one.
class GenerateFourierForm : public Form {
 public:
  explicit GenerateFourierForm(Workbench& workbench);

  void Ask() { Show(workbench_); }

 private:
  void AddFields();
  void LockTimes();
  void Describe();
  void DrawSum();
  bool HasRoom();
  bool StartTrial();
  void Add();
  bool Land();
  bool Leave();

  Workbench& workbench_;
  double amplitude_ = 1.0;
  double frequency_ = 1.0;  // Hz
  double phase_ = 0.0;      // degrees
  double rate_ = 1000.0;    // Hz
  double time_ = 1.0;       // s
  std::string cycles_;
  bool newTrial_;
  std::string fileNameBefore_;
  int sines_ = 0;
  std::vector<float> sum_;  // sample by sample; empty before the first sine
};

}  // namespace velmora
