#pragma once

#include <string>

#include "core/workbench.hpp"

// How the text files of results begin. Each line is ended by a line break.
namespace velmora {

/// "Filename:", "Trial code:" with "Trial:", "Duration (s):" and "Sampling rate (Hz):".
std::string TrialLines(const Workbench& workbench);

/// Whether the trial's title is the path of its file, as that of files without a title is.
bool TitleIsPath(const Trial& trial);

/// A trial's title as graphs, pictures and reports tell it: on one line, and of a title that is a path, as
/// some formats have it, the file's name.
std::string TitleOnOneLine(const Trial& trial);

/// A channel's label as results tell it: on one line, without blanks around it.
std::string LabelOnOneLine(const Trial& trial, int channel);

/// "Channel:", its number and label.
std::string ChannelLine(const Trial& trial, int channel);

}  // namespace velmora
