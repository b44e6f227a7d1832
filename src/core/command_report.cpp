#include "core/command_report.hpp"

#include <algorithm>
#include <limits>

namespace velmora {
namespace {

// Of the labels of one sentence, and of the sentences of one line.
constexpr std::size_t kAll = std::numeric_limits<std::size_t>::max();

std::size_t MostLabels(Telling telling) {
  return telling == Telling::Briefly ? 6 : kAll;
}

std::size_t MostSentences(Telling telling) {
  return telling == Telling::Briefly ? 4 : kAll;
}

void Append(std::string& text, const char* between, const std::string& more) {
  text += (text.empty() || more.empty() ? "" : between) + more;
}

std::string Labels(const std::vector<std::string>& labels, Telling telling) {
  const std::size_t most = MostLabels(telling);
  // A label more takes no more room than saying that there is one more.
  const std::size_t told = labels.size() > most && labels.size() - most > 1 ? most - 2 : labels.size();
  std::string text;
  for (std::size_t k = 0; k < told; ++k) {
    Append(text, ", ", labels[k]);
  }
  if (told < labels.size()) {
    text += " and " + std::to_string(labels.size() - told) + " others (" + std::to_string(labels.size()) +
            " channels)";
  }
  return text;
}

std::string ChannelsOf(const Deed& deed, Telling telling) {
  if (deed.allChannels && deed.channels.size() > 2) {
    return "all " + std::to_string(deed.channels.size()) + " channels";
  }
  return Labels(deed.channels, telling);
}

/// "Footswitch (600 Hz, at most 250 Hz), Trigger, Clock (order 51, at most 50)": one reason is said once.
std::string RefusedOf(const std::vector<LeftChannel>& refused, Telling telling) {
  std::vector<std::string> reasons;
  for (const LeftChannel& left : refused) {
    if (std::find(reasons.begin(), reasons.end(), left.why) == reasons.end()) {
      reasons.push_back(left.why);
    }
  }
  std::string text;
  for (const std::string& why : reasons) {
    std::vector<std::string> labels;
    for (const LeftChannel& left : refused) {
      if (left.why == why) {
        labels.push_back(left.channel);
      }
    }
    Append(text, ", ", Labels(labels, telling) + " (" + why + ")");
  }
  return text;
}

}  // namespace

std::string SentenceOf(const Deed& deed, Telling telling) {
  std::string text = deed.what;
  if (!deed.channels.empty()) {
    text += ": " + ChannelsOf(deed, telling);
  }
  if (!deed.refused.empty()) {
    Append(text, ". ", "Refused: " + RefusedOf(deed.refused, telling));
  }
  return text;
}

std::string WordsOf(const std::vector<Deed>& deeds, Telling telling) {
  const std::size_t most = MostSentences(telling);
  const std::size_t told = deeds.size() > most && deeds.size() - most > 1 ? most - 1 : deeds.size();
  std::string text;
  for (std::size_t k = 0; k < told; ++k) {
    Append(text, ". ", SentenceOf(deeds[k], telling));
  }
  if (told < deeds.size()) {
    text += ". And " + std::to_string(deeds.size() - told) + " more like these";
    std::vector<LeftChannel> refused;
    for (std::size_t k = told; k < deeds.size(); ++k) {
      refused.insert(refused.end(), deeds[k].refused.begin(), deeds[k].refused.end());
    }
    Append(text, ". ", refused.empty() ? "" : "Refused: " + RefusedOf(refused, telling));
  }
  return text;
}

bool DidAnything(const std::vector<Deed>& deeds) {
  return std::any_of(deeds.begin(), deeds.end(), [](const Deed& deed) { return !deed.what.empty(); });
}

}  // namespace velmora
