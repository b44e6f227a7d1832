#include "run/recipe_reader.hpp"

#include <yaml-cpp/depthguard.h>
#include <yaml-cpp/yaml.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <initializer_list>
#include <set>

#include "core/text/text.hpp"
#include "graph/picture.hpp"

namespace velmora {
namespace {

class Reader {
 public:
  Reader(std::string_view name, const Variables& variables) : name_(name), variables_(variables) {}

  [[nodiscard]] Recipe Read(const std::string& text) const;

 private:
  [[noreturn]] void Fail(int line, const std::string& why) const {
    throw RecipeError(std::string(name_) + ":" + std::to_string(line) + ": " + why);
  }
  [[noreturn]] void Fail(const YAML::Node& at, const std::string& why) const { Fail(LineOf(at), why); }
  static int LineOf(const YAML::Node& node) { return node.Mark().line + 1; }

  /// Refuses what is no map, keys given twice, and keys outside `allowed` (empty: any key).
  void CheckKeys(const YAML::Node& node, std::string_view what,
                 std::initializer_list<std::string_view> allowed) const;

  [[nodiscard]] std::string Text(const YAML::Node& node, std::string_view what) const;
  [[nodiscard]] std::string Path(const YAML::Node& node, std::string_view what) const;
  [[nodiscard]] bool Flag(const YAML::Node& node, std::string_view what) const;
  [[nodiscard]] int Channel(const YAML::Node& node) const;
  [[nodiscard]] ChannelChoice Channels(const YAML::Node& node) const;
  [[nodiscard]] std::vector<ChannelText> ChannelTexts(const YAML::Node& node, std::string_view what) const;
  [[nodiscard]] FileAnswer File(const YAML::Node& node) const;
  [[nodiscard]] PickAnswer Pick(const YAML::Node& node) const;
  [[nodiscard]] FieldAnswer Field(const std::string& name, const YAML::Node& value) const;
  [[nodiscard]] FormAnswer Form(const YAML::Node& node) const;
  [[nodiscard]] Answer ReadAnswer(const YAML::Node& node) const;
  [[nodiscard]] std::vector<Answer> Answers(const YAML::Node& node) const;
  [[nodiscard]] double Number(const YAML::Node& node, std::string_view what) const;
  [[nodiscard]] int Count(const YAML::Node& node, std::string_view what) const;
  [[nodiscard]] KeyPress Key(const YAML::Node& node) const;
  [[nodiscard]] ImageGesture Image(const YAML::Node& node) const;
  [[nodiscard]] ViewStep ReadView(const YAML::Node& node) const;
  [[nodiscard]] CommandStep ReadCommand(const YAML::Node& node) const;
  [[nodiscard]] Step ReadStep(const YAML::Node& node) const;

  std::string_view name_;
  const Variables& variables_;
};

void Reader::CheckKeys(const YAML::Node& node, std::string_view what,
                       std::initializer_list<std::string_view> allowed) const {
  if (!node.IsMap()) {
    Fail(node, std::string(what) + " must be a map of keys and values");
  }
  std::set<std::string> seen;
  for (const auto& entry : node) {
    if (!entry.first.IsScalar()) {
      Fail(entry.first, std::string(what) + " has a key that is no text");
    }
    const std::string& key = entry.first.Scalar();
    if (!seen.insert(key).second) {
      Fail(entry.first, "key \"" + key + "\" is given twice");
    }
    if (allowed.size() > 0 && std::find(allowed.begin(), allowed.end(), key) == allowed.end()) {
      Fail(entry.first, std::string(what) + " has no key \"" + key + "\"");
    }
  }
}

std::string Reader::Text(const YAML::Node& node, std::string_view what) const {
  if (!node.IsScalar()) {
    Fail(node, std::string(what) + " must be a text or a number");
  }
  try {
    return ReplaceVariables(node.Scalar(), variables_);
  } catch (const std::invalid_argument& error) {
    Fail(node, error.what());
  }
}

// The system would take a path up to its NUL, which is another file.
std::string Reader::Path(const YAML::Node& node, std::string_view what) const {
  std::string path = Text(node, what);
  if (path.find('\0') != std::string::npos) {
    Fail(node, std::string(what) + " must be a path, which has no NUL character");
  }
  return path;
}

bool Reader::Flag(const YAML::Node& node, std::string_view what) const {
  const std::string text = Text(node, what);
  const bool on = EqualNoCase(text, "true") || EqualNoCase(text, "yes");
  if (!on && !EqualNoCase(text, "false") && !EqualNoCase(text, "no")) {
    Fail(node, std::string(what) + " must be true or false");
  }
  return on;
}

int Reader::Count(const YAML::Node& node, std::string_view what) const {
  const std::string text = Text(node, what);
  int count = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
  if (error != std::errc() || end != text.data() + text.size() || count < 1) {
    Fail(node, "\"" + text + "\" is no " + std::string(what) + ": " + std::string(what) + "s count from 1");
  }
  return count;
}

double Reader::Number(const YAML::Node& node, std::string_view what) const {
  const std::string text = Text(node, what);
  double number = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(number)) {
    Fail(node, std::string(what) + " must be a number");
  }
  return number;
}

int Reader::Channel(const YAML::Node& node) const {
  return Count(node, "channel");
}

ChannelChoice Reader::Channels(const YAML::Node& node) const {
  ChannelChoice choice;
  if (node.IsSequence()) {
    for (const YAML::Node& channel : node) {
      choice.channels.push_back(Channel(channel));
    }
  } else if (node.IsScalar() && EqualNoCase(Text(node, "channels"), "all")) {
    choice.all = true;
  } else {
    Fail(node, "channels must be a list such as [1, 3], or all");
  }
  return choice;
}

std::vector<ChannelText> Reader::ChannelTexts(const YAML::Node& node, std::string_view what) const {
  CheckKeys(node, what, {});
  std::vector<ChannelText> texts;
  for (const auto& entry : node) {
    texts.push_back({Channel(entry.first), Text(entry.second, what)});
  }
  return texts;
}

FileAnswer Reader::File(const YAML::Node& node) const {
  FileAnswer answer;
  if (!node.IsSequence()) {
    answer.paths.push_back(Path(node, "file"));
  }
  for (const YAML::Node& path : node) {
    answer.paths.push_back(Path(path, "file"));
  }
  return answer;
}

PickAnswer Reader::Pick(const YAML::Node& node) const {
  CheckKeys(node, "pick", {"channels", "values", "names", "press"});
  PickAnswer answer;
  if (const YAML::Node channels = node["channels"]) {
    answer.channels = Channels(channels);
  }
  if (const YAML::Node values = node["values"]) {
    answer.values = ChannelTexts(values, "values");
  }
  if (const YAML::Node names = node["names"]) {
    answer.names = ChannelTexts(names, "names");
  }
  if (const YAML::Node press = node["press"]) {
    answer.press = Text(press, "press");
  }
  return answer;
}

// A map is a value per channel, a list or "all" a set of channels, all else one value.
FieldAnswer Reader::Field(const std::string& name, const YAML::Node& value) const {
  if (value.IsMap()) {
    return {name, ChannelTexts(value, name)};
  }
  if (value.IsSequence()) {
    return {name, Channels(value)};
  }
  return {name, Text(value, name)};
}

FormAnswer Reader::Form(const YAML::Node& node) const {
  CheckKeys(node, "form", {});
  FormAnswer answer;
  for (const auto& entry : node) {
    const std::string name = Text(entry.first, "a field");
    if (name == "press") {
      answer.press = Text(entry.second, "press");
    } else if (name == "found") {
      answer.found = Flag(entry.second, "found");
    } else {
      answer.fields.push_back(Field(name, entry.second));
    }
  }
  return answer;
}

Answer Reader::ReadAnswer(const YAML::Node& node) const {
  CheckKeys(node, "an answer", {"box", "input", "file", "pick", "form", "title", "optional"});
  Answer answer;
  answer.line = LineOf(node);
  int kinds = 0;
  for (const auto& entry : node) {
    const std::string& key = entry.first.Scalar();
    const YAML::Node& value = entry.second;
    ++kinds;
    if (key == "box") {
      answer.what = BoxAnswer{Text(value, "box")};
    } else if (key == "input") {
      answer.what = InputAnswer{Text(value, "input")};
    } else if (key == "file") {
      answer.what = File(value);
    } else if (key == "pick") {
      answer.what = Pick(value);
    } else if (key == "form") {
      answer.what = Form(value);
    } else {
      --kinds;
    }
  }
  if (kinds != 1) {
    Fail(node, "an answer has exactly one of box, input, file, pick and form");
  }
  if (const YAML::Node title = node["title"]) {
    answer.title = Text(title, "title");
  }
  if (const YAML::Node optional = node["optional"]) {
    answer.optional = Flag(optional, "optional");
  }
  return answer;
}

std::vector<Answer> Reader::Answers(const YAML::Node& node) const {
  std::vector<Answer> answers;
  const YAML::Node list = node["answers"];
  if (!list) {
    return answers;
  }
  if (!list.IsSequence()) {
    Fail(list, "answers must be a list");
  }
  for (const YAML::Node& answer : list) {
    answers.push_back(ReadAnswer(answer));
  }
  return answers;
}

CommandStep Reader::ReadCommand(const YAML::Node& node) const {
  CommandStep step;
  step.id = Text(node["do"], "do");
  const bool loads = step.id == "file.load";
  if (loads) {
    CheckKeys(node, "a step that loads", {"do", "file", "answers"});
    step.file = node["file"] ? Path(node["file"], "file") : "";
    if (step.file.empty()) {
      Fail(node, "file.load needs file:");
    }
  } else {
    CheckKeys(node, "a step", {"do", "answers"});
  }
  step.answers = Answers(node);
  return step;
}

// "ctrl+shift+PageUp"; the key itself may be "+".
KeyPress Reader::Key(const YAML::Node& node) const {
  KeyPress key;
  key.name = Text(node, "key");
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
    Fail(node, "key must name a key");
  }
  return key;
}

ImageGesture Reader::Image(const YAML::Node& node) const {
  ImageGesture image{.file = Path(node["image"], "image")};
  if (!PictureFormatOf(image.file)) {
    Fail(node["image"], "a picture is a .png, .svg or .pdf file");
  }
  if (const YAML::Node size = node["size"]) {
    if (!size.IsSequence() || size.size() != 2) {
      Fail(size, "size must be [width, height]");
    }
    image.width = Count(size[0], "width");
    image.height = Count(size[1], "height");
    const auto [least, most] = std::minmax(image.width, image.height);
    if (least < PictureOrder::kSmallest || most > PictureOrder::kLargest) {
      Fail(size, "a picture has from 100 to 16384 pixels a side");
    }
  }
  if (const YAML::Node white = node["white"]) {
    image.white = Flag(white, "white");
  }
  return image;
}

ViewStep Reader::ReadView(const YAML::Node& step) const {
  const YAML::Node node = step["view"];
  CheckKeys(node, "view",
            {"key", "move", "x", "graph", "threshold", "y", "click", "double-click", "right-click", "image",
             "size", "white", "close"});
  const auto given = [&node](const char* key) { return static_cast<bool>(node[key]); };
  if (given("key") + given("move") + given("threshold") + given("click") + given("double-click") +
          given("right-click") + given("image") + given("close") !=
      1) {
    Fail(node,
         "view has exactly one of key, move, threshold, click, double-click, right-click, image and close");
  }
  if (given("x") != given("move") || ((given("size") || given("white")) && !given("image"))) {
    Fail(node, "move needs x, and only move has one; size and white belong to image");
  }
  if (given("y") != given("threshold")) {
    Fail(node, "threshold needs y, and only threshold has one");
  }
  if (given("graph") && !given("move")) {
    Fail(node, "only move has a graph");
  }
  ViewStep view;
  view.answers = Answers(step);
  if (given("key")) {
    view.what = Key(node["key"]);
  } else if (given("move")) {
    view.what = CursorMove{Count(node["move"], "cursor"), Number(node["x"], "x"),
                           given("graph") ? Count(node["graph"], "graph") : 0};
  } else if (given("threshold")) {
    view.what = ThresholdMove{Count(node["threshold"], "graph"), Number(node["y"], "y")};
  } else if (given("click")) {
    view.what = GraphClick{Count(node["click"], "graph"), Clicked::Once};
  } else if (given("double-click")) {
    view.what = GraphClick{Count(node["double-click"], "graph"), Clicked::Twice};
  } else if (given("right-click")) {
    view.what = GraphClick{Count(node["right-click"], "graph"), Clicked::Right};
  } else if (given("image")) {
    view.what = Image(node);
  } else if (!Flag(node["close"], "close")) {
    Fail(node, "close: false does nothing");
  }
  return view;
}

Step Reader::ReadStep(const YAML::Node& node) const {
  CheckKeys(node, "a step", {"do", "file", "answers", "info", "view"});
  const auto given = [&node](const char* key) { return static_cast<bool>(node[key]); };
  if (given("do") + given("info") + given("view") != 1) {
    Fail(node, "a step has exactly one of do, info and view");
  }
  Step step;
  step.line = LineOf(node);
  if (given("do")) {
    step.what = ReadCommand(node);
  } else if (given("info")) {
    CheckKeys(node, "a step that writes the info", {"info"});
    step.what = InfoStep{Path(node["info"], "info")};
  } else {
    CheckKeys(node, "a step in a view", {"view", "answers"});
    step.what = ReadView(node);
  }
  return step;
}

Recipe Reader::Read(const std::string& text) const {
  std::vector<YAML::Node> documents;
  try {
    documents = YAML::LoadAll(text);
  } catch (const YAML::DeepRecursion& error) {  // whose own message is "bad file"
    const auto lines = static_cast<int>(std::count(text.begin(), text.end(), '\n'));
    Fail(std::min(error.mark.line + 1, std::max(lines, 1)), "lists and maps are nested too deeply");
  } catch (const YAML::Exception& error) {
    Fail(error.mark.line + 1, error.msg);
  }
  if (documents.size() != 1) {
    Fail(1, documents.empty() ? "the recipe is empty" : "a recipe is one YAML document");
  }
  const YAML::Node& root = documents.front();
  CheckKeys(root, "a recipe", {"velmora2", "steps"});
  if (!root["velmora2"] || Text(root["velmora2"], "velmora2") != "1") {
    Fail(root, "a recipe says \"velmora2: 1\"");
  }
  const YAML::Node steps = root["steps"];
  if (!steps || !steps.IsSequence() || steps.size() == 0) {
    Fail(steps ? steps : root, "a recipe has steps: a list of at least one");
  }
  Recipe recipe;
  for (const YAML::Node& step : steps) {
    recipe.steps.push_back(ReadStep(step));
  }
  return recipe;
}

struct NameAction {
  std::string operator()(const CommandStep& step) const { return step.id; }
  std::string operator()(const InfoStep& /*step*/) const { return "info"; }
  std::string operator()(const ViewStep& /*step*/) const { return "view"; }
};

}  // namespace

std::string ActionOf(const Step& step) {
  return std::visit(NameAction{}, step.what);
}

Recipe ReadRecipe(std::string_view text, std::string_view name, const Variables& variables) {
  return Reader(name, variables).Read(std::string(text));
}

}  // namespace velmora
