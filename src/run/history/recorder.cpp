#include "run/history/recorder.hpp"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "core/files/paths.hpp"
#include "core/questions/picker.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "graph/time_view.hpp"
#include "run/history/answer_record.hpp"
#include "run/history/graph_words.hpp"
#include "run/history/question_title.hpp"

namespace velmora {
namespace {

// The trial stays what it is: directories, looks, helps.
constexpr std::array kNotKept = {"file.open-directory",
                                 "file.make-subdirectory",
                                 "file.remove-directory",
                                 "file.close",
                                 "file.delete",
                                 "file.explore",
                                 "file.refresh",
                                 "file.exit",
                                 "grid.",
                                 "background.",
                                 "abscissa.",
                                 "ordinate.",
                                 "line.",
                                 "point.",
                                 "style.",
                                 "zoom.",
                                 "help.",
                                 "view.points",
                                 "view.print",
                                 "view.fix-double-keying"};

// A threshold is changed by means of its line, so what shows the lines is more than a look of the graph.
bool IsKept(std::string_view id) {
  return id == "grid.thresholds" || std::none_of(kNotKept.begin(), kNotKept.end(),
                                                 [id](const char* prefix) { return id.starts_with(prefix); });
}

struct StepOf {
  const Workbench& workbench;

  decltype(Step::what) operator()(const Command* command) const {
    CommandStep step{.id = std::string(command->id)};
    if (step.id == "file.load") {
      step.file = FullPath(workbench.trial.FileName);
    }
    return step;
  }
  template <typename Gesture>
  decltype(Step::what) operator()(const Gesture& gesture) const {
    return ViewStep{.what = gesture};
  }
};

/// Commands that open a graph.
bool IsOpening(const Action& action) {
  const Command* const* command = std::get_if<const Command*>(&action);
  return command != nullptr && (*command)->id.starts_with("graph.");
}

/// The names that all channels have now, as a command's answer.
Step NamesStep(const char* id, int channels, const std::function<std::string(int)>& nameOf) {
  PickAnswer names;
  for (int c = 1; c <= channels; ++c) {
    names.names.push_back({{.number = c}, nameOf(c)});
  }
  Answer answer;
  answer.what = std::move(names);
  return {.what = CommandStep{.id = id, .file = {}, .answers = {std::move(answer)}}};
}

/// What was recalled came from the trial before, which another run has not seen.
std::vector<Step> FixedNames(const Trial& trial) {
  return {NamesStep("edit.labels", trial.NChan, [&trial](int c) { return trial.ChanLabel[c].Text(); }),
          NamesStep("edit.units", trial.NChan, [&trial](int c) { return trial.ChanUnits[c].Text(); })};
}

bool IsCommand(const Action& action, std::string_view id) {
  const Command* const* command = std::get_if<const Command*>(&action);
  return command != nullptr && (*command)->id == id;
}

/// The key that puts cursors back into the view.
bool IsCursorReset(const Action& action) {
  const auto* key = std::get_if<KeyPress>(&action);
  return key != nullptr && EqualNoCase(key->name, "R");
}

}  // namespace

Remains RemainsOf(const Workbench& workbench) {
  const Trial& trial = workbench.trial;
  return {.lo = trial.CursorLo,
          .hi = trial.CursorHi,
          .colours = trial.ChanColour,
          .selected = workbench.chooser.ChanSelected,
          .constants = workbench.chooser.ChanConst,
          .toAverage = workbench.ensemble.Files};
}

void PutBack(const Remains& remains, Workbench& workbench) {
  workbench.trial.CursorLo = remains.lo;
  workbench.trial.CursorHi = remains.hi;
  workbench.trial.ChanColour = remains.colours;
  workbench.chooser.ChanSelected = remains.selected;
  workbench.chooser.ChanConst = remains.constants;
  workbench.ensemble.Files = remains.toAverage;
}

void Recorder::Attach(Workbench& workbench) {
  workbench_ = &workbench;
  workbench.listener = this;
}

void Recorder::BeginRepeating(Questions& answers) {
  person_ = std::exchange(answerer_, &answers);
}

void Recorder::EndRepeating() {
  answerer_ = std::exchange(person_, nullptr);
}

void Recorder::ActionBegins(const Action& action) {
  if (depth_++ == 0) {
    Begin(action);
  }
}

void Recorder::ActionEnds() noexcept {
  if (--depth_ > 0) {
    return;
  }
  try {
    End();
  } catch (...) {  // NOLINT: no memory for a line of the history; what was done stands
  }
}

void Recorder::Begin(const Action& action) {
  workbench_->report = {};
  action_ = action;
  if (Repeats()) {
    return;
  }
  NoteClosedView();
  before_ = RemainsOf(*workbench_);
  channelsBefore_ = workbench_->trial.NChan;
  current_ = {};
  current_.steps.resize(1);
  current_.steps.front().what = std::visit(StepOf{*workbench_}, action);
  const bool opens = IsCommand(action, "ensemble.average") && workbench_->trial.NData < 1;
  begins_ = opens || (IsCommand(action, "file.load") && !workbench_->merge.MergePending);
  if (!begins_) {
    current_.before = before_;
  }
  none_ = false;
  calledOff_ = false;
  oneQuestion_ = true;
}

void Recorder::End() {
  const Action done = action_;
  if (!Repeats()) {
    Keep();
  }
  if (onDone) {
    onDone(done);
  }
}

void Recorder::Keep() {
  const bool failed = !workbench_->report.failures.empty();
  const bool did = DidAnything(workbench_->report.deeds);
  const Command* const* command = std::get_if<const Command*>(&action_);
  begins_ = begins_ && (did || workbench_->trial.NData < 1);  // or it was called off, and the trial stays
  std::vector<RecordedStep> stayed;
  if (begins_) {
    stayed = LooksOfOpenView();
    start_ = StartOf(*workbench_);
    steps_.clear();
    later_.clear();
  }
  if (workbench_->view != nullptr && !viewOpen_) {
    ++views_;
  }
  NoteWhatIsLeft(current_);
  current_.closesView = viewOpen_ && workbench_->view == nullptr;
  if (workbench_->trial.NData < 1) {
    steps_.clear();
    later_.clear();
  } else if (!failed && !none_ && (command == nullptr || IsKept((*command)->id)) &&
             (did || IsLook() || current_.picked)) {
    Add(did);
    AddStayed(std::move(stayed));
  }
  NotePlacedCursors();
  viewOpen_ = workbench_->view != nullptr;
}

// A graph stays open while the next trial is loaded, or steps are gone back, and shows what is there then.
std::vector<RecordedStep> Recorder::LooksOfOpenView() const {
  std::vector<RecordedStep> looks;
  if (viewOpen_ && workbench_->view != nullptr) {
    std::copy_if(steps_.begin(), steps_.end(), std::back_inserter(looks),
                 [this](const RecordedStep& step) { return step.view == views_ && step.deeds.empty(); });
  }
  const bool opened = !looks.empty() && std::holds_alternative<CommandStep>(looks.front().steps.front().what);
  return opened ? looks : std::vector<RecordedStep>();
}

void Recorder::AddStayed(std::vector<RecordedStep> looks) {
  if (looks.empty()) {
    return;
  }
  viewOpen_ = true;
  views_ = std::max(views_, looks.front().view);
  for (RecordedStep& look : looks) {
    steps_.push_back(std::move(look));
    steps_.back().before.reset();
  }
  const auto* view = FindTimeView(*workbench_);
  for (int k = 1; view != nullptr && !cursorsFound_ && k <= view->Cursors(); ++k) {
    AddMove({k, view->Lead().Cursors[static_cast<std::size_t>(k - 1)].XPosition});
  }
}

void Recorder::Add(bool did) {
  if (const auto* move = std::get_if<CursorMove>(&action_)) {
    AddMove(*move);
    return;
  }
  if (const auto* move = std::get_if<ThresholdMove>(&action_)) {
    AddThreshold(*move);
    return;
  }
  if (steps_.empty() && !begins_) {
    return;
  }
  if (did) {
    current_.deeds = workbench_->report.deeds;
    later_.clear();
  }
  if (did && IsCommand(action_, "edit.recall-labels")) {
    current_.steps = FixedNames(workbench_->trial);
  }
  steps_.push_back(std::move(current_));
}

void Recorder::Resume(std::vector<RecordedStep> steps, std::size_t done) {
  const auto place = steps.begin() + static_cast<std::ptrdiff_t>(done);
  later_.assign(place, steps.end());
  steps.erase(place, steps.end());
  steps_ = std::move(steps);
  place_ = steps_.size();
  viewOpen_ = workbench_->view != nullptr;
  views_ = 0;
  for (const RecordedStep& step : steps_) {
    views_ = std::max(views_, step.view);
  }
  const auto* view = FindTimeView(*workbench_);
  cursors_ = view != nullptr ? static_cast<std::size_t>(view->Cursors()) : 0;
  if (onDone) {
    onDone(action_);
  }
}

std::vector<RecordedStep> Recorder::AllSteps() const {
  std::vector<RecordedStep> all(steps_.begin(), steps_.begin() + static_cast<std::ptrdiff_t>(Place()));
  all.insert(all.end(), later_.begin(), later_.end());
  return all;
}

void Recorder::NoteWhatIsLeft(RecordedStep& step) const {
  const Remains now = RemainsOf(*workbench_);
  step.movedRange = step.movedRange || now.lo != before_.lo || now.hi != before_.hi;
  step.coloured = step.coloured || now.colours != before_.colours;
  step.cutTrial = workbench_->trial.NChan < channelsBefore_;
  step.picked = step.picked || now.selected != before_.selected || now.constants != before_.constants;
  const Command* const* command = std::get_if<const Command*>(&action_);
  const bool pictured = IsCommand(action_, "report.save") && workbench_->view != nullptr;
  step.needsView = command == nullptr || (*command)->needs == Needs::View || pictured;
  step.view = CurrentView();
  step.graph = GraphWords(*workbench_);
}

/// Something done in a graph, or the opening of one, that was not called off.
bool Recorder::IsLook() const {
  const bool opened = workbench_->view != nullptr && (!viewOpen_ || IsOpening(action_));
  return (current_.needsView || opened) && !(calledOff_ && oneQuestion_);
}

template <typename Gesture>
RecordedStep& Recorder::AddView(const Gesture& gesture) {
  RecordedStep& added = steps_.emplace_back();
  added.steps.emplace_back().what.emplace<ViewStep>().what = gesture;
  added.needsView = true;
  added.view = views_;
  added.before = before_;
  return added;
}

// The drags of a cursor are one move, to where it came to rest.
void Recorder::AddMove(const CursorMove& move) {
  const std::size_t first = later_.empty() ? 0 : place_;  // what was gone back to stays as it was
  for (std::size_t k = steps_.size(); k-- > first;) {
    RecordedStep& step = steps_[k];
    auto* view = std::get_if<ViewStep>(&step.steps.front().what);
    auto* before = view != nullptr ? std::get_if<CursorMove>(&view->what) : nullptr;
    if (before == nullptr) {
      break;
    }
    if (before->cursor == move.cursor && before->graph == move.graph) {
      before->x = move.x;
      NoteWhatIsLeft(step);
      steps_.back().graph = step.graph;
      return;
    }
  }
  if (!steps_.empty()) {
    NoteWhatIsLeft(AddView(move));
  }
}

// A line that is dragged on is one move, too.
void Recorder::AddThreshold(const ThresholdMove& move) {
  if (steps_.size() > (later_.empty() ? 0 : place_)) {
    auto* view = std::get_if<ViewStep>(&steps_.back().steps.front().what);
    auto* before = view != nullptr ? std::get_if<ThresholdMove>(&view->what) : nullptr;
    if (before != nullptr && before->graph == move.graph) {
      before->y = move.y;
      return;
    }
  }
  if (!steps_.empty()) {
    NoteWhatIsLeft(AddView(move));
  }
}

// Where a new cursor appears, or goes back to, depends on the stretch in view, which nobody writes down. What
// a command has found, it finds anew.
void Recorder::NotePlacedCursors() {
  if (workbench_->view != nullptr && !viewOpen_) {
    cursors_ = 0;
    cursorsFound_ = false;
  }
  const auto* view = FindTimeView(*workbench_);
  const std::size_t before = cursors_;
  cursors_ = view != nullptr ? static_cast<std::size_t>(view->Cursors()) : 0;
  if (DidAnything(workbench_->report.deeds)) {
    cursorsFound_ = cursorsFound_ || cursors_ != before;
    return;
  }
  for (std::size_t k = IsCursorReset(action_) ? 0 : before; k < cursors_; ++k) {
    AddMove({static_cast<int>(k + 1), view->Lead().Cursors[k].XPosition});
  }
}

void Recorder::NoteClosedView() {
  if (viewOpen_ && workbench_->view == nullptr && !steps_.empty()) {
    AddView(CloseGesture{}).closesView = true;
    viewOpen_ = false;
    cursors_ = 0;
  }
}

void Recorder::Note(Answer answer, const std::string& title, bool cancels) {
  if (begins_ && workbench_->events.EventTracking) {
    return;  // it is about the events of the trial that is left
  }
  std::vector<Answer>* answers = nullptr;
  if (auto* command = std::get_if<CommandStep>(&current_.steps.front().what)) {
    answers = &command->answers;
  } else if (auto* view = std::get_if<ViewStep>(&current_.steps.front().what)) {
    answers = &view->answers;
  }
  const bool sameForm = form_ != nullptr && !firstAsk_;
  oneQuestion_ = oneQuestion_ && (answers->empty() || sameForm);
  calledOff_ = cancels;
  if (!title.empty()) {
    answer.title = TitleForAnyTrial(title, workbench_->trial);
  }
  answers->push_back(std::move(answer));
}

Button Recorder::AskBox(const Box& box) {
  const Button button = answerer_->AskBox(box);
  if (Records() && box.buttons != std::vector{Button::OK}) {
    Note({.what = BoxAnswer{ButtonCaption(button)}}, box.title, button == Button::Cancel);
  }
  return button;
}

std::string Recorder::AskInput(const InputQuestion& question) {
  std::string text = answerer_->AskInput(question);
  if (Records()) {
    // A recipe takes no "2,5" for 2, as typing does: what the command read is what is kept.
    const bool odd = question.isNumber && !text.empty() && !IsNumber(text);
    const std::string kept = odd ? PlainNumber(Val(text)) : text;
    Note({.what = InputAnswer{kept}}, question.title, kept.empty());
  }
  return text;
}

std::vector<std::string> Recorder::AskFile(const FileQuestion& question) {
  std::vector<std::string> paths = answerer_->AskFile(question);
  if (Records()) {
    Note({.what = FileAnswer{.paths = paths.empty() ? std::vector<std::string>{""} : paths,
                             .savesFile = question.mode == FileQuestion::Mode::Save}},
         question.title, paths.empty());
  }
  return paths;
}

namespace {

/// Counts as long as a dialogue is being filled.
class Filling {
 public:
  explicit Filling(int& count) : count_(count) { ++count_; }
  Filling(const Filling&) = delete;
  Filling& operator=(const Filling&) = delete;
  ~Filling() { --count_; }

 private:
  int& count_;
};

}  // namespace

std::string Recorder::AskPick(ChannelPicker& picker) {
  std::string press;
  {
    const Filling filling(asking_);
    press = answerer_->AskPick(picker);
  }
  if (Records()) {
    Note({.what = RecordPick(picker, press, Namer())}, picker.Prompt(), EqualNoCase(press, "Cancel"));
  }
  return press;
}

std::string Recorder::AskForm(Form& form) {
  firstAsk_ = form_ != &form;
  form_ = &form;
  if (firstAsk_ && Records()) {
    NoteWayThroughAll(form);
  }
  const std::vector<const FormField*> idle = IdleFields(form);
  std::string press;
  {
    const Filling filling(asking_);
    press = answerer_->AskForm(form);
  }
  if (Records()) {
    const FormButton* button = form.FindButton(press);
    const bool cancels = button != nullptr && button->role == FormButton::Role::Cancel;
    Note({.what = RecordForm(form, press, workbench_->trial.NChan, firstAsk_, idle, Namer())}, form.Title(),
         cancels);
  }
  return press;
}

// What the form remembers from before the steps that are kept is entered by them.
void Recorder::NoteWayThroughAll(Form& form) {
  for (const std::string& press : form.WayThroughAll()) {
    Note({.what = RecordForm(form, press, workbench_->trial.NChan, true, {}, Namer())}, form.Title(), false);
    firstAsk_ = false;
    form.FindButton(press)->press();
  }
}

// What a load asks while the trial before is still there is not about that trial's channels.
ChannelNamer Recorder::Namer() const {
  return IsCommand(action_, "file.load") ? ChannelNamer() : ChannelNamer(workbench_->trial);
}

void Recorder::EndForm(Form& form) {
  form_ = nullptr;
  firstAsk_ = true;
  answerer_->EndForm(form);
}

}  // namespace velmora
