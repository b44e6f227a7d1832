#include "events/event_help.hpp"

namespace velmora {
namespace {

void ShowHelp(Workbench& workbench, const char* title, const char* text) {
  workbench.questions.AskBox({.title = title, .text = text, .icon = Icon::Information});
}

}  // namespace

void ShowThresholdHelp(Workbench& workbench) {
  ShowHelp(
      workbench, "Thresholds",
      "A threshold is the level above which a channel counts as active.\n\n"
      "1. Press 2 and set the two cursors around a stretch at rest.\n"
      "2. Choose Threshold, Calculate thresholds and enter how many standard deviations above the mean a "
      "threshold is to lie. Two are usual.\n"
      "3. Threshold, Display thresholds draws them as lines. A line can be dragged; with its graph selected, "
      "T takes the dragged line, or a threshold of the stretch between the cursors.\n\n"
      "Set SD Level keeps the stretch at rest and takes another number of standard deviations. Edit "
      "threshold level(s) takes numbers as they are typed; a negative threshold is passed downwards.\n"
      "Save thresholds writes them with labels, units and factors to a .VMU file, Read thresholds brings "
      "them back.");
}

void ShowEventHelp(Workbench& workbench) {
  ShowHelp(
      workbench, "Event Tracking",
      "Events are pairs of an on and an off time, one pair a channel in each record.\n\n"
      "1. F9 starts with an empty record: Yes saves amplitudes with the times.\n"
      "2. Set the two cursors around an event, or find onsets and offsets with O and correct the marks with "
      "the mouse.\n"
      "3. A right click records all channels, a double click the channel of the graph under the pointer.\n"
      "4. Insert adds a record for the next event. Ctrl-Home and Ctrl-End go to the next and to the previous "
      "record, Delete blanks the record at hand and drops the last one.\n"
      "5. F10 saves all records to a .VMV file. F9 ends tracking and discards the records.");
}

void ShowOnsetHelp(Workbench& workbench) {
  ShowHelp(
      workbench, "EMG Onset Determination",
      "An onset is the first sample between the two cursors that is beyond its channel's threshold; the "
      "offset is the first one after it that is back behind the threshold, or the second cursor.\n\n"
      "1. Rectify and smooth the channels: a raw EMG falls below every threshold within milliseconds.\n"
      "2. Calculate thresholds from a stretch at rest.\n"
      "3. Set the two cursors around one burst and press O. The green line is the onset, the cyan line the "
      "offset; drag them where they belong.\n"
      "4. With event tracking on (F9) a right click records them. Move the cursors to the next burst, press "
      "Insert and O.\n\n"
      "Cursor, Remove onsets takes the marks away.");
}

void ShowHowToChangeThreshold(Workbench& workbench) {
  ShowHelp(workbench, "How to Change a Threshold", "Click on the graph to be changed, then press T.");
}

}  // namespace velmora
