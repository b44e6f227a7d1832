#include "data/sample_cell.hpp"

#include <array>
#include <cmath>
#include <cstdio>
#include <limits>
#include <utility>

#include "core/results/trial_lines.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/abscissa.hpp"
#include "core/trial/refusals.hpp"

namespace velmora {
namespace {

void RefuseText(Workbench& workbench, const char* text) {
  ShowRefusal(workbench, {.title = "Invalid Entry", .text = text, .icon = Icon::Exclamation});
}

bool IsThere(Workbench& workbench, std::int32_t sample) {
  const bool there = sample >= 1 && sample <= workbench.trial.NData;
  if (!there) {
    RefuseEntry(workbench, "Sample", 1, workbench.trial.NData);
  }
  return there;
}

bool MayChange(Workbench& workbench, int channel) {
  if (channel < 0 || channel > workbench.trial.NChan) {
    RefuseEntry(workbench, "Channel", 0, workbench.trial.NChan);
    return false;
  }
  if (channel == 0 && IsTimeBased(workbench)) {
    RefuseText(workbench, "The abscissa cannot be changed while it counts seconds.");
    return false;
  }
  return true;
}

std::optional<float> ValueTyped(Workbench& workbench, std::string_view typed) {
  if (!IsNumber(typed)) {
    RefuseText(workbench, "The value must be a number.");
    return std::nullopt;
  }
  constexpr double kLargest = std::numeric_limits<float>::max();
  const double value = Val(typed);
  const auto rounded = static_cast<float>(value);
  if (!std::isfinite(rounded)) {
    RefuseEntry(workbench, "Value", -kLargest, kLargest);
    return std::nullopt;
  }
  return rounded;
}

}  // namespace

std::string ShownSample(float value, std::string_view pattern) {
  constexpr double kLongest = 1e9;
  std::string shown = FormatNumber(value, pattern);
  const bool digits = shown.find_first_of("123456789") != std::string::npos;
  if (!std::isfinite(value) || (std::abs(value) < kLongest && (digits || value == 0))) {
    return shown;
  }
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.7g", static_cast<double>(value));
  return text.data();
}

std::string ShownAbscissa(const Workbench& workbench, float value) {
  return AbscissaText(workbench, value, workbench.patterns.ValuePattern);
}

std::string ColumnName(const Trial& trial, int channel) {
  const std::string label = LabelOnOneLine(trial, channel);
  return channel == 0 ? (label.empty() ? "Abscissa" : label) : ChannelNumber(channel) + ": " + label;
}

bool ChangeValue(Workbench& workbench, std::int32_t sample, int channel, std::string_view typed) {
  if (!IsThere(workbench, sample) || !MayChange(workbench, channel)) {
    return false;
  }
  const std::optional<float> value = ValueTyped(workbench, typed);
  if (!value) {
    return false;
  }
  const float before = std::exchange(workbench.trial.Data(sample, channel), *value);
  MarkChanged(workbench, true);
  if (before != *value) {
    const std::string what = "Sample " + FormatCount(sample) + " changed from " + PlainNumber(before) +
                             " to " + PlainNumber(*value);
    if (channel == 0) {
      Did(workbench, what + " on the abscissa");
    } else {
      Did(workbench, what, {{channel}});
    }
  }
  return true;
}

std::optional<std::int32_t> SampleNamed(Workbench& workbench, std::string_view typed) {
  const Trial& trial = workbench.trial;
  std::string text = Trim(typed);
  const bool isTime = !text.empty() && (text.back() == 's' || text.back() == 'S');
  if (isTime) {
    text.pop_back();
  }
  if (!IsNumber(text)) {
    RefuseText(workbench, "Enter the number of a sample, or a time with \"s\" behind it.");
    return std::nullopt;
  }
  const double number = Val(text);
  if (!isTime) {
    const std::int32_t sample = RoundHalfEven32(number);
    return IsThere(workbench, sample) ? std::optional(sample) : std::nullopt;
  }
  if (!HasTimeBase(workbench)) {
    return std::nullopt;
  }
  const double first = AbscissaStart(trial);
  const double last = PlaceOf(trial, trial.NData);
  if (!(number >= first && number <= last)) {
    RefuseEntry(workbench, "Time (s)", first, last);
    return std::nullopt;
  }
  return SampleOf(trial, number);
}

std::string TextOfCells(const Trial& trial, SampleRange samples, int firstChannel, int lastChannel) {
  std::string text;
  for (std::int32_t i = samples.lo; i <= samples.hi; ++i) {
    for (int c = firstChannel; c <= lastChannel; ++c) {
      text += (c == firstChannel ? "" : "\t") + PlainNumber(trial.Data(i, c));
    }
    text += '\n';
  }
  return text;
}

}  // namespace velmora
