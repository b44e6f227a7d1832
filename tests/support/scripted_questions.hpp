#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "core/questions/form.hpp"
#include "core/questions/picker.hpp"
#include "core/questions/progress.hpp"
#include "core/questions/questions.hpp"

namespace velmora::test {

using Edits = std::vector<std::pair<std::string, std::string>>;  // "Field" or "Field 3", and the text

/// These, and the check boxes of the first channels.
Edits WithChannels(int last, Edits edits = {});

void Type(Form& form, const Edits& edits);

/// Answers in the order given and keeps what was asked. A box with OK alone needs no answer; any
/// other question without one fails the test.
class ScriptedQuestions : public Questions {
 public:
  // What will be answered.
  std::deque<Button> boxAnswers;
  std::deque<std::string> inputAnswers;
  std::deque<std::vector<std::string>> fileAnswers;
  /// Works on the picker and returns the button to press.
  std::deque<std::function<std::string(ChannelPicker&)>> pickAnswers;
  std::deque<std::function<std::string(Form&)>> formAnswers;
  /// Called at every change of a panel; may press Cancel.
  std::function<void(ProgressPanel&)> onProgress;

  // What was asked.
  std::vector<Box> boxes;
  std::vector<InputQuestion> inputs;
  std::vector<FileQuestion> files;
  std::vector<std::string> pickPrompts;
  std::vector<std::string> formNames;
  struct Panel {
    std::string format;
    std::string status;
  };
  std::vector<Panel> panels;          // each as it stood when it went
  std::vector<std::string> statuses;  // all that panels told, each once as it came

  /// A picker answer that selects these channels and presses Process.
  void PickChannels(std::vector<int> channels);
  /// A picker answer that types these values (channel, value) and presses Process.
  void PickValues(std::vector<std::pair<int, std::string>> values);
  /// The same for names, and presses Save.
  void PickNames(std::vector<std::pair<int, std::string>> names);
  void PickCancel();
  /// The next form is filled in so, and left by this button: unless said otherwise, that which accepts it.
  void FillForm(const Edits& edits, const std::string& press = "OK");
  /// Cancel is pressed as soon as a panel tells this.
  void CancelAt(const std::string& status);

  Button AskBox(const Box& box) override;
  std::string AskInput(const InputQuestion& question) override;
  std::vector<std::string> AskFile(const FileQuestion& question) override;
  std::string AskPick(ChannelPicker& picker) override;
  std::string AskForm(Form& form) override;
  void ShowProgress(ProgressPanel& panel) override;
  void EndProgress(ProgressPanel& panel) override;
};

}  // namespace velmora::test
