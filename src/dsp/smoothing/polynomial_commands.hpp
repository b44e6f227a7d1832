#pragma once

#include "core/workbench.hpp"

namespace velmora {

/// Fits polynomials to channels, each of its own order, and offers the coefficients before data are
/// replaced. Channels must have been selected in a picker before.
void FitPolynomials(Workbench& workbench);

/// The same between the cursors, without a question for each channel.
void FitInterval(Workbench& workbench);

}  // namespace velmora
