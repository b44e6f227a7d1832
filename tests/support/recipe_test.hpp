#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "run/recipe/recipe_reader.hpp"
#include "run/recipe/recipe_run.hpp"
#include "support/temporary_directory.hpp"
#include "support/trials.hpp"

namespace velmora::test {

/// Runs steps over a trial that is there without a file.
class RecipeTest : public testing::Test {
 protected:
  virtual void MakeTrial(Trial& trial) = 0;

  void Run(const std::string& steps, bool strict = false) {
    const Recipe recipe =
        ReadRecipe("velmora2: 1\nsteps:\n" + steps, "r.yaml", {{"out", directory_.Path("")}});
    lines_.clear();
    done_.clear();
    run_.emplace(RunOptions{
        .input = "in/a.vmb", .strict = strict, .onStep = {}, .transcript = [this](std::string_view line) {
          const bool done = nlohmann::json::parse(line).at("kind") == "done";
          (done ? done_ : lines_).emplace_back(line);
        }});
    MakeTrial(run_->State().trial);
    outcome_ = run_->Run(recipe);
  }
  [[nodiscard]] std::string Why() const { return outcome_.failure ? outcome_.failure->why : "all ran"; }
  [[nodiscard]] nlohmann::json Info(const char* name) const {
    return nlohmann::json::parse(ReadFile(directory_.Path(name)));
  }

  TemporaryDirectory directory_;
  std::optional<RecipeRun> run_;
  // Of the transcript: what was asked, and what was done.
  std::vector<std::string> lines_;
  std::vector<std::string> done_;
  Outcome outcome_;
};

}  // namespace velmora::test
