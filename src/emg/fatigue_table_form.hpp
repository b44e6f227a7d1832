#pragma once

#include <string>

#include "core/results/result_form.hpp"
#include "core/workbench.hpp"
#include "emg/fatigue_series.hpp"

namespace velmora {

/// frmFatigueTable: the intervals of a channel as table and graph.
class FatigueTableForm : public ResultForm {
 public:
  /// `order` and `series` must outlive the form.
  FatigueTableForm(Workbench& workbench, const FatigueOrder& order, const FatigueSeries& series);

 private:
  enum Drawn : std::int32_t { Frequency, PercentFirst, Integrated, Spectra, FirstAndLast };

  void AddButtons();
  [[nodiscard]] std::string ChannelName() const;
  [[nodiscard]] std::string Units() const;
  [[nodiscard]] ResultTable Table() const;
  void DrawGraph();
  void DrawOverTime(FormGraph& graph) const;
  void DrawSlope(FormGraph& graph, const char* name, int colour, double FatigueRow::*of) const;
  void DrawSpectra(FormGraph& graph) const;
  void DrawFirstAndLast(FormGraph& graph) const;
  [[nodiscard]] std::string FileText() const;
  void Save();
  std::string SavedFile();

  const FatigueOrder& order_;
  const FatigueSeries& series_;
  std::int32_t drawn_ = Frequency;
  std::string savedFile_;
};

}  // namespace velmora
