#include "run/report/transcript.hpp"

#include <utility>

#include "core/questions/form.hpp"
#include "core/questions/picker.hpp"
#include "core/questions/progress.hpp"
#include "core/text/text.hpp"
#include "run/report/deed_json.hpp"
#include "run/report/json_text.hpp"

namespace velmora {
namespace {

Json ButtonCaptions(const std::vector<Button>& buttons) {
  Json captions = Json::array();
  for (const Button button : buttons) {
    captions.push_back(ButtonCaption(button));
  }
  return captions;
}

const char* ModeName(FileQuestion::Mode mode) {
  switch (mode) {
    case FileQuestion::Mode::Open:
      return "open";
    case FileQuestion::Mode::Save:
      return "save";
    case FileQuestion::Mode::Directory:
      return "directory";
  }
  return "";
}

Json OfferedValues(const ChannelPicker& picker) {
  Json values = Json::object();
  for (int c = 1; c <= picker.Channels(); ++c) {
    if (picker.HasNames()) {
      values[std::to_string(c)] = picker.ValueText(c);
    } else if (picker.HasValues()) {
      values[std::to_string(c)] = JsonNumber(picker.Value(c));
    }
  }
  return values;
}

Json SelectedChannels(const ChannelPicker& picker) {
  Json channels = Json::array();
  for (int c = 1; c <= picker.Channels(); ++c) {
    if (picker.IsSelected(c)) {
      channels.push_back(c);
    }
  }
  return channels;
}

struct FieldValue {
  int channels;

  Json operator()(const bool* target) const { return *target; }
  Json operator()(const std::int32_t* target) const { return *target; }
  Json operator()(const double* target) const { return JsonNumber(*target); }
  Json operator()(const std::string* target) const { return *target; }
  Json operator()(const ChannelNumbers* target) const {
    return PerChannelJson([target](std::size_t c) { return JsonNumber((*target)[c]); });
  }
  Json operator()(const ChannelFlags* target) const {
    return PerChannelJson([target](std::size_t c) { return Json(static_cast<bool>((*target)[c])); });
  }

 private:
  template <typename Value>
  [[nodiscard]] Json PerChannelJson(Value value) const {
    Json map = Json::object();
    for (int c = 1; c <= channels; ++c) {
      map[std::to_string(c)] = value(static_cast<std::size_t>(c));
    }
    return map;
  }
};

Json AxisJson(const FormGraph::Axis& axis) {
  return {{"min", JsonNumber(axis.minimum)},
          {"max", JsonNumber(axis.maximum)},
          {"log", axis.log ? -1 : 0},
          {"caption", axis.caption}};
}

Json GraphJson(const FormGraph& graph) {
  Json plots = Json::array();
  for (const FormGraph::Plot& plot : graph.plots) {
    plots.push_back({{"name", plot.name}, {"colour", plot.colour}});
  }
  return {{"x", AxisJson(graph.x)},
          {"y", AxisJson(graph.y)},
          {"background", static_cast<int>(graph.background)},
          {"plots", std::move(plots)}};
}

Json OfferedFields(const Form& form, int channels) {
  Json fields = Json::object();
  for (const FormField& field : form.Fields()) {
    fields[field.name] = field.notApplicable ? Json("n.a.") : std::visit(FieldValue{channels}, field.target);
  }
  for (const ResultTable& table : form.Tables()) {
    fields[table.name] = JsonTable(table);
  }
  if (form.Graph()) {
    fields["graph"] = GraphJson(*form.Graph());
  }
  return fields;
}

Json PromptsOf(const Form& form) {
  Json prompts = Json::object();
  for (const FormField& field : form.Fields()) {
    if (!field.prompt.empty()) {
      prompts[field.name] = field.prompt;
    }
  }
  return prompts;
}

Json ChoicesOf(const Form& form) {
  Json choices = Json::object();
  for (const FormField& field : form.Fields()) {
    for (const std::string& choice : field.choices) {
      choices[field.name].push_back(WithoutMnemonic(choice));
    }
  }
  return choices;
}

}  // namespace

/// One line in the making. It takes its place when the question comes up and is written when it is
/// answered, or when an exception says that it will not be.
class TranscriptQuestions::Entry {
 public:
  Entry(TranscriptQuestions& owner, const char* kind) : owner_(owner), place_(owner.waiting_.size()) {
    owner_.waiting_.emplace_back();
    ++owner_.unanswered_;
    line_["input"] = owner_.input_.empty() ? Json(nullptr) : Json(owner_.input_);
    line_["step"] = owner_.step_;
    line_["kind"] = kind;
  }
  Entry(const Entry&) = delete;
  Entry& operator=(const Entry&) = delete;
  ~Entry() {
    try {
      Write();
    } catch (...) {  // NOLINT: a line that finds no memory is lost; the run goes on
    }
  }

  Json& operator[](const char* key) { return line_[key]; }

 private:
  void Write() {
    owner_.waiting_[place_] = JsonText(line_, -1);
    if (--owner_.unanswered_ > 0) {
      return;
    }
    for (const std::string& line : std::exchange(owner_.waiting_, {})) {
      owner_.sink_(line);
    }
  }

  TranscriptQuestions& owner_;
  std::size_t place_;
  Json line_;
};

TranscriptQuestions::TranscriptQuestions(Questions& answerer, std::string input, Sink sink)
    : answerer_(answerer), input_(std::move(input)), sink_(std::move(sink)) {}

void TranscriptQuestions::BeginStep(int step, const Trial& trial) {
  step_ = step;
  trial_ = &trial;
}

void TranscriptQuestions::EndStep(const std::vector<Deed>& deeds) {
  for (const Deed& deed : deeds) {
    Entry entry(*this, "done");
    entry["text"] = SentenceOf(deed, Telling::InFull);
    const Json told = DeedJson(deed);
    for (const char* key : {"what", "channels", "refused"}) {
      entry[key] = told.at(key);
    }
  }
}

Button TranscriptQuestions::AskBox(const Box& box) {
  Entry entry(*this, "box");
  entry["title"] = box.title;
  entry["text"] = box.text;
  entry["icon"] = IconName(box.icon);
  entry["buttons"] = ButtonCaptions(box.buttons);
  entry["answer"] = nullptr;
  const Button answer = answerer_.AskBox(box);
  entry["answer"] = ButtonCaption(answer);
  return answer;
}

std::string TranscriptQuestions::AskInput(const InputQuestion& question) {
  Entry entry(*this, "input");
  entry["title"] = question.title;
  entry["text"] = question.prompt;
  entry["default"] = question.defaultText;
  entry["answer"] = nullptr;
  std::string answer = answerer_.AskInput(question);
  entry["answer"] = answer;
  return answer;
}

std::vector<std::string> TranscriptQuestions::AskFile(const FileQuestion& question) {
  Entry entry(*this, "file");
  entry["title"] = question.title;
  entry["text"] = "";
  entry["mode"] = ModeName(question.mode);
  entry["default"] = question.defaultName;
  entry["extension"] = question.extension;
  entry["filter"] = question.filter;
  entry["answer"] = nullptr;
  std::vector<std::string> answer = answerer_.AskFile(question);
  if (question.several) {
    entry["answer"] = answer;
  } else {
    entry["answer"] = answer.empty() ? "" : answer.front();
  }
  return answer;
}

std::string TranscriptQuestions::AskPick(ChannelPicker& picker) {
  Entry entry(*this, "pick");
  entry["title"] = "";
  entry["text"] = picker.Prompt();
  entry["prompt"] = picker.Prompt();
  entry["mode"] = picker.Mode();
  if (!picker.Remark().empty()) {
    entry["remark"] = picker.Remark();
  }
  entry["values"] = OfferedValues(picker);
  entry["channels"] = nullptr;
  entry["values_out"] = nullptr;
  entry["answer"] = nullptr;
  std::string press = answerer_.AskPick(picker);
  entry["channels"] = SelectedChannels(picker);
  entry["values_out"] = OfferedValues(picker);
  entry["answer"] = EqualNoCase(press, "Cancel") ? "Cancel" : WithoutMnemonic(picker.ClosingCaption());
  return press;
}

std::string TranscriptQuestions::AskForm(Form& form) {
  Entry entry(*this, "form");
  entry["title"] = form.Title();
  entry["text"] = "";
  entry["name"] = form.Name();
  entry["fields"] = OfferedFields(form, trial_->NChan);
  if (const Json prompts = PromptsOf(form); !prompts.empty()) {
    entry["prompts"] = prompts;
  }
  if (const Json choices = ChoicesOf(form); !choices.empty()) {
    entry["choices"] = choices;
  }
  entry["press"] = nullptr;
  entry["answer"] = nullptr;  // of every question; for a form the button pressed
  std::string press = answerer_.AskForm(form);
  const FormButton* button = form.FindButton(press);
  entry["press"] = button != nullptr ? WithoutMnemonic(button->caption) : press;
  entry["answer"] = entry["press"];
  return press;
}

void TranscriptQuestions::ShowProgress(ProgressPanel& panel) {
  answerer_.ShowProgress(panel);
}

void TranscriptQuestions::EndProgress(ProgressPanel& panel) {
  {
    Entry entry(*this, "progress");
    entry["format"] = panel.Format();
    entry["status"] = panel.Status();
  }
  answerer_.EndProgress(panel);
}

}  // namespace velmora
