#pragma once

#include <optional>
#include <string>

#include "core/questions/form.hpp"
#include "graph/single_view.hpp"
#include "trigger/trigger_filters.hpp"
#include "trigger/trigger_results.hpp"
#include "trigger/trigger_scan.hpp"

namespace velmora {

/// Scans a channel for moments that meet a condition and sets a cursor at each. While it is open the graph
/// shows the levels, which can be dragged there, and what a scan would find.
class TriggerForm : public Form {
 public:
  /// The view must outlive the form, and the trial stay as it is meanwhile.
  TriggerForm(Workbench& workbench, SingleView& view);
  TriggerForm(const TriggerForm&) = delete;
  TriggerForm& operator=(const TriggerForm&) = delete;
  ~TriggerForm() override;

  [[nodiscard]] bool StandsBesideGraph() const override { return true; }

 private:
  // trigger_form.cpp
  void TakeWindow();
  void AddConditionFields();
  void AddRangeFields();
  void AddFilterFields();
  void AddCursorFields();
  void AddButtons();
  void AddMenus();
  FormButton Press(const char* caption, void (TriggerForm::*press)());

  /// What edits bring about: units, fields without a meaning, the preview.
  void Follow();
  void ShowLevel(const char* name, double value, bool meant);
  void ShowPreview();
  void DragLevel(int level, double y);
  void ShowFilters();

  [[nodiscard]] std::optional<TriggerKind> Kind() const;
  /// As a scan takes the boxes: of two levels the larger one is the upper.
  [[nodiscard]] TriggerCondition Condition() const;
  [[nodiscard]] SampleRange Range() const;
  /// Filtered, at most a thousand; `tooMany` becomes whether there were more.
  [[nodiscard]] std::vector<Trigger> Find(bool* tooMany = nullptr) const;
  [[nodiscard]] std::size_t Most() const;
  /// The 32 bits that a scan compares with, by their shortest text.
  [[nodiscard]] static double AsKept(double level);
  void SettleLevels();
  FormField& FieldNamed(std::string_view name);

  // trigger_presses.cpp
  void Scan();
  void Tell() const;
  void View();
  void Save();
  void SendToClipboard();
  void Print();
  void KeepFirstTwo();
  void KeepFirstAndLast();
  void Remove();
  void SendToNotepad();
  void SendToQuattroPro();
  void SendToExcel();
  void SendTo(const char* program);
  void OnlyPositive();
  void OnlyNegative();
  void BothSigns();
  void EnterMinimum();
  void EnterRefractory();
  void Leave();
  [[nodiscard]] bool IsScanned();
  void ShowKept();
  void DropResults();

  Workbench& workbench_;
  SingleView& view_;
  SampleRange window_;  // between the cursors that there were at first

  std::int32_t channel_ = 0;  // of the list, from 0
  std::int32_t type_ = -1;
  double level1_ = 0.0;
  double level2_ = 0.0;
  std::int32_t most_ = 0;
  std::int32_t colour_ = 0;
  std::int32_t inWindow_ = 0;
  bool numbers_ = false;
  TriggerFilters filters_;
  std::string units_;
  std::string time_;
  std::string found_;
  std::string preview_;
  std::string filtered_;

  std::optional<TriggerResults> results_;
};

}  // namespace velmora
