#include "ui/graph/form_graph_panel.hpp"

#include <QBoxLayout>
#include <QLabel>

#include "plot/graph_widget.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

bool SameRange(const FormGraph::Axis& a, const FormGraph::Axis& b) {
  return a.minimum == b.minimum && a.maximum == b.maximum && a.log == b.log && a.caption == b.caption;
}

}  // namespace

FormGraphPanel::FormGraphPanel(QWidget* parent)
    : QWidget(parent), plot_(new GraphWidget(this)), place_(new QLabel(this)) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(plot_, 1);
  layout->addWidget(place_);
  plot_->setObjectName(QStringLiteral("graph"));
  plot_->setMinimumSize(620, 360);
  place_->setObjectName(QStringLiteral("place"));
  place_->setTextFormat(Qt::PlainText);
  place_->setForegroundRole(QPalette::PlaceholderText);
  connect(plot_, &GraphWidget::rangeChosen, this, [this](const GraphRange& range) { ShowRange(range); });
  connect(plot_, &GraphWidget::doubleClicked, this, [this] { ShowWhole(); });
  connect(plot_, &GraphWidget::pointed, this, [this](double x, double y) { ShowPlace(x, y); });
  place_->setText(tr("Wheel: zoom, with Shift of the ordinate; drag: move; double click: all of it"));
}

void FormGraphPanel::SetLeastHeight(int height) {
  plot_->setMinimumHeight(height);
}

// The plot lets go of the old drawing before it is deleted.
void FormGraphPanel::Show(const FormGraph& graph) {
  auto next = std::make_unique<DrawnFormGraph>(graph);
  const bool keep = drawn_ != nullptr && shown_.resets == graph.resets;
  if (keep && SameRange(shown_.x, graph.x)) {
    next->Drawing().Abscissa = drawn_->Drawing().Abscissa;
  }
  if (keep && SameRange(shown_.y, graph.y)) {
    next->Drawing().Ordinate = drawn_->Drawing().Ordinate;
  }
  shown_ = graph;
  plot_->SetGraph(&next->Drawing());
  plot_->SetTitle(ToQt(graph.title));
  drawn_ = std::move(next);
  plot_->Redraw();
}

void FormGraphPanel::ShowRange(const GraphRange& range) {
  drawn_->Drawing().ShowRange(range.left, range.right, range.bottom, range.top);
  plot_->Redraw();
}

void FormGraphPanel::ShowWhole() {
  drawn_->Drawing().Abscissa.SetMinMax(shown_.x.minimum, shown_.x.maximum);
  drawn_->Drawing().Ordinate.SetMinMax(shown_.y.minimum, shown_.y.maximum);
  plot_->Redraw();
}

void FormGraphPanel::ShowPlace(double x, double y) {
  const auto number = [](double value) { return QString::number(value, 'g', 5); };
  place_->setText(shown_.readOut ? ToQt(shown_.readOut(x, y)) : number(x) + QStringLiteral(", ") + number(y));
}

}  // namespace velmora::ui
