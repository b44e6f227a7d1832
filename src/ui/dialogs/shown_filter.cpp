#include "ui/dialogs/shown_filter.hpp"

#include <algorithm>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "dsp/filters/filter_design.hpp"
#include "dsp/filters/filter_messages.hpp"
#include "dsp/filters/filter_options.hpp"
#include "ui/dialogs/form_picture.hpp"

namespace velmora::ui {
namespace {

constexpr const char* kPassesForm = "frmButterworth";
constexpr const char* kDesignsForm = "frmSmooth";

double NumberOf(const Form& form, const char* field, int channel) {
  return ValueOf<ChannelNumbers>(form, field)[channel];
}

std::int16_t OrderOf(const Form& form, int channel) {
  constexpr double kHighest = 32767;
  return static_cast<std::int16_t>(
      RoundHalfEven(std::clamp(NumberOf(form, "Orders", channel), 0.0, kHighest)));
}

// Sections of either precision, for the filters that run again and again.
template <typename Designed, typename Section>
void Accept(ShownFilter& shown, const Designed& designed, const Section& section, PassType type, int passes) {
  shown.refusal = ReasonText(designed.verdict);
  if (designed.verdict.Accepted() && passes > 0) {
    shown.filter.sections = Repeated(section, type, passes);
  }
}

ShownFilter FilterOfPasses(const Form& form, int channel, double rate) {
  const FilterDesign design = DesignOfThree(ValueOf<std::int32_t>(form, "optFilter"));
  const PassType type = ValueOf<std::int32_t>(form, "optPassType") == 0 ? PassType::Low : PassType::High;
  const auto passes = static_cast<std::int16_t>(NumberOf(form, "Passes", channel));
  const double cutoff = NumberOf(form, "FilterCutoffs", channel);
  const bool zeroLag = ValueOf<ChannelFlags>(form, "ZeroLag")[channel];
  ShownFilter shown{.edges = {cutoff}, .filter = {.rate = rate, .zeroLag = zeroLag}};
  const DesignedSection designed =
      DesignSection(type, design, static_cast<float>(cutoff), rate, passes, zeroLag);
  Accept(shown, designed, InDoubles(designed.section), type, passes);
  return shown;
}

ShownFilter FilterOfDesigns(const Form& form, int channel, double rate) {
  const std::int32_t option = ValueOf<std::int32_t>(form, "optFilter");
  const std::int32_t pass = ValueOf<std::int32_t>(form, "optPassType");
  const std::int16_t order = OrderOf(form, channel);
  const double cutoff = NumberOf(form, "FilterCutoffs", channel);
  ShownFilter shown{.edges = {cutoff}, .filter = {.rate = rate}};
  if (IsBandOption(pass)) {
    shown.edges.push_back(NumberOf(form, "SecondCutoffs", channel));
  }
  if (pass > kBandStopOption || option > kBesselOption || (IsDesignByPasses(option) && IsBandOption(pass))) {
    shown.refusal = "not implemented";
    return shown;
  }
  if (IsDesignByPasses(option)) {
    const PassType type = pass == kLowPassOption ? PassType::Low : PassType::High;
    const DesignedSectionOf<double> designed =
        DesignForwardSection(type, DesignByPassesOf(option), static_cast<float>(cutoff), rate, order);
    Accept(shown, designed, designed.section, type, order);
    return shown;
  }
  try {
    shown.filter.sections = DesignFilter({.approximation = ApproximationOf(option),
                                          .band = BandOf(pass),
                                          .order = order,
                                          .rate = rate,
                                          .cutoff = cutoff,
                                          .higher = shown.edges.back()});
  } catch (const FilterDesignError& error) {
    shown.refusal = error.what();
  }
  return shown;
}

}  // namespace

bool ShowsFilter(const Form& form) {
  return form.Name() == kPassesForm || form.Name() == kDesignsForm;
}

ShownFilter FilterOf(const Form& form, int channel, double rate) {
  if (!(NumberOf(form, "FilterCutoffs", channel) > 0)) {
    return {};
  }
  return form.Name() == kPassesForm ? FilterOfPasses(form, channel, rate)
                                    : FilterOfDesigns(form, channel, rate);
}

}  // namespace velmora::ui
