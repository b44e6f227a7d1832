#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/questions/form.hpp"
#include "core/questions/questions.hpp"
#include "core/trial/trial.hpp"
#include "run/recipe/recipe.hpp"

namespace velmora {

/// Answers a command's questions with the answers of one step, strictly in their order. A question
/// without a fitting answer abandons the command (CommandAbandoned); the message names the
/// question's kind, title and text. A box with OK alone takes no answer. Where a number is wanted, a text
/// that is not one from end to end does not fit. A caught interrupt (interrupt.hpp) abandons the command at
/// its next question or panel change.
class RecipeQuestions : public Questions {
 public:
  /// `answers` and `trial` must outlive the step.
  void BeginStep(const std::vector<Answer>& answers, const Trial& trial);

  /// Tells of answers that nothing asked for and that are not optional; empty when there are none.
  [[nodiscard]] std::string UnusedAnswers() const;

  Button AskBox(const Box& box) override;
  std::string AskInput(const InputQuestion& question) override;
  std::vector<std::string> AskFile(const FileQuestion& question) override;
  std::string AskPick(ChannelPicker& picker) override;
  std::string AskForm(Form& form) override;
  void ShowProgress(ProgressPanel& panel) override;
  void EndProgress(ProgressPanel& panel) override;

 protected:
  enum class Misfit {
    Recipe,  // wrong for every trial: a field or button that is not there, a text where a number belongs
    Trial,   // a value or channel that this trial does not take
  };
  /// Whether to go on past what does not fit a question. Who only checks a recipe does; who runs it must not.
  virtual bool PassOver(Misfit /*misfit*/, int /*line*/, const std::string& /*why*/) { return false; }

 private:
  /// The question at hand, for matching and for messages.
  struct Asked {
    std::string_view kind;
    std::string title;
    std::string text;
  };

  /// The answer to a question of this kind, with the optional ones that do not fit skipped.
  template <typename T>
  const T& Take(const Asked& asked);
  [[noreturn]] static void Abandon(const Asked& asked, const std::string& why);
  void FillForm(const Asked& asked, Form& form, const FormAnswer& answer);
  // These throw std::invalid_argument for a value that does not fit, NeverFits for one that fits no trial.
  void EditField(Form& form, const FormField& field, const FieldAnswer& answer) const;
  void EditChannels(Form& form, const FormField& field, const std::vector<ChannelText>& texts) const;
  static void CheckNumber(const FormField& field, std::string_view text);

  const std::vector<Answer>* answers_ = nullptr;
  const Trial* trial_ = nullptr;
  std::size_t next_ = 0;
  int line_ = 0;  // of the answer taken last
};

}  // namespace velmora
