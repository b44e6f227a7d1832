#pragma once

namespace velmora {

/// To be called first in main. Opens those of the descriptors 0 to 2 that whoever started the program
/// closed on /dev/null: the next file opened would take their place, and with it what is told there.
void OpenStandardDescriptors();

}  // namespace velmora
