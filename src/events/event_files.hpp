#pragma once

#include <string>
#include <vector>

#include "core/workbench.hpp"

namespace velmora {

/// The text of a channel events file (.VMV): the trial, then for each record a row of on times and one of off
/// times, a channel a column, and with EventAmplitudes a row of amplitudes behind each. "." where there is
/// none. The amplitude is that of sample round(Rate * t), one before the sample at the time t: so it is
/// defined for this file. Lines end with CR LF.
std::string ChannelEventsText(const Workbench& workbench);

/// Asks for a name and writes the table. The table and EventsUnsaved stay as they are when that is cancelled
/// or fails. Without anything unsaved it says so.
void SaveChannelEvents(Workbench& workbench);

/// The text of an events file (.evt): a line per cursor, at these places of the abscissa, with its sample and
/// the values of all channels there.
std::string CursorEventsText(const Workbench& workbench, const std::vector<double>& cursors);

/// Asks for a name and writes that text.
void SaveCursorEvents(Workbench& workbench, const std::vector<double>& cursors);

}  // namespace velmora
