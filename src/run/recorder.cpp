#include "run/recorder.hpp"

#include <algorithm>
#include <array>
#include <filesystem>
#include <utility>

#include "core/files/paths.hpp"
#include "core/questions/picker.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "graph/single_view.hpp"
#include "run/answer_record.hpp"
#include "run/step_words.hpp"

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
                                 "view.points"};

bool IsKept(std::string_view id) {
  return std::none_of(kNotKept.begin(), kNotKept.end(),
                      [id](const char* prefix) { return id.starts_with(prefix); });
}

struct StepOf {
  const Workbench& workbench;

  std::variant<CommandStep, InfoStep, ViewStep> operator()(const Command* command) const {
    CommandStep step{.id = std::string(command->id)};
    if (step.id == "file.load") {
      step.file = FullPath(workbench.trial.FileName);
    }
    return step;
  }
  template <typename Gesture>
  std::variant<CommandStep, InfoStep, ViewStep> operator()(const Gesture& gesture) const {
    return ViewStep{.what = gesture};
  }
};

bool IsCommand(const Action& action, std::string_view id) {
  const Command* const* command = std::get_if<const Command*>(&action);
  return command != nullptr && (*command)->id == id;
}

}  // namespace

void Recorder::Attach(Workbench& workbench) {
  workbench_ = &workbench;
  workbench.listener = this;
}

Questions& Recorder::SetAnswerer(Questions& answerer) {
  return *std::exchange(answerer_, &answerer);
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
  NoteClosedView();
  action_ = action;
  workbench_->report = {};
  current_ = {};
  current_.step.what = std::visit(StepOf{*workbench_}, action);
  current_.words = WordsOf(action);
  begins_ = IsCommand(action, "file.load") && !workbench_->merge.MergePending;
  calledOff_ = false;
  oneQuestion_ = true;
}

void Recorder::End() {
  const Action done = action_;
  if (begins_) {
    steps_.clear();
  }
  const bool failed = !workbench_->report.failures.empty();
  const Command* const* command = std::get_if<const Command*>(&done);
  const bool kept = command == nullptr || IsKept((*command)->id);
  if (workbench_->trial.NData < 1) {
    steps_.clear();
  } else if (kept && !failed && !(calledOff_ && oneQuestion_)) {
    Keep();
  }
  NoteNewCursors();
  viewOpen_ = workbench_->view != nullptr;
  if (onDone) {
    onDone(done);
  }
}

void Recorder::Keep() {
  if (const auto* move = std::get_if<CursorMove>(&action_)) {
    AddMove(*move);
    return;
  }
  if (!steps_.empty() || begins_) {
    steps_.push_back(std::move(current_));
  }
}

template <typename Gesture>
void Recorder::AddView(const Gesture& gesture, std::string words) {
  RecordedStep& added = steps_.emplace_back();
  added.step.what.emplace<ViewStep>().what = gesture;
  added.words = std::move(words);
}

// The drags of a cursor are one move, to where it came to rest.
void Recorder::AddMove(const CursorMove& move) {
  for (std::size_t k = steps_.size(); k-- > 0;) {
    RecordedStep& step = steps_[k];
    auto* view = std::get_if<ViewStep>(&step.step.what);
    auto* before = view != nullptr ? std::get_if<CursorMove>(&view->what) : nullptr;
    if (before == nullptr) {
      break;
    }
    if (before->cursor == move.cursor) {
      before->x = move.x;
      step.words = WordsOf(Action(move));
      return;
    }
  }
  if (!steps_.empty()) {
    AddView(move, WordsOf(Action(move)));
  }
}

// Where a new cursor appears depends on the stretch in view, which nobody writes down.
void Recorder::NoteNewCursors() {
  const auto* view = dynamic_cast<const SingleView*>(workbench_->view.get());
  const std::size_t before = cursors_;
  cursors_ = view != nullptr ? view->Drawing().Cursors.size() : 0;
  for (std::size_t k = before; k < cursors_; ++k) {
    AddMove({static_cast<int>(k + 1), view->Drawing().Cursors[k].XPosition});
  }
}

void Recorder::NoteClosedView() {
  if (viewOpen_ && workbench_->view == nullptr && !steps_.empty()) {
    AddView(CloseGesture{}, "Close the graph");
    viewOpen_ = false;
    cursors_ = 0;
  }
}

void Recorder::Note(Answer answer, const std::string& title, const std::string& words, bool cancels) {
  std::vector<Answer>* answers = nullptr;
  if (auto* command = std::get_if<CommandStep>(&current_.step.what)) {
    answers = &command->answers;
  } else if (auto* view = std::get_if<ViewStep>(&current_.step.what)) {
    answers = &view->answers;
  }
  const bool sameForm = form_ != nullptr && !firstAsk_;
  oneQuestion_ = oneQuestion_ && (answers->empty() || sameForm);
  calledOff_ = cancels;
  if (!title.empty()) {
    answer.title = title;
  }
  answers->push_back(std::move(answer));
  if (!words.empty()) {
    current_.words += ", " + words;
  }
}

Button Recorder::AskBox(const Box& box) {
  const Button button = answerer_->AskBox(box);
  if (Records() && box.buttons != std::vector{Button::OK}) {
    Note({.what = BoxAnswer{ButtonCaption(button)}}, box.title, ButtonCaption(button),
         button == Button::Cancel);
  }
  return button;
}

std::string Recorder::AskInput(const InputQuestion& question) {
  std::string text = answerer_->AskInput(question);
  if (Records()) {
    // A recipe takes no "2,5" for 2, as typing does: what the command read is what is kept.
    const bool odd = question.isNumber && !text.empty() && !IsNumber(text);
    const std::string kept = odd ? PlainNumber(Val(text)) : text;
    Note({.what = InputAnswer{kept}}, question.title, kept, kept.empty());
  }
  return text;
}

std::vector<std::string> Recorder::AskFile(const FileQuestion& question) {
  std::vector<std::string> paths = answerer_->AskFile(question);
  if (Records()) {
    std::string words;
    for (const std::string& path : paths) {
      words += (words.empty() ? "" : ", ") + std::filesystem::path(path).filename().string();
    }
    Note({.what = FileAnswer{paths.empty() ? std::vector<std::string>{""} : paths}}, question.title, words,
         paths.empty());
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
    Note({.what = RecordPick(picker, press)}, picker.Prompt(), WordsOf(picker), EqualNoCase(press, "Cancel"));
  }
  return press;
}

std::string Recorder::AskForm(Form& form) {
  firstAsk_ = form_ != &form;
  form_ = &form;
  std::string press;
  {
    const Filling filling(asking_);
    press = answerer_->AskForm(form);
  }
  if (Records()) {
    const FormButton* button = form.FindButton(press);
    const bool cancels = button != nullptr && button->role == FormButton::Role::Cancel;
    Note({.what = RecordForm(form, press, workbench_->trial.NChan, firstAsk_)}, form.Title(),
         cancels ? std::string() : WordsOf(form, workbench_->trial.NChan), cancels);
  }
  return press;
}

void Recorder::EndForm(Form& form) {
  form_ = nullptr;
  firstAsk_ = true;
  answerer_->EndForm(form);
}

}  // namespace velmora
