#pragma once

#include <QColor>
#include <QIcon>
#include <QPainter>
#include <QPalette>
#include <QRect>

#include "core/trial/trial.hpp"
#include "ui/trial/channel_traces.hpp"

namespace velmora::ui {

/// The colour of a channel as it can be seen on the palette's base: the graph's table, darker on light
/// ground where it would vanish.
QColor ChannelColour(int colourIndex, const QPalette& palette);

/// A small filled square in the channel's colour, centred in `area`.
void PaintSwatch(QPainter& painter, const QRect& area, const QColor& colour);

/// The same as an icon, as a list of colours shows it.
QIcon SwatchIcon(int colourIndex, const QPalette& palette);

/// The whole channel as an envelope that fills `area`; what lies between the cursors is tinted when
/// they do not span the trial.
void PaintTrace(QPainter& painter, const QRect& area, const Trial& trial, const ChannelTraces& traces,
                int channel, const QPalette& palette);

}  // namespace velmora::ui
