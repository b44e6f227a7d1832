#include "formats/delimited_text/layout/parse_settings.hpp"

#include <algorithm>

#include "core/trial/trial.hpp"
#include "formats/delimited_text/layout/column_list.hpp"

namespace velmora {

std::vector<int> ParseSettings::ChannelColumns() const {
  const std::vector<int> leftOut = ReadColumnList(ParseLeaveOut).value_or(std::vector<int>());
  const int last = std::min(columns, kMaxChannels);  // while it is being typed it may be any number
  std::vector<int> channels;
  for (int column = 1; column <= last; ++column) {
    if (!IsTime(column) && !std::binary_search(leftOut.begin(), leftOut.end(), column)) {
      channels.push_back(column);
    }
  }
  return channels;
}

}  // namespace velmora
