#include "import/native_binary.hpp"

namespace velmora {

void ReadNativeBinary(Workbench& workbench, ProgressPanel& /*panel*/) {
  workbench.trial.DiscardData();
}

}  // namespace velmora
