#include "run/recipe/view_step_reader.hpp"

#include <algorithm>

#include "core/text/text.hpp"
#include "graph/picture.hpp"
#include "run/recipe/answer_reader.hpp"

namespace velmora {
namespace {

// "ctrl+shift+PageUp"; the key itself may be "+".
KeyPress Key(YamlReader& reader, const YAML::Node& node) {
  KeyPress key;
  key.name = reader.Text(node, "key");
  struct Held {
    std::string_view prefix;
    bool KeyPress::*flag;
  };
  constexpr Held kHeld[] = {
      {"shift+", &KeyPress::shift}, {"ctrl+", &KeyPress::ctrl}, {"alt+", &KeyPress::alt}};
  const auto take = [&key, &kHeld] {
    return std::any_of(std::begin(kHeld), std::end(kHeld), [&key](const Held& held) {
      if (key.name.size() <= held.prefix.size() ||
          !EqualNoCase(std::string_view(key.name).substr(0, held.prefix.size()), held.prefix)) {
        return false;
      }
      key.*held.flag = true;
      key.name.erase(0, held.prefix.size());
      return true;
    });
  };
  while (take()) {
  }
  if (key.name.empty()) {
    reader.Fail(node, "key must name a key");
  }
  return key;
}

ImageGesture Image(YamlReader& reader, const YAML::Node& node) {
  ImageGesture image{.file = reader.Path(node["image"], "image")};
  if (!PictureFormatOf(image.file)) {
    reader.Fail(node["image"], "a picture is a .png, .svg or .pdf file");
  }
  if (const YAML::Node size = node["size"]) {
    if (!size.IsSequence() || size.size() != 2) {
      reader.Fail(size, "size must be [width, height]");
    }
    image.width = reader.Count(size[0], "width");
    image.height = reader.Count(size[1], "height");
    const auto [least, most] = std::minmax(image.width, image.height);
    if (least < PictureOrder::kSmallest || most > PictureOrder::kLargest) {
      reader.Fail(size, "a picture has from 100 to 16384 pixels a side");
    }
  }
  if (const YAML::Node white = node["white"]) {
    image.white = reader.Flag(white, "white");
  }
  return image;
}

/// A view step says one thing, with what belongs to it.
void CheckParts(YamlReader& reader, const YAML::Node& node) {
  const bool known = reader.CheckKeys(node, "view",
                                      {"key", "move", "x", "graph", "threshold", "y", "click", "double-click",
                                       "right-click", "image", "size", "white", "close"});
  const auto given = [&node](const char* key) { return static_cast<bool>(node[key]); };
  if (given("key") + given("move") + given("threshold") + given("click") + given("double-click") +
          given("right-click") + given("image") + given("close") !=
      1) {
    if (!known) {
      throw Unreadable();
    }
    reader.Fail(
        node,
        "view has exactly one of key, move, threshold, click, double-click, right-click, image and close");
  }
  if (given("x") != given("move") || ((given("size") || given("white")) && !given("image"))) {
    reader.Fail(node, "move needs x, and only move has one; size and white belong to image");
  }
  if (given("y") != given("threshold")) {
    reader.Fail(node, "threshold needs y, and only threshold has one");
  }
  if (given("graph") && !given("move")) {
    reader.Fail(node, "only move has a graph");
  }
}

}  // namespace

ViewStep ReadViewStep(YamlReader& reader, const YAML::Node& step) {
  const YAML::Node node = step["view"];
  CheckParts(reader, node);
  const auto given = [&node](const char* key) { return static_cast<bool>(node[key]); };
  ViewStep view;
  view.answers = ReadAnswers(reader, step);
  if (given("key")) {
    view.what = Key(reader, node["key"]);
  } else if (given("move")) {
    view.what = CursorMove{reader.Count(node["move"], "cursor"), reader.Number(node["x"], "x"),
                           given("graph") ? reader.Count(node["graph"], "graph") : 0};
  } else if (given("threshold")) {
    view.what = ThresholdMove{reader.Count(node["threshold"], "graph"), reader.Number(node["y"], "y")};
  } else if (given("click")) {
    view.what = GraphClick{reader.Count(node["click"], "graph"), Clicked::Once};
  } else if (given("double-click")) {
    view.what = GraphClick{reader.Count(node["double-click"], "graph"), Clicked::Twice};
  } else if (given("right-click")) {
    view.what = GraphClick{reader.Count(node["right-click"], "graph"), Clicked::Right};
  } else if (given("image")) {
    view.what = Image(reader, node);
  } else if (!reader.Flag(node["close"], "close")) {
    reader.Fail(node, "close: false does nothing");
  }
  return view;
}

}  // namespace velmora
