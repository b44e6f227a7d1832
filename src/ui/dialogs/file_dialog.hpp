#pragma once

#include <string>
#include <vector>

#include "core/questions/questions.hpp"

class QWidget;

namespace velmora::ui {

/// Lets a person choose, in a dialogue over `parent`. Empty means cancel.
std::vector<std::string> ChooseFiles(const FileQuestion& question, QWidget& parent);

}  // namespace velmora::ui
