#include "run/history/graph_words.hpp"

#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "graph/time_view.hpp"

namespace velmora {

std::string GraphWords(const Workbench& workbench) {
  const auto* view = FindTimeView(workbench);
  if (view == nullptr) {
    return {};
  }
  const std::vector<double> cursors = view->CommonCursors();
  if (cursors.empty()) {
    return "Graph: no cursors";
  }
  std::string places;
  for (std::size_t k = 0; k < cursors.size(); ++k) {
    places += k == 0 ? "" : k + 1 == cursors.size() ? " and " : ", ";
    places += AbscissaText(workbench, cursors[k], workbench.patterns.TimePattern);
    if (const std::string units = AbscissaUnits(workbench); !units.empty()) {
      places.append(" ").append(units);
    }
  }
  return "Graph: " + CountOf(static_cast<std::int64_t>(cursors.size()), "cursor") + " at " + places;
}

}  // namespace velmora
