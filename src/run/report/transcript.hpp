#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/command_report.hpp"
#include "core/questions/questions.hpp"
#include "core/trial/trial.hpp"

namespace velmora {

/// Passes every question on to another answerer and writes down what was asked and answered: one
/// JSON object a line, without its line end, in the order in which the questions came up. A question
/// that was not answered has the answer null.
class TranscriptQuestions : public Questions {
 public:
  using Sink = std::function<void(std::string_view line)>;

  /// `input` is the data file of the run, empty when there is none.
  TranscriptQuestions(Questions& answerer, std::string input, Sink sink);

  /// Steps count from 1. `trial` must outlive the step.
  void BeginStep(int step, const Trial& trial);
  /// A line of kind "done" for each of the step's deeds.
  void EndStep(const std::vector<Deed>& deeds);

  Button AskBox(const Box& box) override;
  std::string AskInput(const InputQuestion& question) override;
  std::vector<std::string> AskFile(const FileQuestion& question) override;
  std::string AskPick(ChannelPicker& picker) override;
  void EndPick(ChannelPicker& picker) override { answerer_.EndPick(picker); }
  std::string AskForm(Form& form) override;
  void EndForm(Form& form) override { answerer_.EndForm(form); }
  void ShowProgress(ProgressPanel& panel) override;
  void EndProgress(ProgressPanel& panel) override;

 private:
  class Entry;

  Questions& answerer_;
  std::string input_;
  Sink sink_;
  int step_ = 0;
  const Trial* trial_ = nullptr;
  // A form's field may raise a box before the form is answered: lines wait for those before them.
  std::vector<std::string> waiting_;
  int unanswered_ = 0;
};

}  // namespace velmora
