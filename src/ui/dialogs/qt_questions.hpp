#pragma once

#include <QPointer>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "core/questions/questions.hpp"
#include "core/workbench.hpp"
#include "ui/dialogs/asking_dialog.hpp"
#include "ui/dialogs/progress_dialog.hpp"
#include "ui/trial/channel_traces.hpp"

class QWindow;

namespace velmora::ui {

/// Asks the person at the window.
class QtQuestions : public Questions {
 public:
  /// Dialogues appear over `window`. What they show of the trial comes from `workbench`, which asks
  /// through these questions and so can only be told once it exists.
  explicit QtQuestions(QWidget* window);
  void Attach(Workbench& workbench, ChannelTraces& traces);

  /// The next picker is not shown: `answer` works on it and names the button to press. For what the
  /// person has already said elsewhere in the window.
  void AnswerNextPick(std::function<std::string(ChannelPicker&)> answer);
  /// The same for forms, until `answer` is empty again: it fills the form each time it asks.
  void AnswerNextForm(std::function<std::string(Form&)> answer);
  /// The next input is not shown.
  void AnswerNextInput(std::string text);
  /// The channels that the first question about channels starts with; an empty set offers none.
  void OfferChannels(const ChannelFlags& channels) { offered_ = channels; }

  /// Whether the panel of a load was left with "&Graph"; forgets it.
  bool TakeGraphWanted();

  Button AskBox(const Box& box) override;
  std::string AskInput(const InputQuestion& question) override;
  std::vector<std::string> AskFile(const FileQuestion& question) override;
  std::string AskPick(ChannelPicker& picker) override;
  void EndPick(ChannelPicker& picker) override;
  std::string AskForm(Form& form) override;
  void EndForm(Form& form) override;
  void ShowProgress(ProgressPanel& panel) override;
  void EndProgress(ProgressPanel& panel) override;

 private:
  template <typename Make>
  AskingDialog& DialogOf(const void* asker, const Make& make);
  void Leave(const void* asker);
  [[nodiscard]] QWidget* Parent() const;
  void Offer(ChannelPicker& picker);
  void Offer(Form& form);
  void StandBeside(const Form& form, AskingDialog& dialog);
  void ShowOffer(const AskingDialog& dialog) const;
  void NoteWindow(QWindow* window);
  [[nodiscard]] QString FileSpokenOf(const Box& box) const;

  QWidget* window_;
  QPointer<QWidget> beside_;    // the dialogue that stands beside a graph
  QPointer<QWidget> workedIn_;  // the last window that had the focus and was no dialogue
  QObject context_;
  Workbench* workbench_ = nullptr;
  ChannelTraces* traces_ = nullptr;
  /// By the form or picker that asks.
  std::map<const void*, std::unique_ptr<AskingDialog>> dialogs_;
  std::unique_ptr<ProgressDialog> progress_;
  std::function<std::string(ChannelPicker&)> nextPick_;
  std::function<std::string(Form&)> nextForm_;
  std::optional<std::string> nextInput_;
  std::vector<std::string> nextFiles_;  // dropped on a form
  ChannelFlags offered_{};
  bool graphWanted_ = false;
};

}  // namespace velmora::ui
