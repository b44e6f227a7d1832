#include "run/study/rehearsal.hpp"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <set>
#include <stdexcept>

#include "app/command_table.hpp"
#include "core/files/files.hpp"
#include "core/files/output_guard.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "run/recipe/channel_name.hpp"
#include "run/recipe/gesture.hpp"
#include "run/recipe/recipe_questions.hpp"

namespace velmora {
namespace {

/// The labels that a recipe names, as far as a trial has room for them; a pattern as a label that it fits.
class NamedLabels {
 public:
  explicit NamedLabels(const Recipe& recipe) {
    for (const Step& step : recipe.steps) {
      std::visit(*this, step.what);
    }
  }
  [[nodiscard]] const std::set<std::string>& Labels() const { return labels_; }

  void operator()(const CommandStep& step) { Take(step.answers); }
  void operator()(const ViewStep& step) { Take(step.answers); }
  void operator()(const InfoStep& /*step*/) {}
  void operator()(const CollectStep& /*step*/) {}

  void operator()(const BoxAnswer& /*answer*/) {}
  void operator()(const InputAnswer& /*answer*/) {}
  void operator()(const FileAnswer& /*answer*/) {}
  void operator()(const PickAnswer& answer) {
    (*this)(answer.values);
    (*this)(answer.names);
    if (answer.channels) {
      (*this)(*answer.channels);
    }
  }
  void operator()(const FormAnswer& answer) {
    for (const FieldAnswer& field : answer.fields) {
      std::visit(*this, field.value);
      const auto* text = std::get_if<std::string>(&field.value);
      const bool list = field.name.starts_with("com");  // of channels, maybe
      if (list && text != nullptr && text->find_first_not_of(" -0123456789") != std::string::npos) {
        Take(ReadChannelName(*text));
      }
    }
  }
  void operator()(const std::string& /*text*/) {}
  void operator()(const std::vector<ChannelText>& texts) {
    for (const ChannelText& text : texts) {
      Take(text.channel);
    }
  }
  void operator()(const ChannelChoice& choice) {
    for (const ChannelName& name : choice.channels) {
      Take(name);
    }
  }

 private:
  void Take(const std::vector<Answer>& answers) {
    for (const Answer& answer : answers) {
      std::visit(*this, answer.what);
    }
  }
  void Take(const ChannelName& name) {
    std::string label = ToLower(name.label);
    if (name.pattern) {
      std::erase(label, '*');
      std::replace(label.begin(), label.end(), '?', 'x');
    }
    if (!label.empty()) {
      labels_.insert(label);
    }
  }

  std::set<std::string> labels_;
};

/// Notes what is wrong whatever the trial and goes on.
class RehearsingQuestions : public RecipeQuestions {
 public:
  std::vector<RecipeFault> faults;

  /// A file that an earlier step would have written is not there: what follows in this step is not known.
  std::vector<std::string> AskFile(const FileQuestion& question) override {
    std::vector<std::string> paths = RecipeQuestions::AskFile(question);
    const auto missing = [](const std::string& path) {
      std::error_code error;
      return !std::filesystem::exists(path, error);
    };
    if (question.mode == FileQuestion::Mode::Open && std::any_of(paths.begin(), paths.end(), missing)) {
      throw CommandAbandoned("nothing to read while a recipe is checked");
    }
    return paths;
  }

  /// A form that is there again after it was accepted was refused for what the made trial is: what a real one
  /// leads to is not known.
  std::string AskForm(Form& form) override {
    if (&form == accepted_) {
      throw CommandAbandoned("refused while a recipe is checked");
    }
    std::string press = RecipeQuestions::AskForm(form);
    const FormButton* button = form.FindButton(press);
    accepted_ = button != nullptr && button->role == FormButton::Role::Accept ? &form : nullptr;
    return press;
  }
  void EndForm(Form& form) override {
    accepted_ = nullptr;
    RecipeQuestions::EndForm(form);
  }

 protected:
  bool PassOver(Misfit misfit, int line, const std::string& why) override {
    if (misfit == Misfit::Recipe) {
      faults.push_back({line, why});
    }
    return true;
  }

 private:
  const Form* accepted_ = nullptr;  // the form that was accepted last, until it has closed
};

// Long and fast enough for what wants a second of samples, or 240 Hz.
void MakeTrial(Trial& trial, const std::set<std::string>& labels) {
  constexpr int kFewestChannels = 16;
  constexpr int kSamples = 4001;
  const auto named = static_cast<int>(std::min<std::size_t>(labels.size(), kMaxChannels));
  trial.AllocateData(std::max(kFewestChannels, named), kSamples);
  trial.Rate = 1000.0;
  trial.Duration = (kSamples - 1) / trial.Rate;
  trial.TrialName = "rehearsal";
  trial.FileName = "rehearsal.vmb";
  trial.FileExt = "vmb";
  trial.RebuildTimeColumn();
  auto label = labels.begin();
  for (int c = 1; c <= trial.NChan; ++c) {
    trial.SetChannelDefaults(c);
    trial.ChanLabel[c] = c <= named ? *label++ : "Channel " + std::to_string(c);
    trial.ChanRate[c] = trial.Rate;
    for (int i = 1; i <= kSamples; ++i) {
      trial.Data(i, c) = static_cast<float>(2.0 + std::sin(0.05 * i * c));  // at no time below 0
    }
  }
  NormaliseCursors(trial);
}

/// One trial that the steps are gone through on.
class Rehearsal {
 public:
  explicit Rehearsal(const Recipe& recipe) : recipe_(recipe), labels_(recipe) {
    workbench_.desktop.draw = [](const PictureOrder&) { return std::string(); };
    MakeTrial(workbench_.trial, labels_.Labels());
    TakeUp(workbench_, recipe.start);
  }

  std::vector<RecipeFault> Run() {
    const OutputGuard guard(
        [](const std::string&) { throw FileError("nothing is written while a recipe is checked"); });
    for (const Step& step : recipe_.steps) {
      try {
        if (const auto* command = std::get_if<CommandStep>(&step.what)) {
          Do(*command);
        } else if (const auto* view = std::get_if<ViewStep>(&step.what)) {
          Do(*view);
        }
      } catch (const NoSuchKey& error) {
        questions_.faults.push_back({step.line, error.what()});
      } catch (const std::exception&) {
        // The made trial brought it no further, which says nothing of a real one, nor of which graph it
        // shows.
        if (ActionOf(step).starts_with("graph.")) {
          CloseView(workbench_);
        }
      }
    }
    return std::move(questions_.faults);
  }

 private:
  void Do(const CommandStep& step) {
    const Command* command = FindCommand(step.id);
    if (command == nullptr || step.id.starts_with("file.")) {  // which reads, or does away with files
      return;
    }
    questions_.BeginStep(step.answers, workbench_.trial);
    RunCommand(workbench_, *command);
  }
  void Do(const ViewStep& step) {
    if (workbench_.view != nullptr && !std::holds_alternative<ImageGesture>(step.what)) {
      questions_.BeginStep(step.answers, workbench_.trial);
      DoGesture(workbench_, step);
    }
  }

  const Recipe& recipe_;
  NamedLabels labels_;
  RehearsingQuestions questions_;
  Workbench workbench_{questions_};
};

}  // namespace

std::vector<RecipeFault> RehearseForms(const Recipe& recipe) {
  return Rehearsal(recipe).Run();
}

}  // namespace velmora
