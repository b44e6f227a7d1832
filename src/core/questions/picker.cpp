#include "core/questions/picker.hpp"

#include <algorithm>
#include <stdexcept>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "core/workbench.hpp"

namespace velmora {

void ChooserState::ClearModes() {
  ChooserSelectMode = false;
  ChooserSingleMode = false;
  ChooserValuesMode = false;
  ChooserNamesMode = false;
  ChooserExitMode = false;
  ChooserIntegerValues = false;
  ValuesOf.clear();
  NoValue = 0.0F;
  Remark.clear();
  Preview = nullptr;
}

ChannelPicker::ChannelPicker(Workbench& workbench)
    : workbench_(workbench),
      state_(workbench.chooser),
      selectedBefore_(state_.ChanSelected),
      selectedAtFirst_(state_.ChanSelected),
      constBefore_(state_.ChanConst),
      namesBefore_(state_.ChooserNames) {
  state_.ChooserCount = 0;
  if (Channels() <= kPageChannels || workbench_.FirstChanShown < 1 ||
      workbench_.FirstChanShown > Channels()) {
    ShowFirstChannelPage(workbench_);
  }
  if (Channels() == 1) {
    Select(1, true);
    choice_ = 1;
  }
}

bool ChannelPicker::Show() {
  struct Closing {
    Questions& questions;
    ChannelPicker& picker;
    ~Closing() { questions.EndPick(picker); }
  } const closing{workbench_.questions, *this};
  while (open_) {
    Press(workbench_.questions.AskPick(*this));
  }
  return !state_.ChooserCancelled;
}

std::string ChannelPicker::Prompt() const {
  if (!state_.ChooserPrompt.empty()) {
    return state_.ChooserPrompt;
  }
  if (SelectsOne()) {
    return "Select one channel.";
  }
  return Selects() ? "Select channel(s)." : "Enter a value for the channel.";
}

std::string ChannelPicker::ClosingCaption() const {
  if (state_.ChooserValuesMode || state_.ChooserSingleMode || state_.ChooserSelectMode) {
    return "&Process";
  }
  return state_.ChooserExitMode ? "&Exit" : "&Save";
}

std::string ChannelPicker::Mode() const {
  std::string mode;
  const auto add = [&mode](bool on, std::string_view name) {
    if (on) {
      mode.append(mode.empty() ? "" : "+").append(name);
    }
  };
  add(state_.ChooserSingleMode, "single");
  add(state_.ChooserSelectMode, "select");
  add(state_.ChooserValuesMode, "values");
  add(state_.ChooserNamesMode, "names");
  add(state_.ChooserExitMode, "exit");
  return mode;
}

std::string ChannelPicker::TitleText() const {
  return Trim(workbench_.trial.TrialTitle);
}

std::string ChannelPicker::RateText() const {
  const double rate = workbench_.trial.Rate;
  return FormatNumber(rate, rate > 0 ? workbench_.patterns.RatePattern : "0.");
}

std::string ChannelPicker::DurationText() const {
  return FormatNumber(workbench_.trial.Duration, workbench_.patterns.TimePattern);
}

std::string ChannelPicker::RowText(int channel) const {
  return ChannelNumber(channel) + " " + Trim(workbench_.trial.ChanLabel[channel].Text());
}

std::string ChannelPicker::ValueText(int channel) const {
  if (HasNames()) {
    return state_.ChooserNames[channel];
  }
  if (!HasValues()) {
    return {};
  }
  return FormatNumber(state_.ChanConst[channel], state_.ChooserIntegerValues ? "0" : "0.00000");
}

float ChannelPicker::Value(int channel) const {
  return state_.ChanConst[channel];
}

bool ChannelPicker::Selects() const {
  return state_.ChooserSelectMode;
}
bool ChannelPicker::SelectsOne() const {
  return state_.ChooserSingleMode;
}
bool ChannelPicker::HasValues() const {
  return state_.ChooserValuesMode;
}
bool ChannelPicker::HasNames() const {
  return state_.ChooserNamesMode;
}
bool ChannelPicker::OffersEights() const {
  return Channels() > 8 && !SelectsOne();
}
bool ChannelPicker::OffersNextPage() const {
  return Channels() > kPageChannels;
}
int ChannelPicker::FirstShown() const {
  return workbench_.FirstChanShown;
}
int ChannelPicker::LastShown() const {
  return workbench_.LastChanShown;
}
int ChannelPicker::Channels() const {
  return workbench_.trial.NChan;
}

bool ChannelPicker::IsSelected(int channel) const {
  return SelectsOne() ? channel == choice_ : state_.ChanSelected[channel];
}

void ChannelPicker::All() {
  for (int c = 1; c <= Channels(); ++c) {
    state_.ChanSelected[c] = true;
  }
  if (!HasValues()) {
    return;
  }
  const std::string typed =
      workbench_.questions.AskInput({.title = "Change Value",
                                     .prompt = "Enter a new value or press Cancel.",
                                     .defaultText = valueTyped_ ? PlainNumber(lastValue_) : ValueText(1),
                                     .isNumber = true});
  if (!typed.empty()) {
    lastValue_ = static_cast<float>(Val(typed));
    valueTyped_ = true;
    CopyLastValue(1, Channels());
  }
}

void ChannelPicker::None() {
  state_.ChanSelected.fill(false);
}

void ChannelPicker::Invert() {
  for (int c = 1; c <= Channels(); ++c) {
    state_.ChanSelected[c] = !state_.ChanSelected[c];
  }
}

void ChannelPicker::FirstEight() {
  SelectEight(FirstShown());
}
void ChannelPicker::SecondEight() {
  SelectEight(FirstShown() + 8);
}

void ChannelPicker::SelectEight(int first) {
  const int last = std::min(first + 7, LastShown());
  for (int c = first; c <= last; ++c) {
    state_.ChanSelected[c] = true;
  }
  if (HasValues() && valueTyped_) {
    CopyLastValue(first, last);
  }
}

void ChannelPicker::CopyLastValue(int first, int last) {
  for (int c = first; c <= last; ++c) {
    state_.ChanConst[c] = lastValue_;
  }
}

void ChannelPicker::ZeroAll() {
  state_.ChanConst.fill(0.0F);
}

void ChannelPicker::Offer(const ChannelFlags& channels) {
  selectedAtFirst_ = channels;
  state_.ChanSelected = channels;
}

void ChannelPicker::Reset() {
  state_.ChanSelected = selectedAtFirst_;
  state_.ChanConst = constBefore_;
  state_.ChooserNames = namesBefore_;
  choice_ = 0;
}

void ChannelPicker::NextChannels() {
  NextChannelPage(workbench_);
}

void ChannelPicker::ClickValue(int channel) {
  CheckChannel(channel);
  const bool names = HasNames();
  const std::string typed = workbench_.questions.AskInput(
      {.title = names ? "Change Name" : "Change Value",
       .prompt = names ? "Enter new name or press Cancel." : "Enter a new value or press Cancel.",
       .defaultText = ValueText(channel),
       .isNumber = !names});
  if (typed.empty()) {
    return;
  }
  if (names) {
    SetName(channel, typed);
  } else {
    SetValue(channel, typed);
  }
}

void ChannelPicker::Select(int channel, bool on) {
  CheckChannel(channel);
  state_.ChanSelected[channel] = on;
}

void ChannelPicker::Choose(int channel) {
  CheckChannel(channel);
  choice_ = channel;
}

void ChannelPicker::SetValue(int channel, std::string_view typed) {
  CheckChannel(channel);
  lastValue_ = static_cast<float>(Val(typed));
  valueTyped_ = true;
  state_.ChanConst[channel] = lastValue_;
  if (Selects()) {
    Select(channel, true);
  }
}

void ChannelPicker::SetName(int channel, std::string_view typed) {
  CheckChannel(channel);
  state_.ChooserNames[channel] = typed;
  if (Selects()) {
    Select(channel, true);
  }
}

void ChannelPicker::Press(std::string_view caption) {
  if (EqualNoCase(caption, "Cancel")) {
    Close(true);
    return;
  }
  const bool closing = EqualNoCase(caption, "OK") || EqualNoCase(caption, WithoutMnemonic(ClosingCaption()));
  if (!closing) {
    throw std::invalid_argument("the channel picker has no button \"" + std::string(caption) + "\"");
  }
  if (SelectsOne()) {
    ConfirmChoice();
  } else {
    Close(false);
  }
}

void ChannelPicker::ConfirmChoice() {
  if (choice_ == 0) {
    workbench_.questions.AskBox({.title = "None Selected",
                                 .text = "No channel was selected.  Press Cancel or select a channel.",
                                 .icon = Icon::Information});
    return;
  }
  state_.ChooserChannel = choice_;
  state_.ChanSelected.fill(false);
  state_.ChanSelected[choice_] = true;
  Close(false);
}

void ChannelPicker::Close(bool cancelled) {
  if (cancelled) {
    Reset();
    state_.ChanSelected = selectedBefore_;
  } else if (SelectsOne()) {
    state_.ChooserCount = 1;
  } else if (Selects()) {
    const auto* first = state_.ChanSelected.begin() + 1;
    state_.ChooserCount = static_cast<std::int16_t>(std::count(first, first + Channels(), true));
  }
  state_.ChooserCancelled = cancelled;
  state_.ClearModes();
  open_ = false;
  if (state_.ChooserCount != 0) {
    MarkChanged(workbench_, true);
  }
}

void ChannelPicker::CheckChannel(int channel) const {
  if (channel < 1 || channel > Channels()) {
    throw std::out_of_range("there is no channel " + std::to_string(channel) + " of " +
                            std::to_string(Channels()));
  }
}

}  // namespace velmora
