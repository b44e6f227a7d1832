#include "run/recipe/recipe_writer.hpp"

#include <yaml-cpp/yaml.h>

#include <cmath>
#include <filesystem>

#include "core/files/paths.hpp"
#include "core/text/numbers.hpp"
#include "run/recipe/variables.hpp"

namespace velmora {
namespace {

namespace fs = std::filesystem;

/// Writes one thing after the other to an emitter.
class Writer {
 public:
  explicit Writer(YAML::Emitter& out) : out_(out) {}

  void Write(const Step& step) {
    out_ << YAML::BeginMap;
    std::visit(*this, step.what);
    out_ << YAML::EndMap;
  }

  void Write(const RunStart& start) {
    out_ << YAML::BeginMap;
    if (!start.window.empty()) {
      Key("window");
      Text(start.window);
    }
    if (start.thresholds) {
      Key("thresholds");
      Write(*start.thresholds);
    }
    out_ << YAML::EndMap;
  }

  void operator()(const CommandStep& step) {
    Key("do");
    out_ << step.id;
    if (!step.file.empty()) {
      Key("file");
      Text(step.file);
    }
    Answers(step.answers);
  }
  void operator()(const InfoStep& step) {
    Key("info");
    Text(step.file);
  }
  void operator()(const ViewStep& step) {
    Key("view");
    out_ << YAML::Flow << YAML::BeginMap;
    std::visit(*this, step.what);
    out_ << YAML::EndMap;
    Answers(step.answers);
  }

  void operator()(const CollectStep& /*step*/) {}  // nobody does one by hand

  void operator()(const CloseGesture& /*close*/) {
    Key("close");
    out_ << true;
  }
  void operator()(const KeyPress& key) {
    Key("key");
    Text(std::string(key.shift ? "shift+" : "") + (key.ctrl ? "ctrl+" : "") + (key.alt ? "alt+" : "") +
         key.name);
  }
  void operator()(const CursorMove& move) {
    Key("move");
    out_ << move.cursor;
    Key("x");
    Text(PlainNumber(move.x));
    if (move.graph > 0) {
      Key("graph");
      out_ << move.graph;
    }
  }
  void operator()(const ThresholdMove& move) {
    Key("threshold");
    out_ << move.graph;
    Key("y");
    Text(PlainNumber(move.y));
  }
  void operator()(const GraphClick& click) {
    Key(click.how == Clicked::Once ? "click" : click.how == Clicked::Twice ? "double-click" : "right-click");
    out_ << click.graph;
  }
  void operator()(const ImageGesture& image) {
    Key("image");
    Text(image.file);
  }

  void operator()(const BoxAnswer& answer) {
    Key("box");
    Text(answer.button);
  }
  void operator()(const InputAnswer& answer) {
    Key("input");
    Text(answer.text);
  }
  void operator()(const FileAnswer& answer) {
    Key("file");
    if (answer.paths.size() == 1) {
      Text(answer.paths.front());
      return;
    }
    out_ << YAML::BeginSeq;
    for (const std::string& path : answer.paths) {
      Text(path);
    }
    out_ << YAML::EndSeq;
  }
  void operator()(const PickAnswer& answer) {
    Key("pick");
    out_ << YAML::BeginMap;
    if (answer.channels) {
      Key("channels");
      (*this)(*answer.channels);
    }
    if (!answer.values.empty()) {
      Key("values");
      (*this)(answer.values);
    }
    if (!answer.names.empty()) {
      Key("names");
      (*this)(answer.names);
    }
    Key("press");
    Text(answer.press);
    out_ << YAML::EndMap;
  }
  void operator()(const FormAnswer& answer) {
    Key("form");
    out_ << YAML::BeginMap;
    if (answer.found) {
      Key("found");
      out_ << true;
    }
    for (const FieldAnswer& field : answer.fields) {
      Key(field.name);
      std::visit(*this, field.value);
    }
    Key("press");
    Text(answer.press);
    out_ << YAML::EndMap;
  }

  void operator()(const std::string& text) { Text(text); }
  void operator()(const ChannelChoice& choice) {
    if (choice.all) {
      Text("all");
      return;
    }
    out_ << YAML::Flow << YAML::BeginSeq;
    for (const ChannelName& channel : choice.channels) {
      Text(TextOf(channel));
    }
    out_ << YAML::EndSeq;
  }
  void operator()(const std::vector<ChannelText>& texts) {
    out_ << YAML::Flow << YAML::BeginMap;
    for (const ChannelText& text : texts) {
      out_ << YAML::Key;
      Text(TextOf(text.channel));
      out_ << YAML::Value;
      Text(text.text);
    }
    out_ << YAML::EndMap;
  }

 private:
  void Key(const std::string& key) { out_ << YAML::Key << key << YAML::Value; }
  void Write(const ThresholdMemory& thresholds) {
    out_ << YAML::BeginMap;
    if (!thresholds.ThresholdsOf.empty()) {
      Key("of");
      Text(FileNamePart(thresholds.ThresholdsOf));
    }
    Key("levels");
    Write(thresholds.ChanThreshold);
    Key("sd");
    Text(PlainNumber(thresholds.SDMultiplier));
    if (thresholds.BaselineTaken) {
      Key("baseline-means");
      Write(thresholds.ChanMean);
      Key("baseline-deviations");
      Write(thresholds.ChanSD);
    }
    out_ << YAML::EndMap;
  }
  void Write(const PerChannel<double>& values) {
    int last = kMaxChannels;
    while (last > 1 && values[last] == 0.0) {
      --last;
    }
    out_ << YAML::Flow << YAML::BeginSeq;
    for (int c = 1; c <= last; ++c) {
      Text(std::isnan(values[c]) ? "nan" : PlainNumber(values[c]));
    }
    out_ << YAML::EndSeq;
  }
  // Numbers and yes/no read well as they are; all else is quoted, whatever it may look like.
  void Text(const std::string& text) {
    const bool plain = text == "true" || text == "false" ||
                       (!text.empty() && text.find_first_not_of("0123456789.-") == std::string::npos);
    if (!plain) {
      out_ << YAML::DoubleQuoted;
    }
    out_ << text;
  }
  void Answers(const std::vector<Answer>& answers) {
    if (answers.empty()) {
      return;
    }
    Key("answers");
    out_ << YAML::BeginSeq;
    for (const Answer& answer : answers) {
      out_ << YAML::BeginMap;
      std::visit(*this, answer.what);
      if (answer.title) {
        Key("title");
        Text(*answer.title);
      }
      if (answer.optional) {
        Key("optional");
        out_ << true;
      }
      out_ << YAML::EndMap;
    }
    out_ << YAML::EndSeq;
  }

  YAML::Emitter& out_;
};

// Without a trial that was loaded there is no name that the others begin with.
void MoveToOutput(std::string& path, const std::string& stem) {
  if (path.empty()) {
    return;
  }
  const std::string name = fs::path(path).filename().string();
  const bool named = !stem.empty() && name.starts_with(stem);
  path = "${out}/" + (named ? "${stem}" + name.substr(stem.size()) : name);
}

// What was typed was typed, whatever it looks like to a recipe.
struct TypedTexts {
  void operator()(std::string& text) const { KeepFromVariables(text); }
  void operator()(std::vector<ChannelText>& texts) const {
    for (ChannelText& text : texts) {
      KeepFromVariables(text.channel.label);
      KeepFromVariables(text.text);
    }
  }
  void operator()(ChannelChoice& choice) const {
    for (ChannelName& channel : choice.channels) {
      KeepFromVariables(channel.label);
    }
  }
  void operator()(BoxAnswer& /*box*/) const {}
  void operator()(InputAnswer& input) const { KeepFromVariables(input.text); }
  void operator()(FileAnswer& file) const {
    for (std::string& path : file.paths) {
      KeepFromVariables(path);
    }
  }
  void operator()(PickAnswer& pick) const {
    if (pick.channels) {
      (*this)(*pick.channels);
    }
    (*this)(pick.values);
    (*this)(pick.names);
  }
  void operator()(FormAnswer& form) const {
    for (FieldAnswer& field : form.fields) {
      std::visit(*this, field.value);
    }
  }
};

void KeepTyped(std::vector<Answer>& answers) {
  for (Answer& answer : answers) {
    std::visit(TypedTexts{}, answer.what);
    if (answer.title) {
      KeepFromVariables(*answer.title);
    }
  }
}

// Files that a step writes: of a saving command, of a press in a result view or a key in a graph, which asked
// for a file to save, or a name in a form.
void MoveSaved(std::vector<Answer>& answers, bool savingCommand, const std::string& stem) {
  for (Answer& answer : answers) {
    if (auto* file = std::get_if<FileAnswer>(&answer.what);
        file != nullptr && (savingCommand || file->savesFile)) {
      for (std::string& path : file->paths) {
        MoveToOutput(path, stem);
      }
    }
    if (auto* form = std::get_if<FormAnswer>(&answer.what)) {
      for (FieldAnswer& field : form->fields) {
        if (auto* path = std::get_if<std::string>(&field.value); path != nullptr && field.savesFile) {
          MoveToOutput(*path, stem);
        }
      }
    }
  }
}

bool IsSaving(const CommandStep& step) {
  return step.id.starts_with("save.") || step.id.ends_with(".save");
}

}  // namespace

std::string RecipeText(const Recipe& recipe) {
  YAML::Emitter out;
  out.SetIndent(2);
  Writer writer(out);
  out << YAML::BeginMap << YAML::Key << "velmora2" << YAML::Value << 1;
  if (!recipe.start.window.empty() || recipe.start.thresholds) {
    out << YAML::Key << "start" << YAML::Value;
    writer.Write(recipe.start);
  }
  out << YAML::Key << "steps" << YAML::Value << YAML::BeginSeq;
  for (const Step& step : recipe.steps) {
    writer.Write(step);
  }
  out << YAML::EndSeq << YAML::EndMap;
  return std::string(out.c_str(), out.size()) + "\n";
}

std::vector<Step> ForAnyInput(std::vector<Step> steps) {
  std::string stem;
  for (Step& step : steps) {
    if (auto* view = std::get_if<ViewStep>(&step.what)) {
      KeepTyped(view->answers);
      MoveSaved(view->answers, false, stem);
    }
    auto* command = std::get_if<CommandStep>(&step.what);
    if (command == nullptr) {
      continue;
    }
    KeepTyped(command->answers);
    if (stem.empty() && !command->file.empty()) {
      stem = fs::path(command->file).stem().string();
      command->file = "${input}";
    }
    MoveSaved(command->answers, IsSaving(*command), stem);
  }
  return steps;
}

}  // namespace velmora
