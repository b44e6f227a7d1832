#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "core/questions/form_graph.hpp"
#include "core/trial/trial.hpp"

namespace velmora {

struct Workbench;

/// The exchange area of the channel picker: a caller sets the modes and the prompt and reads the
/// answers. The picker clears the modes when it closes; the prompt stays until it is emptied.
struct ChooserState {
  std::string ChooserPrompt;
  bool ChooserSelectMode = false;
  bool ChooserSingleMode = false;
  bool ChooserValuesMode = false;
  bool ChooserNamesMode = false;
  bool ChooserExitMode = false;
  bool ChooserIntegerValues = false;
  std::size_t ChooserNameLength = Label::kLength;  // characters that are kept of a name
  /// The file that the offered values were entered for, empty when they are of no trial, and the value
  /// that stands for none.
  std::string ValuesOf;
  float NoValue = 0.0F;
  /// What the command will do with what is chosen, in words; shown below the list.
  std::string Remark;
  /// What it would make of one channel for the value that stands there, drawn beside the list; may be empty.
  std::function<FormGraph(int channel, float value)> Preview;

  ChannelFlags ChanSelected{};
  std::int16_t ChooserCount = 0;
  std::int32_t ChooserChannel = 0;
  PerChannel<float> ChanConst{};
  PerChannel<std::string> ChooserNames;
  bool ChooserCancelled = false;

  void ClearModes();
};

/// The one question "which channels, and what value for each?", as logic without a drawing. The
/// window shows its rows and calls its commands; a recipe sets channels and values directly.
class ChannelPicker {
 public:
  explicit ChannelPicker(Workbench& workbench);
  ChannelPicker(const ChannelPicker&) = delete;
  ChannelPicker& operator=(const ChannelPicker&) = delete;
  ~ChannelPicker() = default;

  /// Asks until a button closes the picker. Returns whether it was left with the closing button.
  bool Show();

  // What is shown.
  [[nodiscard]] std::string Prompt() const;
  [[nodiscard]] std::string ClosingCaption() const;  // "&Process", "&Exit" or "&Save"
  [[nodiscard]] std::string Mode() const;  // "select", "single", "values", "names", "select+values", ...
  [[nodiscard]] std::string TitleText() const;
  [[nodiscard]] std::string RateText() const;
  [[nodiscard]] std::string DurationText() const;
  [[nodiscard]] std::string ColumnHead() const { return "Values"; }
  [[nodiscard]] std::string RowText(int channel) const;    // number and label
  [[nodiscard]] std::string ValueText(int channel) const;  // empty without a value column
  [[nodiscard]] float Value(int channel) const;            // the number behind it, with all digits
  [[nodiscard]] const std::string& ValuesOf() const { return state_.ValuesOf; }
  [[nodiscard]] float NoValue() const { return state_.NoValue; }
  [[nodiscard]] const std::string& Remark() const { return state_.Remark; }
  [[nodiscard]] bool HasPreview() const { return static_cast<bool>(state_.Preview); }
  [[nodiscard]] FormGraph PreviewOf(int channel) const {
    return state_.Preview ? state_.Preview(channel, Value(channel)) : FormGraph{};
  }
  [[nodiscard]] bool Selects() const;
  [[nodiscard]] bool SelectsOne() const;
  [[nodiscard]] bool HasValues() const;
  [[nodiscard]] bool HasNames() const;
  [[nodiscard]] std::size_t NameLength() const { return state_.ChooserNameLength; }
  [[nodiscard]] bool OffersEights() const;
  [[nodiscard]] bool OffersNextPage() const;
  [[nodiscard]] bool IsSelected(int channel) const;
  [[nodiscard]] int FirstShown() const;
  [[nodiscard]] int LastShown() const;
  [[nodiscard]] int Channels() const;

  // The buttons and clicks of the window.
  void All();
  void None();
  void Invert();
  void FirstEight();
  void SecondEight();
  void ZeroAll();
  void Reset();
  void NextChannels();
  /// A click on a row of the value column: asks for the new value or name.
  void ClickValue(int channel);

  /// What is selected in the window before anything is pressed, instead of what was: &Reset returns to it,
  /// Cancel leaves nothing of it. Only for a picker that selects several channels.
  void Offer(const ChannelFlags& channels);

  // Direct answers. Channels outside 1..NChan throw std::out_of_range.
  void Select(int channel, bool on);
  void Choose(int channel);  // single mode
  void SetValue(int channel, std::string_view typed);
  void SetName(int channel, std::string_view typed);

  /// Presses the closing button (any of its captions, or "OK") or "Cancel", captions without '&'.
  /// Throws std::invalid_argument for any other caption.
  void Press(std::string_view caption);
  [[nodiscard]] bool IsOpen() const { return open_; }

 private:
  void SelectEight(int first);
  void CopyLastValue(int first, int last);
  void ConfirmChoice();
  void Close(bool cancelled);
  void CheckChannel(int channel) const;

  Workbench& workbench_;
  ChooserState& state_;
  ChannelFlags selectedBefore_;
  ChannelFlags selectedAtFirst_;
  PerChannel<float> constBefore_;
  PerChannel<std::string> namesBefore_;
  int choice_ = 0;  // single mode: the set option, 0 for none
  bool valueTyped_ = false;
  float lastValue_ = 0.0F;
  bool open_ = true;
};

}  // namespace velmora
