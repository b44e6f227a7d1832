#include "run/recipe/recipe_reader.hpp"

#include <gtest/gtest.h>

namespace velmora {
namespace {

Recipe Read(std::string_view text, const Variables& variables = {}) {
  return ReadRecipe(text, "r.yaml", variables);
}

std::string ErrorOf(std::string_view text, const Variables& variables = {}) {
  try {
    Read(text, variables);
  } catch (const RecipeError& error) {
    return error.what();
  }
  return "no error";
}

// The head that every recipe has, and one step on line 3.
std::string WithStep(const std::string& step) {
  return "velmora2: 1\nsteps:\n  - " + step;
}

std::string WithAnswer(const std::string& answer) {
  return WithStep("do: math.add\n    answers:\n      - " + answer);
}

TEST(RecipeReader, ReadsEveryKindOfStepAndAnswer) {
  const Recipe recipe = Read(R"(velmora2: 1
steps:
  - do: file.load
    file: data/a.vmb
  - do: x.y
    answers:
      - {title: "Sure?", box: Yes, optional: true}
      - input: ""
      - file: [a, b]
      - pick: {channels: [3, 1], values: {2: 6.50}, press: Cancel}
      - pick: {channels: all, names: {1: "Fz, left"}}
      - form: {optPad: Mirror, Cutoffs: {1: 6, 3: .5}, channels: [2], press: Filter}
  - info: i.json
  - view: {key: "ctrl+PageUp"}
)");
  ASSERT_EQ(recipe.steps.size(), 4U);
  EXPECT_EQ(std::get<CommandStep>(recipe.steps[0].what).file, "data/a.vmb");
  const auto& command = std::get<CommandStep>(recipe.steps[1].what);
  EXPECT_EQ(recipe.steps[1].line, 5);
  ASSERT_EQ(command.answers.size(), 6U);
  EXPECT_EQ(command.answers[0].title, "Sure?");
  EXPECT_TRUE(command.answers[0].optional);
  EXPECT_EQ(command.answers[0].line, 7);
  EXPECT_EQ(std::get<BoxAnswer>(command.answers[0].what).button, "Yes");  // not a truth value
  EXPECT_EQ(std::get<InputAnswer>(command.answers[1].what).text, "");
  EXPECT_EQ(std::get<FileAnswer>(command.answers[2].what).paths, (std::vector<std::string>{"a", "b"}));
  const auto& pick = std::get<PickAnswer>(command.answers[3].what);
  EXPECT_EQ(pick.channels->channels, (std::vector<ChannelName>{{.number = 3}, {.number = 1}}));
  EXPECT_EQ(pick.values.at(0).channel.number, 2);
  EXPECT_EQ(pick.values.at(0).text, "6.50");  // as it would be typed
  EXPECT_EQ(pick.press, "Cancel");
  EXPECT_TRUE(std::get<PickAnswer>(command.answers[4].what).channels->all);
  EXPECT_EQ(std::get<PickAnswer>(command.answers[4].what).names.at(0).text, "Fz, left");
  const auto& form = std::get<FormAnswer>(command.answers[5].what);
  ASSERT_EQ(form.fields.size(), 3U);
  EXPECT_EQ(std::get<std::string>(form.fields[0].value), "Mirror");
  EXPECT_EQ(std::get<std::vector<ChannelText>>(form.fields[1].value).at(1).text, ".5");
  EXPECT_EQ(std::get<ChannelChoice>(form.fields[2].value).channels, std::vector{ChannelName{.number = 2}});
  EXPECT_EQ(form.press, "Filter");
  EXPECT_EQ(std::get<InfoStep>(recipe.steps[2].what).file, "i.json");
  EXPECT_TRUE(std::holds_alternative<ViewStep>(recipe.steps[3].what));
}

TEST(RecipeReader, JsonIsARecipeToo) {
  const Recipe recipe =
      Read(R"({"velmora2": 1, "steps": [{"do": "a.b", "answers": [{"pick": {"values": {"1": 6.0}}}]}]})");
  const auto& step = std::get<CommandStep>(recipe.steps.at(0).what);
  EXPECT_EQ(std::get<PickAnswer>(step.answers.at(0).what).values.at(0).text, "6.0");
}

TEST(RecipeReader, VariablesAreReplacedInEveryStringOnce) {
  Variables variables{{"chan", "2"}, {"out", "o"}, {"odd", "${out}"}};
  SetInputVariables(variables, "data.d/trial.one.vmb");
  const Recipe recipe = Read(WithStep("info: \"${out}/${stem}-${dir}-${input}$${odd}.json\"\n"
                                      "  - do: \"m${chan}\"\n"
                                      "    answers: [pick: {values: {\"${chan}\": \"${chan}.5\"}}]"),
                             variables);
  EXPECT_EQ(std::get<InfoStep>(recipe.steps[0].what).file,
            "o/trial.one-data.d-data.d/trial.one.vmb$${out}.json");
  const auto& step = std::get<CommandStep>(recipe.steps[1].what);
  EXPECT_EQ(step.id, "m2");
  const auto& pick = std::get<PickAnswer>(step.answers.at(0).what);
  EXPECT_EQ(pick.values.at(0).channel.number, 2);
  EXPECT_EQ(pick.values.at(0).text, "2.5");

  SetInputVariables(variables, "plain.vmb");
  EXPECT_EQ(variables["dir"], ".");
  EXPECT_NE(ErrorOf(WithStep("info: \"${x}.json\"")).find("r.yaml:3: unknown variable ${x}"),
            std::string::npos);
  EXPECT_NE(ErrorOf(WithStep("info: \"${input}.json\"")).find("no INPUT was given"), std::string::npos);
  EXPECT_NE(ErrorOf(WithStep("info: \"${out\"")).find("without \"}\""), std::string::npos);
}

TEST(RecipeReader, RefusesWhatItDoesNotKnowAndSaysWhere) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"", "r.yaml:1: "},
      {"[1, 2", "r.yaml:1: "},
      {"velmora2: 1\nsteps:\n\t- do: x", "r.yaml:3: "},
      {"velmora2: 1\n---\nsteps: []", "one YAML document"},
      {"- do: x", "a recipe must be a map"},
      {"velmora2: 2\nsteps: [do: x]", "velmora2: 1"},
      {"steps: [do: x]", "velmora2: 1"},
      {"velmora2: 1", "has steps"},
      {"velmora2: 1\nsteps: []", "r.yaml:2: a recipe has steps"},
      {"velmora2: 1\nstep: []\nsteps: [do: x]", "r.yaml:2: a recipe has no key \"step\""},
      {"velmora2: 1\nsteps: [do: x]\nsteps: [do: y]", "r.yaml:3: key \"steps\" is given twice"},
      {"velmora2: 1\nstart: {window: hanning}\nsteps: [do: x]", "r.yaml:2: there is no window \"hanning\""},
      {"velmora2: 1\nstart: {windows: x}\nsteps: [do: x]", "start has no key \"windows\""},
      {"velmora2: 1\nstart: {thresholds: {levels: 5}}\nsteps: [do: x]", "levels must be a list"},
      {"velmora2: 1\nstart: {thresholds: {levels: [x]}}\nsteps: [do: x]", "levels must be a number"},
      {WithStep("do: x\n    info: y"), "exactly one of do, info, view and collect"},
      {WithStep("answers: []"), "exactly one of do, info, view and collect"},
      {WithStep("just text"), "r.yaml:3: a step must be a map"},
      {WithStep("do: x\n    file: y"), "r.yaml:4: a step has no key \"file\""},
      {WithStep("do: file.load"), "file.load needs file"},
      {WithStep("do: [x]"), "do must be a text"},
      {WithStep("info: ~"), "info must be a text"},
      {WithStep("info: x\n    answers: []"), "no key \"answers\""},
      {WithStep("do: x\n    answers: {box: Yes}"), "answers must be a list"},
      {WithAnswer("Yes"), "an answer must be a map"},
      {WithAnswer("title: x"), "exactly one of box"},
      {WithAnswer("{box: Yes, input: x}"), "exactly one of box"},
      {WithAnswer("{box: Yes, optional: maybe}"), "r.yaml:5: optional must be true or false"},
      {WithAnswer("{box: Yes, tittle: x}"), "no key \"tittle\""},
      {WithAnswer("{pick: {channel: [1]}}"), "pick has no key \"channel\""},
      {WithAnswer("{pick: {channels: [0]}}"), "channels count from 1"},
      {WithAnswer("{pick: {channels: [-1]}}"), "channels count from 1"},
      {WithAnswer("{pick: {channels: [99999999999]}}"), "is no channel"},
      {WithAnswer("{pick: {channels: {1: 2}}}"), "channels must be a list"},
      {WithAnswer("{pick: {channels: [\" \"]}}"), "names no channel"},
      {WithAnswer("{pick: {values: {1: [2]}}}"), "values must be a text or a number"},
      {WithAnswer("{form: {x: {0: 2}}}"), "\"0\" is no channel"},
      {WithAnswer("{form: Filter}"), "form must be a map"},
      {WithStep(R"(info: "kept.json\0.txt")"), "r.yaml:3: info must be a path"},
      {WithStep(R"(do: file.load
    file: "a.vmb\0.txt")"),
       "r.yaml:4: file must be a path"},
      {WithStep(R"(view: {image: "a.png\0.png"})"), "r.yaml:3: image must be a path"},
      {WithAnswer(R"({file: ["b", "a.vmb\0"]})"), "r.yaml:5: file must be a path"},
  };
  for (const auto& [text, expected] : cases) {
    EXPECT_NE(ErrorOf(text).find(expected), std::string::npos) << text << "\ngave: " << ErrorOf(text);
  }
}

TEST(RecipeReader, HostileNestingIsAnErrorNotACrash) {
  EXPECT_EQ(ErrorOf(std::string(100000, '[')), "r.yaml:1: lists and maps are nested too deeply");
  EXPECT_EQ(ErrorOf("velmora2: 1\nsteps:\n  - " + std::string(900, '[') + std::string(900, ']') + "\n"),
            "r.yaml:3: lists and maps are nested too deeply");
  EXPECT_EQ(ErrorOf("velmora2: 1\nsteps: &a [*a]").rfind("r.yaml:", 0), 0U);
}

}  // namespace
}  // namespace velmora
