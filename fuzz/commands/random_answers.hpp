#pragma once

#include <string>
#include <vector>

#include "commands/choices.hpp"
#include "commands/own_place.hpp"
#include "core/questions/form.hpp"
#include "core/questions/picker.hpp"
#include "core/questions/questions.hpp"
#include "core/trial/trial.hpp"

namespace velmora::fuzz {

/// Answers as the choices have it: mostly what a command can work with, now and then nonsense. It calls off
/// a command that asks too much, and breaks off when the command goes on asking all the same.
class RandomAnswers : public Questions {
 public:
  RandomAnswers(Choices& choices, const OwnPlace& place) : choices_(choices), place_(place) {}

  /// Questions about channels are about those of the trial, which must outlive the step.
  void BeginStep(const Trial& trial) {
    asked_ = 0;
    trial_ = &trial;
  }
  /// A file to read: of this extension (".vmb") where there are some, unless the choice is another.
  std::string AnyFile(const std::string& extension);

  Button AskBox(const Box& box) override;
  std::string AskInput(const InputQuestion& question) override;
  std::vector<std::string> AskFile(const FileQuestion& question) override;
  std::string AskPick(ChannelPicker& picker) override;
  std::string AskForm(Form& form) override;
  void ShowProgress(ProgressPanel& /*panel*/) override {}
  void EndProgress(ProgressPanel& /*panel*/) override {}

 private:
  /// Counts a question. Returns whether the command is to be called off.
  bool IsTooMuch(const std::string& question);
  std::string Number();
  std::string Text();
  std::string NewFile(const std::string& extension);
  void FillField(Form& form, const FormField& field);
  std::string TextFor(const FormField& field);
  std::string ButtonOf(const Form& form);
  std::string CancelOf(const Form& form) const;

  Choices& choices_;
  const OwnPlace& place_;
  const Trial* trial_ = nullptr;
  int asked_ = 0;
  int made_ = 0;
};

}  // namespace velmora::fuzz
