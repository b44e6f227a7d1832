#include "core/questions/analysis_form.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/refusals.hpp"

namespace velmora {
namespace {

// A caption may say more behind its name: "(s)" belongs to the box, mnemonics do not.
std::string PlainCaption(const FormField& field) {
  return WithoutMnemonic(field.caption);
}

double NumberIn(const FormField& field) {
  if (const auto* const* whole = std::get_if<std::int32_t*>(&field.target)) {
    return **whole;
  }
  return *std::get<double*>(field.target);
}

}  // namespace

AnalysisForm::AnalysisForm(Workbench& workbench, std::string name, std::string title)
    : Form(std::move(name), std::move(title)), workbench_(workbench) {}

bool AnalysisForm::Ask() {
  Show(workbench_);
  return computed_;
}

FormField& AnalysisForm::AddFlag(const char* name, const char* caption, bool& value) {
  return fields_.emplace_back(FormField{.name = name, .caption = caption, .target = &value});
}

FormField& AnalysisForm::AddChoice(const char* name, const char* caption, std::int32_t& value,
                                   std::vector<std::string> choices) {
  return fields_.emplace_back(
      FormField{.name = name, .caption = caption, .target = &value, .choices = std::move(choices)});
}

FormField& AnalysisForm::AddText(const char* name, const char* caption, std::string& value) {
  return fields_.emplace_back(FormField{.name = name, .caption = caption, .target = &value});
}

FormField& AnalysisForm::AddNumber(const char* name, const char* caption, double& value, Limits limits) {
  limited_.push_back({fields_.size(), limits});
  return fields_.emplace_back(FormField{.name = name, .caption = caption, .target = &value});
}

FormField& AnalysisForm::AddCount(const char* name, const char* caption, std::int32_t& value, Limits limits) {
  limited_.push_back({fields_.size(), limits});
  return fields_.emplace_back(FormField{.name = name, .caption = caption, .target = &value});
}

FormField& AnalysisForm::AddChannels(const char* name, const char* caption, ChannelFlags& channels) {
  if (workbench_.trial.NChan == 1) {
    channels[1] = true;
  }
  return fields_.emplace_back(
      FormField{.name = name, .caption = caption, .target = &channels, .isSelection = true});
}

FormField& AnalysisForm::AddChannel(const char* name, const char* caption, std::int32_t& channel) {
  const Trial& trial = workbench_.trial;
  std::vector<std::string> choices = {"(none)"};
  for (int c = 1; c <= trial.NChan; ++c) {
    choices.push_back(ChannelNumber(c) + ": " + OneLine(Trim(trial.ChanLabel[c].Text())));
  }
  channel = std::clamp<std::int32_t>(channel, 0, trial.NChan);
  return fields_.emplace_back(FormField{.name = name,
                                        .caption = caption,
                                        .target = &channel,
                                        .choices = std::move(choices),
                                        .isList = true,
                                        .channelsFrom = 1});
}

void AnalysisForm::AddButtons(const char* computeCaption) {
  buttons_ = {
      {computeCaption, FormButton::Role::Accept,
       [this] {
         computed_ = WithinLimits() && Compute();
         return computed_;
       }},
      {"&Cancel", FormButton::Role::Cancel, [] { return true; }},
  };
}

void AnalysisForm::SetLimits(std::string_view field, Limits limits) {
  for (Limited& of : limited_) {
    if (fields_[of.field].name == field) {
      of.limits = limits;
    }
  }
}

const AnalysisForm::Limited* AnalysisForm::FirstOutside() const {
  const auto outside = std::find_if(limited_.begin(), limited_.end(), [this](const Limited& of) {
    const FormField& field = fields_[of.field];
    const double value = NumberIn(field);
    const Limits& limits = of.limits;
    const bool within = (limits.openBelow ? value > limits.lowest : value >= limits.lowest) &&
                        (limits.openAbove ? value < limits.highest : value <= limits.highest);
    return !field.hidden && !field.notApplicable && !within;
  });
  return outside == limited_.end() ? nullptr : &*outside;
}

std::string AnalysisForm::WhyOutside() const {
  const Limited* of = FirstOutside();
  return of == nullptr ? std::string()
                       : EntryMustBe(PlainCaption(fields_[of->field]), of->limits.lowest, of->limits.highest);
}

bool AnalysisForm::WithinLimits() {
  const Limited* of = FirstOutside();
  if (of != nullptr) {
    RefuseEntry(workbench_, PlainCaption(fields_[of->field]), of->limits.lowest, of->limits.highest);
  }
  return of == nullptr;
}

std::int32_t ChannelByLabel(const Trial& trial, std::initializer_list<std::string_view> words) {
  for (const std::string_view word : words) {
    for (int c = 1; c <= trial.NChan; ++c) {
      const std::string label = trial.ChanLabel[c].Text();
      if (EqualNoCase(std::string_view(label).substr(0, word.size()), word)) {
        return c;
      }
    }
  }
  return 0;
}

}  // namespace velmora
