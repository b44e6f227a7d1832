// The menus of the multi-axis graph.
#include <QMenu>
#include <QMenuBar>
#include <array>

#include "ui/graph/graph_menus.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

struct MultiEntry {
  std::string_view menu;
  std::string_view id;
  std::string_view caption;
};

constexpr std::string_view kAllStatistics = "S&tatistics/&All data";
constexpr std::string_view kWindowStatistics = "S&tatistics/&Between cursors";

// In the order of the menu bar.
constexpr std::array kMultiEntries = {
    MultiEntry{"&File", "view.change-channels", "&Change selected channels"},
    MultiEntry{"&File", "view.save", "&Save to .VMB file"},
    MultiEntry{"&File", "style.save", "Save &Graphics style"},
    MultiEntry{"&File", "style.recall", "&Recall graphics style"},
    MultiEntry{"&Grid", "grid.none", "&No grid"},
    MultiEntry{"&Grid", "grid.both", "&Both X and Y grid"},
    MultiEntry{"&Grid", "grid.x", "&X grid only"},
    MultiEntry{"&Grid", "grid.y", "&Y grid only"},
    MultiEntry{"&Grid", "grid.zero", "&Zero only"},
    MultiEntry{"&Grid", "grid.no-labels", "No labels"},
    MultiEntry{"&Grid", "grid.x-numerals", "X numerals only"},
    MultiEntry{"&Grid", "grid.y-numerals", "Y numerals only"},
    MultiEntry{"&Grid", "grid.x-y-numerals", "X-Y numerals"},
    MultiEntry{"&Grid", "grid.zero-no-labels", "Zero && No &Labels"},
    MultiEntry{"&Grid", "grid.title", "Add/remove &Titles"},
    MultiEntry{"&Grid", "grid.abscissa-label", "Add/remove &Abscissa labels"},
    MultiEntry{"&Grid", "grid.ordinate-label", "Add/remove &Ordinate labels"},
    MultiEntry{"&Grid", "grid.thresholds", "Add/remove thres&holds"},
    MultiEntry{"&Grid", "grid.sidebar", "Add/remove &Sidebar"},
    MultiEntry{"&Grid", "grid.default", "&Default"},
    MultiEntry{"&Background", "background.black", "&Black"},
    MultiEntry{"&Background", "background.white", "&White"},
    MultiEntry{"&Background", "background.green", "&Green"},
    MultiEntry{"&Background", "background.grey", "G&rey"},
    MultiEntry{"&Background", "background.blue", "B&lue"},
    MultiEntry{"&Cursor", "cursor.none", "None &0"},
    MultiEntry{"&Cursor", "cursor.one", "One &1"},
    MultiEntry{"&Cursor", "cursor.two", "Two &2"},
    MultiEntry{"&Cursor", "cursor.onsets", "&Onsets"},
    MultiEntry{"&Cursor", "cursor.remove-onsets", "&Remove onsets"},
    MultiEntry{"&Value", "value.decimal-format", "&Decimal format"},
    MultiEntry{"&Value", "value.integrals", "&Integrals"},
    MultiEntry{"&Value", "value.extremes", "&Maxs. and Mins."},
    MultiEntry{"&Value", "value.extreme-times", "Max. and min. &Times"},
    MultiEntry{"&Value", "value.maximums", "Ma&ximums and times"},
    MultiEntry{"&Value", "value.minimums", "Mi&nimums and times"},
    MultiEntry{"&Value", "value.remove", "&Remove values"},
    MultiEntry{"&Event", "event.open", "&Open File for results (F9)"},
    MultiEntry{"&Event", "event.find", "&Find onsets/offsets (O)"},
    MultiEntry{"&Event", "event.store", "Store &Events/onsets-offsets in file (right-click)"},
    MultiEntry{"&Event", "event.add", "&Add another set of results (Insert)"},
    MultiEntry{"&Event", "event.save", "&Save results to file (F10)"},
    MultiEntry{"F&ormat", "format.number", "&Number format"},
    MultiEntry{"&Abscissa", "abscissa.linear", "&Linear"},
    MultiEntry{"&Abscissa", "abscissa.log", "Lo&g"},
    MultiEntry{"Or&dinate", "ordinate.linear", "&Linear"},
    MultiEntry{"Or&dinate", "ordinate.log", "Lo&g"},
    MultiEntry{"&Line", "line.none", "&None"},
    MultiEntry{"&Line", "line.solid", "&Solid"},
    MultiEntry{"&Line", "line.dotted", "&Dotted"},
    MultiEntry{"&Line", "line.dashed", "Das&hed"},
    MultiEntry{"&Line", "line.dash-1-dot", "Dash &1 Dot"},
    MultiEntry{"&Line", "line.dash-2-dots", "Dash &2 Dots"},
    MultiEntry{"&Line", "line.half", "First &half solid && second dashed"},
    MultiEntry{"&Line", "line.alternate", "&Alternate styles"},
    MultiEntry{"&Line", "line.solid-dashed", "Alternate Solid and Dashed"},
    MultiEntry{"&Line", "line.thick", "Thick lines"},
    MultiEntry{"&Line", "line.thin", "Thin lines"},
    MultiEntry{"&Point", "point.none", "&None"},
    MultiEntry{"&Point", "point.dot", "Dot &."},
    MultiEntry{"&Point", "point.star", "Star &*"},
    MultiEntry{"&Point", "point.small-x", "&Small x"},
    MultiEntry{"&Point", "point.large-x", "&Large X"},
    MultiEntry{"&Point", "point.plus", "&Plus +"},
    MultiEntry{"&Point", "point.cross", "&Cross"},
    MultiEntry{"&Point", "point.circle", "Circle &O"},
    MultiEntry{"&Point", "point.square", "S&quare"},
    MultiEntry{"&Point", "point.diamond", "&Diamond"},
    MultiEntry{"&Point", "point.alternate", "&Alternate styles"},
    MultiEntry{"&Scale", "scale.autoscale", "&Autoscaling"},
    MultiEntry{"&Scale", "scale.10-v", "+/- 10 &V"},
    MultiEntry{"&Scale", "scale.0-to-100", "0 to 100&% "},
    MultiEntry{"&Scale", "scale.100", "+/- &100% "},
    MultiEntry{"&Scale", "scale.include-zero", "Include &Zeros"},
    MultiEntry{"&Scale", "scale.maximum", "+/- | &Maximums |"},
    MultiEntry{"&Scale", "scale.same", "&Same scaling"},
    MultiEntry{"&Scale", "scale.min-max", "&Min./max"},
    MultiEntry{kAllStatistics, "statistics.all-descriptive", "&Mean, min. && max."},
    MultiEntry{kAllStatistics, "statistics.all-median", "Me&dian stats."},
    MultiEntry{kAllStatistics, "statistics.all-emg", "&EMG stats."},
    MultiEntry{kAllStatistics, "statistics.all-integration", "&Integral stats."},
    MultiEntry{kWindowStatistics, "statistics.between-descriptive", "&Mean, min. && max."},
    MultiEntry{kWindowStatistics, "statistics.between-median", "Me&dian stats."},
    MultiEntry{kWindowStatistics, "statistics.between-emg", "&EMG stats."},
    MultiEntry{kWindowStatistics, "statistics.between-integration", "&Integral stats."},
    MultiEntry{"&Threshold", "threshold.calculate", "&Calculate thresholds"},
    MultiEntry{"&Threshold", "threshold.display", "&Display thresholds"},
    MultiEntry{"&Threshold", "threshold.edit", "&Edit threshold level(s)"},
    MultiEntry{"&Threshold", "threshold.help", "&Help on thresholds"},
    MultiEntry{"&Threshold", "threshold.change", "Chan&ge a threshold"},
    MultiEntry{"&Threshold", "threshold.sd-level", "Set SD &Level"},
    MultiEntry{"&Threshold", "threshold.read", "&Read thresholds"},
    MultiEntry{"&Threshold", "threshold.save", "&Save thresholds"},
    MultiEntry{"C&rop", "crop.outside", "&Crop areas outside cursors"},
    MultiEntry{"C&rop", "crop.left", "Trim area &Left of cursor"},
    MultiEntry{"C&rop", "crop.right", "Trim area &Right of cursor"},
    MultiEntry{"C&rop", "crop.cut", "C&ut area &Inside cursors"},
    MultiEntry{"C&rop", "crop.select", "&Select crop"},
    MultiEntry{"&Zoom", "zoom.pan", "&Pan"},
    MultiEntry{"&Zoom", "zoom.pan-x", "Pan &X-only"},
    MultiEntry{"&Zoom", "zoom.pan-y", "Pan &Y-only"},
    MultiEntry{"&Zoom", "zoom.area", "&Zoom area"},
    MultiEntry{"&Zoom", "zoom.cursor", "Move &Cursors"},
    MultiEntry{"&Zoom", "zoom.reset", "&Reset a graph"},
    MultiEntry{"&Zoom", "zoom.reset-all", "Reset &All graphs"},
    MultiEntry{"&Zoom", "zoom.disable", "&Disable Mouse"},
    MultiEntry{"Val&ues", "values.maximums", "&Maximums"},
    MultiEntry{"&Help", "help.thresholds", "&Create thresholds"},
    MultiEntry{"&Help", "help.keyboard", "&Keyboard functions (?)"},
    MultiEntry{"&Help", "help.events", "E&vent tracking"},
    MultiEntry{"&Help", "help.onsets", "EMG &Onset determination"},
    MultiEntry{"&Help", "view.fix-double-keying", "&Fix double-keying"},
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
  for (const MultiEntry& entry : kMultiEntries) {
    menus.Add(menuAt(menuAt, entry.menu), entry.id, entry.caption);
  }
  menus.SetFileMenu(known["&File"]);
}

}  // namespace velmora::ui
