#include "dsp/ask_entry.hpp"

#include <cstddef>
#include <string>
#include <variant>

#include "core/text/numbers.hpp"

namespace velmora {

void AskEntry(Workbench& workbench, Form& form, const char* field, int channel, const char* title,
              const char* prompt) {
  const FormField& list = *form.FindField(field);
  const double current = std::get<ChannelNumbers*>(list.target)->at(static_cast<std::size_t>(channel));
  const std::string typed =
      workbench.questions.AskInput({.title = title,
                                    .prompt = prompt,
                                    .defaultText = PlainNumber(static_cast<float>(current)),
                                    .isNumber = true});
  if (!typed.empty()) {
    form.Edit(list, channel, typed);
  }
}

}  // namespace velmora
