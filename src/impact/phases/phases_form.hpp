#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/questions/analysis_form.hpp"
#include "impact/phases/work_results.hpp"

namespace velmora {

/// What the dialogues that end with phases of work have in common.
class PhasesForm : public AnalysisForm {
 public:
  /// After a computation.
  void ShowFound();

 protected:
  PhasesForm(Workbench& workbench, std::string name, std::string title, SampleRange range);

  /// "&Smallest reportable integral" and "Per &kilogram".
  void AddRuleFields();
  /// What an earlier press found is forgotten.
  void ForgetFound() { all_.clear(); }
  void FindPhases(int channel);

  [[nodiscard]] SampleRange Range() const { return range_; }
  [[nodiscard]] const std::vector<ChannelWork>& Found() const { return all_; }

  std::string viewTitle_;
  std::string viewWords_;  // above its tables

 private:
  SampleRange range_;
  WorkRule rule_;
  std::vector<ChannelWork> all_;
};

/// The range that an integration is over; nothing when it is refused: fewer than five samples, or no time
/// base.
std::optional<SampleRange> AskRangeToIntegrate(Workbench& workbench);

/// Asks for the range, then the dialogue, and shows the phases.
template <typename Dialogue>
void AnalysePhases(Workbench& workbench) {
  if (const std::optional<SampleRange> range = AskRangeToIntegrate(workbench)) {
    Dialogue form(workbench, *range);
    if (form.Ask()) {
      form.ShowFound();
    }
  }
}

}  // namespace velmora
