#include "run/recipe/closest_name.hpp"

#include <algorithm>
#include <vector>

#include "core/text/text.hpp"

namespace velmora {
namespace {

// Three rows of the table of distances between the beginnings of both names.
std::size_t Distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> beforeLast(b.size() + 1);
  std::vector<std::size_t> last(b.size() + 1);
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t k = 0; k <= b.size(); ++k) {
    last[k] = k;
  }
  for (std::size_t i = 1; i <= a.size(); ++i) {
    row[0] = i;
    for (std::size_t k = 1; k <= b.size(); ++k) {
      const std::size_t changed = last[k - 1] + (a[i - 1] == b[k - 1] ? 0 : 1);
      row[k] = std::min({last[k] + 1, row[k - 1] + 1, changed});
      if (i > 1 && k > 1 && a[i - 1] == b[k - 2] && a[i - 2] == b[k - 1]) {
        row[k] = std::min(row[k], beforeLast[k - 2] + 1);
      }
    }
    beforeLast.swap(last);
    last.swap(row);
  }
  return last[b.size()];
}

}  // namespace

std::string ClosestName(std::string_view wrong, std::span<const std::string> names) {
  constexpr std::size_t kLongest = 200;  // a whole text pasted into the wrong place is no misspelt name
  if (wrong.size() > kLongest) {
    return {};
  }
  const std::string sought = ToLower(wrong);
  std::size_t nearest = std::max<std::size_t>(sought.size() / 3, 1) + 1;
  std::string closest;
  for (const std::string& name : names) {
    const std::size_t distance = Distance(sought, ToLower(name));
    if (distance < nearest && distance < name.size()) {
      nearest = distance;
      closest = name;
    }
  }
  return closest;
}

std::string DidYouMean(std::string_view wrong, std::span<const std::string> names) {
  const std::string closest = ClosestName(wrong, names);
  return closest.empty() ? std::string() : "; did you mean \"" + closest + "\"?";
}

}  // namespace velmora
