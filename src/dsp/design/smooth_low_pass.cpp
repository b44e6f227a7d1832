#include "dsp/design/smooth_low_pass.hpp"

#include "dsp/design/recursive_design.hpp"
#include "dsp/design/section_runs.hpp"

namespace velmora {

void SmoothByLowPass(std::span<double> signal, double rate, double cutoff) {
  const DesignRequest request{.order = 2, .rate = rate, .cutoff = cutoff};
  CheckEdges(request.band, request.rate, request.cutoff, request.higher);
  RunSectionsPlain(signal, DesignFilter(KeptOverBothRuns(request)), RunDirection::ZeroLag);
}

}  // namespace velmora
