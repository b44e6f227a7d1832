#pragma once

#include <string>
#include <string_view>

#include "core/results/result_form.hpp"
#include "core/trial/helpers.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// A table of statistics over a range of samples: the fields that tell the range, sending and printing, and
/// the way to the other tables of statistics over the same range.
class StatisticsForm : public ResultForm {
 public:
  /// As their captions call them.
  enum class Kind { Descriptive, Median, Fourier, Emg, Integration };

 protected:
  /// How start and end are told: as numbers of the abscissa, or as texts of seconds ("1.500 s").
  enum class Times { Numbers, Texts };

  StatisticsForm(Workbench& workbench, Kind kind, std::string name, std::string title, SampleRange range,
                 Times times);

  /// The fields "StartTime" "EndTime" "FirstSample" "LastSample" "N" "Duration".
  void AddRangeFields();
  /// What every table has: saving, clipboard, the other tables, Print, and Exit, which accepts.
  void AddCommonButtons(const char* saveCaption, const char* clipboardCaption);

  [[nodiscard]] SampleRange Range() const { return {firstSample_, lastSample_}; }
  /// Start and end through the pattern of times.
  [[nodiscard]] const std::string& StartText() const { return start_; }
  [[nodiscard]] const std::string& EndText() const { return end_; }

 private:
  void ShowOther(std::string_view id);

  Kind kind_;
  Times times_;
  std::int32_t firstSample_;
  std::int32_t lastSample_;
  std::int32_t count_;
  double startTime_;
  double endTime_;
  double durationTime_;
  std::string start_;
  std::string end_;
  std::string duration_;
};

/// Sums grow with the length of a trial, and then decimals say less and less: from 1,000,000 on (magnitude)
/// they stand through `large`, from 10,000 on through the pattern of times where those are shortened, else
/// through that of values.
struct SumBands {
  const char* large = "#.";
  bool shortensMiddle = true;
};
ResultTable::Format SumFormat(const NumberPatterns& patterns, SumBands bands = {});

}  // namespace velmora
