#include "run/recipe/recipe_reader.hpp"

#include <yaml-cpp/depthguard.h>
#include <yaml-cpp/yaml.h>

#include <algorithm>

#include "run/recipe/answer_reader.hpp"
#include "run/recipe/run_start_reader.hpp"
#include "run/recipe/view_step_reader.hpp"
#include "run/recipe/yaml_reader.hpp"
#include "run/study/collect_reader.hpp"

namespace velmora {
namespace {

CommandStep ReadCommand(YamlReader& reader, const YAML::Node& node) {
  CommandStep step;
  step.id = reader.Text(node["do"], "do");
  const bool loads = step.id == "file.load";
  if (loads) {
    reader.CheckKeys(node, "a step that loads", {"do", "file", "answers"});
    step.file = node["file"] ? reader.Path(node["file"], "file") : "";
    if (step.file.empty()) {
      reader.Note(node, "file.load needs file:");
    }
  } else {
    reader.CheckKeys(node, "a step", {"do", "answers"});
  }
  step.answers = ReadAnswers(reader, node);
  return step;
}

Step ReadStep(YamlReader& reader, const YAML::Node& node) {
  const bool known = reader.CheckKeys(
      node, "a step", {"do", "file", "answers", "info", "view", "collect", "columns", "table"});
  const auto given = [&node](const char* key) { return static_cast<bool>(node[key]); };
  if (given("do") + given("info") + given("view") + given("collect") != 1) {
    if (!known) {
      throw Unreadable();
    }
    reader.Fail(node, "a step has exactly one of do, info, view and collect");
  }
  Step step;
  step.line = YamlReader::LineOf(node);
  if (given("do")) {
    step.what = ReadCommand(reader, node);
  } else if (given("info")) {
    reader.CheckKeys(node, "a step that writes the info", {"info"});
    step.what = InfoStep{reader.Path(node["info"], "info")};
  } else if (given("collect")) {
    step.what = ReadCollectStep(reader, node);
  } else {
    reader.CheckKeys(node, "a step in a view", {"view", "answers"});
    step.what = ReadViewStep(reader, node);
  }
  return step;
}

std::vector<YAML::Node> Parse(YamlReader& reader, const std::string& text) {
  try {
    return YAML::LoadAll(text);
  } catch (const YAML::DeepRecursion& error) {  // whose own message is "bad file"
    const auto lines = static_cast<int>(std::count(text.begin(), text.end(), '\n'));
    reader.Fail(std::min(error.mark.line + 1, std::max(lines, 1)), "lists and maps are nested too deeply");
  } catch (const YAML::Exception& error) {
    reader.Fail(error.mark.line + 1, error.msg);
  }
}

void ReadSteps(YamlReader& reader, const std::string& text, Recipe& recipe) {
  const std::vector<YAML::Node> documents = Parse(reader, text);
  if (documents.size() != 1) {
    reader.Fail(1, documents.empty() ? "the recipe is empty" : "a recipe is one YAML document");
  }
  const YAML::Node& root = documents.front();
  reader.CheckKeys(root, "a recipe", {"velmora2", "start", "steps"});
  if (!root["velmora2"] || reader.Text(root["velmora2"], "velmora2") != "1") {
    reader.Note(root, "a recipe says \"velmora2: 1\"");
  }
  if (root["start"]) {
    recipe.start = ReadRunStart(reader, root["start"]);
  }
  const YAML::Node steps = root["steps"];
  if (!steps || !steps.IsSequence() || steps.size() == 0) {
    reader.Fail(steps ? steps : root, "a recipe has steps: a list of at least one");
  }
  ReadEach(steps, [&](const YAML::Node& step) { recipe.steps.push_back(ReadStep(reader, step)); });
}

struct NameAction {
  std::string operator()(const CommandStep& step) const { return step.id; }
  std::string operator()(const InfoStep& /*step*/) const { return "info"; }
  std::string operator()(const ViewStep& /*step*/) const { return "view"; }
  std::string operator()(const CollectStep& /*step*/) const { return "collect"; }
};

}  // namespace

bool SavesReport(const Step& step) {
  return ActionOf(step) == "report.save";
}

std::string ActionOf(const Step& step) {
  return std::visit(NameAction{}, step.what);
}

std::string FaultText(std::string_view name, std::vector<RecipeFault> faults) {
  std::stable_sort(faults.begin(), faults.end(),
                   [](const RecipeFault& a, const RecipeFault& b) { return a.line < b.line; });
  const auto same = [](const RecipeFault& a, const RecipeFault& b) {
    return a.line == b.line && a.why == b.why;
  };
  faults.erase(std::unique(faults.begin(), faults.end(), same), faults.end());
  std::string text;
  for (const RecipeFault& fault : faults) {
    text +=
        (text.empty() ? "" : "\n") + std::string(name) + ":" + std::to_string(fault.line) + ": " + fault.why;
  }
  return text;
}

ReadingOfRecipe TryReadRecipe(std::string_view text, const Variables& variables) {
  YamlReader reader(variables);
  ReadingOfRecipe reading;
  try {
    ReadSteps(reader, std::string(text), reading.recipe);
  } catch (const Unreadable&) {  // noted
  }
  reading.faults = reader.Faults();
  return reading;
}

Recipe ReadRecipe(std::string_view text, std::string_view name, const Variables& variables) {
  ReadingOfRecipe reading = TryReadRecipe(text, variables);
  if (!reading.faults.empty()) {
    throw RecipeError(FaultText(name, std::move(reading.faults)));
  }
  return std::move(reading.recipe);
}

}  // namespace velmora
