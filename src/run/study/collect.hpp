#pragma once

#include <functional>
#include <span>
#include <string>

#include "core/command_report.hpp"
#include "core/workbench.hpp"
#include "run/recipe/recipe.hpp"
#include "run/study/study_table.hpp"

namespace velmora {

/// What a step that collects draws on.
struct CollectSource {
  Workbench& workbench;
  std::span<const Deed> done;  // since the trial was loaded
  std::string input;           // heads the rows of a whole result table
};

/// The rows that the step adds. A value that is not there is empty, and `warn` hears why.
TableRows CollectRows(const CollectStep& step, const CollectSource& source,
                      const std::function<void(const std::string&)>& warn);

}  // namespace velmora
