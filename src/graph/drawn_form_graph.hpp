#pragma once

#include "core/questions/form_graph.hpp"
#include "graph/graph.hpp"

namespace velmora {

/// A result view's graph as one that the plot draws: its values are the samples of a trial of their own.
class DrawnFormGraph {
 public:
  explicit DrawnFormGraph(const FormGraph& from);
  DrawnFormGraph(const DrawnFormGraph&) = delete;
  DrawnFormGraph& operator=(const DrawnFormGraph&) = delete;
  ~DrawnFormGraph() = default;

  [[nodiscard]] Graph& Drawing() { return graph_; }
  [[nodiscard]] const Graph& Drawing() const { return graph_; }

 private:
  void TakeValues(const FormGraph& from);
  void TakeLooks(const FormGraph& from);

  Trial trial_;
  Graph graph_;
};

}  // namespace velmora
