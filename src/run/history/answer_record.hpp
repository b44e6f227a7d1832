#pragma once

#include <string_view>
#include <vector>

#include "core/questions/form.hpp"
#include "core/questions/picker.hpp"
#include "run/recipe/recipe.hpp"

namespace velmora {

/// What a recipe answers to leave the picker as it is now, with channels as `named` names them.
PickAnswer RecordPick(const ChannelPicker& picker, std::string_view press, const ChannelNamer& named);

/// The fields that cannot be filled as the form is now.
std::vector<const FormField*> IdleFields(const Form& form);

/// What a recipe answers to fill the form as it is now; when it is asked for the first time, with all
/// its fields. Those that were edited come behind the others, in the order of their last edit, since what
/// follows from an edit may depend on it; last come those that were `idle` before somebody filled it.
FormAnswer RecordForm(const Form& form, std::string_view press, int channels, bool firstTime,
                      const std::vector<const FormField*>& idle, const ChannelNamer& named);

}  // namespace velmora
