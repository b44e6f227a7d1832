#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>

#include "core/questions/questions.hpp"

namespace velmora {

/// Loads a file that nobody wrote a recipe for: a form is accepted once as it is offered, a line to
/// type keeps its default, and prompts and boxes are passed on as messages. What would need a decision
/// abandons the command.
class DefaultAnswers : public Questions {
 public:
  using Sink = std::function<void(std::string_view message)>;

  explicit DefaultAnswers(Sink messages) : messages_(std::move(messages)) {}

  Button AskBox(const Box& box) override;
  std::string AskInput(const InputQuestion& question) override;
  std::vector<std::string> AskFile(const FileQuestion& question) override;
  std::string AskPick(ChannelPicker& picker) override;
  std::string AskForm(Form& form) override;
  void ShowProgress(ProgressPanel& /*panel*/) override {}
  void EndProgress(ProgressPanel& /*panel*/) override {}

 private:
  Sink messages_;
  std::set<std::string> accepted_;
};

}  // namespace velmora
