// What the dialogue of designed filters shows before anything is filtered.
#include <algorithm>
#include <array>
#include <cmath>

#include "core/text/numbers.hpp"
#include "dsp/design/filter_design_form.hpp"
#include "dsp/filters/filter_design.hpp"
#include "dsp/filters/filter_response.hpp"

namespace velmora {
namespace {

constexpr double kLeastShownDb = -120;
constexpr int kLineColour = 1;

double LevelInDecibels(double gain) {
  return std::fmax(20 * std::log10(gain), -400.0);
}

struct Coefficients {
  ResultTable operator()(const Biquads& sections) const {
    ResultTable table{.columns = {"Section", "b0", "b1", "b2", "a1", "a2"}};
    for (const Biquad& c : sections) {
      table.rows.push_back({static_cast<double>(table.rows.size() + 1), c.b0, c.b1, c.b2, c.a1, c.a2});
    }
    return table;
  }
  ResultTable operator()(const TapFilter& filter) const { return Listed("Tap", filter.taps); }
  ResultTable operator()(const SavitzkyGolay& filter) const {
    return Listed("Point", filter.weights[static_cast<std::size_t>(filter.points / 2)]);
  }
  ResultTable operator()(const CfcSection& c) const {
    return {.columns = {"a0", "a1", "a2", "b1", "b2"}, .rows = {{c.a0, c.a1, c.a2, c.b1, c.b2}}};
  }
  ResultTable operator()(const DirectFilter& filter) const {
    ResultTable table{.columns = {"Delay", "b", "a"}};
    for (std::size_t k = 0; k < std::max(filter.b.size(), filter.a.size()); ++k) {
      table.rows.push_back({static_cast<double>(k), k < filter.b.size() ? filter.b[k] : 0.0,
                            k < filter.a.size() ? filter.a[k] : 0.0});
    }
    return table;
  }
  static ResultTable Listed(const char* head, const std::vector<double>& weights) {
    ResultTable table{.columns = {head, "Weight"}};
    for (const double weight : weights) {
      table.rows.push_back({static_cast<double>(table.rows.size() + 1), weight});
    }
    return table;
  }
};

// Even steps besides the ratios: the stop band of a long filter has its ripples side by side.
std::vector<double> Frequencies(const std::vector<double>& edges, double rate) {
  constexpr int even = 512;
  std::vector<double> all = ResponseFrequencies(edges.empty() ? std::vector<double>{rate / 20} : edges, rate);
  for (int k = 1; k < even; ++k) {
    all.push_back(rate / 2 * k / even);
  }
  std::sort(all.begin(), all.end());
  all.erase(std::unique(all.begin(), all.end()), all.end());
  return all;
}

// A notch has no level at its middle.
std::string LevelAt(const PlannedPoint& point) {
  constexpr double nothing = -200;
  const double level = LevelInDecibels(point.gain);
  return (level < nothing ? "nothing" : FormatNumber(level, "0.00") + " dB") + " at " +
         PlainNumber(point.frequency) + " Hz";
}

template <typename Value>
FormGraph::Plot Line(const char* name, const std::vector<PlannedPoint>& points, const Value& value) {
  FormGraph::Plot line{.name = name, .colour = kLineColour, .width = 2.0};
  for (const PlannedPoint& point : points) {
    line.x.push_back(point.frequency);
    line.y.push_back(value(point));
  }
  return line;
}

// From a little below the lowest to a little above the highest value.
void FitOrdinate(FormGraph& graph) {
  const std::vector<double>& y = graph.plots.front().y;
  const auto [low, high] = std::minmax_element(y.begin(), y.end());
  const double margin = std::fmax((*high - *low) * 0.06, std::fmax(std::abs(*high), 1e-9) * 0.02);
  graph.y.minimum = *low - margin;
  graph.y.maximum = *high + margin;
}

}  // namespace

void FilterDesignForm::Update() {
  ShowOwnFields();
  tables_.clear();
  whyNot_ = WhyOutside();
  atEdges_.clear();
  const int resets = graph_ ? graph_->resets + 1 : 0;
  graph_ = FormGraph{.background = FormGraph::Background::White, .resets = resets};
  try {
    if (whyNot_.empty()) {
      Draw(Design());
    }
  } catch (const FilterDesignError& error) {
    whyNot_ = error.what();
  }
  if (!whyNot_.empty()) {
    graph_->title = whyNot_;
  }
}

void FilterDesignForm::Draw(const PlannedFilter& filter) {
  const std::vector<PlannedPoint> points = PlannedResponses(filter, Frequencies(Edges(), filter.rate));
  graph_->title = Words();
  if (picture_ == kImpulse || picture_ == kStep) {
    DrawAnswer(filter, *graph_);
  } else {
    DrawResponse(points, *graph_);
  }
  FillTables(filter, points);
}

void FilterDesignForm::DrawAnswer(const PlannedFilter& filter, FormGraph& graph) const {
  PlannedAnswers answers = AnswersOf(filter);
  graph.x = {.minimum = answers.time.front(), .maximum = answers.time.back(), .caption = "Time (s)"};
  graph.y.caption = picture_ == kStep ? "Step response" : "Impulse response";
  graph.plots = {{.name = graph.y.caption,
                  .colour = kLineColour,
                  .x = std::move(answers.time),
                  .y = std::move(picture_ == kStep ? answers.step : answers.impulse),
                  .width = 2.0}};
  FitOrdinate(graph);
}

// The abscissa is logarithmic: what happens below the edge and above it has as much room.
void FilterDesignForm::DrawResponse(const std::vector<PlannedPoint>& points, FormGraph& graph) const {
  const std::array captions = {"Gain (dB)", "Gain", "Phase (degrees)", "Delay (s)"};
  graph.x = {.minimum = points[1].frequency,
             .maximum = points.back().frequency,
             .log = true,
             .caption = "Frequency (Hz)"};
  graph.y.caption = captions.at(static_cast<std::size_t>(picture_));
  const auto value = [this](const PlannedPoint& point) {
    switch (picture_) {
      case kGainDb:
        return std::fmax(LevelInDecibels(point.gain), kLeastShownDb);
      case kGain:
        return point.gain;
      case kPhase:
        return point.phase;
      default:
        return point.delay;
    }
  };
  graph.plots = {Line(captions.at(static_cast<std::size_t>(picture_)), points, value)};
  FitOrdinate(graph);
  for (const double edge : Edges()) {
    graph.marks.push_back({.x = edge, .text = PlainNumber(edge) + " Hz", .strength = 0.6});
  }
}

void FilterDesignForm::FillTables(const PlannedFilter& filter, const std::vector<PlannedPoint>& points) {
  ResultTable response{
      .name = "frmFilterDesign",
      .title = Words() + ", all runs together",
      .columns = {"Frequency (Hz)", "Magnitude", "Magnitude (dB)", "Phase (degrees)", "Delay (s)"}};
  ResultTable edges = response;
  edges.name = "frmFilterDesignEdges";
  const std::vector<double> at = Edges();
  for (const PlannedPoint& point : points) {
    response.rows.push_back(
        {point.frequency, point.gain, LevelInDecibels(point.gain), point.phase, point.delay});
    if (std::find(at.begin(), at.end(), point.frequency) != at.end()) {
      edges.rows.push_back(response.rows.back());
      atEdges_ += (atEdges_.empty() ? (IsZeroLag() ? "In all: " : "") : ", ") + LevelAt(point);
    }
  }
  ResultTable coefficients = std::visit(Coefficients{}, filter.kind);
  coefficients.name = "frmFilterDesignCoefficients";
  coefficients.title = "Coefficients of one run";
  response.hidden = true;
  coefficients.hidden = true;
  edges.hidden = true;
  edges.title = "At the edges, all runs together";
  tables_ = {std::move(response), std::move(coefficients), std::move(edges)};
}

}  // namespace velmora
