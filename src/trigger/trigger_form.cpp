#include "trigger/trigger_form.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/abscissa.hpp"
#include "core/trial/helpers.hpp"

namespace velmora {
namespace {

constexpr std::int32_t kMostTriggers = 1000;  // when no number is asked for
constexpr std::int32_t kLargestNumber = 32767;

// Two decimals where they hold the 32 bits that a scan compares with.
std::string LevelPattern(double level) {
  const double shown = Val(FormatNumber(level, "0.00"));
  return static_cast<float>(shown) == static_cast<float>(level) ? "0.00" : "";
}

// Half a pixel or so of the ordinate, as a power of ten: nobody means more digits.
double Rounded(double y, const Axis& ordinate) {
  constexpr double kSteps = 1000.0;
  const double step = (ordinate.Maximum - ordinate.Minimum) / kSteps;
  const double inside = std::clamp(y, ordinate.Minimum, ordinate.Maximum);
  const int digits = static_cast<int>(std::floor(std::log10(step)));
  const double unit = std::pow(10.0, std::abs(digits));
  return digits < 0 ? std::round(inside * unit) / unit : std::round(inside / unit) * unit;
}

}  // namespace

TriggerForm::TriggerForm(Workbench& workbench, SingleView& view)
    : Form("frmTrigger", "Trigger Characteristics"), workbench_(workbench), view_(view) {
  const Preferences& kept = workbench.preferences;
  const int channel = kept.TriggerChannel > workbench.trial.NChan ? 0 : kept.TriggerChannel;
  channel_ = std::max(channel, 1) - 1;
  type_ = kept.TriggerType < kTriggerKinds ? std::max(kept.TriggerType, -1) : -1;
  level1_ = kept.TriggerHigh;
  level2_ = kept.TriggerLow;
  numbers_ = view.NumbersShown();
  TakeWindow();
  AddConditionFields();
  AddRangeFields();
  AddFilterFields();
  AddCursorFields();
  AddButtons();
  AddMenus();
  view_.onLevel = [this](int level, double y) { DragLevel(level, y); };
  Follow();
}

TriggerForm::~TriggerForm() {
  view_.onLevel = nullptr;
  view_.Drawing().Preview.reset();  // who shows the view draws it when the command has ended
}

void TriggerForm::TakeWindow() {
  const Trial& trial = workbench_.trial;
  window_ = {1, trial.NData};
  if (view_.Cursors() >= 2) {
    window_ = view_.PairRange();
  } else if (view_.Cursors() == 1) {
    window_.lo = view_.SampleOf(1);
  }
  const double duration = view_.Cursors() == 0 ? trial.Duration : (window_.hi - window_.lo) / trial.Rate;
  time_ = FormatNumber(duration, workbench_.patterns.TimePattern) + " s";
}

void TriggerForm::AddConditionFields() {
  const Trial& trial = workbench_.trial;
  std::vector<std::string> channels;
  for (int c = 1; c <= trial.NChan; ++c) {
    channels.push_back(AsCaption(ChannelNumber(c) + ": " + Trim(trial.ChanLabel[c].Text())));
  }
  std::vector<std::string> kinds;
  kinds.reserve(kTriggerKinds);
  for (int k = 0; k < kTriggerKinds; ++k) {
    kinds.push_back(AsCaption(KindText(static_cast<TriggerKind>(k))));
  }
  const auto follow = [this] { Follow(); };
  const char* group = "Trigger";
  fields_.push_back({.name = "comChannels",
                     .caption = "C&hannel",
                     .target = &channel_,
                     .choices = std::move(channels),
                     .group = group,
                     .edited = follow,
                     .isList = true,
                     .channelsFrom = 0});
  fields_.push_back({.name = "comType",
                     .caption = "T&ype",
                     .target = &type_,
                     .choices = std::move(kinds),
                     .group = group,
                     .edited = follow,
                     .isList = true});
  const auto level = [&](const char* name, const char* caption, double& value, const char* tip) {
    fields_.push_back({.name = name,
                       .caption = caption,
                       .target = &value,
                       .prompt = "Enter trigger level.",
                       .title = "Trigger Level",
                       .pattern = "0.00",
                       .group = group,
                       .edited = follow,
                       .asksByInput = true,
                       .inputPattern = "0.0000",
                       .tip = tip,
                       .followsTyping = true});
  };
  level("txtTrigLevel1", "Trigger &level 1", level1_, "Lower trigger level");
  level("txtTrigLevel2", "Trigger l&evel 2", level2_, "Upper trigger level");
  fields_.push_back(
      {.name = "txtUnits", .caption = "Units", .target = &units_, .group = group, .readOnly = true});
}

void TriggerForm::AddRangeFields() {
  const char* group = "Where to look";
  fields_.push_back({.name = "optWindow",
                     .caption = "",
                     .target = &inWindow_,
                     .choices = {"&All data", "&Window"},
                     .group = group,
                     .edited = [this] { Follow(); }});
  fields_.push_back(
      {.name = "txtTime", .caption = "Duration", .target = &time_, .group = group, .readOnly = true});
  fields_.push_back({.name = "txtMax",
                     .caption = "Ma&ximum number of cursors:",
                     .target = &most_,
                     .lowest = 0,
                     .highest = kLargestNumber,
                     .prompt = "Enter maximum number of triggers to find or 0 for all.",
                     .title = "Maximum # of Triggers",
                     .group = group,
                     .edited = [this] { Follow(); },
                     .asksByInput = true});
}

void TriggerForm::AddFilterFields() {
  const char* group = "Filter";
  fields_.push_back({.name = "txtThreshold",
                     .caption = "M&in. integral",
                     .target = &filters_.MinIntegral,
                     .prompt = "Enter minimum integral.",
                     .title = "Minimum Integral",
                     .pattern = "0.000",
                     .group = group,
                     .edited =
                         [this] {
                           filters_.MinIntegral = std::fabs(filters_.MinIntegral);
                           Follow();
                         },
                     .asksByInput = true,
                     .inputPattern = "0.000"});
  fields_.push_back(
      {.name = "txtFilter", .caption = "Refused", .target = &filtered_, .group = group, .readOnly = true});
}

void TriggerForm::AddCursorFields() {
  const char* group = "Cursors";
  std::vector<std::string> colours = {"No change"};
  for (int k = 1; k <= kColours; ++k) {
    colours.push_back("Colour " + std::to_string(k));
  }
  fields_.push_back({.name = "comColours",
                     .caption = "C&olour",
                     .target = &colour_,
                     .choices = std::move(colours),
                     .group = group,
                     .isColour = true,
                     .isList = true});
  fields_.push_back({.name = "chkNumbers",
                     .caption = "N&umber the cursors",
                     .target = &numbers_,
                     .group = group,
                     .edited = [this] {
                       view_.ShowNumbers(numbers_);
                       view_.RedrawAll();
                     }});
  fields_.push_back({.name = "txtPreview",
                     .caption = "A scan would find:",
                     .target = &preview_,
                     .group = group,
                     .readOnly = true});
  fields_.push_back(
      {.name = "txtFound", .caption = "Cursors found:", .target = &found_, .group = group, .readOnly = true});
}

FormButton TriggerForm::Press(const char* caption, void (TriggerForm::*press)()) {
  return {.caption = caption, .press = [this, press] {
            (this->*press)();
            return false;
          }};
}

void TriggerForm::AddButtons() {
  buttons_ = {Press("&Scan", &TriggerForm::Scan),
              Press("&View", &TriggerForm::View),
              Press("Sa&ve", &TriggerForm::Save),
              Press("&Print", &TriggerForm::Print),
              Press("Keep First &2 cursors", &TriggerForm::KeepFirstTwo),
              Press("Keep &First && Last", &TriggerForm::KeepFirstAndLast),
              Press("&Remove", &TriggerForm::Remove)};
  buttons_.front().role = FormButton::Role::Accept;
}

void TriggerForm::AddMenus() {
  const auto add = [this](const char* menu, const char* caption, void (TriggerForm::*press)(),
                          std::function<bool()> checked = {}) {
    FormButton& entry = buttons_.emplace_back(Press(caption, press));
    entry.menu = menu;
    entry.checked = std::move(checked);
  };
  const char* filter = "Fil&ter";
  add(filter, "Only &Positive integrals", &TriggerForm::OnlyPositive,
      [this] { return filters_.PositiveOnly; });
  add(filter, "Only &Negative integrals", &TriggerForm::OnlyNegative,
      [this] { return filters_.NegativeOnly; });
  add(filter, "&Both +ve && -ve integrals", &TriggerForm::BothSigns,
      [this] { return !filters_.PositiveOnly && !filters_.NegativeOnly; });
  add(filter, "Enter &Minimum integral", &TriggerForm::EnterMinimum,
      [this] { return filters_.MinIntegral > 0; });
  add(filter, "Enter &Refractory period", &TriggerForm::EnterRefractory,
      [this] { return filters_.RefractoryPeriod > 0; });
  const char* send = "Se&nd";
  add(send, "&Clipboard", &TriggerForm::SendToClipboard);
  add(send, "&Notepad", &TriggerForm::SendToNotepad);
  add(send, "&Quattro Pro", &TriggerForm::SendToQuattroPro);
  add(send, "&Excel", &TriggerForm::SendToExcel);
  buttons_.push_back({"E&xit", FormButton::Role::Cancel, [this] {
                        Leave();
                        return true;
                      }});
}

// --- What edits bring about

FormField& TriggerForm::FieldNamed(std::string_view name) {
  return *std::find_if(fields_.begin(), fields_.end(),
                       [name](const FormField& field) { return field.name == name; });
}

void TriggerForm::ShowLevel(const char* name, double value, bool meant) {
  FormField& field = FieldNamed(name);
  field.pattern = LevelPattern(value);
  field.hidden = !meant;
}

void TriggerForm::Follow() {
  units_ = Trim(workbench_.trial.ChanUnits[channel_ + 1].Text());
  const int levels = Kind() ? LevelsOf(*Kind()) : 2;
  ShowLevel("txtTrigLevel1", level1_, levels > 0);
  ShowLevel("txtTrigLevel2", level2_, levels > 1);
  ShowFilters();
  ShowPreview();
}

void TriggerForm::ShowFilters() {
  const auto add = [this](const std::string& text) { filtered_ += (filtered_.empty() ? "" : ", ") + text; };
  filtered_.clear();
  if (filters_.PositiveOnly || filters_.NegativeOnly) {
    add(filters_.PositiveOnly ? "integrals not above 0" : "integrals not below 0");
  }
  if (filters_.MinIntegral > 0) {
    add("integrals below " + PlainNumber(filters_.MinIntegral) + " in size");
  }
  if (filters_.RefractoryPeriod > 0) {
    add("within " + PlainNumber(filters_.RefractoryPeriod) + " s of the one before");
  }
  if (filtered_.empty()) {
    filtered_ = "none";
  }
}

// What nobody sees is not looked for.
void TriggerForm::ShowPreview() {
  FieldNamed("txtPreview").hidden = !view_.onRedraw;
  if (!view_.onRedraw) {
    return;
  }
  GraphPreview preview;
  preview_.clear();
  if (Kind()) {
    const double levels[] = {level1_, level2_};
    for (int k = 0; k < LevelsOf(*Kind()); ++k) {
      preview.Levels.push_back({levels[k], PlainNumber(static_cast<float>(levels[k]))});
    }
    for (const Trigger& trigger : Find()) {
      preview.Hits.push_back(PlaceOf(workbench_.trial, trigger.sample));
    }
    preview_ = CountOf(static_cast<std::int64_t>(preview.Hits.size()), "trigger");
  }
  view_.ShowPreview(std::move(preview));
}

void TriggerForm::DragLevel(int level, double y) {
  const FormField* field = FindField(level == 1 ? "txtTrigLevel1" : "txtTrigLevel2");
  if (std::isfinite(y)) {
    Edit(*field, PlainNumber(Rounded(y, view_.Drawing().Ordinate)));
    if (onChanged) {
      onChanged();
    }
  }
}

// --- The scan

std::optional<TriggerKind> TriggerForm::Kind() const {
  return type_ < 0 ? std::nullopt : std::optional(static_cast<TriggerKind>(type_));
}

TriggerCondition TriggerForm::Condition() const {
  TriggerCondition condition{*Kind(), static_cast<float>(AsKept(level1_)),
                             static_cast<float>(AsKept(level2_))};
  if (LevelsOf(condition.kind) == 1) {
    condition.low = condition.high;
  } else if (condition.low > condition.high) {
    std::swap(condition.low, condition.high);
  }
  return condition;
}

SampleRange TriggerForm::Range() const {
  return inWindow_ == 1 ? window_ : SampleRange{1, workbench_.trial.NData};
}

std::size_t TriggerForm::Most() const {
  return static_cast<std::size_t>(most_ == 0 ? kMostTriggers : most_);
}

std::vector<Trigger> TriggerForm::Find(bool* tooMany) const {
  const SampleMatrix& matrix = workbench_.trial.matrix;
  const int channel = channel_ + 1;
  std::vector<Trigger> triggers =
      MeasureTriggers(matrix, channel, ScanForTriggers(matrix, channel, Condition(), Range(), Most()));
  FilterTriggers(triggers, filters_, workbench_.trial.Rate);
  if (tooMany != nullptr) {
    *tooMany = triggers.size() > kMostTriggers;
  }
  triggers.resize(std::min<std::size_t>(triggers.size(), kMostTriggers));
  return triggers;
}

double TriggerForm::AsKept(double level) {
  constexpr double kLargest = std::numeric_limits<float>::max();
  return Val(PlainNumber(static_cast<float>(std::clamp(level, -kLargest, kLargest))));
}

// The boxes show what the scan takes; a kind with one level leaves the second box what it was kept as.
void TriggerForm::SettleLevels() {
  Preferences& kept = workbench_.preferences;
  const bool two = LevelsOf(*Kind()) != 1;
  kept.TriggerHigh = AsKept(level1_);
  if (two) {
    kept.TriggerLow = AsKept(level2_);
    if (kept.TriggerLow > kept.TriggerHigh) {
      std::swap(kept.TriggerLow, kept.TriggerHigh);
    }
  }
  level1_ = kept.TriggerHigh;
  level2_ = kept.TriggerLow;
  if (!two) {
    kept.TriggerLow = kept.TriggerHigh;
  }
}

}  // namespace velmora
