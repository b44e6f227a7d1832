#include "core/questions/questions.hpp"

namespace velmora {

const char* ButtonCaption(Button button) {
  switch (button) {
    case Button::OK:
      return "OK";
    case Button::Cancel:
      return "Cancel";
    case Button::Yes:
      return "Yes";
    case Button::No:
      return "No";
    case Button::Retry:
      return "Retry";
  }
  return "";
}

const char* IconName(Icon icon) {
  switch (icon) {
    case Icon::None:
      return "none";
    case Icon::Exclamation:
      return "exclamation";
    case Icon::Information:
      return "information";
    case Icon::Question:
      return "question";
    case Icon::Stop:
      return "stop";
  }
  return "";
}

}  // namespace velmora
