#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace velmora {

class ChannelPicker;
class Form;
class ProgressPanel;

enum class Icon { None, Exclamation, Information, Question, Stop };
enum class Button { OK, Cancel, Yes, No, Retry };

/// Thrown by an answerer that cannot or will not answer (a recipe without a fitting answer). It ends
/// the command, and no further question is raised about it.
class CommandAbandoned : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The caption a person sees on the button.
const char* ButtonCaption(Button button);
/// The word for an icon in transcripts: "exclamation", "none", ...
const char* IconName(Icon icon);

/// A message box. Line breaks in `text` are '\n'.
struct Box {
  std::string title;
  std::string text;
  Icon icon = Icon::None;
  std::vector<Button> buttons = {Button::OK};
  /// The file it speaks of, where the text does not name it and no panel of a load or save does. A window
  /// shows it below the text.
  std::string about;
};

/// One line of typed text.
struct InputQuestion {
  std::string title;
  std::string prompt;
  std::string defaultText;
  /// The command reads the reply with Val.
  bool isNumber = false;
};

struct FileQuestion {
  enum class Mode { Open, Save, Directory };

  Mode mode = Mode::Open;
  std::string title;
  std::string defaultName;
  /// Added to a typed name that has no extension of its own, with its point (".vmb").
  std::string extension;
  /// "Caption (.ext)|*.ext|All files (*.*)|*.*"
  std::string filter;
  /// The filter that is chosen at first, from 1.
  int filterIndex = 1;
  /// Where the dialogue starts; empty: the current directory.
  std::string directory;
  bool several = false;
};

/// Everything that a command can ask. A command never knows who answers: a person at the window, a
/// recipe, or a test. Implementations throw CommandAbandoned when they have no answer.
class Questions {
 public:
  Questions() = default;
  Questions(const Questions&) = delete;
  Questions& operator=(const Questions&) = delete;
  virtual ~Questions() = default;

  virtual Button AskBox(const Box& box) = 0;

  /// Empty means cancel.
  virtual std::string AskInput(const InputQuestion& question) = 0;

  /// Empty means cancel; more than one path only when `several`.
  virtual std::vector<std::string> AskFile(const FileQuestion& question) = 0;

  /// Sets selections and values through the picker's own commands, then returns the button that was
  /// pressed, as a caption without '&' ("Process", "Cancel"). Called again while the picker stays
  /// open; whoever calls presses the button, not the answerer.
  virtual std::string AskPick(ChannelPicker& picker) = 0;
  /// The picker has closed; it is not asked about again.
  virtual void EndPick(ChannelPicker& /*picker*/) {}

  /// Edits the form's fields, then returns the caption of the button pressed. "OK" always means the
  /// accepting button. Called again while the form stays open.
  virtual std::string AskForm(Form& form) = 0;
  /// The form has closed; it is not asked about again.
  virtual void EndForm(Form& /*form*/) {}

  /// A panel has come up, has changed, or is about to go. Nothing is answered here: Cancel reaches
  /// the program through ProgressPanel::PressCancel.
  virtual void ShowProgress(ProgressPanel& panel) = 0;
  virtual void EndProgress(ProgressPanel& panel) = 0;
};

}  // namespace velmora
