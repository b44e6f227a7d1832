#include "run/recipe/run_start_reader.hpp"

#include <algorithm>
#include <limits>

#include "core/text/text.hpp"
#include "run/recipe/closest_name.hpp"
#include "spectra/windows.hpp"

namespace velmora {
namespace {

std::string ReadWindow(YamlReader& reader, const YAML::Node& node) {
  std::string window = reader.Text(node, "window");
  std::vector<std::string> ids(kSpectralWindows.size());
  std::transform(kSpectralWindows.begin(), kSpectralWindows.end(), ids.begin(),
                 [](const SpectralWindow& known) { return std::string(known.id); });
  if (std::find(ids.begin(), ids.end(), window) == ids.end()) {
    reader.Note(node, "there is no window \"" + window + "\"" + DidYouMean(window, ids));
  }
  return window;
}

// Channels in their order, from the first. One without a number has a threshold that nothing crosses.
PerChannel<double> ReadPerChannel(YamlReader& reader, const YAML::Node& node, std::string_view what) {
  PerChannel<double> values{};
  if (!node) {
    return values;
  }
  if (!node.IsSequence() || node.size() > kMaxChannels) {
    reader.Fail(node, std::string(what) + " must be a list of at most " + std::to_string(kMaxChannels) +
                          " numbers, one a channel");
  }
  int channel = 0;
  for (const YAML::Node& value : node) {
    const bool none = value.IsScalar() && EqualNoCase(value.Scalar(), "nan");
    values[++channel] = none ? std::numeric_limits<double>::quiet_NaN() : reader.Number(value, what);
  }
  return values;
}

ThresholdMemory ReadThresholdMemory(YamlReader& reader, const YAML::Node& node) {
  reader.CheckKeys(node, "thresholds", {"of", "levels", "sd", "baseline-means", "baseline-deviations"});
  ThresholdMemory thresholds;
  thresholds.ThresholdsOf = node["of"] ? reader.Text(node["of"], "of") : "";
  thresholds.ChanThreshold = ReadPerChannel(reader, node["levels"], "levels");
  thresholds.ThresholdsValid = static_cast<bool>(node["levels"]);
  if (node["sd"]) {
    thresholds.SDMultiplier = static_cast<float>(reader.Number(node["sd"], "sd"));
  }
  thresholds.BaselineTaken = node["baseline-means"] && node["baseline-deviations"];
  thresholds.ChanMean = ReadPerChannel(reader, node["baseline-means"], "baseline-means");
  thresholds.ChanSD = ReadPerChannel(reader, node["baseline-deviations"], "baseline-deviations");
  return thresholds;
}

}  // namespace

RunStart ReadRunStart(YamlReader& reader, const YAML::Node& node) {
  reader.CheckKeys(node, "start", {"window", "thresholds"});
  RunStart start;
  if (node["window"]) {
    start.window = ReadWindow(reader, node["window"]);
  }
  if (node["thresholds"]) {
    start.thresholds = ReadThresholdMemory(reader, node["thresholds"]);
  }
  return start;
}

}  // namespace velmora
