#include "ui/graph/graph_menus.hpp"

#include <QMenu>
#include <QMenuBar>
#include <algorithm>
#include <array>

#include "app/command_table.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

// The order of the menu bar; statistics stand before crop.
constexpr std::array<std::string_view, 12> kMenus = {"&File",     "&Grid",     "&Background", "&Cursor",
                                                     "&Abscissa", "&Ordinate", "&Line",       "&Point",
                                                     "&Scale",    "C&rop",     "&Zoom",       "&Help"};

/// What a menu has besides the commands that name it as theirs.
struct Extra {
  std::string_view menu;
  std::string_view after;    // the id it follows
  std::string_view command;  // empty: not there yet
  std::string_view caption = {};
};

constexpr std::array kExtras = {
    Extra{"&File", "view.save", "", "Save &Events (Cursors)"},
    Extra{"&Grid", "grid.ordinate-label", "", "&Include thresholds"},
    Extra{"&Grid", "grid.default", "style.save"},
    Extra{"&Grid", "grid.default", "style.recall"},
    Extra{"&Cursor", "cursor.two", "", "&Triggering"},
    Extra{"&Help", "help.keyboard", "", "&Scroll/page the data"},
    Extra{"&Help", "help.keyboard", "", "&Triggering, event and interval detection"},
    Extra{"&Help", "help.keyboard", "", "&Use triggering to create windows for statistcis"}};

constexpr std::array<std::string_view, 4> kStatistics = {"&Mean, min. && max.", "Me&dian stats.",
                                                         "&EMG stats.", "&Integration stats."};

using Mark = bool (*)(const SingleView& view, const Workbench& workbench);

template <Colour colour>
bool HasBackground(const SingleView& view, const Workbench& /*workbench*/) {
  return view.Drawing().Background == colour;
}
template <Scale scale>
bool HasScale(const SingleView& /*view*/, const Workbench& workbench) {
  return workbench.graph.GraphScaleChoice == static_cast<std::int32_t>(scale);
}
template <TrackMode mode>
bool HasTrack(const SingleView& view, const Workbench& /*workbench*/) {
  return view.Drawing().Track == mode;
}
template <Axis Graph::*axis, bool log>
bool HasLog(const SingleView& view, const Workbench& /*workbench*/) {
  return (view.Drawing().*axis).Log == log;
}
template <int count>
bool HasCursors(const SingleView& view, const Workbench& /*workbench*/) {
  return view.Cursors() == count;
}
template <bool Graph::*shown>
bool Shows(const SingleView& view, const Workbench& /*workbench*/) {
  return view.Drawing().*shown;
}
template <Axis Graph::*axis>
bool ShowsCaption(const SingleView& view, const Workbench& /*workbench*/) {
  return (view.Drawing().*axis).CaptionVisible;
}

// The backgrounds are told apart by the command itself; the dark ones have no name outside it.
const std::map<std::string_view, Mark>& Marks() {
  static const std::map<std::string_view, Mark> marks = {
      {"background.black", HasBackground<kBlack>},
      {"background.white", HasBackground<kWhite>},
      {"background.green", HasBackground<kDarkGreen>},
      {"background.grey", HasBackground<kDarkGrey>},
      {"background.blue", HasBackground<kDarkBlue>},
      {"scale.autoscale", HasScale<Scale::Auto>},
      {"scale.10-v", HasScale<Scale::TenVolts>},
      {"scale.0-to-100", HasScale<Scale::Percent>},
      {"scale.100", HasScale<Scale::PlusMinusPercent>},
      {"scale.include-zero", HasScale<Scale::IncludeZero>},
      {"scale.maximum", HasScale<Scale::PlusMinusMaximum>},
      {"zoom.pan", HasTrack<TrackMode::PanXAndY>},
      {"zoom.area", HasTrack<TrackMode::ZoomArea>},
      {"zoom.cursor", HasTrack<TrackMode::DragCursors>},
      {"zoom.disable", HasTrack<TrackMode::None>},
      {"abscissa.linear", HasLog<&Graph::Abscissa, false>},
      {"abscissa.log", HasLog<&Graph::Abscissa, true>},
      {"ordinate.linear", HasLog<&Graph::Ordinate, false>},
      {"ordinate.log", HasLog<&Graph::Ordinate, true>},
      {"cursor.none", HasCursors<0>},
      {"cursor.one", HasCursors<1>},
      {"cursor.two", HasCursors<2>},
      {"cursor.values",
       [](const SingleView& view, const Workbench& /*workbench*/) { return view.Values().has_value(); }},
      {"cursor.horizontal",
       [](const SingleView& view, const Workbench& /*workbench*/) { return view.HorizontalShown(); }},
      {"grid.title", Shows<&Graph::TitleVisible>},
      {"grid.sidebar", Shows<&Graph::SidebarVisible>},
      {"grid.abscissa-label", ShowsCaption<&Graph::Abscissa>},
      {"grid.ordinate-label", ShowsCaption<&Graph::Ordinate>}};
  return marks;
}

void AddMissing(QMenu* menu, std::string_view caption) {
  QAction* action = menu->addAction(ToQt(caption));
  action->setEnabled(false);
  action->setToolTip(QObject::tr("Not in this version yet"));
}

std::string_view LastPart(std::string_view path) {
  return path.substr(path.rfind('/') + 1);
}

}  // namespace

GraphMenus::GraphMenus(QMenuBar* bar, Run run) : run_(std::move(run)) {
  for (const std::string_view name : kMenus) {
    if (name == "C&rop") {
      AddStatistics(bar);
    }
    QMenu* menu = bar->addMenu(ToQt(name));
    menu->setToolTipsVisible(true);
    Fill(menu, name);
    if (name == "&File") {
      file_ = menu;
    }
  }
}

void GraphMenus::Fill(QMenu* menu, std::string_view path) {
  for (const Command& command : AllCommands()) {
    if (command.needs != Needs::View || command.menu.find('/') == std::string_view::npos ||
        LastPart(command.menu) != path) {
      continue;
    }
    Add(menu, command);
    for (const Extra& extra : kExtras) {
      if (extra.menu != path || extra.after != command.id) {
        continue;
      }
      const Command* known = FindCommand(extra.command);
      known != nullptr ? Add(menu, *known) : AddMissing(menu, extra.caption);
    }
  }
}

void GraphMenus::Add(QMenu* menu, const Command& command) {
  QAction* action = menu->addAction(ToQt(command.caption));
  action->setObjectName(ToQt(command.id));
  if (Marks().contains(command.id)) {
    action->setCheckable(true);
    marked_.emplace_back(command.id, action);
  }
  QObject::connect(action, &QAction::triggered, action, [this, &command] { run_(command); });
}

void GraphMenus::AddStatistics(QMenuBar* bar) {
  QMenu* menu = bar->addMenu(QStringLiteral("S&tatistics"));
  for (const char* range : {"&All data", "&Between cursors"}) {
    QMenu* sub = menu->addMenu(QString::fromLatin1(range));
    sub->setToolTipsVisible(true);
    for (const std::string_view caption : kStatistics) {
      AddMissing(sub, caption);
    }
  }
  AddMissing(menu, "Statistics between &Cursors");
}

void GraphMenus::Update(const SingleView& view, const Workbench& workbench) {
  for (const auto& [id, action] : marked_) {
    action->setChecked(Marks().at(id)(view, workbench));
  }
}

}  // namespace velmora::ui
