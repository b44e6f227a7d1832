#pragma once

#include <QMainWindow>
#include <vector>

#include "graph/one_channel_view.hpp"
#include "ui/graph/graph_pictures.hpp"

class QAction;

namespace velmora {
class GraphWidget;
}  // namespace velmora

namespace velmora::ui {

class GraphStatusBar;

/// The window of a OneChannelView. Deletes itself when it is closed.
class OneChannelWindow : public QMainWindow {
  Q_OBJECT

 public:
  /// Throws as OneChannelView.
  OneChannelWindow(Workbench& workbench, int channel, QWidget* parent = nullptr);

  [[nodiscard]] int Channel() const { return view_.Channel(); }
  [[nodiscard]] GraphWidget& Plot() { return *plot_; }
  /// The trial may be another: shows the channel as it is now, or closes when it is gone.
  void Refresh();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void AddMenus();
  void AddBackgrounds();
  void AddPanAndZoom();
  void AddMode(QMenu* menu, const char* caption, TrackMode mode);
  void ConnectPlot();
  void ShowView();

  Workbench& workbench_;
  OneChannelView view_;
  GraphWidget* plot_;
  GraphPictures pictures_;
  GraphStatusBar* status_;
  std::vector<std::pair<Colour, QAction*>> backgrounds_;
  std::vector<std::pair<TrackMode, QAction*>> modes_;
};

}  // namespace velmora::ui
