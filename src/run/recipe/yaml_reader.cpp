#include "run/recipe/yaml_reader.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <set>
#include <stdexcept>

#include "core/text/text.hpp"
#include "run/recipe/closest_name.hpp"

namespace velmora {

bool YamlReader::CheckKeys(const YAML::Node& node, std::string_view what,
                           std::initializer_list<std::string_view> allowed) {
  if (!node.IsMap()) {
    Fail(node, std::string(what) + " must be a map of keys and values");
  }
  const std::vector<std::string> names(allowed.begin(), allowed.end());
  std::set<std::string> seen;
  bool known = true;
  for (const auto& entry : node) {
    if (!entry.first.IsScalar()) {
      Fail(entry.first, std::string(what) + " has a key that is no text");
    }
    const std::string& key = entry.first.Scalar();
    if (!seen.insert(key).second) {
      Note(entry.first, "key \"" + key + "\" is given twice");
    }
    if (!names.empty() && std::find(names.begin(), names.end(), key) == names.end()) {
      Note(entry.first, std::string(what) + " has no key \"" + key + "\"" + DidYouMean(key, names));
      known = false;
    }
  }
  return known;
}

std::string YamlReader::Text(const YAML::Node& node, std::string_view what) {
  if (!node.IsScalar()) {
    Fail(node, std::string(what) + " must be a text or a number");
  }
  try {
    return ReplaceVariables(node.Scalar(), variables_);
  } catch (const std::invalid_argument& error) {
    Note(node, error.what());
    return node.Scalar();
  }
}

// The system would take a path up to its NUL, which is another file.
std::string YamlReader::Path(const YAML::Node& node, std::string_view what) {
  std::string path = Text(node, what);
  if (path.find('\0') != std::string::npos) {
    Fail(node, std::string(what) + " must be a path, which has no NUL character");
  }
  return path;
}

bool YamlReader::Flag(const YAML::Node& node, std::string_view what) {
  const std::string text = Text(node, what);
  const bool on = EqualNoCase(text, "true") || EqualNoCase(text, "yes");
  if (!on && !EqualNoCase(text, "false") && !EqualNoCase(text, "no")) {
    Fail(node, std::string(what) + " must be true or false");
  }
  return on;
}

int YamlReader::Count(const YAML::Node& node, std::string_view what) {
  const std::string text = Text(node, what);
  int count = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
  if (error != std::errc() || end != text.data() + text.size() || count < 1) {
    Fail(node, "\"" + text + "\" is no " + std::string(what) + ": " + std::string(what) + "s count from 1");
  }
  return count;
}

double YamlReader::Number(const YAML::Node& node, std::string_view what) {
  const std::string text = Text(node, what);
  double number = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(number)) {
    Fail(node, std::string(what) + " must be a number");
  }
  return number;
}

ChannelName YamlReader::Channel(const YAML::Node& node) {
  try {
    return ReadChannelName(Text(node, "channel"));
  } catch (const std::invalid_argument& error) {
    Fail(node, error.what());
  }
}

}  // namespace velmora
