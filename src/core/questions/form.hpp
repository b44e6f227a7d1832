#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "core/questions/form_graph.hpp"
#include "core/questions/questions.hpp"
#include "core/questions/result_table.hpp"
#include "core/trial/trial.hpp"

namespace velmora {

struct Workbench;

/// One number per channel; index 0 is not used.
using ChannelNumbers = PerChannel<double>;

/// One named field of a form: what it is called, where its value lives, what it may hold.
struct FormField {
  using Target = std::variant<bool*, std::int32_t*, double*, std::string*, ChannelNumbers*, ChannelFlags*>;

  std::string name;     // the control's name, as recipes spell it
  std::string caption;  // as shown, with '&'
  Target target;
  std::string units{};
  double lowest = -std::numeric_limits<double>::infinity();
  double highest = std::numeric_limits<double>::infinity();
  /// For a whole number that is one of a list: index 0 is the first.
  std::vector<std::string> choices{};
  /// What to enter, for whoever edits the field.
  std::string prompt{};
  /// Heads the prompt where the caption is shorter than what the field is called.
  std::string title{};
  /// How a number is shown while nobody types it ("#0.00"); empty: with all its digits.
  std::string pattern{};
  /// Fields of one group stand together under its name.
  std::string group{};
  /// Runs after an edit of this field: warnings, fields that depend on it.
  std::function<void()> edited{};
  /// The numbers are colours of the graph, to be shown as such.
  bool isColour = false;
  /// The flags say which channels the form works on: what is selected in the window to begin with.
  bool isSelection = false;
  /// Shown and never edited.
  bool readOnly = false;
  /// One of `choices` in a list that may change, and be empty for now.
  bool isList = false;
  /// A number without a meaning as the other fields are now: shown as "n.a." and not to be edited.
  bool notApplicable = false;
  /// An empty text leaves the number as it is.
  bool emptyKeeps = false;
  /// A double click asks for the value in an input box with the field's title and prompt.
  bool asksByInput = false;
  /// How that box offers a number; empty: as it is shown.
  std::string inputPattern{};
  /// What the pointer tells of the field, in place of title and prompt.
  std::string tip{};
  /// `edited` may run while a number is being typed: a picture follows it.
  bool followsTyping = false;
  /// The text is a file's path, which a person may choose in this dialogue.
  std::optional<FileQuestion> asksByFile{};
  /// Not shown for now, since another field leaves it without a meaning. Recipes may set it all the same.
  bool hidden = false;
  /// The file that values per channel were entered for, when they outlive the form; nullptr for others.
  const std::string* valuesOf = nullptr;
  /// Indices of `choices` that cannot be chosen for now; recipes are answered when a button is pressed.
  std::vector<std::int32_t> disabledChoices{};
  /// The choices from this index on are the channels, from the first: a recipe may call one by its label.
  std::optional<std::int32_t> channelsFrom{};

  /// The index of the choice of this text, without regard to case.
  [[nodiscard]] std::optional<std::int32_t> ChoiceCalled(std::string_view text) const;
};

struct FormButton {
  enum class Role { Accept, Cancel, Other };

  std::string caption;  // with '&'
  Role role = Role::Other;
  /// What the button does. The form closes when it returns true.
  std::function<bool()> press;
  /// Buttons with one such caption are the entries of a menu of that name.
  std::string menu{};
  /// Of an entry: whether it has a check mark now; empty: it never has one.
  std::function<bool()> checked{};
  /// Why it cannot be pressed for now; empty: it can. A press from elsewhere does nothing but warn.
  std::string whyNot{};
  /// The button asks for files: those dropped on the form are its answer.
  bool takesFiles = false;
  /// Stands with the others of its row (from 1) below the fields; 0: at the foot of the form.
  int row = 0;
  /// What Enter presses, of buttons in rows.
  bool next = false;
};

/// A button that leaves the form open.
FormButton StayButton(std::string caption, std::function<void()> press);

/// A parameter dialogue as data: fields bound to plain members of a derived class, one procedure per
/// button. The window draws it and a recipe fills it by the fields' names.
class Form {
 public:
  Form(std::string name, std::string title) : name_(std::move(name)), title_(std::move(title)) {}
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;
  virtual ~Form() = default;

  [[nodiscard]] const std::string& Name() const { return name_; }
  [[nodiscard]] const std::string& Title() const { return title_; }
  [[nodiscard]] const std::vector<FormField>& Fields() const { return fields_; }
  [[nodiscard]] const std::vector<FormButton>& Buttons() const { return buttons_; }
  /// What the form shows besides its fields.
  [[nodiscard]] const std::vector<ResultTable>& Tables() const { return tables_; }
  /// Nothing when the form has none.
  [[nodiscard]] const std::optional<FormGraph>& Graph() const { return graph_; }
  [[nodiscard]] const FormField* FindField(std::string_view name) const;
  /// By caption without '&' and without regard to case; "OK" finds the accepting button.
  [[nodiscard]] const FormButton* FindButton(std::string_view caption) const;

  /// Sets a field from typed text: a yes/no takes true/false, yes/no, -1, 1 and 0; a choice its index
  /// or caption; numbers are read with Val and held to the field's limits. Then runs `edited`.
  /// Throws std::invalid_argument, naming the field, when the text does not fit it.
  void Edit(const FormField& field, std::string_view text);
  /// The same for one channel of a per-channel field.
  void Edit(const FormField& field, int channel, std::string_view text);

  /// One field, or one channel of it (0: it is no field per channel), that was edited.
  struct EditMade {
    const FormField* field = nullptr;
    int channel = 0;
  };
  /// What was edited since the form last asked for a button; each once, the last edited last.
  [[nodiscard]] const std::vector<EditMade>& Edits() const { return edits_; }

  /// What somebody would type to give the field the value it has; empty for a field per channel.
  [[nodiscard]] static std::string TextOf(const FormField& field);

  /// A value that whoever made the form came upon, in the file it is about for instance. The form does
  /// not hold it by itself: what asks for the form may take it, as if it were typed.
  struct FoundValue {
    const FormField* field = nullptr;
    std::string text;
    std::string where;   // "found in the file"
    std::string before;  // the field's text when the value was taken
  };
  [[nodiscard]] const std::vector<FoundValue>& Found() const { return found_; }
  [[nodiscard]] static bool Holds(const FoundValue& found) { return TextOf(*found.field) == found.text; }
  /// Edits every field that something was found for.
  void TakeFound();
  /// Edits the field of `found`: back to what it held before, or to what was found.
  void TakeFound(const FoundValue& found, bool take);

  /// The last press made the fields those of another thing: who keeps a record keeps them all again.
  [[nodiscard]] bool ShowsAnother() const { return showsAnother_; }
  /// The form shows in the open graph what it would do: the graph stays in sight beside it, and under the
  /// mouse.
  [[nodiscard]] virtual bool StandsBesideGraph() const { return false; }
  /// Its fields changed without whoever shows it: they are to be shown anew. Empty when nobody does.
  std::function<void()> onChanged;

  /// Presses that lead past everything the form remembers but does not show, and back to where it is.
  [[nodiscard]] virtual std::vector<std::string> WayThroughAll() const { return {}; }

  /// Shows the form until a button closes it.
  void Show(Workbench& workbench);

 protected:
  [[nodiscard]] FormButton& ButtonAt(std::size_t row) { return buttons_.at(row); }
  /// What was found was taken, or taken back.
  virtual void FoundTaken() {}
  /// An edit filled this field with what is remembered of earlier work. A record has that as an edit of its
  /// own, behind the other: another run remembers something else.
  void NoteFilled(std::string_view field);
  /// The channel that `edited` of a per-channel field runs for.
  [[nodiscard]] int EditedChannel() const { return editedChannel_; }

  std::vector<FormField> fields_;
  std::vector<FormButton> buttons_;
  std::vector<ResultTable> tables_;
  std::optional<FormGraph> graph_;
  std::vector<FoundValue> found_;
  bool showsAnother_ = false;

 private:
  void NoteEdit(const FormField& field, int channel);

  std::string name_;
  std::string title_;
  int editedChannel_ = 0;
  std::vector<EditMade> edits_;
};

}  // namespace velmora
