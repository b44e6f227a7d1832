#include "run/recipe/answer_reader.hpp"

#include "core/text/text.hpp"

namespace velmora {
namespace {

ChannelChoice Channels(YamlReader& reader, const YAML::Node& node) {
  ChannelChoice choice;
  if (node.IsSequence()) {
    for (const YAML::Node& channel : node) {
      choice.channels.push_back(reader.Channel(channel));
    }
  } else if (!node.IsScalar()) {
    reader.Fail(node, "channels must be a list such as [1, \"EMG*\"], one channel, or all");
  } else if (EqualNoCase(reader.Text(node, "channels"), "all")) {
    choice.all = true;
  } else {
    choice.channels.push_back(reader.Channel(node));
  }
  return choice;
}

std::vector<ChannelText> ChannelTexts(YamlReader& reader, const YAML::Node& node, std::string_view what) {
  reader.CheckKeys(node, what, {});
  std::vector<ChannelText> texts;
  for (const auto& entry : node) {
    texts.push_back({reader.Channel(entry.first), reader.Text(entry.second, what)});
  }
  return texts;
}

FileAnswer File(YamlReader& reader, const YAML::Node& node) {
  FileAnswer answer;
  if (!node.IsSequence()) {
    answer.paths.push_back(reader.Path(node, "file"));
  }
  for (const YAML::Node& path : node) {
    answer.paths.push_back(reader.Path(path, "file"));
  }
  return answer;
}

PickAnswer Pick(YamlReader& reader, const YAML::Node& node) {
  reader.CheckKeys(node, "pick", {"channels", "values", "names", "press"});
  PickAnswer answer;
  if (const YAML::Node channels = node["channels"]) {
    answer.channels = Channels(reader, channels);
  }
  if (const YAML::Node values = node["values"]) {
    answer.values = ChannelTexts(reader, values, "values");
  }
  if (const YAML::Node names = node["names"]) {
    answer.names = ChannelTexts(reader, names, "names");
  }
  if (const YAML::Node press = node["press"]) {
    answer.press = reader.Text(press, "press");
  }
  return answer;
}

// A map is a value per channel, a list or "all" a set of channels, all else one value.
FieldAnswer Field(YamlReader& reader, const std::string& name, const YAML::Node& value) {
  FieldAnswer answer{.name = name, .line = YamlReader::LineOf(value)};
  if (value.IsMap()) {
    answer.value = ChannelTexts(reader, value, name);
  } else if (value.IsSequence()) {
    answer.value = Channels(reader, value);
  } else {
    answer.value = reader.Text(value, name);
  }
  return answer;
}

FormAnswer FormAnswerOf(YamlReader& reader, const YAML::Node& node) {
  reader.CheckKeys(node, "form", {});
  FormAnswer answer;
  ReadEach(node, [&](const auto& entry) {
    const std::string name = reader.Text(entry.first, "a field");
    if (name == "press") {
      answer.press = reader.Text(entry.second, "press");
    } else if (name == "found") {
      answer.found = reader.Flag(entry.second, "found");
    } else {
      answer.fields.push_back(Field(reader, name, entry.second));
    }
  });
  return answer;
}

/// Reads the value of `key` when it is one of the kinds of answers.
bool ReadKind(YamlReader& reader, const std::string& key, const YAML::Node& value, Answer& answer) {
  if (key == "box") {
    answer.what = BoxAnswer{reader.Text(value, "box")};
  } else if (key == "input") {
    answer.what = InputAnswer{reader.Text(value, "input")};
  } else if (key == "file") {
    answer.what = File(reader, value);
  } else if (key == "pick") {
    answer.what = Pick(reader, value);
  } else if (key == "form") {
    answer.what = FormAnswerOf(reader, value);
  } else {
    return false;
  }
  return true;
}

Answer ReadAnswer(YamlReader& reader, const YAML::Node& node) {
  const bool known =
      reader.CheckKeys(node, "an answer", {"box", "input", "file", "pick", "form", "title", "optional"});
  Answer answer;
  answer.line = YamlReader::LineOf(node);
  int kinds = 0;
  for (const auto& entry : node) {
    kinds += ReadKind(reader, entry.first.Scalar(), entry.second, answer) ? 1 : 0;
  }
  if (kinds != 1 && known) {
    reader.Fail(node, "an answer has exactly one of box, input, file, pick and form");
  }
  if (kinds == 0) {
    throw Unreadable();  // its kind is mistyped, which is noted
  }
  if (const YAML::Node title = node["title"]) {
    answer.title = reader.Text(title, "title");
  }
  if (const YAML::Node optional = node["optional"]) {
    answer.optional = reader.Flag(optional, "optional");
  }
  return answer;
}

}  // namespace

std::vector<Answer> ReadAnswers(YamlReader& reader, const YAML::Node& step) {
  std::vector<Answer> answers;
  const YAML::Node list = step["answers"];
  if (!list) {
    return answers;
  }
  if (!list.IsSequence()) {
    reader.Fail(list, "answers must be a list");
  }
  ReadEach(list, [&](const YAML::Node& answer) { answers.push_back(ReadAnswer(reader, answer)); });
  return answers;
}

}  // namespace velmora
