#pragma once

#include "core/workbench.hpp"

namespace velmora {

enum class TimeOutcome { Settled, GivenUp, EnterParametersAgain, ReadWithoutTime };

/// Rate, time column and Duration of a trial without a column of times; asks for the rate when none
/// is known.
TimeOutcome SettleRateWithoutTime(Workbench& workbench);

/// Rate and Duration from the times in row 0, held against a rate that is already known.
TimeOutcome SettleRateFromTimes(Workbench& workbench);

}  // namespace velmora
