#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/action_listener.hpp"
#include "core/questions/form.hpp"
#include "core/questions/questions.hpp"
#include "core/workbench.hpp"
#include "run/recipe/recipe.hpp"

namespace velmora {

/// What a command may leave for the next without a word.
struct Remains {
  std::int32_t lo = 0;  // CursorLo, CursorHi
  std::int32_t hi = 0;
  PerChannel<std::int16_t> colours{};
  ChannelFlags selected{};  // in the picker
  PerChannel<float> constants{};
  std::vector<std::string> toAverage;
};

Remains RemainsOf(const Workbench& workbench);
void PutBack(const Remains& remains, Workbench& workbench);

/// Something that was done: as a recipe repeats it, and what came of it.
struct RecordedStep {
  std::vector<Step> steps;  // one, but where a recipe needs several to come to the same
  std::vector<Deed> deeds;  // empty: a look, which matters only to what comes after
  int view = 0;             // which of the graphs opened so far it belongs to, from 1; 0: none
  bool needsView = false;   // it was done by means of the graph
  bool closesView = false;  // by its window, a key or a command
  // What a look left behind, and a later step may use without being told.
  std::string graph;        // how the graph stood: "Graph: 2 cursors at 1.500 s and 4.500 s"
  bool movedRange = false;  // CursorLo, CursorHi
  bool coloured = false;    // colours of channels
  bool picked = false;      // what the picker was left with
  bool cutTrial = false;    // to the channels that a format saves
  /// What there was when it was done, for the way back, which so comes to the same wherever it leads through;
  /// none of a step that was done to an earlier trial.
  std::optional<Remains> before;
};

/// Passes every question on and writes down the answers: what was done since the trial was loaded, as
/// the steps of a recipe. A command that reports no deed is kept only as a look: in a graph, or at channels
/// in the picker. What failed is not kept, nor what only changes how a graph looks.
///
/// A recipe starts with nothing remembered, so an answer says everything that the dialogue showed, also
/// what nobody touched.
class Recorder : public Questions, public ActionListener {
 public:
  explicit Recorder(Questions& answerer) : answerer_(&answerer) {}
  /// Which workbench asks and acts. It must outlive the recorder's work.
  void Attach(Workbench& workbench);

  /// What the trial was loaded with besides its file.
  [[nodiscard]] const RunStart& Start() const { return start_; }
  [[nodiscard]] const std::vector<RecordedStep>& Steps() const { return steps_; }
  /// The steps, without looks taken after going back, and behind them those that were gone back behind and
  /// can be done again until something else is done.
  [[nodiscard]] std::vector<RecordedStep> AllSteps() const;
  /// How many of all steps the trial has seen.
  [[nodiscard]] std::size_t Place() const { return later_.empty() ? steps_.size() : place_; }
  /// Whether steps were gone back behind that can be done again.
  [[nodiscard]] bool CanGoOn() const { return !later_.empty(); }
  /// Whether looks were taken after going back.
  [[nodiscard]] bool LookedSince() const { return steps_.size() != Place(); }
  /// Steps of the past are repeated from these answers: nothing is written down until `EndRepeating`.
  void BeginRepeating(Questions& answers);
  void EndRepeating();
  [[nodiscard]] bool Repeats() const { return person_ != nullptr; }
  /// Goes on behind the first `done` of these steps; the rest can be done again.
  void Resume(std::vector<RecordedStep> steps, std::size_t done);
  /// What opened the graph that is open, and placed its cursors; empty without one.
  [[nodiscard]] std::vector<RecordedStep> LooksOfOpenView() const;
  /// The graph of these looks is open and shows what the trial is now.
  void AddStayed(std::vector<RecordedStep> looks);
  [[nodiscard]] Questions& Answerer() { return *answerer_; }
  /// After every outermost action.
  std::function<void(const Action&)> onDone;

  void ActionBegins(const Action& action) override;
  void ActionWasNone() noexcept override { none_ = true; }
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
  /// How answers name the channels of the trial at hand.
  [[nodiscard]] ChannelNamer Namer() const;
  void Note(Answer answer, const std::string& title, bool cancels);
  void Begin(const Action& action);
  void End();
  void Keep();
  void Add(bool did);
  [[nodiscard]] bool Records() const { return depth_ > 0 && asking_ == 0 && !Repeats(); }
  /// What is left over when the action at hand has ended, as against its beginning.
  void NoteWhatIsLeft(RecordedStep& step) const;
  [[nodiscard]] bool IsLook() const;
  [[nodiscard]] int CurrentView() const { return workbench_->view != nullptr || viewOpen_ ? views_ : 0; }
  void NoteClosedView();
  void NoteWayThroughAll(Form& form);
  void NotePlacedCursors();
  void AddMove(const CursorMove& move);
  void AddThreshold(const ThresholdMove& move);
  template <typename Gesture>
  RecordedStep& AddView(const Gesture& gesture);

  Questions* answerer_;
  Questions* person_ = nullptr;  // who answered before steps were repeated, while they are
  Workbench* workbench_ = nullptr;
  RunStart start_;
  std::vector<RecordedStep> steps_;
  std::vector<RecordedStep> later_;
  std::size_t place_ = 0;  // of the later steps, behind so many

  // The action at hand.
  int depth_ = 0;
  int asking_ = 0;  // what is asked while a dialogue is filled belongs to that dialogue
  Action action_;
  RecordedStep current_;
  bool begins_ = false;        // a load that starts a new history
  bool none_ = false;          // a key that the view does not have
  bool calledOff_ = false;     // the last answer was a Cancel
  bool oneQuestion_ = true;    // all answers were to one question
  std::size_t cursors_ = 0;    // of the view, after the last step
  bool cursorsFound_ = false;  // among them some that a command has put there
  bool viewOpen_ = false;
  int views_ = 0;  // opened so far
  Remains before_;
  std::int16_t channelsBefore_ = 0;
  bool firstAsk_ = true;  // of the form that is up
  const Form* form_ = nullptr;
};

}  // namespace velmora
