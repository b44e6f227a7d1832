#pragma once

#include <string_view>

#include "core/questions/form.hpp"
#include "core/questions/picker.hpp"
#include "run/recipe/recipe.hpp"

namespace velmora {

/// What a recipe answers to leave the picker as it is now, with channels as `named` names them.
PickAnswer RecordPick(const ChannelPicker& picker, std::string_view press, const ChannelNamer& named);

/// What a recipe answers to fill the form as it is now; when it is asked for the first time, with all
/// its fields. Those that were edited come last, in the order of their last edit, since what follows
/// from an edit may depend on it.
FormAnswer RecordForm(const Form& form, std::string_view press, int channels, bool firstTime,
                      const ChannelNamer& named);

}  // namespace velmora
