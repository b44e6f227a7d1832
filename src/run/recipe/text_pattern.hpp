#pragma once

#include <string_view>

namespace velmora {

/// Whether the text has a '*' or a '?' in it.
bool IsPattern(std::string_view text);

/// Whether `text` fits `pattern`, in which '*' stands for any characters and '?' for one. Letters A to Z
/// without regard to case.
bool FitsPattern(std::string_view text, std::string_view pattern);

}  // namespace velmora
