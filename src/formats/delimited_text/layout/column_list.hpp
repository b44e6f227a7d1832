#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/trial/trial.hpp"

namespace velmora {

/// Column numbers of a text like "1, 2" or "3-5 8", ascending, each once; empty for an empty text and
/// nothing for one that is no such list. A column counts from 1 to `most`.
std::optional<std::vector<int>> ReadColumnList(std::string_view text, int most = kMaxChannels);

/// The text for columns in ascending order: "1, 2, 8".
std::string ColumnListText(const std::vector<int>& columns);

}  // namespace velmora
