#include "run/recipe/channel_name.hpp"

#include <algorithm>
#include <charconv>

#include "core/text/text.hpp"
#include "run/recipe/closest_name.hpp"
#include "run/recipe/text_pattern.hpp"

namespace velmora {
namespace {

constexpr std::string_view kLabelMark = "label:";

bool IsWholeNumber(std::string_view text) {
  text.remove_prefix(text.starts_with('-') ? 1 : 0);
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

std::string LabelOf(const Trial& trial, int channel) {
  return Trim(trial.ChanLabel[channel].Text());
}

std::string Listed(const Trial& trial) {
  std::string list;
  for (int c = 1; c <= trial.NChan; ++c) {
    list += (c == 1 ? "" : ", ") + std::to_string(c) + " \"" + LabelOf(trial, c) + "\"";
  }
  return list.empty() ? "none" : list;
}

std::string Numbers(const std::vector<int>& channels) {
  std::string list;
  for (const int c : channels) {
    list += (list.empty() ? "" : ", ") + std::to_string(c);
  }
  return list;
}

[[noreturn]] void FailWithoutAny(const ChannelName& name, const Trial& trial) {
  std::vector<std::string> labels;
  for (int c = 1; c <= trial.NChan; ++c) {
    labels.push_back(LabelOf(trial, c));
  }
  throw ChannelNameError((name.pattern ? "no channel's label fits \"" : "there is no channel labelled \"") +
                         name.label + "\"" + (name.pattern ? "" : DidYouMean(name.label, labels)) +
                         "; there are " + Listed(trial));
}

}  // namespace

ChannelName ReadChannelName(std::string_view text) {
  const std::string trimmed = Trim(text);
  if (trimmed.starts_with(kLabelMark)) {
    return {.label = Trim(std::string_view(trimmed).substr(kLabelMark.size()))};
  }
  if (!IsWholeNumber(trimmed)) {
    if (trimmed.empty()) {
      throw ChannelNameError("an empty text names no channel");
    }
    return {.label = trimmed, .pattern = IsPattern(trimmed)};
  }
  ChannelName name;
  const auto [end, error] = std::from_chars(trimmed.data(), trimmed.data() + trimmed.size(), name.number);
  if (error != std::errc() || name.number < 1) {
    throw ChannelNameError("\"" + trimmed + "\" is no channel: channels count from 1");
  }
  return name;
}

std::string TextOf(const ChannelName& name) {
  if (name.number > 0) {
    return std::to_string(name.number);
  }
  const bool plain = !name.label.empty() && !IsWholeNumber(name.label) &&
                     !name.label.starts_with(kLabelMark) && (name.pattern || !IsPattern(name.label));
  return plain ? name.label : std::string(kLabelMark) + name.label;
}

std::vector<int> ChannelsOf(const ChannelName& name, const Trial& trial) {
  if (name.number > trial.NChan) {
    throw ChannelNameError("there is no channel " + std::to_string(name.number) + " of " +
                           std::to_string(trial.NChan) + " channels");
  }
  if (name.number > 0) {
    return {name.number};
  }
  std::vector<int> channels;
  for (int c = 1; c <= trial.NChan; ++c) {
    const std::string label = LabelOf(trial, c);
    if (name.pattern ? FitsPattern(label, name.label) : EqualNoCase(label, name.label)) {
      channels.push_back(c);
    }
  }
  if (channels.empty()) {
    FailWithoutAny(name, trial);
  }
  if (channels.size() > 1 && !name.pattern) {
    throw ChannelNameError("\"" + name.label + "\" is the label of channels " + Numbers(channels) +
                           "; name one by its number");
  }
  return channels;
}

int OneChannelOf(const ChannelName& name, const Trial& trial) {
  const std::vector<int> channels = ChannelsOf(name, trial);
  if (channels.size() > 1) {
    throw ChannelNameError("\"" + name.label + "\" fits channels " + Numbers(channels) +
                           " where one is wanted");
  }
  return channels.front();
}

ChannelNamer::ChannelNamer(const Trial& trial) {
  std::vector<std::string> compared;
  for (int c = 1; c <= trial.NChan; ++c) {
    labels_.push_back(LabelOf(trial, c));
    compared.push_back(ToLower(labels_.back()));
  }
  std::sort(compared.begin(), compared.end());
  const bool unclear = std::adjacent_find(compared.begin(), compared.end()) != compared.end() ||
                       std::find(compared.begin(), compared.end(), "") != compared.end();
  if (unclear) {
    labels_.clear();
  }
}

ChannelName ChannelNamer::operator()(int channel) const {
  const auto k = static_cast<std::size_t>(channel);
  return k > labels_.size() ? ChannelName{.number = channel} : ChannelName{.label = labels_[k - 1]};
}

}  // namespace velmora
