#include "dsp/filters/filter_testing_form.hpp"

#include <cmath>
#include <cstddef>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "dsp/filters/filter_design.hpp"
#include "dsp/filters/filter_messages.hpp"
#include "dsp/filters/filter_options.hpp"

namespace velmora {
namespace {

// A choice of this dialogue alone: the recursive filter that the other dialogue of filters runs.
constexpr std::int32_t kButterworthByPassesOption = 6;

// Where the fields lie in fields_.
enum TestingField : std::size_t {
  kPassTypeField,
  kFilterField,
  kCutoffField,
  kSecondCutoffField,
  kOrderField,
  kZeroLagField
};

double Decibels(double gain) {
  return 20 * std::log10(gain);
}

}  // namespace

FilterTestingForm::FilterTestingForm(Workbench& workbench)
    : Form("frmFiltering", "Filter Testing"), workbench_(workbench) {
  OfferFilter();
  AddFields();
  buttons_ = {
      {"&OK", FormButton::Role::Accept, [this] { return Keep(); }},
      {"&Cancel", FormButton::Role::Cancel, [] { return true; }},
  };
  Update();
}

// What the first channel was filtered with, else what shows a filter's shape at this rate.
void FilterTestingForm::OfferFilter() {
  if (workbench_.trial.Rate > 0) {
    rate_ = workbench_.trial.Rate;
  }
  const auto offer = [this](double last, double other) {
    return last > 0 && last < rate_ / 2 ? last : other;
  };
  cutoff_ = offer(workbench_.filters.FilterCutoffs[1], rate_ / 20);
  secondCutoff_ = offer(workbench_.filters.SecondCutoffs[1], (cutoff_ + rate_ / 2) / 2);
}

void FilterTestingForm::AddFields() {
  constexpr double highestOrder = 100;
  const auto update = [this] { Update(); };
  fields_ = {
      {.name = "optPassType",
       .caption = "Pass type",
       .target = &optPassType_,
       .choices = {"&Low-pass", "&High-pass", "&Band-pass", "Band-&stop (reject)"},
       .edited = update},
      {.name = "optFilter",
       .caption = "Filter",
       .target = &optFilter_,
       .choices = {"&Butterworth", "Critically-&damped", "&Chebyshev", "&Elliptic", "&Inverse Chebyshev",
                   "Be&ssel", "Butterworth by &passes"},
       .edited = update},
      {.name = "FilterCutoff",
       .caption = "Cutoff frequency",
       .target = &cutoff_,
       .units = "Hz",
       .edited = update},
      {.name = "SecondCutoff",
       .caption = "Higher cutoff",
       .target = &secondCutoff_,
       .units = "Hz",
       .edited = update},
      {.name = "Order",
       .caption = "Order",
       .target = &order_,
       .lowest = 1,
       .highest = highestOrder,
       .edited = update},
      {.name = "ZeroLag", .caption = "&Zero-lag", .target = &zeroLag_, .edited = update},
      {.name = "Rate", .caption = "Sampling &rate", .target = &rate_, .units = "Hz", .edited = update},
  };
}

bool FilterTestingForm::IsByPasses() const {
  return IsDesignByPasses(optFilter_) || optFilter_ == kButterworthByPassesOption;
}

bool FilterTestingForm::IsBandChosen() const {
  return IsBandOption(optPassType_);
}

void FilterTestingForm::Update() {
  fields_[kSecondCutoffField].hidden = !IsBandChosen();
  fields_[kCutoffField].caption = IsBandChosen() ? "Lower cutoff" : "Cutoff frequency";
  fields_[kOrderField].caption = IsByPasses() ? "Passes" : "Order";
  fields_[kZeroLagField].hidden = !IsByPasses();
  fields_[kPassTypeField].disabledChoices.clear();
  if (IsByPasses()) {
    fields_[kPassTypeField].disabledChoices = {kBandPassOption, kBandStopOption};
  }
  tables_.clear();
  whyNot_.clear();
  try {
    AddTables(Design());
  } catch (const FilterDesignError& error) {
    whyNot_ = error.what();
  }
}

RunningFilter FilterTestingForm::Design() const {
  if (IsByPasses()) {
    return DesignByPasses();
  }
  return {DesignFilter({.approximation = ApproximationOf(optFilter_),
                        .band = BandOf(optPassType_),
                        .order = order_,
                        .rate = rate_,
                        .cutoff = cutoff_,
                        .higher = secondCutoff_}),
          rate_, false};
}

RunningFilter FilterTestingForm::DesignByPasses() const {
  if (IsBandChosen()) {
    throw FilterDesignError("Invalid filter selection or not implemented.");
  }
  // The same limits as for the other designs; what the recursion refuses besides has a text of its own.
  DesignFilter({.order = 1, .rate = rate_, .cutoff = cutoff_});
  const PassType type = optPassType_ == kLowPassOption ? PassType::Low : PassType::High;
  const auto passes = static_cast<std::int16_t>(order_);
  const DesignedSection designed =
      DesignSection(type, DesignByPassesOf(optFilter_), static_cast<float>(cutoff_), rate_, passes, zeroLag_);
  if (!designed.verdict.Accepted()) {
    throw FilterDesignError(ReasonText(designed.verdict));
  }
  return {Repeated(InDoubles(designed.section), type, passes), rate_, zeroLag_};
}

std::string FilterTestingForm::Description() const {
  const auto choice = [this](TestingField field, std::int32_t index) {
    return WithoutMnemonic(fields_[field].choices[static_cast<std::size_t>(index)]);
  };
  std::string text = choice(kFilterField, optFilter_) + ", " + choice(kPassTypeField, optPassType_) + ", " +
                     (IsByPasses() ? "passes " : "order ") + std::to_string(order_) + ", " +
                     PlainNumber(cutoff_) + " Hz";
  if (IsBandChosen()) {
    text += " to " + PlainNumber(secondCutoff_) + " Hz";
  }
  if (IsByPasses() && zeroLag_) {
    text += ", zero-lag";
  }
  return text + ", sampled at " + PlainNumber(rate_) + " Hz";
}

void FilterTestingForm::AddTables(const RunningFilter& filter) {
  std::vector<double> edges = {cutoff_};
  if (IsBandChosen()) {
    edges.push_back(secondCutoff_);
  }
  ResultTable response{.name = "frmFiltering",
                       .title = Description(),
                       .columns = {"Frequency (Hz)", "Magnitude", "Magnitude (dB)", "Phase (degrees)"}};
  for (const FrequencyPoint& point : FrequencyResponse(filter, ResponseFrequencies(edges, rate_))) {
    response.rows.push_back({point.frequency, point.gain, Decibels(point.gain), point.phase});
  }
  ResultTable step{
      .name = "frmFilteringStep", .title = Description(), .columns = {"Time (s)", "Step response"}};
  for (const StepPoint& point : StepResponse(filter)) {
    step.rows.push_back({point.time, point.value});
  }
  tables_ = {response, step};
}

bool FilterTestingForm::Keep() {
  if (!whyNot_.empty()) {
    ShowRefusal(workbench_, {.title = "Invalid Filter", .text = whyNot_, .icon = Icon::Exclamation});
    return false;
  }
  workbench_.results.ResultTables = tables_;
  return true;
}

}  // namespace velmora
