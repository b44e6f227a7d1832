#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/action_listener.hpp"
#include "core/questions/form.hpp"
#include "core/questions/questions.hpp"
#include "core/workbench.hpp"
#include "run/recipe.hpp"

namespace velmora {

/// Something done to the trial: as a recipe repeats it, and in words.
struct RecordedStep {
  Step step;
  std::string words;
};

/// Passes every question on and writes down the answers: what was done since the trial was loaded, as
/// the steps of a recipe. What was called off at its first question or failed is not kept, nor what
/// only changes how a graph looks.
///
/// A recipe starts with nothing remembered, so an answer says everything that the dialogue showed, also
/// what nobody touched.
class Recorder : public Questions, public ActionListener {
 public:
  explicit Recorder(Questions& answerer) : answerer_(&answerer) {}
  /// Which workbench asks and acts. It must outlive the recorder's work.
  void Attach(Workbench& workbench);

  [[nodiscard]] const std::vector<RecordedStep>& Steps() const { return steps_; }
  /// Lets somebody else answer; returns who did before.
  Questions& SetAnswerer(Questions& answerer);
  /// After every outermost action.
  std::function<void(const Action&)> onDone;

  void ActionBegins(const Action& action) override;
  void ActionEnds() noexcept override;

  Button AskBox(const Box& box) override;
  std::string AskInput(const InputQuestion& question) override;
  std::vector<std::string> AskFile(const FileQuestion& question) override;
  std::string AskPick(ChannelPicker& picker) override;
  void EndPick(ChannelPicker& picker) override { answerer_->EndPick(picker); }
  std::string AskForm(Form& form) override;
  void EndForm(Form& form) override;
  void ShowProgress(ProgressPanel& panel) override { answerer_->ShowProgress(panel); }
  void EndProgress(ProgressPanel& panel) override { answerer_->EndProgress(panel); }

 private:
  void Note(Answer answer, const std::string& title, const std::string& words, bool cancels);
  void Begin(const Action& action);
  void End();
  void Keep();
  [[nodiscard]] bool Records() const { return depth_ > 0 && asking_ == 0; }
  void NoteClosedView();
  void NoteNewCursors();
  void AddMove(const CursorMove& move);
  template <typename Gesture>
  void AddView(const Gesture& gesture, std::string words);

  Questions* answerer_;
  Workbench* workbench_ = nullptr;
  std::vector<RecordedStep> steps_;

  // The action at hand.
  int depth_ = 0;
  int asking_ = 0;  // what is asked while a dialogue is filled belongs to that dialogue
  Action action_;
  RecordedStep current_;
  bool begins_ = false;      // a load that starts a new history
  bool calledOff_ = false;   // the last answer was a Cancel
  bool oneQuestion_ = true;  // all answers were to one question
  std::size_t cursors_ = 0;  // of the view, after the last step
  bool viewOpen_ = false;
  bool firstAsk_ = true;  // of the form that is up
  const Form* form_ = nullptr;
};

}  // namespace velmora
