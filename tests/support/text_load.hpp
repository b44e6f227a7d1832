#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/questions/form.hpp"
#include "support/command_test.hpp"

namespace velmora::test {

using Frames = std::vector<std::vector<float>>;

/// Loads texts through the command, with the dialogues answered as a recipe answers them.
struct TextLoadTest : FileTest {
  std::vector<Edits> offered;  // the fields of each dialogue as it came up

  /// The next dialogue gets these edits and this button.
  void AnswerForm(Edits edits = {}, std::string press = "OK") {
    questions.formAnswers.emplace_back(
        [this, edits = std::move(edits), press = std::move(press)](Form& form) {
          offered.emplace_back();
          for (const FormField& field : form.Fields()) {
            offered.back().emplace_back(field.name, Form::TextOf(field));
          }
          Type(form, edits);
          return press;
        });
  }

  /// Accepts what the dialogue offers; a rate, where one is asked for, is 100 Hz.
  void LoadWithDefaults(const std::string& name, std::string_view bytes, Edits edits = {}) {
    questions.formAnswers.clear();
    questions.inputAnswers = {"100"};
    AnswerForm(std::move(edits));
    Load(name, bytes);
  }

  /// A field as the last dialogue offered it.
  [[nodiscard]] std::string Offered(const std::string& name) const {
    for (const auto& [field, text] : offered.back()) {
      if (field == name) {
        return text;
      }
    }
    return "no such field";
  }

  /// The trial sample by sample, time first.
  [[nodiscard]] Frames Rows() const {
    Frames rows;
    for (std::int32_t i = 1; i <= trial.NData; ++i) {
      rows.emplace_back();
      for (int c = 1; c <= trial.NChan; ++c) {
        rows.back().push_back(trial.Data(i, c));
      }
    }
    return rows;
  }
};

}  // namespace velmora::test
