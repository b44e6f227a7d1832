#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace velmora {

struct ResultTable;
struct Workbench;

/// A panel that is up while something long runs. `Loading` is the panel of file operations, with a
/// bar and a Cancel button; `Processing` only asks for patience. It goes when this object does.
class ProgressPanel {
 public:
  enum class Kind { Loading, Processing };

  /// Brings the panel up; a loading panel clears CancelRequested.
  explicit ProgressPanel(Workbench& workbench, Kind kind = Kind::Loading);
  ProgressPanel(const ProgressPanel&) = delete;
  ProgressPanel& operator=(const ProgressPanel&) = delete;
  ~ProgressPanel();

  void SetFileName(std::string_view name);
  void SetFormat(std::string_view text);
  void SetStatus(std::string_view text);
  void SetLimits(double lowest, double highest);
  void SetValue(double value);
  /// Shows results as they come, below the bar, and names the Cancel button "&Stop", since what is done
  /// stays. The table must outlive the panel.
  void ShowTable(const ResultTable& table);
  /// Cancel gives way to "&Done" and "&Graph".
  void Finish();

  /// Gives the interface a turn, so that Cancel can be pressed. Returns CancelRequested.
  bool GiveTurn();
  /// The Cancel button.
  void PressCancel();

  [[nodiscard]] Kind PanelKind() const { return kind_; }
  [[nodiscard]] std::string Title() const;
  [[nodiscard]] const std::string& FileName() const { return fileName_; }
  [[nodiscard]] const std::string& Format() const { return format_; }
  [[nodiscard]] const std::string& Status() const { return status_; }
  [[nodiscard]] double Lowest() const { return lowest_; }
  [[nodiscard]] double Highest() const { return highest_; }
  [[nodiscard]] double Value() const { return value_; }
  [[nodiscard]] bool Finished() const { return finished_; }
  [[nodiscard]] bool OffersGraph() const;
  /// nullptr: the work shows no results on its way.
  [[nodiscard]] const ResultTable* Table() const { return table_; }

 private:
  void Changed();

  Workbench& workbench_;
  Kind kind_;
  std::string fileName_;
  std::string format_;
  std::string status_;
  double lowest_ = 0.0;
  double highest_ = 1.0;
  double value_ = 0.0;
  bool finished_ = false;
  const ResultTable* table_ = nullptr;
};

}  // namespace velmora
