#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "app/command_table.hpp"
#include "core/workbench.hpp"
#include "support/scripted_questions.hpp"
#include "support/temporary_directory.hpp"
#include "support/trials.hpp"

namespace velmora::test {

using Texts = std::vector<std::string>;

/// A workbench whose questions are answered from a script, and commands run by id as the window and
/// recipes run them.
struct CommandTest : testing::Test {
  ScriptedQuestions questions;
  Workbench workbench{questions};
  Trial& trial = workbench.trial;

  void Run(const char* id) {
    const Command* command = FindCommand(id);
    ASSERT_NE(command, nullptr) << "no command " << id;
    RunCommand(workbench, *command);
  }
  void RunPicking(const char* id, std::vector<int> channels) {
    questions.PickChannels(std::move(channels));
    Run(id);
  }
  void RunTyping(const char* id, std::vector<std::pair<int, std::string>> values) {
    questions.PickValues(std::move(values));
    Run(id);
  }
  void RunEntering(const char* id, const std::string& text) {
    questions.inputAnswers = {text};
    Run(id);
  }
  void SetCursors(std::int32_t lo, std::int32_t hi) {
    trial.CursorLo = lo;
    trial.CursorHi = hi;
  }
  /// What the picker of a command offers in its column of values; it is cancelled.
  Texts OfferedBy(const char* id) {
    Texts offered;
    questions.pickAnswers.emplace_back([&offered](ChannelPicker& picker) {
      for (int c = 1; c <= picker.Channels(); ++c) {
        offered.push_back(picker.ValueText(c));
      }
      return std::string("Cancel");
    });
    Run(id);
    return offered;
  }

  void AnswerForm(const Edits& edits, const std::string& press = "OK") { questions.FillForm(edits, press); }

  /// Title and text.
  [[nodiscard]] std::string LastBox() const {
    return questions.boxes.empty() ? "" : questions.boxes.back().title + "|" + questions.boxes.back().text;
  }
  [[nodiscard]] Texts Labels() const { return TextsOf(trial.ChanLabel); }
  [[nodiscard]] Texts UnitsOfChannels() const { return TextsOf(trial.ChanUnits); }

 private:
  template <typename PerChannelText>
  [[nodiscard]] Texts TextsOf(const PerChannelText& all) const {
    Texts texts;
    for (int c = 1; c <= trial.NChan; ++c) {
      texts.push_back(all[static_cast<std::size_t>(c)].Text());
    }
    return texts;
  }
};

/// The same with a directory for its files.
struct FileTest : CommandTest {
  TemporaryDirectory directory;

  void Load(const std::string& name, std::string_view bytes) {
    WriteFile(directory.Path(name), bytes);
    LoadPath(directory.Path(name));
  }
  void LoadPath(const std::string& path) {
    questions.boxes.clear();
    workbench.report = {};
    trial.FileName = path;
    Run("file.load");
  }
  /// The file is refused with these words and leaves no trial.
  void ExpectRefused(const std::string& name, std::string_view bytes, const std::string& why) {
    Load(name, bytes);
    EXPECT_EQ(trial.NData, 0) << why;
    EXPECT_NE(LastBox().find(why), std::string::npos) << why << " in " << LastBox();
  }
  /// The notices of the trial, a line each.
  [[nodiscard]] std::string Told() const {
    std::string told;
    for (const std::string& notice : trial.Notices) {
      told += notice + "\n";
    }
    return told;
  }
  [[nodiscard]] bool Tells(const std::string& text) const { return Told().find(text) != std::string::npos; }
  double Sum(int channel) {
    const std::vector<float> samples = Channel(trial, channel);
    return std::accumulate(samples.begin(), samples.end(), 0.0);
  }
  /// Returns the path.
  std::string SaveAs(const std::string& name, const char* id = "save.vmb") {
    questions.fileAnswers.push_back({directory.Path(name)});
    Run(id);
    return directory.Path(name);
  }
};

/// A native binary file of the trial that `make` makes.
inline void WriteTrialFile(const std::string& path, const std::function<void(Trial&)>& make) {
  ScriptedQuestions questions;
  Workbench workbench(questions);
  make(workbench.trial);
  questions.fileAnswers.push_back({path});
  RunCommand(workbench, *FindCommand("save.vmb"));
}

}  // namespace velmora::test
