// The menus of the multi-axis graph.
#include <QMenu>
#include <QMenuBar>
#include <array>

#include "ui/graph/graph_menus.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

struct Entry {
  std::string_view menu;
  std::string_view id;
  std::string_view caption;
};

constexpr std::string_view kAll = "S&tatistics/&All data";
constexpr std::string_view kWindow = "S&tatistics/&Between cursors";

// In the order of the menu bar.
constexpr std::array kEntries = {
    Entry{"&File", "view.change-channels", "&Change selected channels"},
    Entry{"&File", "view.save", "&Save to .VMB file"},
    Entry{"&File", "style.save", "Save &Graphics style"},
    Entry{"&File", "style.recall", "&Recall graphics style"},
    Entry{"&Grid", "grid.none", "&No grid"},
    Entry{"&Grid", "grid.both", "&Both X and Y grid"},
    Entry{"&Grid", "grid.x", "&X grid only"},
    Entry{"&Grid", "grid.y", "&Y grid only"},
    Entry{"&Grid", "grid.zero", "&Zero only"},
    Entry{"&Grid", "grid.no-labels", "No labels"},
    Entry{"&Grid", "grid.x-numerals", "X numerals only"},
    Entry{"&Grid", "grid.y-numerals", "Y numerals only"},
    Entry{"&Grid", "grid.x-y-numerals", "X-Y numerals"},
    Entry{"&Grid", "grid.zero-no-labels", "Zero && No &Labels"},
    Entry{"&Grid", "grid.title", "Add/remove &Titles"},
    Entry{"&Grid", "grid.abscissa-label", "Add/remove &Abscissa labels"},
    Entry{"&Grid", "grid.ordinate-label", "Add/remove &Ordinate labels"},
    Entry{"&Grid", "grid.thresholds", "Add/remove thres&holds"},
    Entry{"&Grid", "grid.sidebar", "Add/remove &Sidebar"},
    Entry{"&Grid", "grid.default", "&Default"},
    Entry{"&Background", "background.black", "&Black"},
    Entry{"&Background", "background.white", "&White"},
    Entry{"&Background", "background.green", "&Green"},
    Entry{"&Background", "background.grey", "G&rey"},
    Entry{"&Background", "background.blue", "B&lue"},
    Entry{"&Cursor", "cursor.none", "None &0"},
    Entry{"&Cursor", "cursor.one", "One &1"},
    Entry{"&Cursor", "cursor.two", "Two &2"},
    Entry{"&Cursor", "cursor.onsets", "&Onsets"},
    Entry{"&Cursor", "cursor.remove-onsets", "&Remove onsets"},
    Entry{"&Value", "value.decimal-format", "&Decimal format"},
    Entry{"&Value", "value.integrals", "&Integrals"},
    Entry{"&Value", "value.extremes", "&Maxs. and Mins."},
    Entry{"&Value", "value.extreme-times", "Max. and min. &Times"},
    Entry{"&Value", "value.maximums", "Ma&ximums and times"},
    Entry{"&Value", "value.minimums", "Mi&nimums and times"},
    Entry{"&Value", "value.remove", "&Remove values"},
    Entry{"&Event", "event.open", "&Open File for results (F9)"},
    Entry{"&Event", "event.find", "&Find onsets/offsets (O)"},
    Entry{"&Event", "event.store", "Store &Events/onsets-offsets in file (right-click)"},
    Entry{"&Event", "event.add", "&Add another set of results (Insert)"},
    Entry{"&Event", "event.save", "&Save results to file (F10)"},
    Entry{"F&ormat", "format.number", "&Number format"},
    Entry{"&Abscissa", "abscissa.linear", "&Linear"},
    Entry{"&Abscissa", "abscissa.log", "Lo&g"},
    Entry{"Or&dinate", "ordinate.linear", "&Linear"},
    Entry{"Or&dinate", "ordinate.log", "Lo&g"},
    Entry{"&Line", "line.none", "&None"},
    Entry{"&Line", "line.solid", "&Solid"},
    Entry{"&Line", "line.dotted", "&Dotted"},
    Entry{"&Line", "line.dashed", "Das&hed"},
    Entry{"&Line", "line.dash-1-dot", "Dash &1 Dot"},
    Entry{"&Line", "line.dash-2-dots", "Dash &2 Dots"},
    Entry{"&Line", "line.half", "First &half solid && second dashed"},
    Entry{"&Line", "line.alternate", "&Alternate styles"},
    Entry{"&Line", "line.solid-dashed", "Alternate Solid and Dashed"},
    Entry{"&Line", "line.thick", "Thick lines"},
    Entry{"&Line", "line.thin", "Thin lines"},
    Entry{"&Point", "point.none", "&None"},
    Entry{"&Point", "point.dot", "Dot &."},
    Entry{"&Point", "point.star", "Star &*"},
    Entry{"&Point", "point.small-x", "&Small x"},
    Entry{"&Point", "point.large-x", "&Large X"},
    Entry{"&Point", "point.plus", "&Plus +"},
    Entry{"&Point", "point.cross", "&Cross"},
    Entry{"&Point", "point.circle", "Circle &O"},
    Entry{"&Point", "point.square", "S&quare"},
    Entry{"&Point", "point.diamond", "&Diamond"},
    Entry{"&Point", "point.alternate", "&Alternate styles"},
    Entry{"&Scale", "scale.autoscale", "&Autoscaling"},
    Entry{"&Scale", "scale.10-v", "+/- 10 &V"},
    Entry{"&Scale", "scale.0-to-100", "0 to 100&% "},
    Entry{"&Scale", "scale.100", "+/- &100% "},
    Entry{"&Scale", "scale.include-zero", "Include &Zeros"},
    Entry{"&Scale", "scale.maximum", "+/- | &Maximums |"},
    Entry{"&Scale", "scale.same", "&Same scaling"},
    Entry{"&Scale", "scale.min-max", "&Min./max"},
    Entry{kAll, "all-stats.mean", "&Mean, min. && max."},
    Entry{kAll, "all-stats.median", "Me&dian stats."},
    Entry{kAll, "all-stats.emg", "&EMG stats."},
    Entry{kAll, "all-stats.integral", "&Integral stats."},
    Entry{kWindow, "window-stats.mean", "&Mean, min. && max."},
    Entry{kWindow, "window-stats.median", "Me&dian stats."},
    Entry{kWindow, "window-stats.emg", "&EMG stats."},
    Entry{kWindow, "window-stats.integral", "&Integral stats."},
    Entry{"&Threshold", "threshold.calculate", "&Calculate thresholds"},
    Entry{"&Threshold", "threshold.display", "&Display thresholds"},
    Entry{"&Threshold", "threshold.edit", "&Edit threshold level(s)"},
    Entry{"&Threshold", "threshold.help", "&Help on thresholds"},
    Entry{"&Threshold", "threshold.change", "Chan&ge a threshold"},
    Entry{"&Threshold", "threshold.sd-level", "Set SD &Level"},
    Entry{"&Threshold", "threshold.read", "&Read thresholds"},
    Entry{"&Threshold", "threshold.save", "&Save thresholds"},
    Entry{"C&rop", "crop.outside", "&Crop areas outside cursors"},
    Entry{"C&rop", "crop.left", "Trim area &Left of cursor"},
    Entry{"C&rop", "crop.right", "Trim area &Right of cursor"},
    Entry{"C&rop", "crop.cut", "C&ut area &Inside cursors"},
    Entry{"C&rop", "crop.select", "&Select crop"},
    Entry{"&Zoom", "zoom.pan", "&Pan"},
    Entry{"&Zoom", "zoom.pan-x", "Pan &X-only"},
    Entry{"&Zoom", "zoom.pan-y", "Pan &Y-only"},
    Entry{"&Zoom", "zoom.area", "&Zoom area"},
    Entry{"&Zoom", "zoom.cursor", "Move &Cursors"},
    Entry{"&Zoom", "zoom.reset", "&Reset a graph"},
    Entry{"&Zoom", "zoom.reset-all", "Reset &All graphs"},
    Entry{"&Zoom", "zoom.disable", "&Disable Mouse"},
    Entry{"Val&ues", "values.maximums", "&Maximums"},
    Entry{"&Help", "help.thresholds", "&Create thresholds"},
    Entry{"&Help", "help.keyboard", "&Keyboard functions (?)"},
    Entry{"&Help", "help.events", "E&vent tracking"},
    Entry{"&Help", "help.onsets", "EMG &Onset determination"},
    Entry{"&Help", "view.fix-double-keying", "&Fix double-keying"},
};

}  // namespace

void AddMultiMenus(GraphMenus& menus, QMenuBar* bar) {
  std::map<std::string_view, QMenu*> known;
  const auto menuAt = [&](const auto& self, std::string_view path) -> QMenu* {
    if (QMenu* there = known[path]) {
      return there;
    }
    const std::size_t slash = path.rfind('/');
    QMenu* menu = slash == std::string_view::npos
                      ? bar->addMenu(ToQt(path))
                      : self(self, path.substr(0, slash))->addMenu(ToQt(path.substr(slash + 1)));
    menu->setToolTipsVisible(true);
    known[path] = menu;
    return menu;
  };
  for (const Entry& entry : kEntries) {
    menus.Add(menuAt(menuAt, entry.menu), entry.id, entry.caption);
  }
  menus.SetFileMenu(known["&File"]);
}

}  // namespace velmora::ui
