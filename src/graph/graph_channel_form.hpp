#pragma once

#include <array>
#include <functional>
#include <string>

#include "core/questions/form.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// What the dialogues of both graphs ask: channels with their colours, the view window, and the buttons that
/// select channels.
class GraphChannelForm : public Form {
 public:
  /// Returns whether the form was left with OK.
  bool Ask();

 protected:
  GraphChannelForm(Workbench& workbench, std::string name, std::string title);

  void AddChannelFields();
  void AddWindowFields(const char* window, const char* pan, const char* pattern);
  void AddMaximizedField();
  /// The accepting button, those that select, and Cancel. Captions of those that deselect: this page, all.
  struct Deselecting {
    const char* page;
    const char* all;
  };
  void AddButtons(const char* accept, const Deselecting& deselecting);
  /// Selection, colours and view window go to the workbench.
  void TakeChannels();
  /// The accepting button. Returns whether the form closes, with everything taken.
  virtual bool Accept() = 0;
  /// A button changed the selection.
  virtual void SelectionChanged() {}

  Workbench& workbench_;
  ChannelFlags channels_{};
  ChannelNumbers colours_{};

 private:
  void SelectPage(bool on);
  void SelectEight(int first);
  void AddSelectionButton(std::string caption, std::function<void()> select);

  double window_;
  double pan_;
  bool maximized_;
  bool accepted_ = false;
};

}  // namespace velmora
