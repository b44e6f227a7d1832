#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "core/trial/trial.hpp"

namespace velmora {

/// A channel, or several, as a recipe names them: by number, by label, or by a pattern of labels.
struct ChannelName {
  int number = 0;  // from 1; 0: by label
  std::string label{};
  bool pattern = false;  // in `label` '*' stands for any characters and '?' for one

  friend bool operator==(const ChannelName&, const ChannelName&) = default;
};

/// A name that no channel has, or too many have.
class ChannelNameError : public std::invalid_argument {
 public:
  using std::invalid_argument::invalid_argument;
};

/// A whole number is the number, any other text a label, with '*' or '?' in it a pattern; behind "label:" it
/// is the label as it stands. Throws ChannelNameError for a number below 1 and for an empty text.
ChannelName ReadChannelName(std::string_view text);

/// The text that ReadChannelName reads back.
std::string TextOf(const ChannelName& name);

/// The channels it names, in their order. Labels are compared without regard to case (of A to Z) and to
/// blanks at the ends. Throws ChannelNameError, with the labels that there are, when it names none, and
/// with their numbers when a label that is no pattern stands for several.
std::vector<int> ChannelsOf(const ChannelName& name, const Trial& trial);

/// The one channel that it names. Throws also when a pattern names several.
int OneChannelOf(const ChannelName& name, const Trial& trial);

/// The channel by its label when every label of the trial is its own, by number otherwise.
class ChannelNamer {
 public:
  /// By number whatever the labels are.
  ChannelNamer() = default;
  explicit ChannelNamer(const Trial& trial);
  ChannelName operator()(int channel) const;

 private:
  std::vector<std::string> labels_;  // of channels from 1; empty: they do not tell the channels apart
};

}  // namespace velmora
