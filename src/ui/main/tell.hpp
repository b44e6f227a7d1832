#pragma once

#include <string>

#include "core/questions/questions.hpp"

namespace velmora::ui {

/// A box with one text and no choice.
inline void Tell(Questions& person, const std::string& title, const std::string& text) {
  person.AskBox({.title = title, .text = text, .icon = Icon::Exclamation});
}

}  // namespace velmora::ui
