#pragma once

#include <string>

#include "core/action_listener.hpp"
#include "core/questions/form.hpp"
#include "core/questions/picker.hpp"

namespace velmora {

/// What was done, in words, without what was answered meanwhile: "Low-pass filter".
std::string WordsOf(const Action& action);

/// What was picked: "6, channels 00 and 01".
std::string WordsOf(const ChannelPicker& picker);

/// What was edited in a form: "Cutoff 6 Hz, channels 00 and 01".
std::string WordsOf(const Form& form, int channels);

}  // namespace velmora
