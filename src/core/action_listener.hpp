#pragma once

#include <variant>

#include "core/command.hpp"
#include "core/open_view.hpp"

namespace velmora {

/// Something that was done to the trial or in the view that is open.
using Action = std::variant<const Command*, KeyPress, CursorMove, ThresholdMove, GraphClick>;

/// Hears what is done, from its beginning to its end with everything that it asks meanwhile. An action
/// may lie inside another.
class ActionListener {
 public:
  ActionListener() = default;
  ActionListener(const ActionListener&) = delete;
  ActionListener& operator=(const ActionListener&) = delete;
  virtual ~ActionListener() = default;

  virtual void ActionBegins(const Action& action) = 0;
  /// It was none: a key that the view does not have.
  virtual void ActionWasNone() noexcept = 0;
  virtual void ActionEnds() noexcept = 0;
};

/// Tells a listener (nullptr: none) of an action while it lasts.
class ActionScope {
 public:
  ActionScope(ActionListener* listener, const Action& action) : listener_(listener) {
    if (listener_ != nullptr) {
      listener_->ActionBegins(action);
    }
  }
  ActionScope(const ActionScope&) = delete;
  ActionScope& operator=(const ActionScope&) = delete;
  ~ActionScope() {
    if (listener_ != nullptr) {
      listener_->ActionEnds();
    }
  }

  void WasNone() const {
    if (listener_ != nullptr) {
      listener_->ActionWasNone();
    }
  }

 private:
  ActionListener* listener_;
};

}  // namespace velmora
