#pragma once

#include <string>

#include "core/questions/form.hpp"
#include "core/workbench.hpp"

namespace velmora::test {

/// A dialogue with a field of every sort. Filter closes it, Apply keeps it open and asks.
class SampleForm : public Form {
 public:
  explicit SampleForm(Workbench& workbench) : Form("frmSample", "A Sample") {
    fields_ = {
        {.name = "chkRectify", .caption = "&Rectify", .target = &rectify},
        {.name = "cwnPadding",
         .caption = "&Padding",
         .target = &padding,
         .lowest = 0,
         .highest = 100,
         .edited = [this] { ++edits; }},
        {.name = "optPad", .caption = "Pad", .target = &pad, .choices = {"&None", "&Mirror"}},
        {.name = "Width", .caption = "Width", .target = &width},
        {.name = "Name", .caption = "Name", .target = &name},
        {.name = "Cutoffs", .caption = "Cut-offs", .target = &cutoffs, .lowest = 0},
        {.name = "channels", .caption = "Channels", .target = &channels},
        {.name = "comX",
         .caption = "X",
         .target = &x,
         .choices = {"Fx", "00: A", "01: B", "02: Fz", "D", "E", "F", "G", "H"},  // the abscissa first
         .channelsFrom = 1},
    };
    buttons_ = {
        {.caption = "&Filter", .role = FormButton::Role::Accept, .press = [] { return true; }},
        {.caption = "&Apply", .press = [this, &workbench] { return Apply(workbench); }},
        {.caption = "Cancel", .role = FormButton::Role::Cancel, .press = [] { return true; }},
    };
    found_ = {{.field = FindField("Width"), .text = "0.75", .where = "found"}};
  }

  bool Apply(Workbench& workbench) {
    typed = workbench.questions.AskInput({.title = "Applied", .prompt = "How often?"});
    return false;
  }

  bool rectify = false;
  std::int32_t padding = 0;
  std::int32_t pad = 0;
  double width = 0;
  std::string name;
  ChannelNumbers cutoffs{};
  ChannelFlags channels{true, true, true, true};
  std::int32_t x = 0;
  std::string typed;
  int edits = 0;
};

}  // namespace velmora::test
